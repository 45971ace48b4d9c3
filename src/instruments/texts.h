#pragma once

#include "base/message_text.h"

/// What the link to an instrument and its set-up say. Each with its number in the message database, which never changes
/// its meaning.
namespace velk::text {

// The board
inline constexpr MessageText SourceSetupComPort{3, "SetupComPort"};
inline constexpr MessageText InvalidPortObject{4, "invalid MSComm is supplied."};
inline constexpr MessageText InvalidBaudRate{
    6, "Invalid Boud rate is supplied. Only 2400, 4800, 9600, 19200 and 38400 are supported."};
inline constexpr MessageText InvalidHandshake{7, "Invalid hand shaking is supplied."};
inline constexpr MessageText SourceSendTrad{9, "SendTrad"};
inline constexpr MessageText TradWithoutPort{10, "Please call 'SetupComPort' before you call this method."};
inline constexpr MessageText TradNotConfigured{11, "Please call 'SetupComPort' before you call this method."};
inline constexpr MessageText SourceSendRun{14, "SendRun"};
inline constexpr MessageText RunWithoutPort{15, "Please call 'SetupComPort' before you call this method."};
inline constexpr MessageText RunNotConfigured{16, "Please call 'SetupComPort' before you call this method."};
inline constexpr MessageText SourceGetChannelsData{18, "GetChannelsData"};
inline constexpr MessageText TableWithoutPort{19, "Please call 'SetupComPort' before you call this method."};
inline constexpr MessageText TableNotConfigured{20, "Please call 'SetupComPort' before you call this method."};
inline constexpr MessageText NoTableInTime{26, "Unable to get channels data"};
inline constexpr MessageText UnableToCommunicate{38, "unable to establish communication with the hardware."};
inline constexpr MessageText UnableToGetChannels{45, "Unable to get the channels data"};
// The number of channels stands between the two.
inline constexpr MessageText InvalidChannelNumber{46, "Invalid channel number should be 1 .. "};
inline constexpr MessageText InvalidChannelNumberAfter{3126, " only"};
inline constexpr MessageText SourceExecutCommand{47, "executCommand"};
inline constexpr MessageText CommandWhileRunning{
    48, "You can not run command while the hardware running. Please execute SendTrad befor."};
inline constexpr MessageText UnableToExecute{49, "Unable to execute ["};
inline constexpr MessageText SourceResetCounter{51, "ResetConter"};
inline constexpr MessageText UnableToResetCounter{52, "Unable to reset the counter to "};
inline constexpr MessageText UnableToResetCounterAfter{53, ". Only values must be 0 to 4096 only."};
inline constexpr MessageText NoSuchCounter{54, "Invalid channel number : "};
inline constexpr MessageText NoSuchCounterAfter{55, ". Only channels 9 to 13 can be set."};
inline constexpr MessageText SourceResetToSystemDefault{56, "ResetToSystemDefault"};
inline constexpr MessageText SourceStartCalibrate{57, "StartCalibrateChannel"};
inline constexpr MessageText InvalidCalibrationChannel{58,
                                                       "Invalid channel number. Channel number must be 1 to 13 only."};
inline constexpr MessageText SourceEndCalibrate{60, "EndCalibrateChannel"};
inline constexpr MessageText NoCalibrationBegun{
    61, "First you must call 'StartCalibrateChannel' befor calling 'EndCalibrateChannel'"};
inline constexpr MessageText UnableToCalibrate{64, "unable to calibrate the channel."};
inline constexpr MessageText UnitTitle{3120, "Speaking to the unit"};
inline constexpr MessageText SpeakingToUnit{3127, "Speaking to the unit; data come again behind it"};
inline constexpr MessageText ConnectingToUnit{3121, "Connecting to hardawre"};
inline constexpr MessageText UnitReached{3122, "Communication with hardware established"};
inline constexpr MessageText RequestingChannels{3123, "Requesting channels data"};
inline constexpr MessageText ReadingChannel{3124, "Reading input data for channel : "};
inline constexpr MessageText ExtractingChannel{3125, "Extracting data for channel : "};
inline constexpr MessageText NoTableAtRequest{3128, "unable to get channels data"};
inline constexpr MessageText SourceSetDate{3129, "SetDate"};
// The device stands in front.
inline constexpr MessageText UnitIsGone{3130, ": the serial device is gone. Is the cable plugged in?"};

// Acquisition
inline constexpr MessageText TimeOutCheckSettings{74, "Time Out Error, check hardware settings"};
inline constexpr MessageText TimeOutTitle{75, "Time Out Error"};

// What a wait for lines or answers has heard, beneath the text of its time-out; the name of a channel stands behind
inline constexpr MessageText HeardNothing{2604, "Nothing was heard. Is the unit switched on, and is this its cable?"};
inline constexpr MessageText HeardBytes{2605, "Bytes heard: "};
inline constexpr MessageText HeardNoLineEnd{2606, ", but no end of a line. Are the speed and the line end right?"};
inline constexpr MessageText HeardOneLineEnd{2607, ", but no second end of a line. Is the unit sending on?"};
inline constexpr MessageText HeardRejected{2608, "The last line was rejected: "};
inline constexpr MessageText HeardNoSoundLine{2760, ", but no line that passes the check of its protocol."};
inline constexpr MessageText NoAnswerFor{2761, "No answer for the channel "};
inline constexpr MessageText NoCommandFor{2762,
                                          "No command is entered in Edit Settings, Serial Port, for the channel "};

// Calibration, and the reset of an instrument's value
inline constexpr MessageText CalibrationDivision{70, "Division by zero"};
inline constexpr MessageText ResetValueTitle{2430, "Reset Parameter Value"};
inline constexpr MessageText ResetValuePrompt{2431, "Select Parameter"};
inline constexpr MessageText EnterNewValue{2432, "Enter the new value"};
inline constexpr MessageText ResettingTitle{2433, "Resetting parameter value"};
inline constexpr MessageText NoResetCommand{
    2434, "This parameter has no reset command. Enter one in Edit Settings, Serial Port."};
inline constexpr MessageText NotANumber{2435, "This is no number"};
inline constexpr MessageText CalibratesOthers{
    2436,
    "This works for instruments that send formatted lines and for those that are asked. For this one, enter gain and "
    "offset in the table of parameters."};
inline constexpr MessageText ReferenceMissing{2437, "Enter the value of the reference first."};
inline constexpr MessageText CalibrationHint{
    2438, "Show the first reference to the sensor, enter its value and press Do ref. 1; the same with the second."};

// The serial link; the device stands in front
inline constexpr MessageText PortMissing{2400,
                                         ": there is no such serial device. Is the cable or the adapter plugged in?"};
inline constexpr MessageText PortBusy{2401, ": the serial device is in use by another program."};
inline constexpr MessageText PortNoPermission{2402, ": no permission to use the serial device. Join the group ["};
inline constexpr MessageText PortNoPermissionAfter{2403, "] and log in again."};
inline constexpr MessageText PortRefusesSettings{2404, ": the serial device refuses these line settings."};
inline constexpr MessageText PortIsGone{2405, ": the serial device is gone. Data go on by themselves when it is back."};
inline constexpr MessageText PortGoesWithout{
    2406, ": the serial device works without these line settings, which it does not have: "};
inline constexpr MessageText PortDataBits{2407, "data bits "};
inline constexpr MessageText PortParity{2408, "parity "};
inline constexpr MessageText PortStopBits{2409, "stop bits "};
inline constexpr MessageText PortModemLines{2420, "modem lines, which the hardware handshake needs"};

// How many values a line has; the numbers stand in front
inline constexpr MessageText ValuesWhere{2567, " values where "};
inline constexpr MessageText OneValueWhere{2568, " value where "};
inline constexpr MessageText AreExpected{2569, " are expected"};
inline constexpr MessageText IsExpected{2570, " is expected"};
inline constexpr MessageText ValuesOfLine{2609, " values"};
inline constexpr MessageText OneValueOfLine{2610, " value"};

// What stands behind a port in the list of ports
inline constexpr MessageText DeviceInUse{2611, "in use by another program"};
inline constexpr MessageText DeviceNoPermission{2612, "no permission: join the group ["};
inline constexpr MessageText DeviceNoPermissionAfter{2613, "] and log in again"};
inline constexpr MessageText DeviceOfPort{2614, "Device of Com Port "};
inline constexpr MessageText ChooseDevice{2615, "Choose a device or enter its path"};
inline constexpr MessageText DeviceOfList{2616, "As the list of ports has it: "};

// Beneath a protocol that the list can't serve with
inline constexpr MessageText ChannelsAreItems{
    3311, "The channels are the items of the list under Edit Settings, OPC Server. No serial port is used."};
inline constexpr MessageText DeliversNoValues{3405, "Lines of this protocol deliver no values."};
inline constexpr MessageText NotChosenHere{3406, "This protocol can't be chosen here."};
inline constexpr MessageText LoadTemplateNamed{3407, " Load the template \""};
inline constexpr MessageText OrTemplate{3408, "\" or \""};
inline constexpr MessageText ByEditSettings{3409, "\" by Edit Settings."};

// Lines as they arrive
inline constexpr MessageText ListensYet{2619, "Listening. Nothing has come yet."};
inline constexpr MessageText HearsNoLineEnd{2620, "Bytes have come, but no end of a line."};

// The plug; the device stands behind
inline constexpr MessageText ConnectedTo{2571, "Connected: "};
inline constexpr MessageText NoDataFrom{2572, "Connected, but no data come: "};
inline constexpr MessageText DisconnectedFrom{2573, "Disconnected: "};

// The page of a networked unit; the address stands in front
inline constexpr MessageText PageBadAddress{2410, ": this is no address of a page. Is the IP address filled in?"};
inline constexpr MessageText PageNoConnection{2411,
                                              ": no connection to the unit. Is it switched on and on this network?"};
inline constexpr MessageText PageTimedOut{2412, ": the unit did not answer with a whole page in time."};
inline constexpr MessageText PageTooLarge{2413, ": the page is too large for a unit's page. Is the address right?"};
inline constexpr MessageText PageRedirectRefused{2414, ": the unit leads to another address. Is the address right?"};
inline constexpr MessageText PageRefused{2415, ": the unit does not give this page. Its answer was "};

// The serial port's dialogs
inline constexpr MessageText UnnamedParameter{2450, "Parameter "};
inline constexpr MessageText ParametersOutOfRange{2451, "The number of parameters is a whole number from 0 to 64."};
inline constexpr MessageText ParametersAndFormulae{
    2452, "Parameters and additional parameters together are more than 64. Additional parameters: "};
inline constexpr MessageText SensitivityOutOfRange{
    2453, "The sensitivity criterion is a whole number from 0 to 32767, in percent of the scale span."};
inline constexpr MessageText TypeDelimiter{2454, "Please speicfy the demiliter character by typing it"};
inline constexpr MessageText SerialPortProtocol{2455, "Serial Port Protocol"};
inline constexpr MessageText DelimiterNotValid{2456, "Delimiter is not valid"};
inline constexpr MessageText ComPort{2457, "Com Port "};
inline constexpr MessageText DevicePresent{2458, "present"};
inline constexpr MessageText DeviceMissing{2459, "not present"};
inline constexpr MessageText SamplingSeconds{2460, "seconds"};
inline constexpr MessageText SamplingMinutes{2461, "minutes"};
inline constexpr MessageText SamplingHours{2462, "hours"};
inline constexpr MessageText ParityEven{2463, "Even"};
inline constexpr MessageText ParityMark{2464, "Mark"};
inline constexpr MessageText ParityNone{2465, "None"};
inline constexpr MessageText ParityOdd{2466, "Odd"};
inline constexpr MessageText ParitySpace{2467, "Space"};
inline constexpr MessageText HandshakeNone{2468, "None"};
inline constexpr MessageText HandshakeXonXoff{2469, "Xon/Xoff"};
inline constexpr MessageText HandshakeHardware{2470, "Hardware"};
inline constexpr MessageText ProtocolFormatted{2471, "formatted and at regular intervals"};
inline constexpr MessageText ProtocolNationalOilWell{2472, "National Oil Well PLC"};
inline constexpr MessageText ProtocolSentWhenRequested{2473, "sent when requested"};
inline constexpr MessageText ProtocolIntermittent{2474, "intermittent and by request"};
inline constexpr MessageText ProtocolDllFunctionCall{2475, "via dll function call"};
inline constexpr MessageText ProtocolKesta3{2476, "KESTA version 3"};
inline constexpr MessageText ProtocolKesta4{2477, "KESTA version 4"};
inline constexpr MessageText ProtocolKesta5{2478, "KESTA version 5"};
inline constexpr MessageText ProtocolLumoA{2479, "LUMO version A"};
inline constexpr MessageText ProtocolLumoB{2480, "LUMO version B"};
inline constexpr MessageText ProtocolDas104{2481, "S&S DAS 104"};
inline constexpr MessageText ProtocolDataTakerA{2482, "Data Taker a"};
inline constexpr MessageText ProtocolDataTakerB{2483, "Data Taker b"};
inline constexpr MessageText ProtocolHoneywell{2484, "HPT - Honeywell eZtrend"};
inline constexpr MessageText ProtocolLumoThroughHmi{2485, "ORBEN LUMO through HMI"};
inline constexpr MessageText ProtocolAnySerialData{2486, "Any Serial Data"};
inline constexpr MessageText ProtocolOpcServer{3310, "OPC Server"};

// The box of a lost link counts while it stands: a time behind the first and the last, number and time around the
// second
inline constexpr MessageText LostAt{2487, "Lost at "};
inline constexpr MessageText TimesSince{2488, " times since "};
inline constexpr MessageText BackSince{2489, ", back since "};

// The table of an own unit, its tools and its calibration
inline constexpr MessageText UnitChannel{3131, "Channel"};
inline constexpr MessageText UnitOffset{3132, "Offset"};
inline constexpr MessageText UnitGain{3133, "Gain"};
inline constexpr MessageText UnitNumberFormat{3134, "No. format"};
inline constexpr MessageText UnitUpperAlarm{3135, "U-alarm"};
inline constexpr MessageText UnitLowerAlarm{3136, "L-alarm"};
inline constexpr MessageText TemplateDamaged{3137, "This is no whole template of a unit's table. Damaged is line "};
inline constexpr MessageText TemplateOfAnotherUnit{3138, "This template is of another unit; its name stands in line "};
inline constexpr MessageText ReadsBackOther{
    3139, ": the unit's table has no exponents, so it reads back as another number. Send it all the same?"};
inline constexpr MessageText EnterFirstReference{3140, "Enter the first reference value"};
inline constexpr MessageText FirstReferenceTitle{3141, "Calibration - First Reference"};
inline constexpr MessageText EnterSecondReference{3142, "Enter the second reference value"};
inline constexpr MessageText SecondReferenceTitle{3143, "Calibration - Second Reference"};
inline constexpr MessageText ReadingIs{3144, "Reading is "};
inline constexpr MessageText GainIs{3145, "Gain = "};
inline constexpr MessageText AndOffsetIs{3146, " and offset = "};
inline constexpr MessageText DoYouAccept{3147, " , do you wish to accept these values?"};
inline constexpr MessageText UnitCalibrate{3148, "Calibrate"};
inline constexpr MessageText UnitSetGain{3149, "Set Gain"};
inline constexpr MessageText UnitSetOffset{3150, "Set Offset"};
inline constexpr MessageText UnitSetLowerAlarm{3151, "Set Lower Alarm"};
inline constexpr MessageText UnitSetUpperAlarm{3152, "Set Upper Alarm"};
inline constexpr MessageText UnitRemoveLowerAlarm{3153, "Remove Lower Alarm"};
inline constexpr MessageText UnitRemoveUpperAlarm{3154, "Remove Upper Alarm"};
inline constexpr MessageText UnitSetNumberFormat{3155, "Set Number Format"};
inline constexpr MessageText UnitResetCounters{3156, "Reset Counters"};
inline constexpr MessageText EnterDecimalPlaces{3157, "Enter the number decimal places"};
inline constexpr MessageText UnitToolsTitle{3158, "ORBEN Hardware"};
inline constexpr MessageText DecimalsOutOfRange{3159, "The number of decimal places is a whole number from 0 to 15."};
inline constexpr MessageText CommandSent{3160, "Command sent"};
inline constexpr MessageText GainIsZero{3161, "Gain is zero"};
inline constexpr MessageText EnterReference{3162, "Enter the reference value"};
inline constexpr MessageText CalibrateCounterTitle{3163, "Calibrate counter channel "};
inline constexpr MessageText CalibrateChannelTitle{3164, "Calibration of channel "};
inline constexpr MessageText ClickWhenFinished{3165, "When you have finished, click the OK button"};
inline constexpr MessageText OwnUnitsOnly{
    3166, "This works with KESTA and LUMO units. Choose one in Edit Settings, Serial Port."};
inline constexpr MessageText UnitTableTitle{3167, "ORBEN's Hardware Settings"};
inline constexpr MessageText UnitTemplateTitle{3168, "Orben Hardware Settings - Template: "};
inline constexpr MessageText UnitTemplateFilter{3169, "Templates of the table (*.txt)|*.txt"};
inline constexpr MessageText OpenUnitTemplate{3170, "Open Template"};
inline constexpr MessageText SaveUnitTemplate{3171, "Save Template As"};
inline constexpr MessageText ErrorBefore{3172, "Error, "};
inline constexpr MessageText ExponentsBefore{
    3173, "The unit's table has no exponents, so numbers of these channels read back as others: "};
inline constexpr MessageText ExponentsAfter{3174, ". Send them all the same?"};
inline constexpr MessageText UnitTableHint{
    3175, "Change a cell by a double click or by typing. Send brings what was changed to the unit."};
inline constexpr MessageText UnitTableUnread{3176, "The unit's table was not read. It is read ahead of the next send."};
inline constexpr MessageText CommandIssuedIs{3177, "Command issued: "};
inline constexpr MessageText ResetQuestion{
    3178, "Every gain, offset and alarm of the unit goes back to its default. Reset it?"};
inline constexpr MessageText ToolsNotReady{
    3179, "The unit could not be brought to command mode, so no command can be sent. Close this window and try again."};
inline constexpr MessageText NoNumberFormat{3182, "A number format has 0, # and one point."};
inline constexpr MessageText ToolsHint{3180, "The unit takes commands and sends no data until this window is closed."};
inline constexpr MessageText CalibratingChannel{3181, "Reading the channel..."};
inline constexpr MessageText LeaveUnitTable{
    3183, "The table has changes that were neither sent to the unit nor saved. Close it all the same?"};

// The search for an instrument
inline constexpr MessageText DetectionInProgress{412, "Automatic hardware detection in progress"};
inline constexpr MessageText FoundNationalOilWell{413, "National Oil Well hardware detected"};
inline constexpr MessageText FoundKesta4{414, "KESTA version 4 hardware detected"};
inline constexpr MessageText FoundVersion1{424, "Orben's hardware version 1 detected"};
inline constexpr MessageText FoundKesta3{3185, "ORBEN version 3 hardware detected"};
inline constexpr MessageText HardwareUnknown{3186, "Hardware unknown"};
inline constexpr MessageText PortsNotOpened{3187, "These ports could not be opened:"};
inline constexpr MessageText KeepSettingsOfBefore{3188, "Go back to the settings of before?"};
inline constexpr MessageText DetectListening{3189, "Listening to Com Port "};
inline constexpr MessageText DetectListeningHandshake{3190, "Listening with hardware handshake to Com Port "};
inline constexpr MessageText DetectAsking{3191, "Asking at Com Port "};
inline constexpr MessageText DetectCommanding{3192, "Asking which unit it is at Com Port "};
inline constexpr MessageText DetectTitle{3193, "Auto Detect Hardware"};

}  // namespace velk::text

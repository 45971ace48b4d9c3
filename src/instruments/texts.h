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
inline constexpr MessageText LoadFormattedTemplate{
    2617,
    "Lines of this protocol deliver no values. Load the template \"Formatted lines (blank, CR)\" or \"Formatted lines "
    "(comma, CR LF)\" by Edit Settings."};
inline constexpr MessageText LoadAnyLinesTemplate{
    2618, "This protocol can't be chosen here. Load the template \"Any serial lines\" by Edit Settings."};

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

// The box of a lost link counts while it stands: a time behind the first and the last, number and time around the
// second
inline constexpr MessageText LostAt{2487, "Lost at "};
inline constexpr MessageText TimesSince{2488, " times since "};
inline constexpr MessageText BackSince{2489, ", back since "};

}  // namespace velk::text

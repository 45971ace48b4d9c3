#pragma once

#include "base/message_text.h"

/// What the OPC objects say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// A call that failed; its name, its number in decimal and in hexadecimal stand between the parts
inline constexpr MessageText OpcFunctionBefore{3300, "The OPC function '"};
inline constexpr MessageText OpcFunctionNumber{3301, "' has returned an error of "};
inline constexpr MessageText OpcFunctionHex{3302, " or Hex 0x"};
inline constexpr MessageText OpcFunctionTitle{3303, "OPC Function error"};

// What the data panel and the plug tell of a job's items
inline constexpr MessageText OpcServerLost{3304, "no connection to "};
inline constexpr MessageText OpcItemMissing{3305, "no value from "};
inline constexpr MessageText OpcItemsConnected{3306, "Items of OPC servers: "};
inline constexpr MessageText OpcNoItems{3307, "No items of OPC servers"};

// While a server is asked
inline constexpr MessageText OpcAsking{3308, "OPC Server"};
inline constexpr MessageText OpcWaits{3309, "Waiting for the server's answer"};

// Choosing a server
inline constexpr MessageText OpcNoRemoteServers{3320, "Cannot find remote servers!"};
inline constexpr MessageText OpcSelectServer{3321, "Please select an OPC Server from the list or enter a Prog ID."};
inline constexpr MessageText OpcNoServerSelected{3322, "No Server Selected"};

// The properties of a server; its states in the order of their codes
inline constexpr MessageText OpcServerRunning{3323, "Server Running"};
inline constexpr MessageText OpcServerFailed{3324, "Server Failed"};
inline constexpr MessageText OpcServerNoConfiguration{3325, "Server No Configuraition"};
inline constexpr MessageText OpcServerSuspended{3326, "Server Suspended"};
inline constexpr MessageText OpcServerTestMode{3327, "Server Test Mode"};
inline constexpr MessageText OpcServerDisconnected{3328, "Server Disconnected"};
inline constexpr MessageText OpcNoId{3329, "No ID"};
inline constexpr MessageText OpcNoVendor{3330, "No Vendor"};

// Adding an item
inline constexpr MessageText OpcTestingItem{3331, "Testing Item"};
inline constexpr MessageText OpcItemAccepted{3332, "ItemID and Datatype Accepted"};
inline constexpr MessageText OpcCheckItem{3333, "Error - Check ItemID or Datatype"};
inline constexpr MessageText OpcItemRejected{
    3334, "The OPC Server has rejected the item please check the Item ID and data type selections"};
inline constexpr MessageText OpcAccessAny{3335, "Any"};
inline constexpr MessageText OpcAccessReadOnly{3336, "Read Only"};
inline constexpr MessageText OpcAccessWriteOnly{3337, "Write Only"};

// The tree and the list
inline constexpr MessageText OpcServersRoot{3338, "OPC Servers"};
inline constexpr MessageText OpcNotConnected{3339, " (not connected)"};
inline constexpr MessageText OpcItemIdHeading{3340, "ItemID"};
inline constexpr MessageText OpcValueHeading{3341, "Value"};
inline constexpr MessageText OpcStatusHeading{3342, "Status"};
inline constexpr MessageText OpcNotAtServer{3343, "Not at the server"};
inline constexpr MessageText OpcBegin{3344, "Add a server, then a group, then the items whose values become channels."};
inline constexpr MessageText OpcWriteTitle{3345, "Write Value"};
inline constexpr MessageText OpcWriteValueOf{3346, "New value of "};
inline constexpr MessageText OpcDeleteBefore{3347, "Delete ["};
inline constexpr MessageText OpcDeleteAfter{3348, "] with all that is below it?"};
inline constexpr MessageText OpcTooManyItems{
    3349, " items are in the list. A job has at most 64 channels with the computed ones: the last items get none."};

// Entries
inline constexpr MessageText OpcRateOutOfRange{3350, "Enter an update rate from 0 to 2147483647 ms."};
inline constexpr MessageText OpcDeadBandOutOfRange{3351, "Enter a deadband from 0 to 100 percent."};
inline constexpr MessageText OpcIntervalOutOfRange{3352, "Enter a whole number from 50 to 10000."};
inline constexpr MessageText OpcNoRangeBefore{3353, "Without an engineering range, and so without a deadband: "};

// A server that is secured; its URL stands behind the first
inline constexpr MessageText OpcServerAt{3354, "The server "};
inline constexpr MessageText OpcCertificateUnknown{3355, " shows a certificate that nobody has accepted here yet."};
inline constexpr MessageText OpcCertificateChanged{
    3356, " shows another certificate than the one that was accepted here. Somebody may stand in its place."};
inline constexpr MessageText OpcCertificateHolder{3357, "Holder: "};
inline constexpr MessageText OpcCertificateValidTo{3358, "Valid to: "};
inline constexpr MessageText OpcCertificateAccept{
    3359, "Compare the fingerprint with what the server's administrator says. Accept it?"};
inline constexpr MessageText OpcCertificateTitle{3360, "OPC Server Certificate"};
inline constexpr MessageText OpcLoginWanted{
    3361, " asks for a user and a password. They are kept until the program ends, and stored nowhere."};
inline constexpr MessageText OpcLoginRefused{3362, " has refused this user and password."};
inline constexpr MessageText OpcCertificateOver{3363, " shows a certificate whose time is over. It is refused."};

// The quality of a value; a number stands behind a bad one
inline constexpr MessageText OpcGood{3364, "Good"};
inline constexpr MessageText OpcBad{3365, "Bad"};

// A server that has announced its end
inline constexpr MessageText OpcGoesDown{3366, " (going down)"};

}  // namespace velk::text

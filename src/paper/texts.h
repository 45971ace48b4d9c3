#pragma once

#include "base/message_text.h"

/// What pages and their window say. Each with its number in the message database, which never changes its meaning.
namespace velk::text {

// The foot of a page; the date and time stand behind
inline constexpr MessageText Printed{2650, "Printed "};

// The lines above the frame
inline constexpr MessageText ClientLine{2651, " Client : "};
inline constexpr MessageText FieldLine{2652, " Field  : "};
inline constexpr MessageText WellLine{2653, " Well   : "};
inline constexpr MessageText JobLine{2654, " Job    : "};

// The window
inline constexpr MessageText PageTitle{2655, "Graph Print Preview"};
inline constexpr MessageText NoSpan{2656, "The log has no records over a length of time: there is no page to show."};
inline constexpr MessageText NoTimeAtAnEnd{
    3203, "The first or the last record of the log has no date and time: there is no page to show."};
inline constexpr MessageText EndsBeforeItBegins{3204,
                                                "The last record of the log is earlier than the first one, since the "
                                                "clock was set back: there is no page to show."};
inline constexpr MessageText LaterRecordsMissing{
    3205, "Some records are later than the last one, since the clock was set back, and not on the page."};
inline constexpr MessageText DrawingPage{2657, "Drawing the page"};
inline constexpr MessageText NoReportForPage{2658, "Summary Report does not exist"};
inline constexpr MessageText EnterStart{2659, "Enter start date and time"};
inline constexpr MessageText EnterEnd{2660, "Enter end date and time"};
inline constexpr MessageText StartTitle{2661, "Start date and time"};
inline constexpr MessageText PageEndsEarlier{
    2662, "The page ends before the log does. \"Full view\" shows all of it, in four equal parts."};
inline constexpr MessageText RemoveLogo{2663, "Remove Company Logo"};
inline constexpr MessageText InsertLogo{2664, "Insert Company Logo"};
inline constexpr MessageText RemoveHeader{2665, "Remove Header Information"};
inline constexpr MessageText InsertHeader{2666, "Insert Header Information"};
inline constexpr MessageText AutoScaling{2667, "Auto Scaling"};
inline constexpr MessageText ManualScaling{2668, "Manual Scaling"};
inline constexpr MessageText SavePictureTitle{2669, "Save Picture"};
inline constexpr MessageText PictureFilter{2670, "JPEG Files (*.jpg) |*.jpg;*.jpeg|Bitmaps (*.bmp)|*.bmp"};
inline constexpr MessageText LogoUnreadable{2673, "The company logo can't be read: "};
inline constexpr MessageText MarginsHide{
    2676, "The printer leaves a margin in which something of the page lies: it will be cut off there."};

inline constexpr MessageText EndNotBehindStart{2677, "The end has to be later than the start."};
inline constexpr MessageText NotToClipboard{
    2679, "I don't know how to put a DIB on the clipboard! Copy as bitmap instead!!!"};
inline constexpr MessageText PrintingTo{2678, "Printer: "};
inline constexpr MessageText Millimetres{3200, " mm"};  ///< behind a length

}  // namespace velk::text

#include "instruments/link/networked_unit.h"

#include <gtest/gtest.h>

#include <set>

#include "base/dates.h"

namespace velk {
namespace {

constexpr const char* kAddress = "10.0.0.5/pens.htm";

class NetworkedUnit : public testing::Test {
 protected:
  NetworkedUnit() {
    session.daqIPAddress = "10.0.0.5";
    session.daqHTML = "pens.htm";
    session.NumberOfParameters = 1;
    session.Delimiter = ",";
    session.Terminator = "\r\n";
  }

  static std::string ErrorOf(PageFault fault) {
    try {
      TextOfPage({{}, PageError(fault, kAddress, 404)});
    } catch (const RuntimeError& error) {
      return error.what();
    }
    return {};
  }

  Session session;
  const double now = DateSerial(2026, 3, 14) + TimeOfDay(9, 30, 0);
};

TEST_F(NetworkedUnit, IsAskedForThePageOfTheSettings) {
  EXPECT_EQ(UnitPageAddress(session), kAddress);
}

TEST_F(NetworkedUnit, GivesTheTablesOwnTimeBehindTheDelimiter) {
  EXPECT_EQ(LineOfTablePage(session, "&nbsp;11:22:33<tr><td><td><td><td>7</td>"), "11:22:33,7\r\n");
}

TEST_F(NetworkedUnit, GivesThePresentTimeAndBlanksForTheOtherPages) {
  session.SerialData = "HPT - Honeywell eZtrend";
  EXPECT_EQ(LineOfValuesPage(session, "1Var<td><b>7.50&nbsp;</b></td>", now), "09:30:00 7.50\r\n");
  session.SerialData = "ORBEN LUMO through HMI";
  EXPECT_EQ(LineOfValuesPage(session, "</tr><td>n</td><td><b>7.50&nbsp;</b></td></tr>", now), "09:30:00 7.5\r\n");
}

TEST_F(NetworkedUnit, GivesTheTextOfAPageThatHasCome) {
  const FetchedPage page{"<html>", {}};
  EXPECT_EQ(TextOfPage(page), "<html>");
}

TEST_F(NetworkedUnit, TellsWhyNoPageCameWithTheAddressInFront) {
  EXPECT_EQ(ErrorOf(PageFault::NoConnection),
            "10.0.0.5/pens.htm: no connection to the unit. Is it switched on and on this network?");
  EXPECT_EQ(ErrorOf(PageFault::Refused), "10.0.0.5/pens.htm: the unit does not give this page. Its answer was 404");
  std::set<std::string> texts;
  for (const PageFault fault : {PageFault::BadAddress, PageFault::NoConnection, PageFault::TimedOut,
                                PageFault::TooLarge, PageFault::RedirectRefused, PageFault::Refused})
    texts.insert(ErrorOf(fault));
  EXPECT_EQ(texts.size(), 6U);
}

}  // namespace
}  // namespace velk

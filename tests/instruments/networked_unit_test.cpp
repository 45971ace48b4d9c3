#include "instruments/link/networked_unit.h"

#include <gtest/gtest.h>

#include <set>

#include "support/fake_clock.h"

namespace velk {
namespace {

class OnePage : public PageFetch {
 public:
  std::optional<std::string> Fetch(const std::string& address) override {
    asked.push_back(address);
    if (fault) throw PageError(*fault, address, 404);
    return page;
  }
  void Cancel() override {}

  std::optional<std::string> page;
  std::optional<PageFault> fault;
  std::vector<std::string> asked;
};

class NetworkedUnit : public testing::Test {
 protected:
  NetworkedUnit() {
    session.daqIPAddress = "10.0.0.5";
    session.daqHTML = "pens.htm";
    session.NumberOfParameters = 1;
    session.Delimiter = ",";
    session.Terminator = "\r\n";
  }

  std::string ErrorOf(PageFault fault) {
    fetch.fault = fault;
    try {
      ReadTablePage(session, fetch);
    } catch (const RuntimeError& error) {
      return error.what();
    }
    return {};
  }

  Session session;
  Gate gate;
  test::FakeClock clock{gate};
  OnePage fetch;
};

TEST_F(NetworkedUnit, IsAskedForThePageOfTheSettings) {
  fetch.page = "";
  ReadTablePage(session, fetch);
  EXPECT_EQ(fetch.asked, (std::vector<std::string>{"10.0.0.5/pens.htm"}));
}

TEST_F(NetworkedUnit, GivesTheTablesOwnTimeBehindTheDelimiter) {
  fetch.page = "&nbsp;11:22:33<tr><td><td><td><td>7</td>";
  EXPECT_EQ(ReadTablePage(session, fetch), "11:22:33,7\r\n");
}

TEST_F(NetworkedUnit, GivesThePresentTimeAndBlanksForTheOtherPages) {
  session.SerialData = "HPT - Honeywell eZtrend";
  fetch.page = "1Var<td><b>7.50&nbsp;</b></td>";
  EXPECT_EQ(ReadValuesPage(session, fetch, clock), "09:30:00 7.50\r\n");
  session.SerialData = "ORBEN LUMO through HMI";
  fetch.page = "</tr><td>n</td><td><b>7.50&nbsp;</b></td></tr>";
  EXPECT_EQ(ReadValuesPage(session, fetch, clock), "09:30:00 7.5\r\n");
}

TEST_F(NetworkedUnit, GivesNothingWhileAnotherPageIsFetched) {
  EXPECT_EQ(ReadTablePage(session, fetch), std::nullopt);
  EXPECT_EQ(ReadValuesPage(session, fetch, clock), std::nullopt);
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

#include "platform/pages/page_fetch.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/loop/gate.h"
#include "platform/loop/system_clock.h"
#include "support/fake_clock.h"
#include "support/page_server.h"

namespace velk {
namespace {

/// What came of a fetch: the page, or the fault.
struct Outcome {
  std::optional<std::string> page;
  std::optional<PageFault> fault;
  int status = 0;
};

Outcome OutcomeOf(const FetchedPage& fetched) {
  if (fetched.error) return {{}, fetched.error->Fault(), fetched.error->Status()};
  return {fetched.text, {}};
}

class PageFetchTest : public testing::Test {
 protected:
  Outcome Fetch(const std::string& address) {
    Outcome outcome;
    bool begun = false;
    fetch->Begin(address, [&](const FetchedPage& fetched) {
      EXPECT_TRUE(begun) << "told from inside Begin";
      EXPECT_FALSE(fetch->IsUnderWay());
      outcome = OutcomeOf(fetched);
      if (!fetched.error) return;
      EXPECT_EQ(fetched.error->Address(), address);
      EXPECT_NE(std::string(fetched.error->what()).find(address), std::string::npos);
    });
    begun = true;
    while (fetch->IsUnderWay()) clock.WaitRound();
    return outcome;
  }
  std::optional<std::string> Fetched(const std::string& answer) {
    server.AnswerAll(answer);
    return Fetch(server.Address()).page;
  }

  Gate gate;
  SystemClock clock{gate};
  test::PageServer server;
  std::unique_ptr<PageFetch> fetch = MakePageFetch(clock);
};

using test::PageServer;

TEST_F(PageFetchTest, GivesTheBodyOfThePage) {
  EXPECT_EQ(Fetched(PageServer::Page("<html>1Var</html>")), "<html>1Var</html>");
  ASSERT_EQ(server.requests.size(), 1U);
  EXPECT_EQ(server.requests[0].substr(0, 19), "GET /pens.htm HTTP/");
}

TEST_F(PageFetchTest, TakesTheAddressWithAndWithoutItsScheme) {
  server.AnswerAll(PageServer::Page("x"));
  EXPECT_EQ(Fetch("http://" + server.Address()).page, "x");
  EXPECT_EQ(Fetch("HTTP://" + server.Address()).page, "x");
  EXPECT_EQ(Fetch(" " + server.Address() + " ").page, "x");
}

TEST_F(PageFetchTest, TakesAnAddressOfTheSixthVersionOfTheProtocol) {
  // Nobody is there, but it is an address.
  EXPECT_EQ(Fetch("[::1]:1/pens.htm").fault, PageFault::NoConnection);
  EXPECT_EQ(Fetch("http://[::1]:1/pens.htm").fault, PageFault::NoConnection);
  EXPECT_EQ(Fetch("[::1/pens.htm").fault, PageFault::BadAddress);
}

TEST_F(PageFetchTest, ShowsTheUnitTheUserOfTheAddressWhereItAsks) {
  server.answer = [](const std::string& request, QTcpSocket& socket) {
    const bool known = request.find("Authorization: Basic b3A6cHc=") != std::string::npos;  // op:pw
    const std::string bytes =
        known ? PageServer::Page("inside")
              : "HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"unit\"\r\nContent-Length: 0\r\n\r\n";
    socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
  };
  EXPECT_EQ(Fetch("op:pw@" + server.Address()).page, "inside");
  const Outcome refused = Fetch("http://op:wrong@" + server.Address());
  EXPECT_EQ(refused.fault, PageFault::Refused);
  EXPECT_EQ(refused.status, 401);
  EXPECT_LE(server.requests.size(), 6U);
}

TEST_F(PageFetchTest, BlocksNothingMeanwhile) {
  const std::unique_ptr<Timer> timer = clock.MakeTimer();
  QTcpSocket* waiting = nullptr;
  int ticks = 0;
  server.answer = [&](const std::string&, QTcpSocket& socket) { waiting = &socket; };
  // The page comes only because ticks do.
  timer->SetHandler([&] {
    if (waiting == nullptr || ++ticks != 5) return;
    const std::string bytes = PageServer::Page("late");
    waiting->write(bytes.data(), static_cast<qint64>(bytes.size()));
  });
  timer->SetInterval(1);
  timer->SetEnabled(true);
  EXPECT_EQ(Fetch(server.Address()).page, "late");
  EXPECT_GE(ticks, 5);
}

TEST_F(PageFetchTest, TakesAPageThatComesInChunks) {
  EXPECT_EQ(Fetched("HTTP/1.1 200 OK\r\ntransfer-ENCODING: chunked\r\n\r\n5\r\n12.5&\r\n5;x=1\r\nnbsp;\r\n0\r\n\r\n"),
            "12.5&nbsp;");
}

TEST_F(PageFetchTest, TakesAPageThatEndsWithTheConnection) {
  EXPECT_EQ(Fetched("HTTP/1.0 200 OK\r\n\r\n<tr>"), "<tr>");
}

TEST_F(PageFetchTest, TakesAPageThatDribbles) {
  server.answer = [](const std::string&, QTcpSocket& socket) {
    for (const char c : PageServer::Page("abc")) {
      socket.write(&c, 1);
      socket.flush();
    }
  };
  EXPECT_EQ(Fetch(server.Address()).page, "abc");
}

TEST_F(PageFetchTest, ReadsThePageInTheCharsetOfTheAnswer) {
  EXPECT_EQ(Fetched(PageServer::Page("\xC4\xE0", "Content-Type: text/html; charset=windows-1251\r\n")), "Да");
  EXPECT_EQ(Fetched(PageServer::Page("\xB0", "Content-Type: text/html; Charset=\"ISO-8859-1\"\r\n")), "°");
  EXPECT_EQ(Fetched(PageServer::Page("Да", "Content-Type: text/html; charset=utf-8\r\n")), "Да");
}

TEST_F(PageFetchTest, ReadsThePageInTheCharsetThatItNamesItself) {
  EXPECT_EQ(Fetched(PageServer::Page("<META charset=\"windows-1251\">\xC4\xE0")), "<META charset=\"windows-1251\">Да");
  EXPECT_EQ(Fetched(PageServer::Page("\xEF\xBB\xBFДа")), "Да");
}

TEST_F(PageFetchTest, ReadsAPageThatNamesNoCharsetAsUtf8OrLatin1) {
  EXPECT_EQ(Fetched(PageServer::Page("5 °C")), "5 °C");
  EXPECT_EQ(Fetched(PageServer::Page("5 \xB0"
                                     "C")),
            "5 °C");
  EXPECT_EQ(Fetched(PageServer::Page("5 °C", "Content-Type: text/html; charset=no-such\r\n")), "5 °C");
}

TEST_F(PageFetchTest, AsksForThePageUnpacked) {
  Fetched(PageServer::Page("x"));
  ASSERT_FALSE(server.requests.empty());
  EXPECT_NE(server.requests[0].find("Accept-Encoding: identity"), std::string::npos);
}

TEST_F(PageFetchTest, FollowsThreeRedirectsOnTheSameHost) {
  server.answer = [](const std::string& request, QTcpSocket& socket) {
    const char step = request[5];  // "GET /n"
    std::string bytes = PageServer::Page("there");
    if (step != '3')
      bytes = std::string("HTTP/1.1 302 Found\r\nLocation: /") + static_cast<char>(step + 1) +
              "\r\nContent-Length: 0\r\n\r\n";
    socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
  };
  EXPECT_EQ(Fetch(server.Address("/0")).page, "there");
  EXPECT_EQ(server.requests.size(), 4U);
  EXPECT_EQ(Fetch(server.Address("/" + std::string(1, '0' - 1))).fault, PageFault::RedirectRefused);
}

TEST_F(PageFetchTest, FollowsNoRedirectElsewhere) {
  for (const char* target :
       {"http://localhost/", "https://127.0.0.1/", "ftp://127.0.0.1/", "file:///etc/hostname", "//other/"}) {
    server.AnswerAll(std::string("HTTP/1.1 301 Moved\r\nLocation: ") + target + "\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(Fetch(server.Address()).fault, PageFault::RedirectRefused) << target;
  }
}

TEST_F(PageFetchTest, TellsTheUnitsOwnAnswer) {
  for (const auto& [line, status] : std::vector<std::pair<std::string, int>>{
           {"404 Not Found", 404}, {"500 Oops", 500}, {"401 Unauthorized", 401}, {"304 Not Modified", 304}}) {
    server.AnswerAll("HTTP/1.1 " + line + "\r\nContent-Length: 1\r\n\r\nx");
    const Outcome outcome = Fetch(server.Address());
    EXPECT_EQ(outcome.fault, PageFault::Refused) << line;
    EXPECT_EQ(outcome.status, status);
  }
}

TEST_F(PageFetchTest, TakesAPageOfOneMebibyteAndNoMore) {
  EXPECT_EQ(Fetched(PageServer::Page(std::string(1024 * 1024, 'x')))->size(), 1024U * 1024);
  server.AnswerAll(PageServer::Page(std::string(1024 * 1024 + 1, 'x')));
  EXPECT_EQ(Fetch(server.Address()).fault, PageFault::TooLarge);
}

TEST_F(PageFetchTest, LeavesAPageWithoutAnEnd) {
  server.answer = [](const std::string&, QTcpSocket& socket) {
    socket.write("HTTP/1.1 200 OK\r\n\r\n");
    const QByteArray block(256 * 1024, 'x');
    socket.write(block);
    QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [&socket, block] {
      if (socket.bytesToWrite() == 0) socket.write(block);
    });
  };
  EXPECT_EQ(Fetch(server.Address()).fault, PageFault::TooLarge);
}

/// A unit that serves one client at a time would serve nobody from then on.
TEST_F(PageFetchTest, LetsGoOfTheUnitWhosePageItGivesUp) {
  for (const bool endless : {true, false}) {
    bool gone = false;
    server.answer = [&](const std::string&, QTcpSocket& socket) {
      QObject::connect(&socket, &QTcpSocket::disconnected, &socket, [&gone] { gone = true; });
      if (!endless) return fetch->Cancel();
      socket.write("HTTP/1.1 200 OK\r\n\r\n" + QByteArray(8 * 1024 * 1024, 'x'));
    };
    EXPECT_EQ(Fetch(server.Address()).page, std::nullopt);
    for (int rounds = 0; !gone && rounds < 3000; ++rounds) clock.WaitRound();
    EXPECT_TRUE(gone) << (endless ? "endless" : "silent");
  }
}

TEST_F(PageFetchTest, TellsABrokenConnection) {
  for (const char* answer : {"", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n123", "no http at all\r\n\r\n"}) {
    server.AnswerAll(answer);
    EXPECT_EQ(Fetch(server.Address()).fault, PageFault::NoConnection) << answer;
  }
}

TEST_F(PageFetchTest, TellsThatNobodyIsThere) {
  std::string address;
  {
    const test::PageServer gone;
    address = gone.Address();
  }
  EXPECT_EQ(Fetch(address).fault, PageFault::NoConnection);
}

TEST_F(PageFetchTest, RefusesWhatIsNoHttpAddress) {
  for (const char* address :
       {"", "/pens.htm", "https://127.0.0.1/", "file:///etc/hostname", "http://", "a b/c", "1.2.3.4:x/"})
    EXPECT_EQ(Fetch(address).fault, PageFault::BadAddress) << address;
}

TEST_F(PageFetchTest, FetchesOnePageAtATimeAndTellsNothingOfTheOneThatALaterOneTookOver) {
  bool firstTold = false;
  std::optional<std::string> second;
  server.answer = [&](const std::string& request, QTcpSocket& socket) {
    if (request.find("/first") != std::string::npos)
      return fetch->Begin(server.Address("/second"), [&](const FetchedPage& page) { second = page.text; });
    const std::string bytes = PageServer::Page("second");
    socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
  };
  fetch->Begin(server.Address("/first"), [&](const FetchedPage&) { firstTold = true; });
  while (fetch->IsUnderWay()) clock.WaitRound();
  EXPECT_EQ(second, "second");
  EXPECT_FALSE(firstTold);
  EXPECT_EQ(server.requests.size(), 2U);
}

TEST_F(PageFetchTest, WhoIsToldMayBeginTheNextPageAtOnce) {
  server.AnswerAll(PageServer::Page("x"));
  int pages = 0;
  std::function<void(const FetchedPage&)> next = [&](const FetchedPage&) {
    if (++pages < 3) fetch->Begin(server.Address(), next);
  };
  fetch->Begin(server.Address(), next);
  while (fetch->IsUnderWay()) clock.WaitRound();
  EXPECT_EQ(pages, 3);
}

TEST_F(PageFetchTest, TellsNothingOnceItIsGone) {
  bool told = false;
  server.answer = [&](const std::string&, QTcpSocket&) { clock.Post([&] { fetch.reset(); }); };
  fetch->Begin(server.Address(), [&](const FetchedPage&) { told = true; });
  while (fetch) clock.WaitRound();
  clock.WaitMilliseconds(20);  // what the network still has to say
  EXPECT_FALSE(told);
}

TEST_F(PageFetchTest, TellsNothingOfAFetchThatWasCancelled) {
  server.answer = [&](const std::string&, QTcpSocket&) { fetch->Cancel(); };
  const Outcome cancelled = Fetch(server.Address());
  EXPECT_EQ(cancelled.page, std::nullopt);
  EXPECT_EQ(cancelled.fault, std::nullopt);
  EXPECT_EQ(Fetched(PageServer::Page("again")), "again");
}

/// Time that moves a millisecond a round, with the real network under it.
class PageFetchTime : public testing::Test {
 protected:
  PageFetchTime() {
    clock.onYield = [] { QCoreApplication::processEvents(); };
  }
  std::optional<PageFault> FaultOfFetch() {
    Outcome outcome;
    fetch->Begin(server.Address(), [&](const FetchedPage& fetched) { outcome = OutcomeOf(fetched); });
    while (fetch->IsUnderWay()) clock.WaitRound();
    return outcome.fault;
  }

  Gate gate;
  test::FakeClock clock{gate};
  test::PageServer server;
  std::unique_ptr<PageFetch> fetch = MakePageFetch(clock);
};

TEST_F(PageFetchTime, GivesUpBehindFiveSecondsInAll) {
  EXPECT_EQ(FaultOfFetch(), PageFault::TimedOut);
  EXPECT_EQ(clock.Ticks(), 5000);
}

TEST_F(PageFetchTime, CountsTheTimeOfAPageThatDribbles) {
  server.answer = [this](const std::string&, QTcpSocket& socket) {
    socket.write("HTTP/1.1 200 OK\r\n\r\n");
    clock.onYield = [&socket] {
      socket.write("x");
      socket.flush();
      QCoreApplication::processEvents();
    };
  };
  EXPECT_EQ(FaultOfFetch(), PageFault::TimedOut);
  EXPECT_EQ(clock.Ticks(), 5000);
}

TEST_F(PageFetchTime, CountsTheTimeOfTheRedirectsToo) {
  std::int64_t redirected = 0;
  server.answer = [&](const std::string& request, QTcpSocket& socket) {
    if (request.find("/there") != std::string::npos) return;
    clock.Advance(3000);
    redirected = clock.Ticks();
    socket.write("HTTP/1.1 302 Found\r\nLocation: /there\r\nContent-Length: 0\r\n\r\n");
  };
  EXPECT_EQ(FaultOfFetch(), PageFault::TimedOut);
  // On a busy machine rounds may have gone ahead of the first answer.
  EXPECT_EQ(clock.Ticks(), std::max<std::int64_t>(5000, redirected));
}

}  // namespace
}  // namespace velk

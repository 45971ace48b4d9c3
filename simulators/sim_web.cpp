// velk_sim_web: a networked unit on loopback that serves its values as a page. It prints its address, and writes pages
// as such units do: bytes ahead of the page, odd capitals, entities, bodies in chunks.

#include <cstdio>

#include "command_line.h"
#include "journal.h"
#include "line.h"
#include "samples.h"
#include "stream.h"
#include "web_pages.h"
#include "web_server.h"

namespace {

constexpr const char* kHelp =
    R"(velk_sim_web: a networked unit on loopback that serves its values as a page.

  --page named|table|panel  cells named 1Var ..., one table with its own time, or the operator panel's page
  --channels N           values on the page (default 8)
  --port N               port on 127.0.0.1 (default any that is free)
  --journal FILE         writes each page that was sent: time, "sound", "damaged" or "cut", text
  --clock hh:mm:ss       start of the unit's clock (default the wall clock)
  --interval S           seconds that values and clock move with each page (default 0.5)
  --seed N               seed of the values (default 1)
  --pages N              ends after N pages
  --chunked              sends bodies in chunks
  --header-bytes         puts bytes that belong to no text ahead of the page
  --capitals             writes the tags of the values in capitals
  --fault NAME           silence, dribble, oversized, endless, redirect (once, to the page), redirect-loop,
                         redirect-elsewhere, no-cells, wrong-count (a row is missing), noise (ten bytes are
                         changed, lost or added), cut, or error (an answer of 500)
  --fault-every N        the fault comes with every N-th page only (default with each)

The first line printed is the address, "127.0.0.1:port". Ends on SIGTERM and SIGINT, and with the program that started
it.
)";

constexpr const char* kFaults[] = {"silence",  "dribble",       "oversized",          "endless",
                                   "redirect", "redirect-loop", "redirect-elsewhere", "no-cells",
                                   "cut",      "error",         "wrong-count",        "noise"};

struct Options {
  std::string page = "named", journal, clock, fault;
  int channels = 8, port = 0;
  double interval = 0.5;
  long seed = 1, pages = 0, faultEvery = 1;
  bool chunked = false;
  sim::PageStyle style;
};

Options ReadOptions(int argc, char** argv) {
  Options options;
  sim::CommandLine commandLine("velk_sim_web", kHelp);
  commandLine.Take("--page", [&](std::string_view kind) {
    options.page = kind;
    return sim::IsPageKind(kind);
  });
  commandLine.Take("--fault", [&](std::string_view fault) {
    options.fault = fault;
    for (const char* known : kFaults)
      if (fault == known) return true;
    return false;
  });
  commandLine.Text("--journal", options.journal);
  commandLine.Text("--clock", options.clock);
  commandLine.Number("--channels", options.channels);
  commandLine.Number("--port", options.port);
  commandLine.Number("--interval", options.interval);
  commandLine.Number("--seed", options.seed);
  commandLine.Number("--pages", options.pages);
  commandLine.Number("--fault-every", options.faultEvery);
  commandLine.Flag("--chunked", options.chunked);
  commandLine.Flag("--header-bytes", options.style.headerBytes);
  commandLine.Flag("--capitals", options.style.oddCapitals);
  commandLine.Read(argc, argv);
  return options;
}

std::string Chunked(const std::string& body) {
  std::string chunks;
  for (std::size_t at = 0; at < body.size(); at += 100) {
    const std::string part = body.substr(at, 100);
    char size[16];
    std::snprintf(size, sizeof size, "%zx\r\n", part.size());
    chunks += size + part + "\r\n";
  }
  return chunks + "0\r\n\r\n";
}

std::string Answer(const std::string& body, bool chunked) {
  const std::string head = "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nConnection: close\r\n";
  if (chunked) return head + "Transfer-Encoding: chunked\r\n\r\n" + Chunked(body);
  return head + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string Redirect(const std::string& target) {
  return "HTTP/1.1 302 Found\r\nLocation: " + target + "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
}

class Unit {
 public:
  explicit Unit(const Options& options)
      : options_(options),
        samples_(options.clock, static_cast<std::uint64_t>(options.seed)),
        journal_(options.journal),
        server_(options.port) {
    std::printf("127.0.0.1:%d\n", server_.Port());
    std::fflush(stdout);
  }

  void Run() {
    for (std::string path = server_.NextRequest(); !path.empty(); path = server_.NextRequest()) {
      // The end of a redirect is the page that was asked for before.
      const bool faulty = options_.faultEvery > 0 && (count_ + 1) % options_.faultEvery == 0 && path != "/moved";
      if (faulty && options_.fault.starts_with("redirect")) {
        SendRedirect();
        continue;
      }
      ++count_;
      sim::PageStyle style = options_.style;
      style.cells = !(faulty && options_.fault == "no-cells");
      const int missing = faulty && options_.fault == "wrong-count" ? 1 : 0;
      std::string page = sim::PageOf(options_.page, samples_, options_.channels - missing, style);
      for (int i = 0; i < 10 && faulty && options_.fault == "noise"; ++i) sim::AddNoise(page, samples_);
      samples_.Advance(options_.interval);
      if (faulty && !options_.fault.empty())
        SendFaulty(page);
      else
        journal_.Write(server_.Send(Answer(page, options_.chunked)) ? "sound" : "cut", page);
      if (options_.pages > 0 && count_ >= options_.pages) return;
    }
  }

 private:
  void SendRedirect() {
    const std::string target = options_.fault == "redirect"        ? "/moved"
                               : options_.fault == "redirect-loop" ? "/round"
                                                                   : "http://elsewhere.invalid/pens.htm";
    if (options_.fault != "redirect") ++count_;
    server_.Send(Redirect(target));
    journal_.Write("damaged", target);
  }

  void SendFaulty(const std::string& page) {
    const std::string& fault = options_.fault;
    const bool sendsAll = fault == "no-cells" || fault == "wrong-count" || fault == "noise";
    const std::string sent = sendsAll || fault == "dribble" ? page : "";
    const std::string whole = Answer(page, options_.chunked);
    if (fault == "silence") WaitUntilClientGoes();
    if (sendsAll) server_.Send(whole);
    if (fault == "cut") server_.Send(whole.substr(0, whole.size() / 2));
    if (fault == "error") server_.Send("HTTP/1.1 500 Internal Error\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
    if (fault == "dribble") Dribble(whole);
    if (fault == "oversized") server_.Send(Answer(page + std::string(2 * 1024 * 1024, ' '), options_.chunked));
    if (fault == "endless") {
      server_.Send("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n" + page);
      while (server_.Send(std::string(64 * 1024, ' '))) {
      }
    }
    journal_.Write("damaged", sent);
  }

  void WaitUntilClientGoes() {
    while (server_.ClientWaits() && sim::RestUntil(sim::Seconds() + 0.02)) {
    }
  }

  void Dribble(const std::string& bytes) {
    for (const char byte : bytes)
      if (!sim::RestUntil(sim::Seconds() + 0.02) || !server_.Send(std::string(1, byte))) return;
  }

  const Options& options_;
  sim::Samples samples_;
  sim::Journal journal_;
  sim::WebServer server_;
  long count_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const Options options = ReadOptions(argc, argv);
  sim::CatchSignals();
  Unit(options).Run();
  return 0;
}

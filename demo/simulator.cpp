#include "demo/simulator.h"

#include <QCoreApplication>

#include "base/errors.h"
#include "base/text_qt.h"

namespace velk::demo {

namespace {

constexpr int kStartMs = 10'000;

}  // namespace

std::string Simulator::Start(const QStringList& options) {
  // By a link: a unit that was away comes back under another number when somebody else has taken its own.
  const QString link = folder_.filePath(QStringLiteral("unit"));
  const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/../simulators/velk_sim_unit");
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(program, options + QStringList{"--link", link});
  QByteArray device;
  while (!device.endsWith('\n') && process_.waitForReadyRead(kStartMs)) device += process_.readLine();
  if (!device.endsWith('\n'))
    throw RuntimeError(ErrorNumber::DeviceUnavailable, "The simulated unit did not start: " + FromQt(program));
  return FromQt(link);
}

Simulator::~Simulator() {
  process_.terminate();
  if (!process_.waitForFinished(2000)) process_.kill();
  process_.waitForFinished(2000);
}

}  // namespace velk::demo

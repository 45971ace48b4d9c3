#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <string>

namespace velk::demo {

/// The simulated unit, a program of its own that ends with this one.
class Simulator {
 public:
  /// Starts it and gives the device it stands behind; raises DeviceUnavailable when it does not come up.
  std::string Start(const QStringList& options);
  ~Simulator();

 private:
  QTemporaryDir folder_;
  QProcess process_;
};

}  // namespace velk::demo

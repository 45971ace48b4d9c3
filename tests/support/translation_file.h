#pragma once

#include <string>

#include "platform/database/connection.h"
#include "support/temporary_folder.h"

namespace velk::test {

/// Makes a database file out of statements, for tests that load one.
inline std::string MakeDatabase(const TemporaryFolder& folder, const std::string& name, const std::string& sql) {
  const std::string path = folder.File(name);
  Connection::Open(path, OpenMode::CreateNew)->Execute(sql);
  return path;
}

}  // namespace velk::test

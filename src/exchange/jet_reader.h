#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/database/command.h"
#include "platform/programs/child_program.h"

namespace velk {

/// A column of a foreign table. The types are numbered as the format numbers them.
struct JetColumn {
  std::string name;
  int type = 0;
};

struct JetTable {
  std::string name;
  std::vector<JetColumn> columns;
};

/// What reads such files: a program of its own, since they come from strangers and the library that knows them trusts
/// their every byte.
struct JetTools {
  std::string program;             ///< velk_jet_reader
  std::string charset = "CP1252";  ///< of texts in files of version 3
};

/// One answer of that program, from the front to the end. What it says is looked at as any bytes from outside are. Each
/// call raises NotADatabase, with the file, where it says what it may not, ends too early or is silent for too long.
///
/// NextTable and NextRow wait for what they give. Who can't wait calls TakeTable and TakeRow, which give what has come.
class JetReader {
 public:
  /// `step` is called now and then while the program works, with the bytes that have come; it may throw.
  JetReader(const JetTools& tools, const std::string& work, const std::string& path,
            const std::vector<std::string>& arguments, std::function<void(double bytes)> step);

  /// The next table's name and columns; false at the end.
  bool NextTable(JetTable& table);
  /// The next row of the table that came last; false at the end.
  bool NextRow(std::vector<FieldValue>& cells);

  enum class Came { Nothing, One, End };
  Came TakeTable(JetTable& table);
  Came TakeRow(std::vector<FieldValue>& cells);
  /// The earliest day behind the one that was asked for of which there are rows; nothing where there is none. Good
  /// behind the end of rows that were asked for by their time.
  const std::optional<double>& LaterDay() const { return laterDay_; }
  /// How many rows the table should have beyond those that could be read. Good behind the end of all rows.
  std::int64_t Lost() const { return lost_; }

 private:
  struct NotYet {};
  template <class Item>
  Came Take(Item&& item);
  void Begin();
  char Mark();
  void Need(std::size_t bytes);
  void Read(int milliseconds);
  template <class Value>
  Value Number();
  std::string Text();
  FieldValue Cell();
  void End();
  [[noreturn]] void Fail() const;

  const std::string path_;
  const std::function<void(double bytes)> step_;
  ChildProgram program_;
  std::string buffer_;
  std::size_t begin_ = 0;  ///< of what was not taken yet
  double bytes_ = 0;
  std::size_t columns_ = 0;
  bool begun_ = false;  ///< the mark in front has come
  bool waits_ = true;
  std::chrono::steady_clock::time_point heard_ = std::chrono::steady_clock::now();
  std::optional<double> laterDay_;
  std::int64_t lost_ = 0;
};

}  // namespace velk

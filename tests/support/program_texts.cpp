#include "support/program_texts.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <stdexcept>

namespace velk::test {

namespace {

namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The characters of adjacent literals: `"a\\b" "c"`.
std::string TextOfLiterals(const std::string& literals) {
  static const std::regex literal("\"((?:[^\"\\\\]|\\\\.)*)\"");
  std::string text;
  for (std::sregex_iterator found(literals.begin(), literals.end(), literal), end; found != end; ++found)
    text += (*found)[1];
  return std::regex_replace(text, std::regex("\\\\([\"\\\\])"), "$1");
}

std::vector<ProgramText> RowsOf(const fs::path& header) {
  static const std::regex row(R"(inline constexpr MessageText (\w+)\{\s*(\d+),\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\};)");
  const std::string source = ReadFile(header);
  std::vector<ProgramText> texts;
  for (std::sregex_iterator found(source.begin(), source.end(), row), end; found != end; ++found)
    texts.push_back(
        {header.parent_path().filename(), (*found)[1], std::stoi((*found)[2]), TextOfLiterals((*found)[3])});
  static const std::regex begin("MessageText \\w+\\{");
  const auto rows = std::distance(std::sregex_iterator(source.begin(), source.end(), begin), std::sregex_iterator());
  if (rows != static_cast<std::ptrdiff_t>(texts.size()))
    throw std::runtime_error(header.string() + ": a row that can't be read");
  return texts;
}

}  // namespace

const std::vector<ProgramText>& ProgramTexts() {
  static const auto texts = [] {
    std::vector<ProgramText> all;
    for (const auto& folder : fs::directory_iterator(fs::path(VELK_SOURCE_DIR) / "src"))
      if (fs::exists(folder.path() / "texts.h"))
        for (ProgramText& text : RowsOf(folder.path() / "texts.h")) all.push_back(std::move(text));
    return all;
  }();
  return texts;
}

}  // namespace velk::test

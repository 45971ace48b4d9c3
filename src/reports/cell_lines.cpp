#include "reports/cell_lines.h"

#include <algorithm>
#include <sstream>

#include "base/text.h"

namespace velk {

namespace {

/// A field of a foreign log may hold any length of text; a sheet has room for fewer letters.
constexpr std::size_t kMostBytes = 20'000;
constexpr const char* kEllipsis = "\u2026";

/// A word in pieces that fit, each of a letter at least.
std::vector<std::string> Pieces(const Surface& page, const std::string& word, double room) {
  std::vector<std::string> pieces;
  std::string rest = word;
  while (!rest.empty()) {
    std::size_t letters = CharacterCount(rest);
    if (page.TextWidth(rest) > room) {
      std::size_t fits = 1;
      while (fits + 1 < letters && page.TextWidth(Left(rest, fits + 1)) <= room) ++fits;
      letters = fits;
    }
    pieces.push_back(Left(rest, letters));
    rest.erase(0, pieces.back().size());
  }
  return pieces;
}

}  // namespace

std::vector<std::string> WordsOf(const std::string& text) {
  std::istringstream rest(text);
  std::vector<std::string> words;
  for (std::string word; rest >> word;) words.push_back(word);
  return words;
}

std::vector<std::string> Wrapped(const Surface& page, const std::vector<std::string>& words, double room) {
  std::vector<std::string> lines;
  for (const std::string& word : words) {
    const std::string longer = lines.empty() ? word : lines.back() + " " + word;
    if (!lines.empty() && page.TextWidth(longer) <= room)
      lines.back() = longer;
    else
      lines.push_back(word);
  }
  return lines;
}

std::vector<std::string> CellLines(const Surface& page, const std::string& cell, double room, std::size_t most) {
  const std::string text = ReplaceAll(cell.substr(0, kMostBytes), "\t", " ");
  std::vector<std::string> lines;
  std::istringstream paragraphs(text);
  for (std::string paragraph; std::getline(paragraphs, paragraph) && lines.size() <= most;) {
    if (paragraph.ends_with('\r')) paragraph.pop_back();
    if (page.TextWidth(paragraph) <= room) {
      lines.push_back(paragraph);
      continue;
    }
    std::vector<std::string> words;
    for (const std::string& word : WordsOf(paragraph))
      for (const std::string& piece : Pieces(page, word, room)) words.push_back(piece);
    for (std::string& line : Wrapped(page, words, room)) lines.push_back(std::move(line));
  }
  if (lines.size() > most) {
    lines.resize(std::max<std::size_t>(1, most));
    std::string& last = lines.back();
    while (!last.empty() && page.TextWidth(last + kEllipsis) > room) last = Left(last, CharacterCount(last) - 1);
    last += kEllipsis;
  }
  return lines;
}

}  // namespace velk

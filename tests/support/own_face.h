#pragma once

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QRawFont>
#include <QtEndian>
#include <stdexcept>
#include <utility>
#include <vector>

namespace velk::test {

/// The face of the application's font under a name of its own, to be changed before it is installed. It has no kerning.
class OwnFace {
 public:
  /// `name` has 6 letters.
  explicit OwnFace(const QByteArray& name) : raw_(QRawFont::fromFont(QApplication::font())) {
    for (const char* tag :
         {"OS/2", "cmap", "cvt ", "fpgm", "glyf", "head", "hhea", "hmtx", "loca", "maxp", "name", "post", "prep"})
      tables_.emplace_back(tag, raw_.fontTable(tag));
    Table("name").replace("DejaVu", name).replace(Wide("DejaVu"), Wide(name));
  }

  /// A letter takes that share of its width.
  void Narrow(QChar letter, double share) {
    char* const advance = Table("hmtx").data() + 4 * Glyph(letter);
    qToBigEndian(static_cast<quint16>(share * qFromBigEndian<quint16>(advance)), advance);
  }

  /// Two letters in line stand closer, by that share of a square as high as the face.
  void Kern(QChar left, QChar right, double share) {
    const int units = static_cast<int>(share * qFromBigEndian<quint16>(Table("head").constData() + 18));
    const std::vector<int> kern = {0, 1, 0, 20, 1, 1, 6, 0, 0, Glyph(left), Glyph(right), -units};
    tables_.emplace_back("kern", Words(kern));
  }

  QFont Install(int points) const {
    const QStringList families =
        QFontDatabase::applicationFontFamilies(QFontDatabase::addApplicationFontFromData(File()));
    if (families.isEmpty()) throw std::runtime_error("no face");
    return QFont(families.front(), points);
  }

 private:
  static QByteArray Words(const std::vector<int>& words) {
    QByteArray bytes;
    for (const int word : words) bytes.append(static_cast<char>(word >> 8)).append(static_cast<char>(word));
    return bytes;
  }
  static QByteArray Wide(const QByteArray& text) { return Words(std::vector<int>(text.begin(), text.end())); }
  static void AppendLong(QByteArray& bytes, qsizetype value) {
    bytes += Words({static_cast<int>(value >> 16), static_cast<int>(value & 0xFFFF)});
  }

  int Glyph(QChar letter) const { return static_cast<int>(raw_.glyphIndexesForString(letter).front()); }

  QByteArray& Table(const char* tag) {
    for (auto& [name, bytes] : tables_)
      if (name == tag) return bytes;
    throw std::invalid_argument(tag);
  }

  QByteArray File() const {
    QByteArray file = Words({1, 0, static_cast<int>(tables_.size()), 0, 0, 0}), contents;
    const qsizetype begin = file.size() + 16 * static_cast<qsizetype>(tables_.size());
    for (const auto& [name, bytes] : tables_) {
      file += name;
      AppendLong(file, 0);  // checked by nobody
      AppendLong(file, begin + contents.size());
      AppendLong(file, bytes.size());
      contents += bytes + QByteArray((4 - bytes.size() % 4) % 4, 0);
    }
    return file + contents;
  }

  QRawFont raw_;
  std::vector<std::pair<QByteArray, QByteArray>> tables_;
};

}  // namespace velk::test

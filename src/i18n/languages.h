#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "i18n/language_message.h"

namespace velk {

/// The captions and tool tips of the windows in the language that is loaded; TranslateForm (i18n/windows) applies them.
/// A copy shares the table.
class clsLanguages {
 public:
  /// Takes over the table `Languages` of a translation database, from its column named as the language. False, and
  /// empty, where the file, the table or the column is missing or can't be read; no error is raised. Of two rows under
  /// one key the first counts.
  bool Load(const std::string& databasePath, const std::string& language);

  bool IsEmpty() const { return !captions_ || captions_->empty(); }

  /// The language that the windows are shown in: what was loaded, "English" where there is nothing. It stays, whatever
  /// is chosen for the next start.
  std::string Language() const { return IsEmpty() ? "English" : language_; }

  /// The record of a key, FormName + "_" + ControllName; null where there is none.
  const cLanguagMesg* Find(const std::string& key) const;

  /// The text to show under a key; nothing where the one of the design stays.
  std::optional<std::string> Caption(const std::string& key) const;

 private:
  using Captions = std::unordered_map<std::string, cLanguagMesg>;

  std::shared_ptr<const Captions> captions_;
  std::string language_;
};

}  // namespace velk

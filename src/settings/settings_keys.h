#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "base/operator_text.h"
#include "model/session.h"
#include "model/settings_names.h"

namespace velk {

/// Twips. A graph window has at most 16000 rows of 15 twips; what is below them would not be drawn.
inline constexpr double kMaxGraphHeight = 16000.0 * 15;

/// Whether settings templates hold a key, too.
enum class Held { InTemplates, LiveOnly };

/// What a stored number may be, and what two special texts stand for. A number outside is refused on reading.
struct NumberRule {
  double lowest = std::numeric_limits<double>::lowest();
  double highest = std::numeric_limits<double>::max();
  bool zeroIsPreset = false;     ///< a stored 0 reads as the preset
  bool emptyIsZero = false;      ///< a stored empty text reads as 0
  bool beyondIsHighest = false;  ///< a higher number is told and reads as the highest, not as the preset
  Held held = Held::InTemplates;
};

/// One walk over the keys, in their order, with the field that each fills. Reading and writing are two visitors.
class KeyVisitor {
 public:
  virtual ~KeyVisitor() = default;

  /// The keys that follow stand in this section.
  virtual void Section(std::string_view name) = 0;

  /// The preset of a text is what it is in the language in which it is first read.
  virtual void Key(std::string_view key, std::string& field, const OperatorText& preset,
                   Held held = Held::InTemplates) = 0;
  virtual void Key(std::string_view key, bool& field, bool preset, Held held = Held::InTemplates) = 0;
  virtual void Key(std::string_view key, std::int16_t& field, int preset, const NumberRule& rule = {}) = 0;
  virtual void Key(std::string_view key, std::int32_t& field, std::int32_t preset, const NumberRule& rule = {}) = 0;
  virtual void Key(std::string_view key, float& field, float preset) = 0;
  virtual void Key(std::string_view key, double& field, double preset, const NumberRule& rule = {}) = 0;

  /// A key that is written and never read; no template holds it.
  virtual void Constant(std::string_view key, int value) = 0;
};

void VisitGeneral(KeyVisitor& visit, StoredSettings& session);
void VisitPrintGraph(KeyVisitor& visit, StoredSettings& session);
void VisitProtocol(KeyVisitor& visit, StoredSettings& session);
/// NumberOfParameters. Whoever changes the channels of the unit writes it; the save at exit does not.
void VisitParameterCount(KeyVisitor& visit, StoredSettings& session);
/// Section Parameter1, Parameter2, ...
void VisitParameter(KeyVisitor& visit, StoredSettings& session, int i);
void VisitPlayback(KeyVisitor& visit, StoredSettings& session);
/// Section PlaybackParameter1, ...
void VisitPlaybackParameter(KeyVisitor& visit, StoredSettings& session, int i);
/// NumberOfFormulae: as many as there is room for beside the input channels.
void VisitFormulae(KeyVisitor& visit, StoredSettings& session);
/// Section Formula1, ...; AdditionalParameters and Formula hold the entry.
void VisitFormula(KeyVisitor& visit, StoredSettings& session, int i);
/// The names of the settings templates: sets the length of TemplateNames by what is stored, or stores it.
void VisitTemplateList(KeyVisitor& visit, Session& session);

}  // namespace velk

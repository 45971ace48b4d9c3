#include "settings/templates.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "base/errors.h"
#include "base/scope.h"
#include "instruments/setup/hardware_choices.h"
#include "instruments/table/protocols.h"
#include "model/status.h"
#include "model/texts.h"
#include "settings/settings_io.h"
#include "settings/settings_visitors.h"
#include "settings/texts.h"

namespace velk {

namespace {

/// Templates in the field hold Wrapping of an additional parameter under Offset, behind the true offset, and no
/// Wrapping. Their readers refuse that text as an offset; files have to stay alike.
class TemplateWriter : public SettingsWriter {
 public:
  TemplateWriter(SettingsStore& store, std::string_view application)
      : SettingsWriter(store, application, Keys::OfTemplates) {}

  using SettingsWriter::Key;

  void Section(std::string_view name) override {
    inFormula_ = name.starts_with("Formula") && name != "Formulae";
    SettingsWriter::Section(name);
  }

  void Key(std::string_view key, bool& field, bool preset, Held held) override {
    SettingsWriter::Key(inFormula_ && key == "Wrapping" ? "Offset" : key, field, preset, held);
  }

 private:
  bool inFormula_ = false;
};

auto FindTemplate(const Session& session, std::string_view name) {
  const auto& names = session.TemplateNames;
  return names.empty() ? names.end() : std::find(names.begin() + 1, names.end(), name);
}

std::optional<std::string> NameInStore(SettingsStore& store, std::size_t number) {
  return store.Find(kTemplateList, "General", "TheTemplateName" + std::to_string(number));
}

/// What comes with the program.
struct ReadyMade {
  MessageText name;
  std::string_view serialData;
  const char* delimiter;
  const char* terminator;
};

constexpr ReadyMade kReadyMade[] = {
    {text::TemplateBlankCr, protocol::Formatted, " ", "\r"},
    {text::TemplateCommaCrLf, protocol::Formatted, ",", "\r\n"},
    // Ends lines of LF and of CR LF alike.
    {text::TemplateAnyLines, protocol::AnySerialData, " ", "\n"},
};
constexpr std::int16_t kReadyMadeChannels = 4;

bool JobStands(const Session& session) {
  return StatusIs(session, text::StatusReadyToAcquire) || StatusIs(session, text::StatusAcquiringData) ||
         StatusIs(session, text::StatusAcquiringPaused);
}

}  // namespace

void LoadTemplate(Session& session, SettingsStore& store, const Language& language, const std::string& name) {
  const std::string application = TemplateApplication(name);
  store.RequireWhole(application);
  const StoredSettings& present = session;
  StoredSettings loaded = present;
  SettingsReader reader(language, store, application, Keys::OfTemplates);
  ReadSettings(reader, loaded);
  if (!reader.problems.empty()) {
    const RuntimeError& first = reader.problems.front();
    throw RuntimeError(first.Number(), first.Text());
  }
  SetProtocolConstants(loaded);
  static_cast<StoredSettings&>(session) = std::move(loaded);
}

void SaveTemplate(Session& session, SettingsStore& store, const std::string& name) {
  const std::string application = TemplateApplication(name);
  if (!SettingsStore::CanHold(application)) {
    throw RuntimeError(ErrorNumber::BadFileName, text::TemplateNameTooLong);
  }
  // One that was written is asked for by nobody but who loads it, from the file; one that was not would be written by a
  // later save, and stand in no list.
  const OnLeaving forget([&] { store.Forget(application); });
  TemplateWriter writer(store, application);
  WriteSettings(writer, session);
  VisitParameterCount(writer, session);
  store.Flush();
}

void AddReadyMadeTemplates(Session& session, SettingsStore& store, const Language& language) {
  if (session.TemplateNames.size() > 1 || store.Find(kTemplateList, "General", "NumberOfTemplates")) return;
  for (const ReadyMade& made : kReadyMade) {
    const std::string name = language.In(made.name);
    const auto fresh = std::make_unique<Session>();
    SettingsReader presets(language, store, TemplateApplication(name), Keys::OfTemplates);
    ReadSettings(presets, *fresh);
    fresh->SerialData = made.serialData;
    fresh->Delimiter = made.delimiter;
    fresh->Terminator = made.terminator;
    fresh->NumberOfParameters = kReadyMadeChannels;
    FillUnnamedParameters(fresh->Parameters, kReadyMadeChannels, language);
    SaveTemplate(*fresh, store, name);
    session.TemplateNames.push_back(name);
  }
  SaveTemplateList(session, store);
}

OperatorText LoadTemplateQuestion(const Session& session) {
  OperatorText question = text::LoadingReplaces;
  const auto line = [&](const MessageText& what, const OperatorText& present) {
    question += "\n    " + (what + present);
  };
  line(text::ReplacedProtocol, ProtocolOf(session).caption);
  line(text::ReplacedChannels, std::to_string(session.NumberOfParameters));
  line(text::ReplacedFormulae, std::to_string(session.NumberOfFormulae));
  return question + "\n" + text::LoadItNow;
}

std::vector<OperatorText> DeleteTemplate(Session& session, SettingsStore& store, const Language& language,
                                         const std::string& name) {
  store.Delete(TemplateApplication(name));
  const auto found = FindTemplate(session, name);
  if (found != session.TemplateNames.end()) session.TemplateNames.erase(found);
  store.Delete(kTemplateList, "General");
  SaveTemplateList(session, store);
  // Other channels or another protocol under a job that stands would put its rows into the wrong columns.
  if (JobStands(session)) return {};
  std::vector<OperatorText> problems = LoadSettings(session, store, language);
  SetProtocolConstants(session);
  return problems;
}

bool HasTemplate(const Session& session, std::string_view name) {
  return FindTemplate(session, name) != session.TemplateNames.end();
}

std::vector<OperatorText> LoadTemplateList(Session& session, SettingsStore& store, const Language& language) {
  SettingsReader reader(language, store, kTemplateList);
  VisitTemplateList(reader, session);
  if (!reader.problems.empty() || !store.Find(kTemplateList, "General", "NumberOfTemplates")) {
    // Without the count the names themselves tell how many there are: no template drops out of the list.
    while (const auto name = NameInStore(store, session.TemplateNames.size())) session.TemplateNames.push_back(*name);
  }
  std::vector<OperatorText> problems;
  for (const RuntimeError& problem : reader.problems) problems.push_back(problem.Text());
  return problems;
}

void SaveTemplateList(Session& session, SettingsStore& store) {
  SettingsWriter writer(store, kTemplateList);
  VisitTemplateList(writer, session);
  store.Flush();
}

}  // namespace velk

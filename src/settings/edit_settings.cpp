#include "settings/edit_settings.h"

#include "instruments/table/protocols.h"
#include "platform/dialogs/procedure.h"
#include "platform/settings/settings.h"
#include "settings/clear_sections.h"
#include "settings/settings_io.h"
#include "settings/settings_keys.h"
#include "settings/templates.h"
#include "settings/texts.h"
#include "settings/user_options.h"

namespace velk {

namespace {

std::string ChooseTemplate(const EditSettings& edit, const MessageText& title, const MessageText& prompt,
                           bool mayEnter) {
  const Session& session = edit.session;
  const std::vector<std::string> names(session.TemplateNames.begin() + 1, session.TemplateNames.end());
  return edit.questions.Choose({title, prompt, names, mayEnter, topic::Templates});
}

/// What could not be read when the settings were loaded again.
void ShowProblems(const EditSettings& edit, const std::vector<OperatorText>& problems) {
  const OperatorText text = ProblemText(problems);
  if (!text.IsEmpty()) edit.platform.dialogs.Message({text, "", Buttons::Ok, BoxIcon::Exclamation});
}

bool NamesOwnUnit(const Session& session) {
  return ProtocolOf(session).unit.has_value();
}

/// Shows that the program ends, and ends it.
void End(const EditSettings& edit) {
  edit.platform.dialogs.Message({text::MustEnd, "", Buttons::Ok, BoxIcon::Information});
  edit.saveAndEnd();
}

/// Takes the options over where they can be; tells what is wrong otherwise.
bool AcceptUserOptions(const EditSettings& edit, const UserOptionTexts& texts) {
  const std::variant<UserOptions, MessageText> checked = CheckUserOptions(texts);
  if (const MessageText* const fault = std::get_if<MessageText>(&checked)) {
    edit.platform.dialogs.Message({*fault, "", Buttons::Ok, BoxIcon::Critical});
    return false;
  }
  const auto& options = std::get<UserOptions>(checked);
  edit.session.pixelslength = options.pixelslength;
  edit.session.pixeldivide = options.pixeldivide;
  edit.session.MaximumTime = options.MaximumTime;
  edit.session.intFontSize = options.intFontSize;
  return true;
}

}  // namespace

void mnuEditSaveTemplate_Click(const EditSettings& edit) {
  RunProcedure({edit.platform.dialogs, "mnuEditSaveTemplate_Click"}, [&](const Statements& run) {
    Session& session = edit.session;
    const std::string name = ChooseTemplate(edit, text::SaveTemplateTitle, text::SaveTemplatePrompt, true);
    if (name.empty()) return;
    run([&] { SaveTemplate(session, edit.platform.settings, name); });
    if (!HasTemplate(session, name)) session.TemplateNames.push_back(name);
    run([&] { SaveSettings(session, edit.platform.settings); });
  });
}

void mnuEditLoadTemplate_Click(const EditSettings& edit) {
  RunProcedure({edit.platform.dialogs, "mnuEditLoadTemplate_Click"}, [&](const Statements& run) {
    const std::string name = ChooseTemplate(edit, text::LoadTemplateTitle, text::LoadTemplatePrompt, false);
    if (name.empty()) return;
    run([&] { LoadTemplate(edit.session, edit.platform.settings, edit.platform.language, name); });
    if (NamesOwnUnit(edit.session)) edit.resetConnection();
  });
}

void mnuEditDeleteTemplate_Click(const EditSettings& edit) {
  RunProcedure({edit.platform.dialogs, "mnuEditDeleteTemplate_Click"}, [&](const Statements& run) {
    const std::string name = ChooseTemplate(edit, text::DeleteTemplateTitle, text::DeleteTemplatePrompt, false);
    if (name.empty()) return;
    ShowProblems(
        edit, run([&] { return DeleteTemplate(edit.session, edit.platform.settings, edit.platform.language, name); }));
  });
}

void mnuEditClear_Click(const EditSettings& edit) {
  RunProcedure({edit.platform.dialogs, "mnuEditClear_Click"}, [&](const Statements& run) {
    const std::optional<GroupChoice> groups = edit.questions.GroupsToClear();
    if (!groups) return;
    ShowProblems(edit, run([&] {
                   return ClearSections(edit.session, edit.platform.settings, edit.platform.language, *groups);
                 }));
  });
}

void mnuEditUserOptions_Click(const EditSettings& edit) {
  RunProcedure({edit.platform.dialogs, "mnuEditUserOptions_Click"}, [&](const Statements&) {
    bool accepted = false;
    edit.questions.UserOptions(TextsOfUserOptions(edit.session),
                               [&](const UserOptionTexts& texts) { return accepted = AcceptUserOptions(edit, texts); });
    if (accepted) End(edit);
  });
}

void mnuEditLanguage_Click(const EditSettings& edit) {
  RunProcedure({edit.platform.dialogs, "mnuEditLanguage_Click"}, [&](const Statements& run) {
    // Not translated: the words are the names of the columns of the translation databases.
    const std::string language = edit.questions.Choose({.title = text::SelectLanguage,
                                                        .prompt = "",
                                                        .entries = {"English", "Russian"},
                                                        .helpTopic = topic::Languages});
    if (language.empty()) return;
    run([&] {
      edit.platform.settings.Save(kLiveSettings, "General", "Current_language", language);
      edit.platform.settings.Flush();
    });
    edit.session.Current_language = language;
    End(edit);
  });
}

}  // namespace velk

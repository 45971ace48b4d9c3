#include "settings/edit_settings.h"

#include "instruments/table/protocols.h"
#include "model/help_topics.h"
#include "platform/dialogs/procedure.h"
#include "platform/settings/settings.h"
#include "settings/settings_io.h"
#include "settings/settings_keys.h"
#include "settings/templates.h"
#include "settings/texts.h"

namespace velk {

namespace {

std::optional<std::string> ChooseTemplate(const EditSettings& edit, const MessageText& title, const MessageText& prompt,
                                          bool mayEnter) {
  const Session& session = edit.session;
  const std::vector<std::string> names(session.TemplateNames.begin() + 1, session.TemplateNames.end());
  return edit.platform.dialogs.Choose({title, prompt, names, mayEnter, topic::Templates});
}

bool NamesOwnUnit(const Session& session) {
  return ProtocolOf(session).unit.has_value();
}

bool IsSureToLoad(const EditSettings& edit) {
  return edit.platform.dialogs.Message({.text = LoadTemplateQuestion(edit.session),
                                        .buttons = Buttons::YesNo,
                                        .icon = BoxIcon::Question,
                                        .safeDefault = true}) == Answer::Yes;
}

}  // namespace

void mnuEditSaveTemplate_Click(const EditSettings& edit) {
  RunProcedure({edit.platform.dialogs, "mnuEditSaveTemplate_Click"}, [&](const Statements& run) {
    Session& session = edit.session;
    const auto name = ChooseTemplate(edit, text::SaveTemplateTitle, text::SaveTemplatePrompt, true);
    if (!name) return;
    run([&] { SaveTemplate(session, edit.platform.settings, *name); });
    if (!HasTemplate(session, *name)) session.TemplateNames.push_back(*name);
    run([&] { KeepSettings(session, edit.platform.settings); });
    if (session.NumberOfFormulae > 0)
      edit.platform.dialogs.Message({text::SavedButNotLoadable, "", Buttons::Ok, BoxIcon::Information});
  });
}

void mnuEditLoadTemplate_Click(const EditSettings& edit) {
  RunProcedure({edit.platform.dialogs, "mnuEditLoadTemplate_Click"}, [&](const Statements& run) {
    const auto name = ChooseTemplate(edit, text::LoadTemplateTitle, text::LoadTemplatePrompt, false);
    if (!name) return;
    if (!IsSureToLoad(edit)) return;
    run([&] { LoadTemplate(edit.session, edit.platform.settings, edit.platform.language, *name); });
    ShowProblems(edit, edit.platform.settings.TakeProblems());
    if (NamesOwnUnit(edit.session)) edit.resetConnection();
    if (WaitsForNewStart(edit.session)) edit.offerNewStart();
  });
}

void mnuEditDeleteTemplate_Click(const EditSettings& edit) {
  RunProcedure({edit.platform.dialogs, "mnuEditDeleteTemplate_Click"}, [&](const Statements& run) {
    const auto name = ChooseTemplate(edit, text::DeleteTemplateTitle, text::DeleteTemplatePrompt, false);
    if (!name) return;
    ShowProblems(
        edit, run([&] { return DeleteTemplate(edit.session, edit.platform.settings, edit.platform.language, *name); }));
  });
}

void mnuEditLanguage_Click(const EditSettings& edit) {
  RunProcedure({edit.platform.dialogs, "mnuEditLanguage_Click"}, [&](const Statements& run) {
    // Not translated: the words are the names of the columns of the translation databases.
    const auto language = edit.platform.dialogs.Choose({.title = text::SelectLanguage,
                                                        .prompt = "",
                                                        .entries = {"English", "Russian"},
                                                        .helpTopic = topic::Languages});
    if (!language) return;
    run([&] {
      edit.platform.settings.Save(kLiveSettings, "General", "Current_language", *language);
      edit.platform.settings.Flush();
    });
    edit.session.Current_language = *language;
    EndForChange(edit);
  });
}

void ShowProblems(const EditSettings& edit, const std::vector<OperatorText>& problems) {
  const OperatorText text = ProblemText(problems);
  if (!text.IsEmpty()) edit.platform.dialogs.Message({text, "", Buttons::Ok, BoxIcon::Exclamation});
}

void EndForChange(const EditSettings& edit) {
  edit.platform.dialogs.Message({text::MustEnd, "", Buttons::Ok, BoxIcon::Information});
  edit.saveAndEnd();
}

}  // namespace velk

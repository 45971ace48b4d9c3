// Boxes in the states that the rooms above put them into.

#include "formula/texts.h"
#include "graphs/texts.h"
#include "instruments/texts.h"
#include "model/help_topics.h"
#include "model/number_formats.h"
#include "model/texts.h"
#include "platform/texts.h"
#include "platform/windows/list_input_box.h"
#include "platform/windows/progress_window.h"
#include "settings/texts.h"
#include "windows/every_window.h"

namespace velk::test {
namespace {

std::shared_ptr<QWidget> OpenListBox(const Job& job, const OperatorText& title, const OperatorText& prompt,
                                     const std::vector<std::string>& entries, bool mayEnter, int topic) {
  const Language& words = job->platform.language;
  return On<ListInputBox>(job, ShownListQuestion{words.In(title), words.In(prompt), entries, mayEnter, topic}, words);
}

std::shared_ptr<QWidget> OpenLanguageQuestion(const std::string& language) {
  return OpenListBox(MakeJob(language), text::SelectLanguage, "", {"English", "Russian"}, false, topic::Languages);
}

std::shared_ptr<QWidget> OpenFormatQuestion(const std::string& language) {
  return OpenListBox(MakeJob(language), text::NumberFormatTitle, text::NumberFormatPrompt, NumberFormatSamples(), false,
                     topic::Parameters);
}

std::shared_ptr<QWidget> OpenProgress(const std::string& language) {
  const Job job = MakeJob(language);
  const QString file = QString::fromStdString(job->Pick("Fracturing, well 1042", "Гидроразрыв пласта, скважина 1042"));
  auto window =
      On<ProgressWindow>(job, file, QString::fromStdString(job->platform.language.In(text::ButtonCancel)), nullptr);
  auto& box = static_cast<ProgressWindow&>(*window);
  box.ShowDone(file, 0.4);
  box.Appear();
  box.hide();
  return window;
}

const WindowsOf kPlatform([] {
  const auto list = [](const MessageText& title, const MessageText& prompt, bool mayEnter, int topic) {
    return [=](const std::string& language) {
      const Job job = MakeJob(language);
      const std::string name = job->Pick("Fracturing, well 1042", "Гидроразрыв пласта, скважина 1042");
      return OpenListBox(job, title, prompt, {"Job 7", name}, mayEnter, topic);
    };
  };
  return std::vector<ListedWindow>{
      {"ListInputBox",
       "save",
       topic::Templates,
       {},
       list(text::SaveTemplateTitle, text::SaveTemplatePrompt, true, topic::Templates)},
      {"ListInputBox",
       "load",
       topic::Templates,
       {},
       list(text::LoadTemplateTitle, text::LoadTemplatePrompt, false, topic::Templates)},
      {"ListInputBox",
       "remove",
       topic::Formulas,
       {},
       list(text::RemoveAdditionalTitle, text::RemoveAdditionalPrompt, false, topic::Formulas)},
      {"ListInputBox", "language", topic::Languages, {}, OpenLanguageQuestion},
      {"ListInputBox", "format", topic::Parameters, {}, OpenFormatQuestion},
      {"ListInputBox",
       "curve",
       topic::StripChart,
       {},
       list(text::RemoveTitle, text::RemovePrompt, false, topic::StripChart)},
      {"ListInputBox",
       "reset",
       topic::Parameters,
       {},
       list(text::ResetValueTitle, text::ResetValuePrompt, false, topic::Parameters)},
      {"ProgressWindow", "", topic::FirstStart, {"ProgressWindow", "lblDoing", "barDone"}, OpenProgress},
  };
});

}  // namespace
}  // namespace velk::test

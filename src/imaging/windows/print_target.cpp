#include "imaging/windows/print_target.h"

#include <algorithm>

#include "base/text_qt.h"
#include "imaging/texts.h"
#include "imaging/windows/frm_printer_select.h"
#include "platform/files/file_errors.h"

namespace velk {

std::optional<std::string> AskForFile(Dialogs& dialogs, std::string& folder, const MessageText& title,
                                      const MessageText& filter, const std::vector<std::string>& endings) {
  auto path = dialogs.SaveFile({title, filter, folder});
  if (!path) return std::nullopt;
  const auto isEnding = [&](const std::string& ending) {
    return ToQt(*path).endsWith(ToQt(ending), Qt::CaseInsensitive);
  };
  if (std::none_of(endings.begin(), endings.end(), isEnding)) *path += endings.front();
  folder = FolderOf(*path);
  if (FileExists(*path) && dialogs.Message({text::FileIsThereBefore + *path + text::FileIsThereAfter, title,
                                            Buttons::YesNo, BoxIcon::Question}) != Answer::Yes)
    return std::nullopt;
  return path;
}

std::optional<std::string> AskForPrinter(WindowHost& host, PrinterChoice& choice, std::string& folder) {
  if (!host.Ask<frmPrinterSelect>(choice)) return std::nullopt;
  if (!choice.PrintsToFile()) return std::string();
  return AskForFile(host.Boxes(), folder, text::SavePdfTitle, text::PdfFilter, {".pdf"});
}

}  // namespace velk

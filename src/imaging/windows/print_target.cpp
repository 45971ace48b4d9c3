#include "imaging/windows/print_target.h"

#include <QFileInfo>

#include "base/text_qt.h"
#include "imaging/texts.h"
#include "imaging/windows/frm_printer_select.h"
#include "platform/files/file_errors.h"

namespace velk {

std::optional<std::string> AskForFile(Dialogs& dialogs, std::string& folder, const MessageText& title,
                                      const MessageText& filter, const std::string& ending) {
  auto path = dialogs.SaveFile({title, filter, folder});
  if (!path) return std::nullopt;
  if (QFileInfo(ToQt(*path)).suffix().isEmpty()) *path += ending;
  folder = FolderOf(*path);
  if (FileExists(*path) && dialogs.Message({text::FileIsThereBefore + *path + text::FileIsThereAfter, title,
                                            Buttons::YesNo, BoxIcon::Question}) != Answer::Yes)
    return std::nullopt;
  return path;
}

std::optional<std::string> AskForPrinter(WindowHost& host, PrinterChoice& choice, std::string& folder) {
  if (!host.Ask<frmPrinterSelect>(choice)) return std::nullopt;
  if (!choice.PrintsToFile()) return std::string();
  return AskForFile(host.Boxes(), folder, text::SavePdfTitle, text::PdfFilter, ".pdf");
}

}  // namespace velk

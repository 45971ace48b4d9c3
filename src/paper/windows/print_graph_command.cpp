#include "paper/windows/print_graph_command.h"

#include "paper/external_records.h"
#include "paper/log_records.h"
#include "paper/texts.h"
#include "paper/windows/frm_print_graph.h"
#include "platform/dialogs/procedure.h"

namespace velk {

PrintGraph::PrintGraph(WindowHost& host, Session& session, const Platform& platform, PrinterChoice& printer,
                       std::function<void()> keepSettings)
    : host_(host), session_(session), platform_(platform), printer_(printer), keepSettings_(std::move(keepSettings)) {
}

void PrintGraph::Print(int graph) {
  Show([&] { return std::make_unique<LogRecords>(session_, platform_.language, graph, session_.LogFileInUse); });
}

void PrintGraph::PrintExternal(const LiveImport& live, const JetTools& tools) {
  Show([&] { return std::make_unique<ExternalRecords>(platform_, live, tools); });
}

void PrintGraph::Show(const std::function<std::unique_ptr<PageRecords>()>& records) {
  RunProcedure({platform_.dialogs, "FilesAndTime", text::PageTitle}, [&](const Statements& run) {
    PageComposer composer(session_, platform_, records(), session_.LogFileInUse);
    if (!run([&] { return composer.FilesAndTime(autoScaleTime_); })) {
      platform_.dialogs.Message({composer.WhyNoPage(), text::PageTitle, Buttons::Ok, BoxIcon::Exclamation});
      return;
    }
    if (session_.LogoInserted && composer.HasLogoFile() && composer.Logo().isNull())
      platform_.dialogs.Message(LogoUnreadableBox(session_.CompanyLogoFile));
    host_.Show<frmPrintGraph>(PageAccess{session_, platform_, printer_, autoScaleTime_, keepSettings_}, composer);
  });
}

}  // namespace velk

#include "paper/windows/print_graph_command.h"

#include "paper/texts.h"
#include "paper/windows/frm_print_graph.h"
#include "platform/dialogs/procedure.h"

namespace velk {

PrintGraph::PrintGraph(WindowHost& host, Session& session, const Platform& platform, PrinterChoice& printer,
                       std::function<void()> keepSettings)
    : host_(host), session_(session), platform_(platform), printer_(printer), keepSettings_(std::move(keepSettings)) {
}

void PrintGraph::Print(int graph) {
  RunProcedure({platform_.dialogs, "FilesAndTime", text::PageTitle}, [&](const Statements& run) {
    PageComposer composer(session_, platform_, graph, session_.LogFileInUse);
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

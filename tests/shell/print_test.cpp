#include <gtest/gtest.h>

#include <QAction>
#include <QListWidget>
#include <filesystem>

#include "graphs/windows/graph_form_new.h"
#include "shell/shell_rig.h"
#include "support/window_script.h"

namespace velk::test {
namespace {

class PrintedGraph : public testing::Test {
 protected:
  PrintedGraph() {
    rig.Start();
    rig.State().SensitivityCriterion = 0;  // every sample is logged
    rig.Connect();
  }
  void Run(int frames) {
    for (int i = 0; i < frames; ++i, ++sent) rig.Frame(sent % 100, 20, 30);
  }
  void PressPrint(int graph) {
    auto& form = *dynamic_cast<GraphFormNew*>(rig.State().GraphForms[graph]);
    form.Toolbar().findChild<QAction*>("Print")->trigger();
  }

  ShellRig rig;
  WindowScript script;
  int sent = 0;
};

TEST_F(PrintedGraph, GoesToAFileWhileRowsGoOn) {
  rig.dialogs.ExpectSaveFile(rig.folder.File("job.mdb"));
  rig.Press("Record");
  rig.Press("Pause");
  Run(120);
  const long long before = rig.application->RowsRecorded();
  script.Then("frmPrintGraph", [&](QDialog& page) {
    Run(10);
    script.Then("frmPrinterSelect", [](QDialog& dialog) {
      auto& list = *dialog.findChild<QListWidget*>("List1");
      list.setCurrentRow(list.count() - 1);
      Click(dialog, "Command1");
    });
    rig.dialogs.ExpectSaveFile(rig.folder.File("page.pdf"));
    Click(page, "Print");
    page.reject();
  });
  PressPrint(1);
  EXPECT_EQ(rig.application->RowsRecorded(), before + 10);
  EXPECT_GT(std::filesystem::file_size(rig.folder.File("page.pdf")), 5000u);
}

TEST_F(PrintedGraph, NeedsALogWithAName) {
  rig.Press("Pause");
  Run(5);
  rig.dialogs.Expect("File Name should be Supplied first.", Answer::Ok);
  PressPrint(1);
}

}  // namespace
}  // namespace velk::test

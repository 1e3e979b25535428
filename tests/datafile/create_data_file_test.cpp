// The "Create Data File" dialog loop, driven offscreen as an operator would.

#include "datafile/create_data_file.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>

#include "datafile/data_file_naming.h"
#include "harness/temp_folder.h"
#include "platform/clock.h"
#include "support/modal_script.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

using testing::ModalScript;

ModalScript::Step saveAs(const QString& name, QString* proposed = nullptr) {
  return testing::fileDialogStep(name, [=](QFileDialog* dialog, const QString& offered) {
    EXPECT_EQ(dialog->windowTitle(), "Create Data File");
    if (proposed) *proposed = offered;
  });
}

// Cancel creates nothing; an existing name typed brings the warning and the
// dialog again, and a new one the file with its header.
TEST(CreateDataFile, AnExistingNameIsRefusedAndTheDialogComesBack) {
  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  const std::filesystem::path dataFolder = folder.path() / "DATA40";
  const Settings settings;
  {
    ModalScript cancel({saveAs("")});
    EXPECT_FALSE(createDataFile(nullptr, settings, dataFolder));
  }
  EXPECT_TRUE(std::filesystem::is_empty(dataFolder));

  testing::writeBytes(dataFolder / "SURVEY.R40", "kept");
  QString proposed, caption, text;
  ModalScript script({saveAs("SURVEY", &proposed), testing::acknowledgeMessageBox(&caption, &text),
                      saveAs("LINE7")});
  const std::string expectedProposal = proposeDataFileName(dataFolder, platform::localTimeNow());
  std::optional<DataFile> file = createDataFile(nullptr, settings, dataFolder);
  EXPECT_TRUE(script.finished() && !script.timedOut());
  EXPECT_EQ(proposed.toStdString(), expectedProposal);
  EXPECT_EQ(std::pair(caption, text),
            std::pair(QString("WARNING"),
                      QString("The file already exisits. Please enter another name")));
  EXPECT_EQ(testing::readBytes(dataFolder / "SURVEY.R40"), "kept");
  ASSERT_TRUE(file);
  EXPECT_EQ(file->path(), dataFolder / "LINE7.R40");  // the default suffix added
  const std::string bytes = testing::readBytes(dataFolder / "LINE7.R40");
  ASSERT_EQ(bytes.size(), 7u * 24);  // identification, H, L, B, A, Z, *
  EXPECT_EQ(bytes.substr(0, 48), "GC40STD W211GRD0000   2\nH LINE7      0.200     \n");
}

}  // namespace
}  // namespace gc40

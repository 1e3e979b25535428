#include "datafile/create_data_file.h"

#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <system_error>

#include "datafile/data_file_naming.h"
#include "datafile/record_writers.h"
#include "platform/clock.h"
#include "ui/warning_box.h"

namespace gc40 {
namespace {

// Qt's own dialog, so it behaves alike everywhere and tests can drive it. It
// must not ask about overwriting: an existing name gets our own warning.
std::optional<std::filesystem::path> askForFileName(QWidget* owner,
                                                    const std::filesystem::path& folder,
                                                    const std::string& proposal) {
  QFileDialog dialog(owner, QString::fromLatin1(kCreateDataFileTitle),
                     QFile::decodeName(folder.c_str()), QString::fromLatin1(kDataFileFilter));
  dialog.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setDefaultSuffix(QStringLiteral("R40"));
  dialog.selectFile(QString::fromStdString(proposal));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return std::filesystem::path(
      QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString());
}

}  // namespace

std::optional<DataFile> createDataFile(QWidget* owner, const Settings& settings,
                                       const std::filesystem::path& dataFolder) {
  for (;;) {
    std::error_code ignored;
    std::filesystem::create_directories(dataFolder, ignored);
    const std::string proposal = proposeDataFileName(dataFolder, platform::localTimeNow());
    const std::optional<std::filesystem::path> chosen = askForFileName(owner, dataFolder, proposal);
    if (!chosen) return std::nullopt;
    if (std::filesystem::exists(*chosen, ignored)) {
      showWarning(owner, QString::fromLatin1(kFileExistsText));
      continue;
    }
    std::string error;
    std::optional<DataFile> file = createFileWithHeader(*chosen, settings, platform::localTimeNow(),
                                                        platform::tickCount(), &error);
    if (file) return file;
    // Unlike a name clash this cannot be fixed by typing, but the operator
    // may pick another folder; recording into nowhere is never an option.
    showWarning(owner, QStringLiteral("Cannot create %1: %2")
                           .arg(QFile::decodeName(chosen->c_str()), QString::fromStdString(error)));
  }
}

}  // namespace gc40

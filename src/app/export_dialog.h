#pragma once
// Export, from View Files: the open data file's readings with their
// positions into a GIS format. The dialog starts from the last export's
// choices (FLDINI/EXPORT.INI), can estimate the meter's lag from the file
// itself, and offers an output beside the data file. OK writes the file
// behind a progress bar and keeps the choices; Cancel keeps nothing.

#include <filesystem>

#include "survey/export_choices.h"
#include "ui/background_task.h"
#include "ui/setup_dialog.h"

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace gc40 {

inline constexpr char kExportCaption[] = "Export";

// Controls by id: labels 900..906, fields 920..929, the note under them 930.
inline constexpr int kExportFormatId = 920;
inline constexpr int kExportSystemId = 921;
inline constexpr int kExportEpsgId = 922;
inline constexpr int kExportLagId = 923;
inline constexpr int kExportEstimateId = 924;
inline constexpr int kExportLaybackId = 925;
inline constexpr int kExportOffsetId = 926;
inline constexpr int kExportMaxGapId = 927;
inline constexpr int kExportOutputId = 928;
inline constexpr int kExportBrowseId = 929;
inline constexpr int kExportNoteId = 930;

class ExportDialog : public SetupDialog {
 public:
  ExportDialog(QWidget* owner, LoggerContext& context, const std::filesystem::path& dataFile,
               int showProgressAfterMs = kShowTaskProgressAfterMs);

  void reject() override;

 protected:
  void onOk() override;

 private:
  void createControls();
  void arrange();
  QWidget* pair(QWidget* field, QWidget* beside, bool fieldStretches);
  void showChoices(const ExportChoices& choices);
  ExportChoices shownChoices() const;
  std::filesystem::path output() const;
  void formatChanged();
  void systemChanged();
  void estimateLag();
  void chooseOutput();
  void note(const QString& text);

  LoggerContext& context_;
  std::filesystem::path dataFile_;
  int showProgressAfterMs_;
  bool busy_ = false;  // a task runs: no second one, no closing
  QComboBox* format_ = nullptr;
  QComboBox* system_ = nullptr;
  QSpinBox* epsg_ = nullptr;
  QSpinBox* lag_ = nullptr;
  QDoubleSpinBox* layback_ = nullptr;
  QDoubleSpinBox* offset_ = nullptr;
  QDoubleSpinBox* maxGap_ = nullptr;
  QLineEdit* output_ = nullptr;
  QLabel* note_ = nullptr;
};

// Modal over `owner`; 1 when a file was written, else 0.
int runExportDialog(QWidget* owner, LoggerContext& context, const std::filesystem::path& dataFile,
                    int showProgressAfterMs = kShowTaskProgressAfterMs);

}  // namespace gc40

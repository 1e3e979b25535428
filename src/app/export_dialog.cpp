#include "app/export_dialog.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>
#include <algorithm>
#include <cmath>

#include "app/export_run.h"
#include "base/number_text.h"
#include "base/raw_file.h"
#include "survey/lag_estimate.h"
#include "ui/warning_box.h"

namespace gc40 {
namespace {

constexpr int kNoteFontPixels = 11;
constexpr const char* kSystems[] = {"WGS 84", "UTM", "EPSG"};  // as ExportSystem

struct LagFromFile {
  std::optional<LagEstimate> estimate;  // none when cancelled or unreadable
  std::string failure;
};

// Seconds for a day's survey: run by the background task.
LagFromFile estimateFromFile(const std::filesystem::path& path, const PositionOptions& options,
                             const TaskProgress& progress) {
  const std::optional<std::string> bytes = readFilePrefix(path, std::string::npos);
  if (!bytes) return {{}, "Cannot read " + path.string()};
  const auto going = [&progress](std::size_t, std::size_t) { return !progress.cancelled(); };
  const std::optional<DataFileContents> contents = readDataFile(*bytes, going);
  if (!contents) return {};
  const std::optional<SurveyFile> survey = splitSurveyLines(*contents, going);
  if (!survey) return {};
  return {estimateLag({{&*contents, &*survey}}, options), {}};
}

// Fields show numbers as the files hold them, whatever the desktop's locale.
template <typename SpinBox>
SpinBox* makeSpin(QWidget* parent, int id, double from, double to, const char* unit = "") {
  auto* spin = new SpinBox(parent);
  spin->setObjectName(QString::number(id));
  spin->setLocale(QLocale::c());
  spin->setRange(from, to);
  spin->setSuffix(QString::fromLatin1(unit));
  return spin;
}

QDoubleSpinBox* makeDecimalSpin(QWidget* parent, int id, double from, double to, int decimals,
                                const char* unit) {
  auto* spin = makeSpin<QDoubleSpinBox>(parent, id, from, to, unit);
  spin->setDecimals(decimals);
  spin->setSingleStep(decimals == 1 ? 0.5 : 0.1);
  return spin;
}

// Paths and the messages that name them are the system's UTF-8, not the
// data file's 8-bit text.
QString pathText(const std::string& text) { return QString::fromStdString(text); }

QString nameFilter(const ExportFormat& format) {
  return qText(format.label) + " (*" + qText(format.extension) + ")";
}

}  // namespace

ExportDialog::ExportDialog(QWidget* owner, LoggerContext& context,
                           const std::filesystem::path& dataFile, int showProgressAfterMs)
    : SetupDialog(owner, QString::fromLatin1(kExportCaption), context.settings.portraitScreen == 1),
      context_(context),
      dataFile_(dataFile),
      showProgressAfterMs_(showProgressAfterMs) {
  createControls();
  arrange();
  const LoadedExportChoices loaded = loadExportChoices(context_.storage.settingsFolder());
  output_->setText(pathText(defaultExportPath(dataFile_, loaded.choices.format).string()));
  showChoices(loaded.choices);
  note(pathText(loaded.note));
}

void ExportDialog::createControls() {
  format_ = new QComboBox(this);
  format_->setObjectName(QString::number(kExportFormatId));
  for (const ExportFormat& format : kExportFormats) format_->addItem(qText(format.label));
  connect(format_, &QComboBox::currentIndexChanged, this, &ExportDialog::formatChanged);

  system_ = new QComboBox(this);
  system_->setObjectName(QString::number(kExportSystemId));
  for (const char* system : kSystems) system_->addItem(QString::fromLatin1(system));
  connect(system_, &QComboBox::currentIndexChanged, this, &ExportDialog::systemChanged);
  epsg_ = makeSpin<QSpinBox>(this, kExportEpsgId, kEpsgFrom, kEpsgTo);
  // Whatever room the system list leaves: six digits fit in less than it asks.
  epsg_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);

  lag_ = makeSpin<QSpinBox>(this, kExportLagId, -kLagLimitMs, kLagLimitMs, " ms");
  lag_->setSingleStep(10);
  lag_->setToolTip(QStringLiteral("How late the meter's values come after the GPS position"));
  connect(makeButton(kExportEstimateId, QStringLiteral("Estimate")), &QPushButton::clicked, this,
          &ExportDialog::estimateLag);
  layback_ = makeDecimalSpin(this, kExportLaybackId, -kOffsetLimitM, kOffsetLimitM, 2, " m");
  layback_->setToolTip(QStringLiteral("Sensor behind the antenna; negative: ahead of it"));
  offset_ = makeDecimalSpin(this, kExportOffsetId, -kOffsetLimitM, kOffsetLimitM, 2, " m");
  offset_->setToolTip(QStringLiteral("Sensor right of the antenna; negative: left of it"));
  maxGap_ = makeDecimalSpin(this, kExportMaxGapId, kMaxGapFromS, kMaxGapToS, 1, " s");
  maxGap_->setToolTip(QStringLiteral("Fixes further apart than this place no reading between"));

  output_ = makeEdit(kExportOutputId, {});
  connect(output_, &QLineEdit::textChanged, output_, &QLineEdit::setToolTip);
  // A tool button: a push button is too wide for three dots beside the path.
  auto* browse = new QToolButton(this);
  browse->setObjectName(QString::number(kExportBrowseId));
  browse->setText(QStringLiteral("..."));
  connect(browse, &QToolButton::clicked, this, &ExportDialog::chooseOutput);

  note_ = makeLabel(kExportNoteId, {});
  note_->setWordWrap(true);
  QFont small = font();
  small.setPixelSize(kNoteFontPixels * scale());
  note_->setFont(small);
}

// A field and what goes with it (the EPSG code, the browse button) in one
// cell, so the short column of the portrait layout is not widened for them.
QWidget* ExportDialog::pair(QWidget* field, QWidget* beside, bool fieldStretches) {
  auto* cell = new QWidget(this);
  auto* layout = new QHBoxLayout(cell);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(grid()->spacing());
  layout->addWidget(field, fieldStretches ? 1 : 0);
  layout->addWidget(beside, fieldStretches ? 0 : 1);
  return cell;
}

// Landscape is short: layback and offset share a row there.
void ExportDialog::arrange() {
  QGridLayout* layout = grid();
  const int columns = portrait() ? 3 : 4;
  int row = 0;
  const auto labelled = [&](int labelId, const char* text, QWidget* field, int span) {
    layout->addWidget(makeLabel(labelId, QString::fromLatin1(text)), row, 0);
    layout->addWidget(field, row, 1, 1, span);
  };
  const auto control = [this](int id) { return findChild<QWidget*>(QString::number(id)); };

  labelled(900, "Format", format_, columns - 1);
  ++row;
  labelled(901, "System", pair(system_, epsg_, false), columns - 1);
  ++row;
  labelled(902, "Lag", lag_, 1);
  layout->addWidget(control(kExportEstimateId), row++, 2, 1, columns - 2);
  labelled(903, "Layback", layback_, 1);
  if (portrait()) {
    ++row;
    labelled(904, "Offset", offset_, 1);
  } else {
    layout->addWidget(makeLabel(904, QStringLiteral("Offset")), row, 2);
    layout->addWidget(offset_, row, 3);
  }
  ++row;
  labelled(905, "Max gap", maxGap_, 1);
  ++row;
  labelled(906, "Output", pair(output_, control(kExportBrowseId), true), columns - 1);
  ++row;
  layout->addWidget(note_, row++, 0, 1, columns);
  layout->setColumnStretch(1, 1);
  addOkCancel(row, columns);
}

void ExportDialog::showChoices(const ExportChoices& choices) {
  const QSignalBlocker quietFormat(format_), quietSystem(system_);
  format_->setCurrentIndex(static_cast<int>(choices.format));
  system_->setCurrentIndex(static_cast<int>(choices.system));
  epsg_->setValue(choices.epsg);
  lag_->setValue(choices.lagMs);
  layback_->setValue(choices.laybackM);
  offset_->setValue(choices.offsetM);
  maxGap_->setValue(choices.maxGapS);
  formatChanged();
}

ExportChoices ExportDialog::shownChoices() const {
  return {.format = static_cast<std::size_t>(std::max(format_->currentIndex(), 0)),
          .system = static_cast<ExportSystem>(std::max(system_->currentIndex(), 0)),
          .epsg = epsg_->value(),
          .lagMs = lag_->value(),
          .laybackM = layback_->value(),
          .offsetM = offset_->value(),
          .maxGapS = maxGap_->value()};
}

std::filesystem::path ExportDialog::output() const {
  const std::filesystem::path typed = output_->text().trimmed().toStdString();
  // A bare name goes beside the data file, not wherever the program started.
  return typed.empty() || typed.is_absolute() ? typed : dataFile_.parent_path() / typed;
}

void ExportDialog::formatChanged() {
  const auto format = static_cast<std::size_t>(std::max(format_->currentIndex(), 0));
  output_->setText(pathText(outputForFormat(output(), format).string()));
  // KML holds longitude and latitude only.
  if (!formatTakesProjection(format)) system_->setCurrentIndex(0);
  system_->setEnabled(formatTakesProjection(format));
  systemChanged();
}

void ExportDialog::systemChanged() {
  epsg_->setEnabled(system_->isEnabled() &&
                    system_->currentIndex() == static_cast<int>(ExportSystem::kEpsg));
}

void ExportDialog::estimateLag() {
  if (busy_) return;
  busy_ = true;
  LagFromFile found;
  const PositionOptions options = positionOptions(shownChoices());
  const TaskLook look{QString::fromLatin1(kExportCaption),
                      "Estimating the lag from " + pathText(dataFile_.filename().string()), false,
                      showProgressAfterMs_};
  const bool finished = runInBackground(this, look, [&](TaskProgress& progress) {
    found = estimateFromFile(dataFile_, options, progress);
  });
  busy_ = false;
  if (!finished) return note(QStringLiteral("Lag estimate cancelled."));
  if (!found.failure.empty()) return note(pathText(found.failure));
  if (!found.estimate) return;
  const LagEstimate& estimate = *found.estimate;
  if (!estimate.found) return note(qText("No lag estimate: " + estimate.problem + "."));
  lag_->setValue(estimate.lagMs);
  note(QStringLiteral("Lag estimated from the file: %1 ms, %2%3 ms.")
           .arg(qText(formatInteger(estimate.lagMs)), QString(QChar(0x00B1)),
                qText(formatInteger(std::lround(estimate.uncertaintyMs)))));
}

void ExportDialog::chooseOutput() {
  const ExportFormat& format = kExportFormats[shownChoices().format];
  const std::filesystem::path current = output();
  QFileDialog dialog(this, QStringLiteral("Export To"), pathText(current.parent_path().string()),
                     nameFilter(format));
  dialog.setOptions(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(qText(format.extension.substr(1)));
  dialog.selectFile(pathText(current.filename().string()));
  if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
    output_->setText(dialog.selectedFiles().first());
}

void ExportDialog::onOk() {
  if (busy_) return;
  const std::filesystem::path target = output();
  if (target.filename().empty()) return note(QStringLiteral("Name the file to write."));
  std::error_code ignored;
  if (std::filesystem::equivalent(target, dataFile_, ignored))
    return note(QStringLiteral("The output would replace the data file: name another."));

  const ExportChoices choices = shownChoices();
  ExportOptions options;
  options.inputs = {dataFile_};
  options.output = target;
  options.format = std::string(kExportFormats[choices.format].driver);
  options.system = choices.system == ExportSystem::kUtm    ? OutputSystem::kUtm
                   : choices.system == ExportSystem::kEpsg ? OutputSystem::kEpsg
                                                           : OutputSystem::kWgs84;
  options.epsg = choices.epsg;
  options.positions = positionOptions(choices);

  busy_ = true;
  ExportRun run;
  const TaskLook look{QString::fromLatin1(kExportCaption),
                      "Exporting " + pathText(dataFile_.filename().string()), true,
                      showProgressAfterMs_};
  runInBackground(this, look,
                  [&](TaskProgress& progress) { run = exportWhole(options, progress); });
  busy_ = false;
  if (run.cancelled) return note(QStringLiteral("Export cancelled: nothing was written."));
  if (!run.summary) return showWarning(this, pathText(run.error));

  std::string text = exportSummaryText(target, *run.summary);
  if (const std::optional<std::string> error =
          saveExportChoices(context_.storage.settingsFolder(), choices))
    text += "\n\nThese choices were not kept: " + *error;
  QMessageBox(QMessageBox::Information, QString::fromLatin1(kExportCaption), pathText(text),
              QMessageBox::Ok, this)
      .exec();
  done(1);
}

void ExportDialog::reject() {
  if (!busy_) SetupDialog::reject();
}

void ExportDialog::note(const QString& text) {
  note_->setText(text);
  note_->setToolTip(text);
}

int runExportDialog(QWidget* owner, LoggerContext& context, const std::filesystem::path& dataFile,
                    int showProgressAfterMs) {
  ExportDialog dialog(owner, context, dataFile, showProgressAfterMs);
  return dialog.exec();
}

}  // namespace gc40

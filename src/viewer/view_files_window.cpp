#include "viewer/view_files_window.h"

#include <QComboBox>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QTimer>

#include "map/map_texts.h"
#include "platform/qt_text.h"
#include "survey/export_choices.h"
#include "ui/key_codes.h"
#include "ui/screen_layout.h"
#include "viewer/line_index_store.h"
#include "viewer/line_view.h"
#include "viewer/survey_file_loader.h"
#include "viewer/survey_map.h"
#include "viewer/survey_pictures.h"
#include "viewer/view_curve.h"
#include "viewer/viewer_keys.h"
#include "viewer/viewer_texts.h"

namespace gc40 {
namespace {

// Layout pixels, scaled like the main window.
constexpr int kRowHeight = 14;
constexpr int kHeaderRows = 3;
constexpr int kReadoutRows = 3;  // station and place; conductivities; inphases
constexpr int kFontPixels = 11;
constexpr char kCaption[] = "View Files";
constexpr int kValueComboWidth = 46;

// The map places the readings as the export writes them: with the lag,
// layback, offset and gap of EXPORT.INI.
PositionOptions exportedPositions(const LoggerContext& context) {
  return positionOptions(loadExportChoices(context.storage.settingsFolder()).choices);
}

constexpr int kLimitsComboWidth = 66;

QComboBox* makeCombo(QWidget* parent, const char* name) {
  auto* combo = new QComboBox(parent);
  combo->setObjectName(QString::fromLatin1(name));
  combo->setFocusPolicy(Qt::NoFocus);  // the screen keeps every key
  return combo;
}

}  // namespace

ViewFilesWindow::ViewFilesWindow(LoggerContext& context, QWidget* mainWindow, int scale)
    : QWidget(mainWindow), context_(context), scale_(scale) {
  setObjectName(QStringLiteral("ViewFilesWnd"));
  setWindowTitle(QString::fromLatin1(kCaption));
  setAutoFillBackground(true);
  setFocusPolicy(Qt::StrongFocus);
  QFont small = font();
  small.setPixelSize(kFontPixels * scale_);
  setFont(small);
  createControls();
  hide();
}

void ViewFilesWindow::createControls() {
  listPage_ = new QWidget(this);
  fileLabel_ = new QLabel(listPage_);
  headerLabel_ = new QLabel(listPage_);
  headerLabel_->setObjectName(QStringLiteral("header"));
  lines_ = new QListWidget(listPage_);
  lines_->setObjectName(QStringLiteral("lines"));
  lines_->setFocusPolicy(Qt::NoFocus);
  connect(lines_, &QListWidget::itemActivated, this, [this] { viewLine(lines_->currentRow()); });
  connect(makeScreenButton(listPage_, kViewOpenId, "&Open"), &QPushButton::clicked, this,
          &ViewFilesWindow::chooseFile);
  connect(makeScreenButton(listPage_, kViewLineId, "&View"), &QPushButton::clicked, this,
          [this] { viewLine(lines_->currentRow()); });
  connect(makeScreenButton(listPage_, kViewExportId, "&Export"), &QPushButton::clicked, this,
          &ViewFilesWindow::askForExport);
  connect(makeScreenButton(listPage_, kViewMapId, "&Map"), &QPushButton::clicked, this,
          &ViewFilesWindow::showMap);
  connect(makeScreenButton(listPage_, kViewExitId, "E&xit"), &QPushButton::clicked, this,
          &ViewFilesWindow::leave);

  curvePage_ = new QWidget(this);
  lineLabel_ = new QLabel(curvePage_);
  curve_ = new ViewCurve(scale_, curvePage_);
  curve_->onBarMoved([this] {
    showReadout();
    updateMap();
  });
  stationLabel_ = new QLabel(curvePage_);
  positionLabel_ = new QLabel(curvePage_);
  for (std::size_t trace = 0; trace < valueLabels_.size(); ++trace) {
    valueLabels_[trace] = new QLabel(curvePage_);
    valueLabels_[trace]->setObjectName(qText(kTraceNames[trace]));
  }
  connect(makeScreenButton(curvePage_, kViewLinesId, "&Lines"), &QPushButton::clicked, this,
          &ViewFilesWindow::showList);
  connect(makeScreenButton(curvePage_, kViewCurveExportId, "&Export"), &QPushButton::clicked, this,
          &ViewFilesWindow::askForExport);
  connect(makeScreenButton(curvePage_, kViewCurveMapId, "&Map"), &QPushButton::clicked, this,
          &ViewFilesWindow::showMap);
  connect(makeScreenButton(curvePage_, kViewCurvePictureId, "&Picture"), &QPushButton::clicked,
          this, &ViewFilesWindow::savePicture);
  connect(makeScreenButton(curvePage_, kViewCurveExitId, "E&xit"), &QPushButton::clicked, this,
          &ViewFilesWindow::leave);

  mapPage_ = new QWidget(this);
  valueCombo_ = makeCombo(mapPage_, "mapValue");
  for (const std::string_view name : kMapValueNames) valueCombo_->addItem(qText(name));
  connect(valueCombo_, &QComboBox::activated, this, [this](int index) {
    chooseValue(static_cast<std::size_t>(index));
    takeKeys();
  });
  limitsCombo_ = makeCombo(mapPage_, "mapLimits");
  for (const std::string_view name : kLimitsChoices) limitsCombo_->addItem(qText(name));
  connect(limitsCombo_, &QComboBox::activated, this, [this] {
    updateMap();
    takeKeys();
  });
  placeLabel_ = new QLabel(mapPage_);
  placeLabel_->setObjectName(QStringLiteral("mapPlace"));
  map_ = new SurveyMap(scale_, mapPage_);
  map_->onTapped([this](std::uint32_t reading) { onMapTapped(reading); });
  connect(makeScreenButton(mapPage_, kViewMapLinesId, "&Lines"), &QPushButton::clicked, this,
          &ViewFilesWindow::showList);
  connect(makeScreenButton(mapPage_, kViewMapExportId, "&Export"), &QPushButton::clicked, this,
          &ViewFilesWindow::askForExport);
  QPushButton* back = makeScreenButton(mapPage_, kViewMapBackId, "&Map");
  back->setCheckable(true);
  back->setChecked(true);
  connect(back, &QPushButton::clicked, this, [this, back] {
    back->setChecked(true);
    leaveMap();
  });
  connect(makeScreenButton(mapPage_, kViewMapPictureId, "&Picture"), &QPushButton::clicked, this,
          &ViewFilesWindow::savePicture);
  connect(makeScreenButton(mapPage_, kViewMapExitId, "E&xit"), &QPushButton::clicked, this,
          &ViewFilesWindow::leave);
}

// Each page: text rows at the top, its list or profile, and a row of buttons.
void ViewFilesWindow::placeControls() {
  const ScreenLayout layout(*this, context_.settings.portraitScreen, scale_);
  const int inner = layout.innerWidth();
  for (QWidget* page : {listPage_, curvePage_, mapPage_})
    layout.place(page, 0, 0, layout.size().width, layout.size().height);
  const auto placeButtons = [&layout](QWidget* page, std::initializer_list<int> ids) {
    int index = 0;
    for (int id : ids)
      layout.placeInButtonRow(page->findChild<QPushButton*>(QString::number(id)), index++,
                              static_cast<int>(ids.size()));
  };

  layout.place(fileLabel_, kScreenMargin, kScreenMargin, inner, kRowHeight);
  const int headerTop = kScreenMargin + kRowHeight;
  layout.place(headerLabel_, kScreenMargin, headerTop, inner, kHeaderRows * kRowHeight);
  const int listTop = headerTop + kHeaderRows * kRowHeight + kScreenGap;
  layout.place(lines_, kScreenMargin, listTop, inner, layout.buttonRowTop() - kScreenGap - listTop);
  placeButtons(listPage_, {kViewOpenId, kViewLineId, kViewExportId, kViewMapId, kViewExitId});

  layout.place(lineLabel_, kScreenMargin, kScreenMargin, inner, kRowHeight);
  const int curveTop = kScreenMargin + kRowHeight;
  const int readoutTop = layout.buttonRowTop() - kScreenGap - kReadoutRows * kRowHeight;
  curve_->setLayoutSize(layout.size().width, readoutTop - kScreenGap - curveTop);
  curve_->move(0, curveTop * scale_);
  const int half = inner / 2;
  const auto placeReadout = [&](QLabel* label, int column, int row) {
    layout.place(label, kScreenMargin + column * half, readoutTop + row * kRowHeight, half,
                 kRowHeight);
  };
  placeReadout(stationLabel_, 0, 0);
  placeReadout(positionLabel_, 1, 0);
  for (std::size_t trace = 0; trace < valueLabels_.size(); ++trace)
    placeReadout(valueLabels_[trace], static_cast<int>(trace % 2), 1 + static_cast<int>(trace / 2));
  placeButtons(curvePage_, {kViewLinesId, kViewCurveExportId, kViewCurveMapId, kViewCurvePictureId,
                            kViewCurveExitId});

  // The map: its value and limits over it, the line and station marked on it.
  layout.place(valueCombo_, kScreenMargin, kScreenMargin, kValueComboWidth, kRowHeight + 2);
  layout.place(limitsCombo_, kScreenMargin + kValueComboWidth + kScreenGap, kScreenMargin,
               kLimitsComboWidth, kRowHeight + 2);
  const int placeLeft = kScreenMargin + kValueComboWidth + kLimitsComboWidth + 2 * kScreenGap;
  layout.place(placeLabel_, placeLeft, kScreenMargin, inner + kScreenMargin - placeLeft,
               kRowHeight + 2);
  const int mapTop = kScreenMargin + kRowHeight + 2 + kScreenGap;
  map_->setLayoutSize(layout.size().width, layout.buttonRowTop() - kScreenGap - mapTop);
  map_->move(0, mapTop * scale_);
  placeButtons(mapPage_, {kViewMapLinesId, kViewMapExportId, kViewMapBackId, kViewMapPictureId,
                          kViewMapExitId});
}

void ViewFilesWindow::showOverMainWindow() {
  placeControls();
  setGeometry(parentWidget()->rect());
  show();
  raise();
  takeKeys();
  if (file_) {
    showList();
    return;
  }
  listLines();
  showList();
  // After the screen is up, so the dialog has it behind.
  QTimer::singleShot(0, this, [this] {
    if (!chooseFile() && !file_) leave();
  });
}

std::optional<std::filesystem::path> ViewFilesWindow::askForFile() {
  const QString folder = QString::fromStdString(context_.storage.dataFolder().string());
  QFileDialog dialog(this, QStringLiteral("Open Data File"), folder,
                     QStringLiteral("GC40 Files (*.R40)"));
  dialog.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::ReadOnly);
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return dialog.selectedFiles().first().toStdString();
}

bool ViewFilesWindow::chooseFile() {
  const std::optional<std::filesystem::path> chosen = askForFile();
  const bool opened = chosen && openFile(*chosen);
  takeKeys();
  return opened;
}

bool ViewFilesWindow::openFile(const std::filesystem::path& path) {
  // Keys typed while the file loads wait for its lines rather than reach
  // whatever had the focus when the file dialog closed.
  takeKeys();
  typedAhead_.emplace();
  const PositionOptions positions = exportedPositions(context_);
  LoadResult loaded = loadSurveyFile(path, positions, this);
  const auto replay = qScopeGuard([this] { replayTypedAhead(); });
  takeKeys();
  if (const auto* failure = std::get_if<LoadFailure>(&loaded)) {
    warn(failure->message);
    return false;
  }
  if (std::holds_alternative<LoadCancelled>(loaded)) return false;
  ViewedFile& viewed = std::get<ViewedFile>(loaded);
  file_ = std::move(viewed.survey);
  mapReadings_ = std::move(viewed.map);
  placedWith_ = positions;
  percentiles_ = {};
  const bool horizontal = file_->identification && file_->identification->dipoleMode == 1;
  mapValue_ = valueShown(mapReadings_, horizontal ? 1 : 0);
  map_->showReadings(&mapReadings_);
  curveLine_.reset();
  filePath_ = path;
  fileName_ = qText(path.filename().string());
  listLines();
  showList();
  if (!file_->problems.empty())
    warn(qText(damageReport(path.filename().string(), file_->problems)));
  return true;
}

void ViewFilesWindow::listLines() {
  lines_->clear();
  if (!file_) {
    fileLabel_->setText(QStringLiteral("No file open"));
    headerLabel_->clear();
    return;
  }
  fileLabel_->setText(QStringLiteral("File: ") + fileName_);
  QStringList header;
  for (const std::string& row : headerTexts(*file_)) header << qText(row);
  headerLabel_->setText(header.join('\n'));
  for (const SurveyLine& line : file_->lines) lines_->addItem(qText(lineSummary(line)));
  if (lines_->count() > 0) lines_->setCurrentRow(0);
}

bool ViewFilesWindow::viewLine(int index) {
  if (!loadLine(index)) return false;
  showPage(curvePage_);
  return true;
}

// The line's stations go through the line index files, as they always have.
bool ViewFilesWindow::loadLine(int index) {
  if (!file_ || index < 0 || static_cast<std::size_t>(index) >= file_->lines.size()) return false;
  const SurveyLine& line = file_->lines[static_cast<std::size_t>(index)];
  auto stored = storeAndReloadLineIndex(context_.storage.settingsFolder(), line.stations);
  if (const auto* error = std::get_if<LineIndexError>(&stored)) {
    warn(qText(error->message));
    return false;
  }
  const Settings drawn = viewingSettings(
      context_.settings, recordingSettings(file_->identification), curve_->plotHeight());
  const std::string summary = lineSummary(line);
  lineLabel_->setText(qText(summary.substr(0, summary.find('\n'))));
  curveLine_ = index;
  curve_->showLine(std::move(std::get<std::vector<StationEntry>>(stored)), drawn);
  return true;
}

void ViewFilesWindow::showPage(QWidget* page) {
  for (QWidget* other : {listPage_, curvePage_, mapPage_})
    if (other != page) other->hide();
  page->show();
  takeKeys();
}

void ViewFilesWindow::showMap() {
  if (!file_ || mapPage_->isVisible()) return;
  pageBeforeMap_ = curvePage_->isVisible() ? curvePage_ : listPage_;
  placeAsExported();
  updateMap();
  showPage(mapPage_);
}

// An export since the file was opened may have set other corrections: the
// file is read again to place its readings with them.
void ViewFilesWindow::placeAsExported() {
  const PositionOptions positions = exportedPositions(context_);
  if (positions == placedWith_) return;
  LoadResult loaded = loadSurveyFile(filePath_, positions, this);
  takeKeys();
  if (auto* viewed = std::get_if<ViewedFile>(&loaded)) {
    mapReadings_ = std::move(viewed->map);
    placedWith_ = positions;
    percentiles_ = {};
    map_->showReadings(&mapReadings_);
  }
}

void ViewFilesWindow::leaveMap() { showPage(pageBeforeMap_ ? pageBeforeMap_ : listPage_); }

void ViewFilesWindow::chooseValue(std::size_t value) {
  mapValue_ = value;
  updateMap();
}

// The map follows the list, the profile's bar and the choices over it.
void ViewFilesWindow::updateMap() {
  if (!file_) return;
  const auto limitsFrom = static_cast<LimitsFrom>(limitsCombo_->currentIndex());
  if (!percentiles_[mapValue_]) percentiles_[mapValue_] = percentileLimits(mapReadings_, mapValue_);
  const std::optional<ColourLimits>& percentiles = *percentiles_[mapValue_];
  MapScene scene;
  scene.value = mapValue_;
  const bool hasLimits = limitsFrom == LimitsFrom::kProfileScales || percentiles.has_value();
  if (limitsFrom == LimitsFrom::kProfileScales)
    scene.limits = scaleLimits(context_.settings, mapValue_);
  else if (percentiles)
    scene.limits = *percentiles;
  const int row = lines_->currentRow();
  const std::string* lineName = nullptr;
  if (row >= 0 && static_cast<std::size_t>(row) < file_->lines.size()) {
    scene.selectedLine = static_cast<std::uint32_t>(row);
    lineName = &file_->lines[static_cast<std::size_t>(row)].name;
  }
  std::optional<double> station;
  if (curveLine_ && curveLine_ == row && !curve_->stations().empty()) {
    scene.marker = MapStation{static_cast<std::uint32_t>(*curveLine_),
                              static_cast<std::uint32_t>(curve_->bar())};
    station = curve_->stations()[curve_->bar()].station;
  }
  valueCombo_->setCurrentIndex(static_cast<int>(mapValue_));
  placeLabel_->setText(qText(mapPlaceText(lineName, station)));
  map_->setScene(scene, hasLimits);
}

// A tapped dot chooses its line in the list and its station under the bar.
void ViewFilesWindow::onMapTapped(std::uint32_t reading) {
  const MapReading& tapped = mapReadings_.readings.at(reading);
  const int line = static_cast<int>(tapped.line);
  lines_->setCurrentRow(line);
  if (curveLine_ != line && !loadLine(line)) return;
  curve_->putBar(tapped.station);
  updateMap();
}

std::optional<std::filesystem::path> ViewFilesWindow::savePicture() {
  if (!file_) return std::nullopt;
  const LayoutSize layout = layoutSize(context_.settings.portraitScreen == 1);
  const std::string base = filePath_.stem().string();
  const std::string fileName = filePath_.filename().string();
  QImage picture;
  std::string stem;
  if (mapPage_->isVisible()) {
    const auto limitsFrom = static_cast<LimitsFrom>(limitsCombo_->currentIndex());
    picture = mapPicture({.paint = {.map = &mapReadings_,
                                    .scene = map_->scene(),
                                    .hasLimits = map_->hasLimits(),
                                    .view = map_->view()},
                          .title = mapPictureTitle(fileName, mapValue_, limitsFrom,
                                                   placeLabel_->text().toStdString())},
                         layout, kPictureScale);
    stem = mapPictureStem(base, mapValue_);
  } else if (curvePage_->isVisible() && curveLine_) {
    const SurveyLine& line = file_->lines[static_cast<std::size_t>(*curveLine_)];
    picture = profilePicture({.stations = &curve_->stations(),
                              .first = curve_->firstShown(),
                              .columns = curve_->columns(),
                              .today = context_.settings,
                              .recorded = recordingSettings(file_->identification),
                              .title = profilePictureTitle(fileName, line)},
                             layout, kPictureScale);
    stem = profilePictureStem(base, line.name);
  } else {
    return std::nullopt;
  }
  const std::filesystem::path path =
      freePicturePath(filePath_.parent_path(), stem, [](const std::filesystem::path& candidate) {
        std::error_code ignored;
        return std::filesystem::exists(candidate, ignored);
      });
  if (const std::optional<std::string> error = gc40::savePicture(picture, path)) {
    warn(qText(*error));
    return std::nullopt;
  }
  {
    QMessageBox box(QMessageBox::Information, QString::fromLatin1(kCaption),
                    QStringLiteral("Picture saved as\n") + qText(path.string()), QMessageBox::Ok,
                    this);
    box.exec();
  }
  takeKeys();
  return path;
}

void ViewFilesWindow::showReadout() {
  const std::vector<StationEntry>& stations = curve_->stations();
  const std::size_t bar = curve_->bar();
  const BarReadout readout = stations.empty() ? BarReadout{} : barReadout(stations[bar]);
  stationLabel_->setText(QStringLiteral("Stn: ") + qText(readout.station));
  positionLabel_->setText(stations.empty() ? QString() : qText(barPosition(bar, stations.size())));
  for (std::size_t trace = 0; trace < valueLabels_.size(); ++trace)
    valueLabels_[trace]->setText(
        qText(std::string(kTraceNames[trace]) + ": " + readout.values[trace]));
}

QString ViewFilesWindow::readout() const {
  QStringList texts{stationLabel_->text(), positionLabel_->text()};
  for (const QLabel* label : valueLabels_) texts << label->text();
  return texts.join(" | ");
}

void ViewFilesWindow::showList() { showPage(listPage_); }

// A closed dialog leaves no window active: the screen asks for the keys back.
void ViewFilesWindow::takeKeys() {
  activateWindow();
  setFocus();
}

void ViewFilesWindow::leave() {
  hide();
  emit closed();
}

void ViewFilesWindow::askForExport() {
  if (!file_) return;
  emit exportRequested(QString::fromStdString(filePath_.string()));
  takeKeys();
  if (mapPage_->isVisible()) {
    placeAsExported();
    updateMap();
  }
}

void ViewFilesWindow::warn(const QString& text) {
  {
    QMessageBox box(QMessageBox::Warning, QString::fromLatin1(kCaption), text, QMessageBox::Ok,
                    this);
    box.exec();
  }  // gone before the screen asks for the keys back
  takeKeys();
}

// Every key stays with this screen: one it does not use must not reach the
// main menu it covers.
void ViewFilesWindow::keyPressEvent(QKeyEvent* event) {
  const int keyCode = screenKeyCode(*event);
  if (typedAhead_)
    typedAhead_->push_back(keyCode);
  else
    onKey(keyCode);
}

void ViewFilesWindow::replayTypedAhead() {
  const std::vector<int> keys = std::move(*typedAhead_);
  typedAhead_.reset();
  for (const int keyCode : keys) onKey(keyCode);
}

void ViewFilesWindow::onKey(int keyCode) {
  const ViewerPage page = mapPage_->isVisible()     ? ViewerPage::kMap
                          : curvePage_->isVisible() ? ViewerPage::kProfile
                                                    : ViewerPage::kLineList;
  const ViewerKeyCommand command = viewerKeyCommand(page, keyCode);
  switch (command.action) {
    case ViewerAction::kNone:
      return;
    case ViewerAction::kLeave:
      return leave();
    case ViewerAction::kOpenFile:
      chooseFile();
      return;
    case ViewerAction::kExport:
      return askForExport();
    case ViewerAction::kBackToList:
      return showList();
    case ViewerAction::kMoveBar:
      return curve_->moveBar(command.move);
    case ViewerAction::kPreviousLine:
    case ViewerAction::kNextLine:
      return stepLine(command.action == ViewerAction::kPreviousLine ? -1 : 1);
    case ViewerAction::kViewLine:
      viewLine(lines_->currentRow());
      return;
    case ViewerAction::kShowMap:
      return showMap();
    case ViewerAction::kLeaveMap:
      return leaveMap();
    case ViewerAction::kSavePicture:
      savePicture();
      return;
    case ViewerAction::kChooseValue:
      return chooseValue(command.value);
    case ViewerAction::kMoveMap:
      return map_->moveView(command.mapMove);
  }
}

void ViewFilesWindow::stepLine(int step) {
  const int row = lines_->currentRow() + step;
  if (row >= 0 && row < lines_->count()) lines_->setCurrentRow(row);
}

}  // namespace gc40

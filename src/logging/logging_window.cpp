#include "logging/logging_window.h"

#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QScopeGuard>

#include "datafile/create_data_file.h"
#include "instrument/serial_ports.h"
#include "logging/command_keys.h"
#include "logging/line_station_dialogs.h"
#include "logging/logging_texts.h"
#include "logging/profile_view.h"
#include "logging/status_layout.h"
#include "logging/status_panel.h"
#include "platform/log_categories.h"
#include "platform/qt_text.h"
#include "ui/key_codes.h"
#include "ui/screen_layout.h"
#include "ui/warning_box.h"
#include "ui/window_geometry.h"

namespace gc40 {
namespace {

constexpr int kButtonHeight = 20;
constexpr int kButtonLeft = 2;

// Menu position in layout pixels: left-aligned in portrait, right-aligned in
// landscape.
constexpr QPoint kPortraitMenuAt(20, 10);
constexpr QPoint kLandscapeMenuAt(220, 10);

}  // namespace

LoggingWindow::LoggingWindow(LoggerContext& context, QWidget* mainWindow, int scale,
                             LoggingClock* clock)
    : QWidget(mainWindow),
      context_(context),
      scale_(scale),
      ownClock_(clock ? nullptr : std::make_unique<MachineClock>()),
      clock_(clock ? *clock : *ownClock_),
      session_(context.settings, framer_, *this, clock_),
      links_(context, session_, framer_, clock_) {
  setObjectName(QStringLiteral("LoggingWnd"));
  setAutoFillBackground(true);
  setPalette(QPalette(Qt::white));
  setFocusPolicy(Qt::StrongFocus);
  Settings& settings = context_.settings;
  const LayoutSize screen = layoutSize(settings.portraitScreen == 1);
  setFixedSize(screen.width * scale, screen.height * scale);

  status_ =
      new StatusPanel(settings.portraitScreen == 1, scale, StatusPanel::machineBattery(), this);
  fitProfileBetweenStatusAndButtons(settings, screen.height, status_->height() / scale);
  profile_ = new ProfileView(settings, context_.profileTraces, scale, this);
  profile_->setObjectName(QStringLiteral("5"));
  profile_->move(0, status_->height());
  createButtons();
  connect(&links_, &LoggingLinks::readingHandled, this, &LoggingWindow::repaintIfDue);
  connect(&links_, &LoggingLinks::timerTicked, this, &LoggingWindow::repaintIfDue);
  hide();
}

LoggingWindow::~LoggingWindow() { links_.stop(); }

// When a dialog or box closes, the keys come back to this screen rather than
// to whichever window Qt activates next. While it is up, GPS sentences are
// recorded but not shown.
auto LoggingWindow::keysBackAfterDialog() {
  session_.setGpsDisplaySuppressed(true);
  return qScopeGuard([this] {
    session_.setGpsDisplaySuppressed(false);
    if (isVisible()) activateWindow(), setFocus();
  });
}

void LoggingWindow::createButtons() {
  const bool portrait = context_.settings.portraitScreen == 1;
  for (int i = 0; i < kMonitorButtonCount; ++i)
    monitorButtons_[i] = makeButton(kFirstLoggingButtonId + i, kMonitorButtonLabels[i].data());
  for (int i = 0; i < kStandByButtonCount; ++i)
    standByButtons_[i] = makeButton(kFirstLoggingButtonId + i, kStandByButtonLabels[i].data());
  const auto& pauseLabels = portrait ? kPortraitPauseLabels : kLandscapePauseLabels;
  for (int i = 0; i < kPauseButtonCount; ++i)
    pauseButtons_[i] = makeButton(kFirstLoggingButtonId + i, pauseLabels[i].data());
  placeButtonRow({monitorButtons_.begin(), monitorButtons_.end()}, portrait ? 114 : 154,
                 portrait ? 118 : 158);
  placeButtonRow({standByButtons_.begin(), standByButtons_.end()}, portrait ? 38 : 50,
                 portrait ? 39 : 52);
  for (QPushButton* button : pauseButtons_) placeButtonRow({button}, portrait ? 236 : 312, 0);
}

QPushButton* LoggingWindow::makeButton(int id, const char* label) {
  QPushButton* button = makeScreenButton(this, id, label);
  button->hide();
  connect(button, &QPushButton::clicked, this, [this, id] { session_.onButton(id); });
  return button;
}

void LoggingWindow::placeButtonRow(const std::vector<QPushButton*>& row, int width, int pitch) {
  const int top = layoutSize(context_.settings.portraitScreen == 1).height - kButtonStripHeight + 1;
  for (std::size_t i = 0; i < row.size(); ++i) {
    const int left = kButtonLeft + static_cast<int>(i) * pitch;
    row[i]->setGeometry(left * scale_, top * scale_, width * scale_, kButtonHeight * scale_);
  }
}

void LoggingWindow::startRun(std::unique_ptr<QSerialPort> instrumentPort) {
  if (const std::optional<QString> gpsFailure = links_.start(std::move(instrumentPort)))
    showSerialPortFailure(this, kCannotOpenGpsPort, *gpsFailure);
  status_->showStatus(context_.settings, LoggingState::kMonitor, QString(), clock_.tickCount());
  if (links_.gpsRunning()) {
    const GpsStatus& gps = session_.gpsStatus();
    showGps({.activity = std::string(1, gps.gpsActivityMark),
             .fixCount = gpsFixCountText(gps.gpsFixCount)});
  }
  profile_->restart();
  setGeometry(parentWidget()->rect());
  show();
  raise();
  setFocus();
}

// Values and GPS fields change up to 60 times a second; the screen shows them
// four times a second, which the eye follows, as each repaint costs far more
// than the texts it draws. A reading after a quiet spell shows at once.
void LoggingWindow::repaintIfDue() {
  const std::uint32_t now = clock_.tickCount();
  if (now - lastRepaintTick_ < kRepaintGapMs) return;
  status_->showPending();
  profile_->showPending();
  lastRepaintTick_ = now;
}

bool LoggingWindow::event(QEvent* event) {
  // Taken before Qt's focus chain, so that Tab and Return reach the session.
  if (event->type() == QEvent::KeyPress && isVisible()) {
    setFocus();
    session_.onKey(screenKeyCode(*static_cast<QKeyEvent*>(event)));
    return true;
  }
  return QWidget::event(event);
}

void LoggingWindow::showButtons(const ButtonGroupShown& buttons) {
  const auto hideAll = [](auto& group) {
    for (QPushButton* button : group) button->hide(), button->setDefault(false);
  };
  hideAll(monitorButtons_);
  hideAll(standByButtons_);
  hideAll(pauseButtons_);
  QPushButton* highlighted = nullptr;
  switch (buttons.group) {
    case ButtonGroup::kMonitor:
      for (QPushButton* button : monitorButtons_) button->show();
      highlighted = monitorButtons_.at(std::size_t(buttons.selectedButton));
      break;
    case ButtonGroup::kStandBy:
      for (QPushButton* button : standByButtons_) button->show();
      highlighted = standByButtons_.at(std::size_t(buttons.selectedButton));
      break;
    case ButtonGroup::kPause:
      highlighted = pauseButtons_.at(std::size_t(buttons.pauseButton));
      highlighted->show();
      break;
  }
  highlighted->setDefault(true);
}

void LoggingWindow::showStateText(std::string_view text) {
  status_->setText(StatusField::kState, qText(text));
}

void LoggingWindow::showFileName(std::u16string_view text) {
  status_->setText(StatusField::kFile, qText(text));
}

void LoggingWindow::showLineAndStation(std::u16string_view line, std::string_view station) {
  status_->showLine(qText(line));
  status_->setText(StatusField::kStation, qText(station));
}

void LoggingWindow::showMessage(std::string_view text) { status_->showMessage(qText(text)); }

void LoggingWindow::showReading(const ReadingShown& shown) {
  status_->showReading(shown.reading, context_.settings);
  status_->setTextLater(StatusField::kTriggerIndicator, QString(QChar(shown.triggerIndicator)));
  if (shown.recorded) {
    status_->setTextLater(StatusField::kStation, qText(shown.station));
    if (!shown.count.empty()) status_->setTextLater(StatusField::kCount, qText(shown.count));
    emit readingRecorded(shown.recordedStation);
  }
  status_->refreshBattery(clock_.tickCount());
}

void LoggingWindow::showGps(const GpsFieldsShown& shown) {
  using F = StatusField;
  for (const auto& [field, text] : {std::pair{F::kGpsActivity, &shown.activity},
                                    {F::kGpsFixCount, &shown.fixCount},
                                    {F::kGpsSatellites, &shown.satellites},
                                    {F::kGpsFix, &shown.fix},
                                    {F::kGpsPdop, &shown.pdop}}) {
    if (*text) status_->setTextLater(field, qText(**text));
  }
}

void LoggingWindow::redraw() {
  update();
  profile_->update();
}

void LoggingWindow::addToProfile(const FiledValues& filed, std::int32_t readingsAtStation,
                                 TraceFlags& traceContinues) {
  profile_->addReading(filed, readingsAtStation, traceContinues);
}

void LoggingWindow::restartProfile() { profile_->restart(); }

void LoggingWindow::beep() { QApplication::beep(); }

std::optional<DataFile> LoggingWindow::runCreateFile() {
  const auto refocus = keysBackAfterDialog();
  std::optional<DataFile> file =
      createDataFile(this, context_.settings, context_.storage.dataFolder());
  if (file) {
    openFile_ = QFile::decodeName(file->path().c_str());
    qCDebug(lcFile, "created %s", qUtf8Printable(openFile_));
    file->setSyncHook([path = openFile_] { qCDebug(lcFile, "synced %s", qUtf8Printable(path)); });
  }
  return file;
}

bool LoggingWindow::runNewLine() {
  const auto refocus = keysBackAfterDialog();
  return runNewLineDialog(this, context_);
}

bool LoggingWindow::runNewStation() {
  const auto refocus = keysBackAfterDialog();
  return runNewStationDialog(this, context_.settings);
}

std::optional<std::u16string> LoggingWindow::runComment() {
  const auto refocus = keysBackAfterDialog();
  return runCommentDialog(this);
}

bool LoggingWindow::runScale() {
  const auto refocus = keysBackAfterDialog();
  return runProfileScaleDialog(this, context_);
}

void LoggingWindow::runDisplayOptions() {
  const auto refocus = keysBackAfterDialog();
  emit displayOptionsRequested();
}

std::optional<int> LoggingWindow::runPopupMenu() {
  const auto refocus = keysBackAfterDialog();
  QMenu menu(this);
  const auto add = [&menu](const char* label, int command) {
    menu.addAction(QString::fromLatin1(label))->setData(command);
  };
  add("&Scale", kScaleMenuCommand);
  add("&Display Options", kDisplayOptionsMenuCommand);
  menu.addSeparator();
  add("&Hide Menu", kHideMenuCommand);
  const bool portrait = context_.settings.portraitScreen == 1;
  QPoint at = (portrait ? kPortraitMenuAt : kLandscapeMenuAt) * scale_;
  if (!portrait) at.rx() -= menu.sizeHint().width();
  const QAction* chosen = menu.exec(mapToGlobal(at));
  if (!chosen) return std::nullopt;
  return chosen->data().toInt();
}

bool LoggingWindow::confirmExit() {
  const auto refocus = keysBackAfterDialog();
  QMessageBox box(QMessageBox::Question, qText(kConfirmExitCaption), qText(kConfirmExitText),
                  QMessageBox::Yes | QMessageBox::No, this);
  exitQuestion_ = &box;
  return box.exec() == QMessageBox::Yes;
}

void LoggingWindow::showNoConnection() {
  const auto refocus = keysBackAfterDialog();
  QMessageBox box(QMessageBox::Warning, qText(kNoConnectionCaption), qText(kNoConnectionText),
                  QMessageBox::Ok, this);
  box.exec();
}

// Every dialog this screen opens is its child. The input dialogs are
// cancelled and the exit question goes unanswered, which the session takes as
// No; boxes that only tell something stay up.
void LoggingWindow::closeDialogs() {
  for (QDialog* dialog : findChildren<QDialog*>()) {
    if (!dialog->isVisible()) continue;
    if (dialog == exitQuestion_)
      exitQuestion_->done(QMessageBox::No);
    else if (!qobject_cast<QMessageBox*>(dialog))
      dialog->close();
  }
}

// Shown once the reading that failed has been handled: the box's own loop
// must not run inside the port's read.
void LoggingWindow::showWriteFailure(const std::filesystem::path& path, std::string_view reason) {
  const QString file = QFile::decodeName(path.c_str());
  // The session has closed the file by now, or closes it next.
  qCDebug(lcFile, "write failed, closed %s: %.*s", qUtf8Printable(file),
          static_cast<int>(reason.size()), reason.data());
  openFile_.clear();
  emit writeFailed(file, QString::fromUtf8(reason.data(), qsizetype(reason.size())));
  if (shuttingDown_) return;
  const QString text = QString::fromStdString(writeFailureText(file.toStdString(), reason));
  QTimer::singleShot(0, this, [this, text] {
    const auto refocus = keysBackAfterDialog();
    showWarning(this, text);
  });
}

void LoggingWindow::shutDown() {
  shuttingDown_ = true;
  session_.shutDown();
}

void LoggingWindow::leave() {
  if (!openFile_.isEmpty()) qCDebug(lcFile, "closed %s", qUtf8Printable(openFile_));
  openFile_.clear();
  links_.stop();
  hide();
  emit runEnded();
}

}  // namespace gc40

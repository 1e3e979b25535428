#include "gps/monitor_gps_window.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QThread>

#include "gps/gps_line_list.h"
#include "gps/gps_message_dialog.h"
#include "instrument/port_reader.h"
#include "platform/log_categories.h"
#include "platform/qt_text.h"
#include "ui/screen_layout.h"

namespace gc40 {
namespace {

// Layout pixels, scaled like the main window.
constexpr int kEditHeight = 22;
constexpr int kButtonPlaces = 3;  // "&Go" and "&Pause" share the first
constexpr int kListFontPixels = 12;
constexpr int kSilenceCheckMs = 250;

// Around the command write the receiver's queues need a moment to settle.
constexpr unsigned long kPurgeWaitMs = 2;
constexpr unsigned long kAfterWriteMs = 5;

}  // namespace

MonitorGpsWindow::MonitorGpsWindow(const Settings& settings, QWidget* mainWindow, int scale,
                                   TickSource tickCount)
    : QWidget(mainWindow), settings_(settings), scale_(scale), tickCount_(std::move(tickCount)) {
  setObjectName(QStringLiteral("MonitorGPSWnd"));
  setWindowTitle(QStringLiteral("Monitor GPS"));
  setAutoFillBackground(true);
  setFocusPolicy(Qt::StrongFocus);
  createControls();
  placeControls();
  connect(&silenceTimer_, &QTimer::timeout, this, &MonitorGpsWindow::checkSilence);
  hide();
}

void MonitorGpsWindow::createControls() {
  list_ = new GpsLineList(this);
  QFont listFont = font();
  listFont.setPixelSize(kListFontPixels * scale_);
  list_->setFont(listFont);
  command_ = new QLineEdit(qText(kGpsMonitorCommand), this);
  go_ = makeScreenButton(this, kGpsGoId, "&Go");
  pause_ = makeScreenButton(this, kGpsPauseId, "&Pause");
  send_ = makeScreenButton(this, kGpsSendId, "&Send");
  exit_ = makeScreenButton(this, kGpsExitId, "E&xit");
  connect(go_, &QPushButton::clicked, this, &MonitorGpsWindow::go);
  connect(pause_, &QPushButton::clicked, this, &MonitorGpsWindow::pause);
  connect(send_, &QPushButton::clicked, this, &MonitorGpsWindow::send);
  connect(exit_, &QPushButton::clicked, this, &MonitorGpsWindow::leave);
  showPauseButton(true);
}

// The list takes what the command line and the button row leave.
void MonitorGpsWindow::placeControls() {
  const ScreenLayout layout(*this, settings_.portraitScreen, scale_);
  const int editTop = layout.buttonRowTop() - kScreenGap - kEditHeight;
  layout.place(list_, kScreenMargin, kScreenMargin, layout.innerWidth(),
               editTop - kScreenGap - kScreenMargin);
  layout.place(command_, kScreenMargin, editTop, layout.innerWidth(), kEditHeight);
  for (auto [button, index] : {std::pair{go_, 0}, {pause_, 0}, {send_, 1}, {exit_, 2}})
    layout.placeInButtonRow(button, index, kButtonPlaces);
}

void MonitorGpsWindow::startReader(std::unique_ptr<QSerialPort> gpsPort) {
  assembler_.reset();
  reader_ = new PortReader(
      std::move(gpsPort),
      [this](std::string_view bytes, std::uint32_t tick) {
        assembler_.feed(bytes, tick, [this](std::string_view text, std::uint32_t) {
          watch_.renew(tickCount_());
          addLine(text);
        });
      },
      nullptr, this);
  reader_->start();
  paused_ = false;
  watch_.renew(tickCount_());
  silenceTimer_.start(kSilenceCheckMs);
}

void MonitorGpsWindow::showOverMainWindow() {
  setGeometry(parentWidget()->rect());
  show();
  raise();
  // It opens as the Set GPS Port dialog closes, which leaves no window active.
  activateWindow();
  setFocus();
}

void MonitorGpsWindow::addLine(std::string_view text) {
  if (settings_.gpsEnabled == 1) list_->addLine(qText(text));
  if (isVisible()) setFocus();
}

void MonitorGpsWindow::checkSilence() {
  if (reader_ && !paused_ && watch_.due(tickCount_())) addLine(kNoDataLine);
}

void MonitorGpsWindow::showPauseButton(bool pauseShown) {
  pause_->setVisible(pauseShown);
  pause_->setEnabled(pauseShown);
  go_->setVisible(!pauseShown);
  go_->setEnabled(!pauseShown);
}

// The transmit queue, then the receive queue.
void MonitorGpsWindow::purge(unsigned long waitMs) {
  QSerialPort& port = reader_->port();
  port.clear(QSerialPort::Output);
  QThread::msleep(waitMs);
  port.clear(QSerialPort::Input);
  QThread::msleep(waitMs);
}

// A port closed by a failure has nothing to purge or write to.
PortReader* MonitorGpsWindow::openReader() {
  return reader_ && reader_->isOpen() ? reader_ : nullptr;
}

void MonitorGpsWindow::go() {
  if (PortReader* reader = openReader()) reader->start();  // purges what came while paused
  paused_ = false;
  showPauseButton(true);
}

void MonitorGpsWindow::pause() {
  if (reader_) reader_->pause();
  if (openReader()) purge();
  paused_ = true;
  showPauseButton(false);
}

void MonitorGpsWindow::send() {
  const std::optional<QString> text = runGpsMessageDialog(this, command_->text());
  if (isVisible()) activateWindow(), setFocus();
  if (!text) return;
  command_->setText(*text);
  if (openReader()) writeCommand(gpsCommandBytes(text->toStdU16String()));
  paused_ = false;
  showPauseButton(true);
}

// The reader stands still while the line goes out, and starts again without
// a purge so that the receiver's answer is listed.
void MonitorGpsWindow::writeCommand(const std::string& bytes) {
  if (!paused_) {
    reader_->pause();
    QThread::msleep(kPurgeWaitMs);
  }
  purge(kPurgeWaitMs);
  QSerialPort& port = reader_->port();
  qCDebug(lcGps, "sending %s", QByteArray::fromStdString(bytes).trimmed().constData());
  port.write(bytes.data(), static_cast<qint64>(bytes.size()));
  port.flush();
  QThread::msleep(kAfterWriteMs);
  reader_->resume();
}

void MonitorGpsWindow::leave() {
  silenceTimer_.stop();
  stopAndRelease(reader_);
  paused_ = false;
  showPauseButton(true);
  hide();
  emit closed();
}

void MonitorGpsWindow::keyPressEvent(QKeyEvent* event) {
  if (event->text() == QLatin1String("x") || event->text() == QLatin1String("X"))
    leave();
  else
    QWidget::keyPressEvent(event);
}

}  // namespace gc40

// The Monitor GPS screen over a pseudo-terminal that stands in for the receiver.

#include "gps/monitor_gps_window.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>

#include "gps/gps_line_list.h"
#include "gps/gps_message_dialog.h"
#include "instrument/serial_ports.h"
#include "support/dialog_checks.h"

namespace gc40 {
namespace {

using namespace gc40::testing;

// The screen over the main window, reading the receiver's pseudo-terminal
// from the start.
struct Bench : ShownLogger {
  explicit Bench(Orientation shape) : ShownLogger(shape) {
    receiver = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (receiver >= 0 && grantpt(receiver) == 0 && unlockpt(receiver) == 0)
      context.ports.paths[std::size_t(context.settings.gpsPort)] = ptsname(receiver);
    context.settings.gpsEnabled = 1;
    SerialPortOpening opening = openGpsPort(context.settings, context.ports);
    EXPECT_TRUE(opening.port) << opening.failure.toStdString();
    if (opening.port) monitor.startReader(std::move(opening.port));
    monitor.showOverMainWindow();
  }
  ~Bench() { close(receiver); }

  // In as many writes as the pseudo-terminal's buffer needs.
  void receive(std::string_view bytes) {
    for (int tries = 0; !bytes.empty() && tries < 1000; ++tries) {
      const ssize_t written = write(receiver, bytes.data(), bytes.size());
      if (written > 0) bytes.remove_prefix(std::size_t(written));
      QTest::qWait(written > 0 ? 0 : 10);
    }
    EXPECT_TRUE(bytes.empty());
    QTest::qWait(200);
  }

  std::string sent() {
    QTest::qWait(100);
    std::string bytes;
    char chunk[256];
    for (ssize_t got; (got = read(receiver, chunk, sizeof chunk)) > 0;) bytes.append(chunk, got);
    return bytes;
  }

  QPlainTextEdit* list() { return monitor.findChild<QPlainTextEdit*>(); }
  QStringList lines() {
    QStringList texts;
    for (QTextBlock block = list()->document()->begin(); block.isValid(); block = block.next())
      texts << block.text();
    if (texts == QStringList{""} && list()->document()->isEmpty()) return {};
    return texts;
  }
  // The last line's first and last characters are on screen.
  bool lastLineInView() {
    QTextCursor cursor(list()->document()->lastBlock());
    const QRect start = list()->cursorRect(cursor);
    cursor.movePosition(QTextCursor::EndOfBlock);
    const QRect viewport = list()->viewport()->rect();
    return viewport.contains(start) && viewport.contains(list()->cursorRect(cursor));
  }
  QPushButton* button(int id) { return monitor.findChild<QPushButton*>(QString::number(id)); }

  QString goOrPause() {
    QStringList shown;
    for (QPushButton* b : {button(kGpsGoId), button(kGpsPauseId)})
      if (b->isVisibleTo(&monitor) && b->isEnabled()) shown << b->text().remove('&');
    return shown.join('+');
  }

  std::uint32_t now = 0xFFFFF000u;  // the tick counter wraps during a test
  MonitorGpsWindow monitor{context.settings, &window, 1, [this] { return now; }};
  int receiver = -1;
};

// In both shapes; leaves monitor_gps_<shape>.png in the tests' build folder.
TEST(MonitorGpsTest, ListsLinesInViewPausesAndExitsOnX) {
  for (const Orientation shape : {Orientation::kPortrait, Orientation::kLandscape}) {
    Bench bench(shape);
    EXPECT_EQ(bench.monitor.geometry(), bench.window.rect());
    EXPECT_EQ(bench.goOrPause(), "Pause");
    bench.receive("\r\n");               // a blank line alone
    std::string burst = "junk$GPGGA,0";  // "$" restarts the line
    for (int i = 1; i <= 30; ++i) burst += "\r\n$GPGGA," + std::to_string(i);
    bench.receive(burst + "\r\r\n$GPRMC,unfinished");
    ASSERT_EQ(bench.lines().size(), 32);
    EXPECT_EQ(bench.lines()[0], "");
    EXPECT_EQ(bench.lines()[1], "$GPGGA,0");
    EXPECT_EQ(bench.lines().back(), QString::fromUtf8("$GPGGA,30\uFFFD"));
    EXPECT_TRUE(bench.lastLineInView());
    QPlainTextEdit* list = bench.list();
    for (const int id : {kGpsGoId, kGpsPauseId, kGpsSendId, kGpsExitId}) {
      QPushButton* button = bench.button(id);
      const QString shown = QString(button->text()).remove('&');
      EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(shown) + 8) << id;
      EXPECT_TRUE(bench.monitor.rect().contains(button->geometry())) << id;
      EXPECT_FALSE(button->geometry().intersects(list->geometry())) << id;
    }
    const QString name = shape == Orientation::kPortrait ? "portrait" : "landscape";
    EXPECT_TRUE(bench.window.grab().toImage().save(
        QStringLiteral(GC40_TEST_OUTPUT_DIR "/monitor_gps_%1.png").arg(name)));

    bench.button(kGpsPauseId)->click();
    EXPECT_EQ(bench.goOrPause(), "Go");
    bench.receive("$GPGGA,while paused\r\n");
    bench.button(kGpsGoId)->click();
    EXPECT_EQ(bench.goOrPause(), "Pause");
    bench.receive("$GPRMC,after\r\n");
    EXPECT_EQ(bench.lines().mid(32), QStringList{"$GPRMC,after"});

    // Only the newest lines stay, each of them, the last in view even when
    // the list was scrolled back.
    list->verticalScrollBar()->setValue(0);
    std::string flood;
    const std::string wraps(80, ',');
    for (int i = 1; i <= 1500; ++i) flood += "$GPGSV," + std::to_string(i) + wraps + "\r\n";
    bench.receive(flood);
    QStringList newest;
    for (int i = 1501 - GpsLineList::kMaxLines; i <= 1500; ++i)
      newest << "$GPGSV," + QString::number(i) + QString::fromStdString(wraps);
    EXPECT_EQ(bench.lines(), newest);
    EXPECT_TRUE(bench.lastLineInView());

    bench.button(kGpsPauseId)->click();
    QTest::keyClick(&bench.monitor, Qt::Key_X);
    EXPECT_FALSE(bench.monitor.isVisible());
    EXPECT_EQ(bench.goOrPause(), "Pause");
    pollfd receiver{bench.receiver, POLLIN, 0};
    ASSERT_EQ(poll(&receiver, 1, 1000), 1);
    EXPECT_TRUE(receiver.revents & POLLHUP);  // the port is closed
  }
}

TEST(MonitorGpsTest, SendWritesTheTypedLineAndResumesEvenWhenPaused) {
  Bench bench(Orientation::kLandscape);
  bench.button(kGpsPauseId)->click();
  const auto sendVia = [&](std::function<void(QDialog*)> drive) {
    ModalScript script({onDialog(std::move(drive))}, 5000);
    bench.button(kGpsSendId)->click();
    EXPECT_TRUE(script.finished() && !script.timedOut());
  };
  sendVia([](QDialog* dialog) {
    checkLook(dialog, kLayouts[1], "gps_message", "GPS Message",
              {{kGpsMessageLabelId, {"Enter GPS message to be sent", "$PASHS,NME,SAT,A,ON"}}});
    type(dialog, kGpsMessageEditId, "$PASHS,RST");
    click(dialog, kIdCancel);
  });
  EXPECT_EQ(bench.sent(), "");
  EXPECT_EQ(bench.goOrPause(), "Go");

  const QString typed = QString::fromUtf8("$PASHS,NME,GGA,A,ON\u20AC");
  sendVia([&](QDialog* dialog) {
    type(dialog, kGpsMessageEditId, typed);
    click(dialog, kIdOk);
  });
  EXPECT_EQ(bench.sent(), "$PASHS,NME,GGA,A,ON\x80\r\n");  // Windows-1252
  EXPECT_EQ(bench.monitor.findChild<QLineEdit*>()->text(), typed);
  EXPECT_EQ(bench.goOrPause(), "Pause");
  bench.receive("$PASHR,ACK\r\n");
  EXPECT_EQ(bench.lines(), QStringList{"$PASHR,ACK"});
}

TEST(MonitorGpsTest, NoDataAfterMoreThanSevenSilentSecondsWhileRunning) {
  Bench bench(Orientation::kLandscape);
  const auto after = [&](std::uint32_t ms) {
    bench.now += ms;
    QTest::qWait(500);  // two checks or more
    return bench.lines();
  };
  EXPECT_EQ(after(7000), QStringList());
  EXPECT_EQ(after(1), QStringList{"NO DATA"});  // across the counter's wrap
  EXPECT_EQ(after(7000), QStringList{"NO DATA"});
  bench.receive("$GPGGA,1\r\n");  // a line renews the time too
  EXPECT_EQ(after(7000).size(), 2);
  EXPECT_EQ(after(1).back(), "NO DATA");
  bench.button(kGpsPauseId)->click();
  EXPECT_EQ(after(60000).size(), 3);
}

}  // namespace
}  // namespace gc40

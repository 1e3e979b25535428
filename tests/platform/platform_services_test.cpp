// The machine services gc40 takes from the desktop: clocks, the port map, one
// copy per storage root, and keeping the screen awake.

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QSignalSpy>
#include <QTest>
#include <chrono>
#include <ctime>
#include <sstream>
#include <thread>

#include "platform/clock.h"
#include "platform/keep_alive.h"
#include "platform/port_map.h"
#include "platform/single_instance.h"
#include "support/child_process.h"
#include "support/temp_folder.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;

TEST(Clock, TicksCountMillisecondsAndLocalTimeIsNow) {
  const std::uint32_t before = platform::tickCount();
  std::this_thread::sleep_for(100ms);
  const std::uint32_t elapsed = platform::tickCount() - before;  // wraps like the handheld's
  EXPECT_TRUE(elapsed >= 99 && elapsed < 10000) << elapsed;
  const std::time_t now = std::time(nullptr);
  std::tm expected{};
  localtime_r(&now, &expected);
  const LocalTime local = platform::localTimeNow();
  EXPECT_EQ(std::pair(local.year, local.day), std::pair(expected.tm_year + 1900, expected.tm_mday));
  EXPECT_TRUE(local.millisecond >= 0 && local.millisecond < 1000);
}

// Comments, blank lines, spaces and either case are allowed and the later line
// wins; each bad line is named and leaves its port at the default.
TEST(PortMap, EditedFileIsReadAndEachBadLineNamed) {
  const ParsedPortMap parsed = parsePortMap(
      "# my tablet\r\nCOM1:=/dev/ttyS0\r\n\r\n  com12: = /dev/serial/by-id/usb-GPS if00  \r\n"
      "COM13:=/dev/ttyUSB3\nCOM3:=\n; old\nCOM2:/dev/ttyACM0\nCOM2=/dev/ttyACM0\nCOM2:=/dev/x");
  const auto& paths = parsed.map.paths;
  EXPECT_EQ(std::tuple(paths[0], paths[11], paths[1], paths[2]),
            std::tuple("/dev/ttyS0", "/dev/serial/by-id/usb-GPS if00", "/dev/x", "/dev/ttyUSB2"));
  ASSERT_EQ(parsed.problems.size(), 3u);
  EXPECT_EQ(std::tuple(parsed.problems[0].lineNumber, parsed.problems[0].line,
                       parsed.problems[2].lineNumber),
            std::tuple(5, "COM13:=/dev/ttyUSB3", 8));
  EXPECT_EQ(std::pair(parseComPortName("COM0:"), parseComPortName("COM1x")),
            std::pair(std::optional<int>(), std::optional<int>()));
}

TEST(PortMap, FileIsCreatedOnFirstRunAndMalformedLinesReported) {
  testing::TempFolder folder;
  std::ostringstream warnings;
  EXPECT_EQ(loadPortMap(folder.path(), warnings).paths, defaultPortMap().paths);
  const std::string written = testing::readBytes(folder.path() / "PORTS.INI");
  EXPECT_NE(written.find("\nCOM12:=/dev/ttyUSB11\n"), std::string::npos);
  EXPECT_TRUE(parsePortMap(written).problems.empty());
  testing::writeBytes(folder.path() / "PORTS.INI", written + "COM5 /dev/ttyS4\nCOM6:=/dev/S5\n");
  EXPECT_EQ(loadPortMap(folder.path(), warnings).paths[5], "/dev/S5");
  EXPECT_NE(warnings.str().find((folder.path() / "PORTS.INI:15:").string()), std::string::npos)
      << warnings.str();
}

TEST(SingleInstance, TheSecondCopyOfARootRaisesTheFirstOtherRootsAreFree) {
  testing::TestApplication application;
  testing::TempFolder folder;
  SingleInstance first(folder.path());
  QSignalSpy raised(&first, &SingleInstance::raiseRequested);
  ASSERT_TRUE(first.isFirst());
  {
    const SingleInstance second(folder.path());
    EXPECT_FALSE(second.isFirst());
    EXPECT_TRUE(second.askFirstToRaise());
  }
  EXPECT_TRUE(raised.wait(2000));
  std::filesystem::create_directories(folder.path() / "other");
  EXPECT_TRUE(SingleInstance(folder.path() / "other").isFirst());
}

class FakeScreenSaver : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

 public:
  QStringList calls;

 public slots:
  uint Inhibit(const QString& application, const QString& reason) {
    calls << "Inhibit " + application + ": " + reason;
    return 42;
  }
  void UnInhibit(uint cookie) { calls << "UnInhibit " + QString::number(cookie); }
  void SimulateUserActivity() { calls << "SimulateUserActivity"; }
};

// A screen saver on a private session bus: inhibited, told of activity at
// once, and given the inhibition back at the end.
TEST(KeepAlive, InhibitsTheScreenSaverAndReportsActivity) {
  testing::TestApplication application;
  testing::ChildProcess bus("/usr/bin/dbus-daemon", {"--session", "--nofork", "--print-address"});
  const std::optional<std::string> address = bus.readLine(10s);
  ASSERT_TRUE(address && !address->empty());
  QDBusConnection service =
      QDBusConnection::connectToBus(QString::fromStdString(*address), "screen-saver");
  FakeScreenSaver screenSaver;
  ASSERT_TRUE(service.registerObject("/org/freedesktop/ScreenSaver", &screenSaver,
                                     QDBusConnection::ExportAllSlots));
  ASSERT_TRUE(service.registerService("org.freedesktop.ScreenSaver"));
  {
    // No system bus here: that half must simply do nothing.
    KeepAlive keepAlive(QDBusConnection::connectToBus(QString::fromStdString(*address), "logger"),
                        QDBusConnection(QString()));
    keepAlive.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return screenSaver.calls.size() >= 2; }, 5000));
    QTest::qWait(100);  // the cookie comes back
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return screenSaver.calls.size() >= 3; }, 5000));
  EXPECT_EQ(screenSaver.calls, QStringList({"Inhibit gc40: Logging survey data",
                                            "SimulateUserActivity", "UnInhibit 42"}));
  QDBusConnection::disconnectFromBus("logger");
  QDBusConnection::disconnectFromBus("screen-saver");
}

}  // namespace
}  // namespace gc40

#include "platform_services_test.moc"

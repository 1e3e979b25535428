// The machine services gc40 takes from the desktop: clocks, one copy per
// storage root, and keeping the screen awake.

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QSignalSpy>
#include <QTest>
#include <chrono>
#include <ctime>
#include <thread>

#include "platform/clock.h"
#include "platform/keep_alive.h"
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

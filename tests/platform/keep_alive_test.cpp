// The keep-alive talks to a screen saver on a private session bus exactly as
// a desktop's would be talked to: it inhibits, reports activity at once, and
// gives the inhibition back when it ends.

#include "platform/keep_alive.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QTest>

#include "support/child_process.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;

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
    QDBusConnection client =
        QDBusConnection::connectToBus(QString::fromStdString(*address), "logger");
    // No system bus here: that half must simply do nothing.
    KeepAlive keepAlive(client, QDBusConnection(QString()));
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

#include "keep_alive_test.moc"

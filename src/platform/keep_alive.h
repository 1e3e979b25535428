#pragma once
// Keeps the machine awake while the logger runs: a survey must not stop
// because the screen blanked or the laptop suspended on a long line. Asks the
// desktop's screen saver and logind for an inhibition over D-Bus and, every
// 59 s, reports user activity; where there is no D-Bus it does nothing.

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QTimer>
#include <optional>

namespace gc40 {

class KeepAlive : public QObject {
  Q_OBJECT

 public:
  static constexpr int kIntervalMs = 59000;

  // The buses to use; tests pass a private one.
  KeepAlive(QDBusConnection sessionBus, QDBusConnection systemBus, QObject* parent = nullptr);
  explicit KeepAlive(QObject* parent = nullptr);
  ~KeepAlive() override;

  void start();

 private:
  void inhibitScreenSaver();
  void inhibitSleep();
  void reportActivity();
  template <typename Answer, typename Use>
  void callAsync(QDBusConnection& bus, const QDBusMessage& call, Use use);

  QDBusConnection sessionBus_;
  QDBusConnection systemBus_;
  QTimer timer_;
  std::optional<uint> screenSaverCookie_;
  QDBusUnixFileDescriptor sleepLock_;  // held open for the program's life
};

}  // namespace gc40

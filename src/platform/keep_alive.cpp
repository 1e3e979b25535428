#include "platform/keep_alive.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace gc40 {
namespace {

const QString kScreenSaverService = QStringLiteral("org.freedesktop.ScreenSaver");
const QString kScreenSaverPath = QStringLiteral("/org/freedesktop/ScreenSaver");
const QString kLogindService = QStringLiteral("org.freedesktop.login1");
const QString kLogindPath = QStringLiteral("/org/freedesktop/login1");
const QString kLogindManager = QStringLiteral("org.freedesktop.login1.Manager");
const QString kApplication = QStringLiteral("gc40");
const QString kReason = QStringLiteral("Logging survey data");

QDBusMessage screenSaverCall(const QString& method) {
  return QDBusMessage::createMethodCall(kScreenSaverService, kScreenSaverPath, kScreenSaverService,
                                        method);
}

}  // namespace

KeepAlive::KeepAlive(QDBusConnection sessionBus, QDBusConnection systemBus, QObject* parent)
    : QObject(parent), sessionBus_(std::move(sessionBus)), systemBus_(std::move(systemBus)) {
  timer_.setInterval(kIntervalMs);
  connect(&timer_, &QTimer::timeout, this, &KeepAlive::reportActivity);
}

KeepAlive::KeepAlive(QObject* parent)
    : KeepAlive(QDBusConnection::sessionBus(), QDBusConnection::systemBus(), parent) {}

KeepAlive::~KeepAlive() {
  if (screenSaverCookie_ && sessionBus_.isConnected()) {
    QDBusMessage call = screenSaverCall(QStringLiteral("UnInhibit"));
    call << *screenSaverCookie_;
    sessionBus_.call(call, QDBus::NoBlock);
  }
}

void KeepAlive::start() {
  inhibitScreenSaver();
  inhibitSleep();
  reportActivity();
  timer_.start();
}

// Every call is asynchronous: a slow or missing service must never hold up
// the window. `use` gets the answer when there is one.
template <typename Answer, typename Use>
void KeepAlive::callAsync(QDBusConnection& bus, const QDBusMessage& call, Use use) {
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [use](QDBusPendingCallWatcher* w) {
    const QDBusPendingReply<Answer> reply = *w;
    if (reply.isValid()) use(reply.value());
    w->deleteLater();
  });
}

void KeepAlive::inhibitScreenSaver() {
  if (!sessionBus_.isConnected()) return;
  QDBusMessage call = screenSaverCall(QStringLiteral("Inhibit"));
  call << kApplication << kReason;
  callAsync<uint>(sessionBus_, call, [this](uint cookie) { screenSaverCookie_ = cookie; });
}

void KeepAlive::inhibitSleep() {
  if (!systemBus_.isConnected()) return;
  QDBusMessage call =
      QDBusMessage::createMethodCall(kLogindService, kLogindPath, kLogindManager, "Inhibit");
  call << QStringLiteral("sleep:idle") << kApplication << kReason << QStringLiteral("block");
  callAsync<QDBusUnixFileDescriptor>(
      systemBus_, call, [this](const QDBusUnixFileDescriptor& lock) { sleepLock_ = lock; });
}

void KeepAlive::reportActivity() {
  if (!sessionBus_.isConnected()) return;
  sessionBus_.call(screenSaverCall(QStringLiteral("SimulateUserActivity")), QDBus::NoBlock);
}

}  // namespace gc40

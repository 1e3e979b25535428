#include "platform/single_instance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalSocket>

namespace gc40 {

namespace {

constexpr int kAskTimeoutMs = 2000;

QString lockPath(const std::filesystem::path& root) {
  return QString::fromStdString((root / ".gc40.lock").string());
}

// Socket names are short on Unix, so the folder is named by its hash.
QString serverName(const std::filesystem::path& root) {
  const QString folder = QDir(QString::fromStdString(root.string())).canonicalPath();
  const QByteArray hash = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1);
  return QStringLiteral("gc40-") + QString::fromLatin1(hash.toHex().left(16));
}

}  // namespace

SingleInstance::SingleInstance(const std::filesystem::path& storageRoot, QObject* parent)
    : QObject(parent), lock_(lockPath(storageRoot)), serverName_(serverName(storageRoot)) {
  // Held for the whole run: only a lock whose process is gone counts as stale,
  // never one that is merely old.
  lock_.setStaleLockTime(0);
  connect(&server_, &QLocalServer::newConnection, this, [this] {
    while (QLocalSocket* asker = server_.nextPendingConnection()) {
      asker->disconnectFromServer();
      asker->deleteLater();
      emit raiseRequested();
    }
  });
}

bool SingleInstance::claim() {
  if (lock_.tryLock(0)) {
    QLocalServer::removeServer(serverName_);  // left behind by a copy that crashed
    server_.listen(serverName_);
    return true;
  }
  QLocalSocket socket;
  socket.connectToServer(serverName_);
  socket.waitForConnected(kAskTimeoutMs);
  return false;
}

}  // namespace gc40

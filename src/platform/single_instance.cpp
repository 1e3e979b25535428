#include "platform/single_instance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLocalSocket>

namespace gc40 {
namespace {

QString pathText(const std::filesystem::path& path) { return QFile::decodeName(path.c_str()); }

// The same root always gives the same name, short enough for a socket path.
QString serverNameFor(const std::filesystem::path& storageRoot) {
  std::error_code ignored;
  const std::filesystem::path canonical = std::filesystem::weakly_canonical(storageRoot, ignored);
  const QByteArray hash =
      QCryptographicHash::hash(QFile::encodeName(pathText(canonical)), QCryptographicHash::Sha1);
  return QDir::temp().filePath(QStringLiteral("gc40-") +
                               QString::fromLatin1(hash.toHex().left(16)));
}

}  // namespace

SingleInstance::SingleInstance(const std::filesystem::path& storageRoot, QObject* parent)
    : QObject(parent),
      lock_(pathText(storageRoot / "gc40.lock")),
      serverName_(serverNameFor(storageRoot)) {
  lock_.setStaleLockTime(0);  // held for the whole run; only a dead owner frees it
  first_ = lock_.tryLock(0);
  if (!first_) return;
  QLocalServer::removeServer(serverName_);  // left by a copy that died
  server_ = std::make_unique<QLocalServer>();
  connect(server_.get(), &QLocalServer::newConnection, this, &SingleInstance::answerSecondCopy);
  server_->listen(serverName_);
}

void SingleInstance::answerSecondCopy() {
  while (QLocalSocket* socket = server_->nextPendingConnection()) {
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    socket->disconnectFromServer();
    emit raiseRequested();
  }
}

bool SingleInstance::askFirstToRaise(int timeoutMs) const {
  QLocalSocket socket;
  socket.connectToServer(serverName_);
  return socket.waitForConnected(timeoutMs);
}

}  // namespace gc40

#pragma once
// One logger per storage root: two copies writing the same settings and data
// files would spoil both. The first copy holds a lock file in the storage
// root and listens on a local socket; a second copy asks it to come to the
// front and then leaves.

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>
#include <filesystem>
#include <memory>

namespace gc40 {

class SingleInstance : public QObject {
  Q_OBJECT

 public:
  explicit SingleInstance(const std::filesystem::path& storageRoot, QObject* parent = nullptr);

  // True for the copy that holds the lock (a lock left by a copy that died
  // is taken over).
  bool isFirst() const { return first_; }

  // From a second copy: asks the first to raise its window. False when it
  // could not be reached.
  bool askFirstToRaise(int timeoutMs = 2000) const;

 signals:
  void raiseRequested();

 private:
  void answerSecondCopy();

  QLockFile lock_;
  QString serverName_;
  std::unique_ptr<QLocalServer> server_;
  bool first_ = false;
};

}  // namespace gc40

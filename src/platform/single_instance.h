#pragma once
// Only one copy of the logger runs on a storage folder: two copies would
// write the same settings and data files. The first copy holds a lock file in
// the storage root and listens on a local socket; a later copy finds the lock,
// asks the first one to come to the front and gives up.

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>
#include <filesystem>

namespace gc40 {

class SingleInstance : public QObject {
  Q_OBJECT

 public:
  explicit SingleInstance(const std::filesystem::path& storageRoot, QObject* parent = nullptr);

  // True when this copy is the one that runs. False when another copy holds
  // the folder; that copy has then been asked to come forward.
  bool claim();

 signals:
  // A later copy asked this one to show itself.
  void raiseRequested();

 private:
  QLockFile lock_;
  QString serverName_;
  QLocalServer server_;
};

}  // namespace gc40

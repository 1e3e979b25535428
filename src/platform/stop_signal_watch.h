#pragma once
// A shutdown, a closed lid or Ctrl-C (SIGTERM, SIGHUP, SIGINT) reaches the
// program as a Qt signal from its own event loop, so it can pause a
// recording, close the file and clean up before it exits.

#include <QObject>
#include <QSocketNotifier>
#include <memory>
#include <string>

namespace gc40 {

class StopSignalWatch : public QObject {
  Q_OBJECT
 public:
  explicit StopSignalWatch(QObject* parent = nullptr);

  // False, with the reason in `error`, when the signals could not be caught.
  bool start(std::string* error);

 signals:
  // The first stop signal; those after it are dropped, as the program is
  // already on its way out.
  void stopRequested();

 private:
  void readSignals();

  int fd_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
  bool requested_ = false;
};

}  // namespace gc40

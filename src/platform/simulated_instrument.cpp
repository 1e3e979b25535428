#include "platform/simulated_instrument.h"

#include <sys/prctl.h>

#include <QCoreApplication>
#include <csignal>

namespace gc40 {
namespace {

constexpr int kStartTimeoutMs = 5000;
constexpr int kStopTimeoutMs = 2000;
constexpr char kReadyPrefix[] = "gc40-sim: ready ";

QString simulatorPath() { return QCoreApplication::applicationDirPath() + "/gc40-sim"; }

}  // namespace

SimulatedInstrument::SimulatedInstrument() {
  // Its complaints reach the operator's terminal; its ready line comes to us.
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  // However gc40 ends (killed included), the simulator goes with it.
  process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

SimulatedInstrument::~SimulatedInstrument() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.terminate();
  if (!process_.waitForFinished(kStopTimeoutMs)) process_.kill(), process_.waitForFinished();
}

bool SimulatedInstrument::start(std::string* error) {
  const QString program = simulatorPath();
  folder_.emplace();
  if (!folder_->isValid()) {
    *error =
        "cannot make a folder for the simulator's ports: " + folder_->errorString().toStdString();
    return false;
  }
  // A survey over a made-up ground, walked back and forth for as long as gc40
  // runs, so the demo shows anomalies and records a file worth exporting.
  process_.start(program, {"--link", folder_->filePath("instrument"), "--gps-link",
                           folder_->filePath("gps"), "--survey", "--repeat"});
  if (!process_.waitForStarted(kStartTimeoutMs)) {
    *error = "cannot start " + program.toStdString() + ": " + process_.errorString().toStdString();
    return false;
  }
  // The instrument's ready line comes first, then the GPS receiver's.
  for (std::string* path : {&devicePath_, &gpsDevicePath_}) {
    if (!readReadyLine(path)) {
      *error = program.toStdString() + " did not say it was ready";
      return false;
    }
  }
  return true;
}

bool SimulatedInstrument::readReadyLine(std::string* path) {
  while (process_.canReadLine() || process_.waitForReadyRead(kStartTimeoutMs)) {
    if (!process_.canReadLine()) continue;
    const QString line = QString::fromLocal8Bit(process_.readLine()).trimmed();
    if (!line.startsWith(kReadyPrefix)) continue;
    *path = line.mid(int(sizeof kReadyPrefix) - 1).toStdString();
    return true;
  }
  return false;
}

}  // namespace gc40

#pragma once
// The instrument and GPS receiver of a --simulate run: gc40-sim, started beside
// gc40 with a pseudo-terminal for each. Each Monitor/Log run reads them in
// place of whatever ports the settings name, so the operator's port map stays
// as it is.

#include <QProcess>
#include <QTemporaryDir>
#include <optional>
#include <string>

namespace gc40 {

class SimulatedInstrument {
 public:
  SimulatedInstrument();
  SimulatedInstrument(const SimulatedInstrument&) = delete;
  SimulatedInstrument& operator=(const SimulatedInstrument&) = delete;
  ~SimulatedInstrument();

  // Starts the simulator next to this program and waits until both its ports
  // are there. False with a message naming what failed.
  bool start(std::string* error);
  // The device paths a run opens.
  const std::string& devicePath() const { return devicePath_; }
  const std::string& gpsDevicePath() const { return gpsDevicePath_; }

 private:
  bool readReadyLine(std::string* path);

  std::optional<QTemporaryDir> folder_;  // made only for a simulated run
  QProcess process_;
  std::string devicePath_;
  std::string gpsDevicePath_;
};

}  // namespace gc40

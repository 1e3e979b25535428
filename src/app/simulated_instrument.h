#pragma once
// The instrument of a --simulate run: gc40-sim, started beside gc40 on a
// pseudo-terminal of its own. Each Monitor/Log run reads it in place of
// whatever port the settings name, so the operator's port map stays as it is.

#include <QProcess>
#include <QTemporaryDir>
#include <string>

namespace gc40 {

class SimulatedInstrument {
 public:
  SimulatedInstrument();
  SimulatedInstrument(const SimulatedInstrument&) = delete;
  SimulatedInstrument& operator=(const SimulatedInstrument&) = delete;
  ~SimulatedInstrument();

  // Starts the simulator next to this program and waits until its port is
  // there. False with a message naming what failed.
  bool start(std::string* error);
  // The device path a run opens.
  const std::string& devicePath() const { return devicePath_; }

 private:
  QTemporaryDir folder_;
  QProcess process_;
  std::string devicePath_;
};

}  // namespace gc40

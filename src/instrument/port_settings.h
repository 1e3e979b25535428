#pragma once
// What each serial port is set to, worked out from the settings without a
// port, so the 7-bit, parity and modem-line rules are testable (a
// pseudo-terminal forces 8N1 and refuses DTR/RTS).

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/port_map.h"
#include "settings/settings.h"

namespace gc40 {

enum class SerialParity { kNone, kEven, kOdd };
enum class SerialStopBits { kOne, kTwo };

// A member left empty keeps whatever the port had.
struct SerialLineSettings {
  std::optional<std::int32_t> baudRate;
  std::optional<std::int32_t> dataBits;
  std::optional<SerialParity> parity;
  std::optional<SerialStopBits> stopBits;
  bool softwareFlowControl = false;  // XON/XOFF in both directions
  std::optional<bool> dataTerminalReady;
  std::optional<bool> requestToSend;
  int openAttempts = 1;
};

// The instrument cable: 9600 8N1, DTR on, RTS off, no flow control, one try.
SerialLineSettings instrumentLineSettings();

// The GPS receiver: speed and framing from the settings (an index outside its
// list keeps the port's value), XON/XOFF on, DTR and RTS untouched, and up to
// ten tries because a receiver's port is often still held for a moment.
SerialLineSettings gpsLineSettings(const Settings& settings);

// The operator's name for a port ("COM1:") and the device it maps to (empty
// when the map has no such port).
struct SerialPortTarget {
  std::string name;
  std::string devicePath;
};
SerialPortTarget instrumentPortTarget(const Settings& settings, const PortMap& ports);
SerialPortTarget gpsPortTarget(const Settings& settings, const PortMap& ports);

// Calls tryOpen up to `attempts` times, back to back, until it succeeds.
// Returns the number of the successful attempt, or nullopt.
std::optional<int> openWithAttempts(int attempts, const std::function<bool()>& tryOpen);

}  // namespace gc40

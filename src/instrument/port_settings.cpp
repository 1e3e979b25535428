#include "instrument/port_settings.h"

#include <array>

#include "settings/setting_choices.h"

namespace gc40 {
namespace {

constexpr std::array<std::int32_t, 6> kGpsBaudRates = {4800, 9600, 19200, 38400, 57600, 115200};
constexpr std::array<SerialParity, 3> kGpsParities = {SerialParity::kNone, SerialParity::kEven,
                                                      SerialParity::kOdd};
constexpr std::array<std::int32_t, 2> kGpsDataBits = {7, 8};
constexpr std::array<SerialStopBits, 2> kGpsStopBits = {SerialStopBits::kOne, SerialStopBits::kTwo};

// The value a stored index picks from `values`, or nothing for an index that
// names no item of the setting's list.
template <typename T, std::size_t N>
std::optional<T> pick(const Settings& settings, const IndexSetting& setting,
                      const std::array<T, N>& values) {
  const std::optional<std::int32_t> index = validIndex(settings, setting);
  if (!index || *index >= static_cast<std::int32_t>(N)) return std::nullopt;
  return values[static_cast<std::size_t>(*index)];
}

SerialPortTarget targetFor(std::int32_t index, const PortMap& ports) {
  return {comPortName(index), devicePathFor(ports, index)};
}

}  // namespace

SerialLineSettings instrumentLineSettings() {
  SerialLineSettings line;
  line.baudRate = 9600;
  line.dataBits = 8;
  line.parity = SerialParity::kNone;
  line.stopBits = SerialStopBits::kOne;
  line.dataTerminalReady = true;
  line.requestToSend = false;
  return line;
}

SerialLineSettings gpsLineSettings(const Settings& settings) {
  SerialLineSettings line;
  line.baudRate = pick(settings, kGpsBaudSetting, kGpsBaudRates);
  line.dataBits = pick(settings, kGpsDataBitsSetting, kGpsDataBits);
  line.parity = pick(settings, kGpsParitySetting, kGpsParities);
  line.stopBits = pick(settings, kGpsStopBitsSetting, kGpsStopBits);
  line.softwareFlowControl = true;
  line.openAttempts = 10;
  return line;
}

SerialPortTarget instrumentPortTarget(const Settings& settings, const PortMap& ports) {
  return targetFor(settings.instrumentPort, ports);
}

SerialPortTarget gpsPortTarget(const Settings& settings, const PortMap& ports) {
  return targetFor(settings.gpsPort, ports);
}

std::optional<int> openWithAttempts(int attempts, const std::function<bool()>& tryOpen) {
  for (int attempt = 1; attempt <= attempts; ++attempt) {
    if (tryOpen()) return attempt;
  }
  return std::nullopt;
}

}  // namespace gc40

#include "platform/serial_port_info.h"

#include <QSerialPortInfo>

namespace gc40 {

std::vector<SerialAdapter> findSerialAdapters() {
  std::vector<SerialAdapter> adapters;
  for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
    const std::string device = info.systemLocation().toStdString();
    adapters.push_back({device, info.description().toStdString(), info.manufacturer().toStdString(),
                        linkLeadingTo(kSerialByIdFolder, device)});
  }
  return adapters;
}

}  // namespace gc40

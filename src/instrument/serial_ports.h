#pragma once
// Opening the instrument and GPS ports through the port map. The ports are
// read on the UI thread; a failure leaves the message to the caller, who owns
// the window the message box belongs to.

#include <QSerialPort>
#include <QString>
#include <memory>

#include "instrument/port_settings.h"
#include "platform/port_map.h"
#include "settings/settings.h"

class QWidget;

namespace gc40 {

inline constexpr char kSerialPortCaption[] = "Serial Port";
inline constexpr char kCannotOpenInstrumentPort[] = "Cannot open GC40 port";
inline constexpr char kCannotOpenGpsPort[] = "Cannot open GPS port";

struct SerialPortOpening {
  std::unique_ptr<QSerialPort> port;  // null when the port could not be opened
  QString failure;                    // "COM1: (/dev/ttyUSB0): reason" when null
};

SerialPortOpening openInstrumentPort(const Settings& settings, const PortMap& ports);
SerialPortOpening openGpsPort(const Settings& settings, const PortMap& ports);

// The same, for any target and line settings (the two above, and tests).
SerialPortOpening openSerialPort(const SerialPortTarget& target, const SerialLineSettings& line);

// The "Serial Port" box with `text`; the failure's details go underneath so
// the operator sees which device the name stands for.
void showSerialPortFailure(QWidget* owner, const char* text, const QString& failure);

}  // namespace gc40

#include "instrument/serial_ports.h"

#include <QMessageBox>

#include "platform/log_categories.h"
#include "platform/serial_access.h"

namespace gc40 {
namespace {

QSerialPort::Parity toQt(SerialParity parity) {
  switch (parity) {
    case SerialParity::kEven:
      return QSerialPort::EvenParity;
    case SerialParity::kOdd:
      return QSerialPort::OddParity;
    case SerialParity::kNone:
      break;
  }
  return QSerialPort::NoParity;
}

QSerialPort::StopBits toQt(SerialStopBits stopBits) {
  return stopBits == SerialStopBits::kTwo ? QSerialPort::TwoStop : QSerialPort::OneStop;
}

// Line settings go in before open(), which applies them all at once; what is
// left empty keeps the port object's own value.
void applyLineSettings(QSerialPort& port, const SerialLineSettings& line) {
  if (line.baudRate) port.setBaudRate(*line.baudRate);
  if (line.dataBits) port.setDataBits(static_cast<QSerialPort::DataBits>(*line.dataBits));
  if (line.parity) port.setParity(toQt(*line.parity));
  if (line.stopBits) port.setStopBits(toQt(*line.stopBits));
  port.setFlowControl(line.softwareFlowControl ? QSerialPort::SoftwareControl
                                               : QSerialPort::NoFlowControl);
}

// A pseudo-terminal has no modem lines and refuses these; like any other
// line-setting failure that is not a reason to give up the port.
void applyModemLines(QSerialPort& port, const SerialLineSettings& line) {
  if (line.dataTerminalReady) port.setDataTerminalReady(*line.dataTerminalReady);
  if (line.requestToSend) port.setRequestToSend(*line.requestToSend);
  port.clearError();
}

QString describe(const SerialPortTarget& target) {
  return QString::fromStdString(target.name) + " (" +
         (target.devicePath.empty() ? QStringLiteral("not in the port map")
                                    : QString::fromStdString(target.devicePath)) +
         ")";
}

}  // namespace

SerialPortOpening openSerialPort(const SerialPortTarget& target, const SerialLineSettings& line) {
  SerialPortOpening opening;
  if (target.devicePath.empty()) {
    opening.failure = describe(target);
    qCDebug(lcSerial, "cannot open %s", qUtf8Printable(opening.failure));
    return opening;
  }
  auto port = std::make_unique<QSerialPort>(QString::fromStdString(target.devicePath));
  applyLineSettings(*port, line);
  const auto attempt =
      openWithAttempts(line.openAttempts, [&] { return port->open(QIODevice::ReadWrite); });
  if (!attempt) {
    opening.failure = describe(target) + ": " + port->errorString();
    // The usual first stumble on Linux: the user is not in the device's group.
    if (port->error() == QSerialPort::PermissionError) {
      if (const std::optional<DeviceAccess> access = deviceAccess(target.devicePath))
        opening.failure +=
            "\n" + QString::fromStdString(deviceAccessAdvice(target.devicePath, *access));
    }
    qCDebug(lcSerial, "cannot open %s", qUtf8Printable(opening.failure));
    return opening;
  }
  applyModemLines(*port, line);
  qCDebug(lcSerial, "opened %s at %d baud", qUtf8Printable(describe(target)),
          static_cast<int>(port->baudRate()));
  opening.port = std::move(port);
  return opening;
}

SerialPortOpening openInstrumentPort(const Settings& settings, const PortMap& ports) {
  return openSerialPort(instrumentPortTarget(settings, ports), instrumentLineSettings());
}

SerialPortOpening openGpsPort(const Settings& settings, const PortMap& ports) {
  const SerialPortTarget target = gpsPortTarget(settings, ports);
  SerialPortOpening opening = openSerialPort(target, gpsLineSettings(settings));
  qCDebug(lcGps, "GPS port %s %s", qUtf8Printable(describe(target)),
          opening.port ? "open" : "not open");
  return opening;
}

void showSerialPortFailure(QWidget* owner, const char* text, const QString& failure) {
  QMessageBox box(QMessageBox::NoIcon, QString::fromLatin1(kSerialPortCaption),
                  QString::fromLatin1(text), QMessageBox::Ok, owner);
  box.setInformativeText(failure);
  box.exec();
}

}  // namespace gc40

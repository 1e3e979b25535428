// The serial links: what each port is set to, and the instrument's over a real
// pseudo-terminal fed by gc40-sim, where every record reaches the framer in
// order and a closed port never spins.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <tuple>

#include "base/number_text.h"
#include "harness/child_process.h"
#include "harness/temp_folder.h"
#include "instrument/instrument_reader.h"
#include "instrument/port_settings.h"
#include "instrument/serial_ports.h"
#include "platform/raw_capture.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;

using P = SerialParity;
using S = SerialStopBits;
// Speed, data bits, parity and stop bits; an empty one keeps the port's own.
using Framing = std::tuple<std::optional<std::int32_t>, std::optional<std::int32_t>,
                           std::optional<SerialParity>, std::optional<SerialStopBits>>;

Framing framing(const SerialLineSettings& line) {
  return {line.baudRate, line.dataBits, line.parity, line.stopBits};
}

TEST(PortSettings, GpsFramingFollowsTheChoicesAndTheInstrumentsIsFixed) {
  // Indexes into the dialog's lists of speeds, parities, data bits and stop bits.
  struct Case {
    std::int32_t baud, parity, dataBits, stopBits;
    Framing expected;
  };
  for (const Case& c : {
           Case{1, 0, 1, 0, {9600, 8, P::kNone, S::kOne}},  // the defaults
           Case{0, 1, 0, 1, {4800, 7, P::kEven, S::kTwo}},
           Case{5, 2, 0, 0, {115200, 7, P::kOdd, S::kOne}},
           Case{6, 3, 2, 2, {}},  // past each list: the port keeps its own
           Case{3, 2, -1, 1, {38400, std::nullopt, P::kOdd, S::kTwo}},  // only that one
       }) {
    Settings settings;
    settings.gpsBaudIndex = c.baud, settings.gpsParity = c.parity;
    settings.gpsDataBitsIndex = c.dataBits, settings.gpsStopBitsIndex = c.stopBits;
    const SerialLineSettings gps = gpsLineSettings(settings);
    EXPECT_EQ(framing(gps), c.expected) << c.baud << c.parity << c.dataBits << c.stopBits;
    EXPECT_EQ(std::tuple(gps.softwareFlowControl, gps.dataTerminalReady, gps.requestToSend,
                         gps.openAttempts),
              std::tuple(true, std::optional<bool>(), std::optional<bool>(), 10));
  }
  const SerialLineSettings instrument = instrumentLineSettings();
  EXPECT_EQ(framing(instrument), (Framing{9600, 8, P::kNone, S::kOne}));
  EXPECT_EQ(std::tuple(instrument.softwareFlowControl, instrument.dataTerminalReady,
                       instrument.requestToSend, instrument.openAttempts),
            std::tuple(false, true, false, 1));
}

constexpr int kRecordBytes = 13;  // 12 + CR
// Idle CPU allowed over one second; a port spinning on errors uses all of it.
constexpr auto kIdleCpu = 250ms;

std::chrono::microseconds cpuWhileIdle() {
  const auto before = testing::cpuTime();
  QTest::qWait(1000);
  return testing::cpuTime() - before;
}

class SerialLink : public ::testing::Test {
 protected:
  void startInstrument(std::vector<std::string> options) {
    options.insert(options.begin(), {"--link", path, "--pattern", "sequence"});
    sim.emplace(GC40_SIM_BINARY, options);
    ASSERT_EQ(sim->readLine(10s), "gc40-sim: ready " + path);
    ports.paths[0] = path;
  }

  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  const std::string path = (folder.path() / "instrument").string();
  std::optional<testing::ChildProcess> sim;
  Settings settings;
  PortMap ports;
  RecordFramer framer;
};

TEST_F(SerialLink, EveryRecordArrivesInOrderAndIsCaptured) {
  ASSERT_NO_FATAL_FAILURE(startInstrument({"--period", "0", "--count", "100000"}));
  SerialPortOpening opening = openInstrumentPort(settings, ports);
  ASSERT_TRUE(opening.port) << opening.failure.toStdString();
  const LocalTime start{2026, 11, 21, 9, 5, 7};
  const auto earlier = RawCapture::open(folder.path() / "raw", "instrument", start);
  auto capture = RawCapture::open(folder.path() / "raw", "instrument", start);
  ASSERT_TRUE(earlier && capture);
  EXPECT_EQ(capture->path().filename(), "instrument-20261121-090507-2.raw");

  std::vector<std::int32_t> readings;
  const auto noteReading = [&](std::string_view record, std::uint32_t) {
    readings.push_back(parseIntegerPrefix(record.substr(2, 5)));
  };
  InstrumentReader reader(std::move(opening.port), framer, {.onReading = noteReading}, &*capture);
  framer.setRecordsPerReading(4);
  reader.start();
  EXPECT_TRUE(QTest::qWaitFor([&] { return readings.size() >= 25000; }, 120000));
  EXPECT_LT(cpuWhileIdle(), kIdleCpu);  // and no reading after the last

  ASSERT_EQ(readings.size(), 25000u);
  for (std::size_t i = 0; i < readings.size(); ++i)
    ASSERT_EQ(readings[i], static_cast<std::int32_t>(4 * i + 3)) << "reading " << i;
  const std::string captured = testing::readBytes(capture->path());
  ASSERT_EQ(captured.size(), 100000u * kRecordBytes);
  EXPECT_EQ(captured.substr(99999 * kRecordBytes, kRecordBytes).substr(2, 5), "99999");

  // The other end going away closes the port instead of spinning on errors.
  QSignalSpy closed(&reader, &InstrumentReader::portClosed);
  sim->stop();
  EXPECT_TRUE(closed.wait(5000));
  EXPECT_FALSE(reader.isOpen());
  EXPECT_LT(cpuWhileIdle(), kIdleCpu);
}

// A held port fails naming its device; a stop from inside the reading
// handler frees it at once.
TEST_F(SerialLink, OpenFailuresNameThePortAndAStopInsideTheHandlerFreesIt) {
  ASSERT_NO_FATAL_FAILURE(startInstrument({"--period", "0"}));
  SerialPortOpening first = openInstrumentPort(settings, ports);
  ASSERT_TRUE(first.port) << first.failure.toStdString();
  const SerialPortOpening busy = openInstrumentPort(settings, ports);
  EXPECT_TRUE(!busy.port &&
              busy.failure.startsWith(QString::fromStdString("COM1: (" + path + "): ")))
      << busy.failure.toStdString();

  int handled = 0;
  InstrumentReader reader(std::move(first.port), framer,
                          {.onReading = [&](std::string_view, std::uint32_t) {
                            if (++handled == 50) reader.stop();
                          }});
  reader.start();
  EXPECT_TRUE(QTest::qWaitFor([&] { return handled >= 50; }, 10000));
  EXPECT_LT(cpuWhileIdle(), kIdleCpu);
  EXPECT_EQ(handled, 50);
  EXPECT_FALSE(reader.isOpen());
  EXPECT_TRUE(openInstrumentPort(settings, ports).port);
  settings.instrumentPort = 12;
  EXPECT_EQ(openInstrumentPort(settings, ports).failure, "COM13: (not in the port map)");
}

}  // namespace
}  // namespace gc40

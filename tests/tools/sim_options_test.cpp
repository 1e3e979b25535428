// The simulator's command line: texts taken as written, wrong options refused with a reason.

#include "gc40-sim/sim_options.h"

#include <gtest/gtest.h>

#include <vector>

namespace gc40 {
namespace {

using Arguments = std::vector<std::string_view>;

TEST(SimOptions, ValueTextsAndSecondsAreTakenAsWritten) {
  const auto parsed = parseSimOptions(
      Arguments{"--link=/tmp/gc40", "--values", "12,50,-0.56", "--dropout-seconds=0.25"});
  ASSERT_TRUE(std::holds_alternative<SimOptions>(parsed));
  const InstrumentOptions& instrument = std::get<SimOptions>(parsed).instrument;
  EXPECT_EQ(instrument.firstValue, "12,50");  // a comma inside a value is the value's own
  EXPECT_EQ(instrument.secondValue, "-0.56");
  EXPECT_EQ(instrument.dropout.count(), 250);

  // The GPS receiver alone: the meter's link may be left out.
  const auto gps = parseSimOptions(
      Arguments{"--gps-link", "/tmp/gps", "--nmea=a b.log", "--nmea-period=0", "--loop"});
  ASSERT_TRUE(std::holds_alternative<SimOptions>(gps)) << std::get<SimOptionsError>(gps).message;
  const SimOptions& options = std::get<SimOptions>(gps);
  EXPECT_EQ(options.link, "");
  EXPECT_EQ(options.gpsLink, "/tmp/gps");
  EXPECT_EQ(options.nmea.file, "a b.log");
  EXPECT_EQ(options.nmea.period, std::chrono::milliseconds(0));
  EXPECT_TRUE(options.nmea.loop);
}

TEST(SimOptions, WrongCommandLinesAreRefusedWithTheReason) {
  for (const auto& [arguments, reason] : std::vector<std::pair<Arguments, std::string_view>>{
           {{}, "at least one of --link PATH and --gps-link PATH is required"},
           {{"--gps-link="}, "--gps-link needs a path"},
           {{"--link", "x", "--gps-link", "x"}, "paths of their own"},
           {{"--link", "x", "--nmea", "a.log"}, "--nmea needs --gps-link"},
           {{"--gps-link", "g", "--loop"}, "--nmea-period and --loop go with --nmea"},
           {{"--gps-link", "g", "--nmea", "a", "--nmea-period", "0.5"}, "--nmea-period wants"},
           {{"--link"}, "--link needs a value"},
           {{"--link", "x", "--period", "-1"}, "--period wants a whole number from 0 to 3600000"},
           {{"--link", "x", "--period=9x"}, "not '9x'"},
           {{"--link", "x", "--status", "256"}, "--status wants"},
           {{"--link", "x", "--trigger-every", "4"}, "--trigger-length must be shorter"},
           {{"--link", "x", "--pattern", "zigzag"}, "not 'zigzag'"},
           {{"--link", "x", "--values", "120,40"}, "exactly 5 printable"},
           {{"--link", "x", "--values", "-0120,0004\r"}, "exactly 5 printable"},
           {{"--link", "x", "--dropout-seconds", "1.2.3"}, "--dropout-seconds wants"},
           {{"--link", "x", "--verbose"}, "unknown option '--verbose'"}}) {
    const auto parsed = parseSimOptions(arguments);
    const auto* error = std::get_if<SimOptionsError>(&parsed);
    ASSERT_NE(error, nullptr) << reason;
    EXPECT_NE(error->message.find(reason), std::string::npos) << error->message;
  }
}

}  // namespace
}  // namespace gc40

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
}

TEST(SimOptions, WrongCommandLinesAreRefusedWithTheReason) {
  for (const auto& [arguments, reason] : std::vector<std::pair<Arguments, std::string_view>>{
           {{}, "--link PATH is required"},
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

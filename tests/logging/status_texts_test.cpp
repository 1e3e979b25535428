#include "logging/status_texts.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>

namespace gc40 {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

DecodedReading reading(float conductivity, float inphase, char dipole = 'V',
                       std::int16_t range = 1000) {
  return {.conductivity = conductivity, .inphase = inphase, .dipole = dipole, .range = range};
}

// The fields of one reading: portrait carries units, an Inphase survey has
// no conductivity, and a value that is not a number keeps its field about as
// wide as a real one. Then the run's own fields.
TEST(StatusTexts, ReadingAndRunFields) {
  using Case =
      std::tuple<DecodedReading, std::int32_t, bool, const char*, const char*, const char*>;
  for (const auto& [r, component, portrait, conductivity, inphase, dipoleRange] : {
           Case{reading(-1234.5f, 0.25f), 0, true, "C:-1234.50mS/m", "I:0.25    ppt",
                "Vertical Dipoles   Range:1000"},
           Case{reading(12.0f, -3.5f, 'H', 10), 0, false, "C:12.00   ", "I:-3.50   ",
                "Horizontal  G10  "},
           Case{reading(12.0f, -3.5f, 'H', 100), 1, true, "", "I:-3.50   ppt",
                "Horizontal Dipoles   Range:100 "},
           Case{reading(kNan, -kInf, 'N'), 0, false, "C:nan     ", "I:-inf    ",
                "Horizontal  G1000"},
       }) {
    EXPECT_EQ(conductivityText(r, component, portrait), conductivity);
    EXPECT_EQ(inphaseText(r, portrait), inphase);
    EXPECT_EQ(dipoleRangeText(r, portrait), dipoleRange);
  }
  EXPECT_EQ(stationText(-12.345678), "-12.35     ");
  EXPECT_EQ(stationText(1234567890.5), "1234567890.50");  // wider, never cut
  EXPECT_EQ(dipoleModeText(1) + dipoleModeText(7), "Mode:HMode: ");
  // Up to 8 characters of the name; one outside the basic plane is not cut in half.
  EXPECT_EQ(fileText(u"LONGNAME1.R40"), u"File:LONGNAME");
  EXPECT_EQ(fileText(u"ABCDEFG\U0001F600"), u"File:ABCDEFG");
  // Pressed trigger, survey mode, logging state: in Manual mode while logging
  // the trigger records and never shows.
  using Trigger = std::tuple<bool, std::int32_t, std::int32_t, const char*>;
  for (const auto& [pressed, mode, state, shown] :
       {Trigger{true, 0, 1, "M"}, Trigger{true, 1, -1, "M"}, Trigger{true, 2, 1, " "},
        Trigger{true, 2, -1, "M"}, Trigger{true, 2, 0, "M"}, Trigger{false, 0, 0, " "}}) {
    EXPECT_EQ(triggerIndicatorText(pressed, mode, state), shown) << pressed << mode << state;
  }
}

}  // namespace
}  // namespace gc40

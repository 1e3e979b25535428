#include "instrument/reading_decoder.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <string>

namespace gc40 {
namespace {

using namespace std::literals;

std::string record(unsigned char status, std::string_view first, std::string_view second) {
  return "T"s + static_cast<char>(status) + std::string(first) + std::string(second);
}

Settings settingsFor(std::int32_t component, std::int32_t variant, std::int32_t surveyMode = 0) {
  Settings settings;
  settings.component = component;
  settings.instrumentVariant = variant;
  settings.surveyMode = surveyMode;
  return settings;
}

// Only the dipole the reading was taken in has valid slots, holding its values.
void expectFiledUnder(const DecodedReading& r, const FiledValues& filed, std::int32_t component) {
  const bool vertical = r.dipole == 'V';
  const std::int32_t withConductivity = component == 0;
  const std::int32_t withInphase = component == 0 || component == 1;
  EXPECT_EQ(filed.verticalConductivityValid, vertical ? withConductivity : 0);
  EXPECT_EQ(filed.horizontalConductivityValid, vertical ? 0 : withConductivity);
  EXPECT_EQ(filed.verticalInphaseValid, vertical ? withInphase : 0);
  EXPECT_EQ(filed.horizontalInphaseValid, vertical ? 0 : withInphase);
  const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };  // NaN too
  if (withConductivity) {
    EXPECT_EQ(bits(vertical ? filed.verticalConductivity : filed.horizontalConductivity),
              bits(r.conductivity));
  }
  if (withInphase) {
    EXPECT_EQ(bits(vertical ? filed.verticalInphase : filed.horizontalInphase), bits(r.inphase));
  }
}

TEST(ReadingDecoder, StatusExamplesGiveTheirValues) {
  struct Case {
    unsigned char status;
    std::int32_t component, variant, surveyMode;
    float conductivity, inphase;
    char dipole;
    std::int16_t range;
    char mark;
    std::uint32_t channel;
  };
  const float shortInphase = static_cast<float>(0.00375f / 3.35);
  // clang-format off
  for (const Case& c : {
      Case{0x20, 0, 0, 0, -3.0f,  0.00375f,     'V', 1000, 'N', 0},
      Case{0x21, 0, 0, 0, -0.03f, 0.00375f,     'V', 1000, 'N', 1},
      Case{0x24, 0, 0, 0, -0.3f,  0.00375f,     'V', 100,  'N', 0},
      Case{0x24, 0, 1, 0, -0.3f,  shortInphase, 'V', 100,  'N', 0},
      Case{0x22, 0, 0, 0, -0.03f, 0.00375f,     'V', 10,   'N', 0},
      Case{0x80, 0, 0, 0, -0.03f, 0.00375f,     'V', 1000, 'M', 0},
      Case{0x40, 0, 0, 1, -3.0f,  0.00375f,     'H', 1000, 'M', 0},
      Case{0x40, 0, 0, 2, -3.0f,  0.00375f,     'H', 1000, 'N', 0},
      Case{0xC7, 0, 0, 0, -0.03f, 0.00375f,     'H', 1000, 'M', 1},
      Case{0x20, 1, 0, 0, 12.0f,  -0.75f,       'V', 1000, 'N', 0},  // inphase from the first value
      Case{0x20, 1, 1, 0, 12.0f,  static_cast<float>(12.0 / 3.35), 'V', 1000, 'N', 0},
      Case{0x21, 1, 1, 0, -0.03f, 0.00375f,     'V', 1000, 'N', 1}}) {
    // clang-format on
    FiledValues filed;
    filed.horizontalConductivityValid = 1;  // left from an earlier reading
    const DecodedReading r =
        decodeInstrumentRecord(record(c.status, "012.0", "-01.5"),
                               settingsFor(c.component, c.variant, c.surveyMode), filed);
    SCOPED_TRACE(testing::Message() << "status " << int{c.status} << " component " << c.component);
    EXPECT_EQ(r.conductivity, c.conductivity);
    EXPECT_EQ(r.inphase, c.inphase);
    EXPECT_EQ(r.dipole, c.dipole);
    EXPECT_EQ(r.range, c.range);
    EXPECT_EQ(r.mark, c.mark);
    EXPECT_EQ(r.channelFlag, c.channel);
    expectFiledUnder(r, filed, c.component);
  }
}

// The Short variant divides in double precision; these values round differently in single.
TEST(ReadingDecoder, ShortVariantDividesInDoublePrecision) {
  const float inphaseBoth = -0.0025f * 1.234f;
  const float expectedBoth = static_cast<float>(inphaseBoth / 3.35);
  const float expectedInphase = static_cast<float>(7.777f / 3.35);
  ASSERT_NE(expectedBoth, inphaseBoth / 3.35f);
  ASSERT_NE(expectedInphase, 7.777f / 3.35f);
  FiledValues filed;
  EXPECT_EQ(
      decodeInstrumentRecord(record(0x20, "7.777", "1.234"), settingsFor(0, 1), filed).inphase,
      expectedBoth);
  EXPECT_EQ(
      decodeInstrumentRecord(record(0x20, "7.777", "1.234"), settingsFor(1, 1), filed).inphase,
      expectedInphase);
}

// A component other than Both or Inphase (a damaged settings file) leaves the
// values as read, which shows how the five characters are read.
TEST(ReadingDecoder, ValuesReadLikeAtofOfTheFiveCharacters) {
  const float inf = std::numeric_limits<float>::infinity();
  for (const auto& [text, value] : {std::pair{"12.34"s, 12.34f},
                                    {" -1.5"s, -1.5f},
                                    {"+.25x"s, 0.25f},
                                    {"abc12"s, 0.0f},
                                    {"0x1F0"s, 0.0f},
                                    {"1\000999"s, 1.0f},
                                    {"1e-50"s, 0.0f},
                                    {"-9e99"s, -inf}}) {
    FiledValues filed;
    const DecodedReading r =
        decodeInstrumentRecord(record(0x21, text, text), settingsFor(2, 0), filed);
    EXPECT_EQ(r.conductivity, value) << text;
    EXPECT_EQ(r.inphase, value) << text;
    expectFiledUnder(r, filed, 2);
  }
  FiledValues filed;
  const DecodedReading shortRecord = decodeInstrumentRecord("T!12", settingsFor(2, 0), filed);
  EXPECT_EQ(shortRecord.conductivity, 12.0f);
  EXPECT_EQ(shortRecord.inphase, 0.0f);
  EXPECT_TRUE(std::isnan(
      decodeInstrumentRecord(record(0, "nan  ", "0    "), settingsFor(0, 0), filed).conductivity));
}

// Subtraction and masks agree on every byte but 128; the factor shows in the conductivity.
TEST(ReadingDecoder, EveryStatusByteAndSettingDecodesConsistently) {
  for (int status = 0; status < 256; ++status) {
    const bool is128 = status == 128;
    const int code = is128 ? 8 : status & 7;
    const float factor = code == 0 || code == 6 ? -0.25f : code == 4 ? -0.025f : -0.0025f;
    for (const std::string_view text : {"4.000"sv, "9e99 "sv, "nan  "sv, "\0\0\0\0\0"sv}) {
      for (const std::int32_t component : {-1, 0, 1, 2}) {
        for (const std::int32_t variant : {0, 1, 5}) {
          for (const std::int32_t mode : {0, 1, 2, 3}) {
            FiledValues filed;
            const DecodedReading r =
                decodeInstrumentRecord(record(static_cast<unsigned char>(status), text, text),
                                       settingsFor(component, variant, mode), filed);
            ASSERT_EQ(r.channelFlag, static_cast<std::uint32_t>(status & 1));
            ASSERT_EQ(r.mark, (is128 || status & 64) && mode != 2 ? 'M' : 'N');
            ASSERT_EQ(r.dipole, is128 || status & 32 ? 'V' : 'H');
            ASSERT_EQ(r.range, code == 2 ? 10 : code == 4 ? 100 : 1000) << status;
            if (component == 0 && text == "4.000") {
              ASSERT_EQ(r.conductivity, 4.0f * factor) << status;
            }
            expectFiledUnder(r, filed, component);
            if (HasFailure()) return;
          }
        }
      }
    }
  }
}

TEST(ReadingDecoder, PlotOffsetsAreSinglePrecisionTruncatedTowardZero) {
  constexpr float kInf = std::numeric_limits<float>::infinity();
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
  const FiledValues filed{100.0f, 1, 501.5f, 1, 5.0f, 1, -kInf, 0};
  struct Case {
    float conductivityMax, conductivityPerUnit, inphaseMax, inphasePerUnit;
    std::array<std::int32_t, 4> offsets;
  };
  // 10 x 0.7f is 6.99999988 in double but rounds to 7 in single precision.
  for (const Case& c : {Case{500.0f, 0.36f, 25.0f, 3.6f, {144, 0, 72, kMax}},
                        Case{110.0f, 0.7f, 15.0f, 0.7f, {7, -274, 7, kMax}},
                        Case{100.0f, kInf, 5.0f, kNan, {0, kMin, 0, 0}},
                        Case{kInf, -kInf, -kInf, 1.0f, {kMin, kMin, kMin, 0}}}) {
    Settings s;
    s.conductivityScaleMax = c.conductivityMax;
    s.conductivityPixelsPerUnit = c.conductivityPerUnit;
    s.inphaseScaleMax = c.inphaseMax;
    s.inphasePixelsPerUnit = c.inphasePerUnit;
    EXPECT_EQ(readingToPlotOffsets(filed, s), c.offsets);
  }
}

}  // namespace
}  // namespace gc40

#include "instrument/reading_decoder.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <string>
#include <tuple>

namespace gc40 {
namespace {

using namespace std::literals;

constexpr float kInf = std::numeric_limits<float>::infinity();

// The two 5-character values come as one 10-character text.
std::string record(unsigned char status, std::string_view values) {
  return "T"s + static_cast<char>(status) + std::string(values);
}

Settings settingsFor(std::int32_t component, std::int32_t variant, std::int32_t surveyMode) {
  return {.instrumentVariant = variant,
          .surveyMode = modeFromIndex<SurveyMode>(surveyMode),
          .component = modeFromIndex<Component>(component)};
}

// Only the dipole the reading was taken in has valid slots, holding its
// values (compared as bits, so NaN too); every other word is 0.
void expectFiledUnder(const DecodedReading& r, const FiledValues& filed, Component component) {
  const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
  const bool v = r.dipole == 'V', both = component == Component::kBoth;
  const bool inphase = both || component == Component::kInphase;
  const std::array<std::uint32_t, 8> expected = {
      v && both ? bits(r.conductivity) : 0,  v && both,
      !v && both ? bits(r.conductivity) : 0, !v && both,
      v && inphase ? bits(r.inphase) : 0,    v && inphase,
      !v && inphase ? bits(r.inphase) : 0,   !v && inphase};
  EXPECT_EQ((std::bit_cast<std::array<std::uint32_t, 8>>(filed)), expected);
}

// A component other than Both (0) or Inphase (1) leaves the values as read:
// five characters each, a NUL ending the text, missing bytes reading as NUL.
TEST(ReadingDecoder, StatusExamplesGiveTheirValues) {
  // Status, component, variant, survey mode, the value texts and the reading.
  using Case = std::tuple<unsigned char, std::int32_t, std::int32_t, std::int32_t, std::string_view,
                          DecodedReading>;
  // Divided by 3.35 in single precision, the inphase of 7.777 and 1.234 would round differently.
  const float shortBoth = static_cast<float>(-0.0025f * 1.234f / 3.35);
  const float shortInphase = static_cast<float>(7.777f / 3.35);
  // clang-format off
  for (const auto& [status, component, variant, mode, values, expected] : {
      Case{0x20, 0, 0, 0, "012.0-01.5", {-3.0f,  0.00375f, 'V', 1000, 'N', 0}},
      Case{0x21, 0, 0, 0, "012.0-01.5", {-0.03f, 0.00375f, 'V', 1000, 'N', 1}},
      Case{0x24, 0, 0, 0, "012.0-01.5", {-0.3f,  0.00375f, 'V', 100,  'N', 0}},
      Case{0x24, 0, 1, 0, "7.7771.234", {7.777f * -0.025f, shortBoth, 'V', 100, 'N', 0}},
      Case{0x80, 0, 0, 0, "012.0-01.5", {-0.03f, 0.00375f, 'V', 1000, 'M', 0}},
      Case{0x40, 0, 0, 2, "012.0-01.5", {-3.0f,  0.00375f, 'H', 1000, 'N', 0}},
      Case{0x20, 1, 0, 0, "012.0-01.5", {12.0f,  -0.75f,   'V', 1000, 'N', 0}},  // inphase from a
      Case{0x20, 1, 1, 0, "7.7771.234", {7.777f, shortInphase, 'V', 1000, 'N', 0}},
      Case{0x21, 1, 1, 0, "012.0-01.5", {-0.03f, 0.00375f, 'V', 1000, 'N', 1}},
      Case{0x21, 2, 0, 0, "12.3412.34", {12.34f, 12.34f,   'V', 1000, 'N', 1}},
      Case{0x41, 2, 0, 0, "1\000999-9e99"sv, {1.0f, -kInf,   'H', 1000, 'M', 1}},
      Case{0x02, 2, 0, 0, "12",         {12.0f,  0.0f,     'H', 10,   'N', 0}}}) {
    // clang-format on
    FiledValues filed{9, 1, 9, 1, 9, 1, 9, 1};  // left from an earlier reading
    const Settings settings = settingsFor(component, variant, mode);
    const DecodedReading r = decodeInstrumentRecord(record(status, values), settings, filed);
    const auto fields = [](const DecodedReading& d) {
      return std::tuple(d.conductivity, d.inphase, d.dipole, d.range, d.mark, d.channelFlag);
    };
    EXPECT_EQ(fields(r), fields(expected)) << "status " << int{status} << " " << component;
    expectFiledUnder(r, filed, settings.component);
  }
}

// Subtraction and masks agree on every byte but 128; the factor shows in the
// conductivity. Huge values and NaN go through every scaling path.
TEST(ReadingDecoder, EveryStatusByteAndSettingDecodesConsistently) {
  for (int status = 0; status < 256; ++status) {
    const bool is128 = status == 128;
    const int code = is128 ? 8 : status & 7;
    const float factor = code == 0 || code == 6 ? -0.25f : code == 4 ? -0.025f : -0.0025f;
    for (const std::string_view values : {"4.0004.000"sv, "9e99 nan  "sv, "nan  -9e99"sv}) {
      for (const Settings& settings :
           {settingsFor(0, 0, 1), settingsFor(0, 1, 2), settingsFor(1, 0, 2), settingsFor(1, 1, 1),
            settingsFor(2, 0, 0)}) {
        FiledValues filed;
        const DecodedReading r = decodeInstrumentRecord(
            record(static_cast<unsigned char>(status), values), settings, filed);
        ASSERT_EQ(r.channelFlag, static_cast<std::uint32_t>(status & 1));
        ASSERT_EQ(r.mark,
                  (is128 || status & 64) && settings.surveyMode != SurveyMode::kManual ? 'M' : 'N');
        ASSERT_EQ(r.dipole, is128 || status & 32 ? 'V' : 'H');
        ASSERT_EQ(r.range, code == 2 ? 10 : code == 4 ? 100 : 1000) << status;
        if (settings.component == Component::kBoth && values[0] == '4') {
          ASSERT_EQ(r.conductivity, 4.0f * factor) << status;
        }
        expectFiledUnder(r, filed, settings.component);
        if (HasFailure()) return;
      }
    }
  }
}

}  // namespace
}  // namespace gc40

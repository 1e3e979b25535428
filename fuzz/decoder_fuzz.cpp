// The reading decoder over the settings it depends on: survey mode,
// component and instrument variant (unknown numbers included, as a damaged
// settings file gives them) and the profile's scales. Whatever the record,
// the reading is one of the meter's ranges and dipoles, and only the values
// of the reading's own dipole are filed.

#include <cstring>

#include "fuzz_support.h"
#include "instrument/reading_decoder.h"

namespace gc40::fuzz {
namespace {

float floatOf(std::uint32_t bits) {
  float value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

// Mostly the known modes, now and then a number no dialog offers.
template <typename Mode>
Mode modeOf(std::uint8_t choice) {
  return modeFromIndex<Mode>(choice < 240 ? choice % 3 : static_cast<std::int8_t>(choice));
}

Settings settingsOf(FuzzInput& input) {
  Settings settings;
  settings.surveyMode = modeOf<SurveyMode>(input.choice());
  settings.component = modeOf<Component>(input.choice());
  settings.instrumentVariant = static_cast<std::int8_t>(input.choice()) % 3;
  if (input.choice() & 1) {  // scales as a settings file may hold them
    settings.conductivityScaleMin = floatOf(input.choice32());
    settings.conductivityScaleMax = floatOf(input.choice32());
    settings.inphaseScaleMin = floatOf(input.choice32());
    settings.inphaseScaleMax = floatOf(input.choice32());
    recomputeScaleFactors(settings);
  }
  return settings;
}

void checkFiled(const DecodedReading& reading, const FiledValues& filed, const Settings& settings) {
  const bool vertical = reading.dipole == 'V';
  const bool inphaseFiled =
      settings.component == Component::kBoth || settings.component == Component::kInphase;
  const bool conductivityFiled = settings.component == Component::kBoth;
  FUZZ_CHECK(filed.verticalInphaseValid == (inphaseFiled && vertical));
  FUZZ_CHECK(filed.horizontalInphaseValid == (inphaseFiled && !vertical));
  FUZZ_CHECK(filed.verticalConductivityValid == (conductivityFiled && vertical));
  FUZZ_CHECK(filed.horizontalConductivityValid == (conductivityFiled && !vertical));
}

}  // namespace
}  // namespace gc40::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace gc40;
  fuzz::FuzzInput input(data, size);
  const Settings settings = fuzz::settingsOf(input);
  const std::string_view record = input.rest();  // 12 bytes on the wire, any length here

  FiledValues filed;
  const DecodedReading reading = decodeInstrumentRecord(record, settings, filed);
  const auto status = static_cast<unsigned char>(record.size() > 1 ? record[1] : 0);
  FUZZ_CHECK(reading.dipole == 'V' || reading.dipole == 'H');
  FUZZ_CHECK(reading.mark == 'M' || reading.mark == 'N');
  FUZZ_CHECK(settings.surveyMode != SurveyMode::kManual || reading.mark == 'N');
  FUZZ_CHECK(reading.range == 10 || reading.range == 100 || reading.range == 1000);
  FUZZ_CHECK(reading.channelFlag == (status & 1u));
  fuzz::checkFiled(reading, filed, settings);
  readingToPlotOffsets(filed, settings);  // any scale, even a zero-height one, maps
  return 0;
}

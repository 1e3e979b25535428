#pragma once
// Turns one instrument record into engineering values (conductivity in mS/m,
// inphase in ppt, range, dipole, mark, channel flag), files them under the
// dipole they were taken in, and maps the filed values to profile pixels.

#include <array>
#include <cstdint>
#include <string_view>

#include "settings/settings.h"

namespace gc40 {

struct FiledValues {  // the values filed under the dipole they were taken in
  float verticalConductivity = 0;
  std::int32_t verticalConductivityValid = 0;
  float horizontalConductivity = 0;
  std::int32_t horizontalConductivityValid = 0;
  float verticalInphase = 0;
  std::int32_t verticalInphaseValid = 0;
  float horizontalInphase = 0;
  std::int32_t horizontalInphaseValid = 0;
};

struct DecodedReading {
  float conductivity = 0;
  float inphase = 0;
  char dipole = 'H';
  std::int16_t range = 1000;
  char mark = 'N';
  std::uint32_t channelFlag = 0;
};

// `record` is the 12-byte instrument record (marker, status byte, two
// 5-character values). Bytes missing from a shorter view read as NUL.
DecodedReading decodeInstrumentRecord(std::string_view record, const Settings& settings,
                                      FiledValues& filed);

// Pixels below the top of the profile for `value` on a scale whose top is
// `scaleMax`: (scaleMax - value) x pixelsPerUnit in single precision,
// truncated toward zero. Values above the top give negative offsets.
std::int32_t plotOffset(float scaleMax, float value, float pixelsPerUnit);

// Pixel offsets below the top of the plot: V conductivity, H conductivity,
// V inphase, H inphase.
std::array<std::int32_t, 4> readingToPlotOffsets(const FiledValues& filed,
                                                 const Settings& settings);

}  // namespace gc40

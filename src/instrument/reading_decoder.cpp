#include "instrument/reading_decoder.h"

#include "base/number_text.h"

namespace gc40 {
namespace {

constexpr std::int32_t kShortVariant = 1;
constexpr double kShortInphaseDivisor = 3.35;
constexpr float kInphaseChannelFactor = -0.0025f;

// Record layout: byte 0 'T', byte 1 status, bytes 2-6 first value (conductivity
// channel), bytes 7-11 second value (inphase channel); CR already stripped.
constexpr std::size_t kStatusOffset = 1;
constexpr std::size_t kFirstValueOffset = 2;
constexpr std::size_t kSecondValueOffset = 7;
constexpr std::size_t kValueWidth = 5;

struct Range {
  std::int16_t fullScale;
  float factor;  // negative: a filed value has the opposite sign of the one sent
};

Range rangeOfCode(int code) {
  switch (code) {
    case 0:
    case 6:
      return {1000, -0.25f};
    case 2:
      return {10, -0.0025f};
    case 4:
      return {100, -0.025f};
    default:  // 1, 3, 5, 7 and the 8 that status 128 leaves
      return {1000, -0.0025f};
  }
}

// Status byte, taken apart by successive subtraction rather than masks, which
// differ for 128 alone: it is not reduced (the test is strict) and comes out as
// mark 'M', dipole 'V', range code 8.
//   bit 0      channel flag (the byte is odd)
//   bit 7      dropped when the byte is above 128
//   bit 6      mark 'M', else 'N'; always 'N' in Manual survey mode
//   bit 5      dipole 'V', else 'H'
//   bits 4, 3  no meaning here
//   bits 2-0   range code, see rangeOfCode
Range decodeStatus(unsigned char byte, const Settings& settings, DecodedReading& reading) {
  reading.channelFlag = byte % 2;
  int n = byte;
  if (n > 128) n -= 128;
  reading.mark = n >= 64 ? 'M' : 'N';
  if (n >= 64) n -= 64;
  if (settings.surveyMode == SurveyMode::kManual) reading.mark = 'N';
  reading.dipole = n >= 32 ? 'V' : 'H';
  if (n >= 32) n -= 32;
  if (n >= 16) n -= 16;
  if (n >= 8) n -= 8;
  const Range range = rangeOfCode(n);
  reading.range = range.fullScale;
  return range;
}

// A value field as atof reads it from a NUL-terminated 6-byte copy: a NUL
// inside the field ends the text there.
float valueAt(std::string_view record, std::size_t offset) {
  std::string_view text = offset < record.size() ? record.substr(offset, kValueWidth) : "";
  return narrowToFloat(parseDecimalPrefix(text.substr(0, text.find('\0'))));
}

void scaleForBoth(DecodedReading& reading, float a, float b, float f, const Settings& settings) {
  reading.conductivity = a * f;
  if (reading.channelFlag == 1) {
    reading.inphase = b * f;
    return;
  }
  reading.inphase = kInphaseChannelFactor * b;
  if (settings.instrumentVariant == kShortVariant) {
    reading.inphase = narrowToFloat(reading.inphase / kShortInphaseDivisor);
  }
}

void scaleForInphase(DecodedReading& reading, float a, float b, float f, const Settings& settings) {
  if (reading.channelFlag == 1) {
    reading.conductivity = a * f;
    reading.inphase = b * f;
    return;
  }
  // The inphase comes from the first value here; the conductivity stays unscaled.
  reading.inphase = narrowToFloat(static_cast<double>(a * f) * 0.25);
  // Unlike component Both, the Short variant divides the unscaled value; the
  // asymmetry is deliberate and stays.
  if (settings.instrumentVariant == kShortVariant) {
    reading.inphase = narrowToFloat(a / kShortInphaseDivisor);
  }
}

void fileReading(const DecodedReading& reading, bool withConductivity, FiledValues& filed) {
  const bool vertical = reading.dipole == 'V';
  if (withConductivity) {
    (vertical ? filed.verticalConductivity : filed.horizontalConductivity) = reading.conductivity;
    (vertical ? filed.verticalConductivityValid : filed.horizontalConductivityValid) = 1;
  }
  (vertical ? filed.verticalInphase : filed.horizontalInphase) = reading.inphase;
  (vertical ? filed.verticalInphaseValid : filed.horizontalInphaseValid) = 1;
}

}  // namespace

std::int32_t plotOffset(float scaleMax, float value, float pixelsPerUnit) {
  return truncateToInt32((scaleMax - value) * pixelsPerUnit);  // single precision throughout
}

DecodedReading decodeInstrumentRecord(std::string_view record, const Settings& settings,
                                      FiledValues& filed) {
  filed = FiledValues{};  // only the current dipole's slots may be valid afterwards
  DecodedReading reading;
  const auto status =
      static_cast<unsigned char>(kStatusOffset < record.size() ? record[kStatusOffset] : 0);
  const float f = decodeStatus(status, settings, reading).factor;
  const float a = valueAt(record, kFirstValueOffset);
  const float b = valueAt(record, kSecondValueOffset);
  reading.conductivity = a;
  reading.inphase = b;
  if (settings.component == Component::kBoth) {
    scaleForBoth(reading, a, b, f, settings);
    fileReading(reading, true, filed);
  } else if (settings.component == Component::kInphase) {
    scaleForInphase(reading, a, b, f, settings);
    fileReading(reading, false, filed);
  }
  // Any other component (a damaged settings file) leaves the values unscaled
  // and files nothing, so the profile draws no trace for such a reading.
  return reading;
}

std::array<std::int32_t, 4> readingToPlotOffsets(const FiledValues& filed,
                                                 const Settings& settings) {
  const float conductivityTop = settings.conductivityScaleMax;
  const float inphaseTop = settings.inphaseScaleMax;
  return {
      plotOffset(conductivityTop, filed.verticalConductivity, settings.conductivityPixelsPerUnit),
      plotOffset(conductivityTop, filed.horizontalConductivity, settings.conductivityPixelsPerUnit),
      plotOffset(inphaseTop, filed.verticalInphase, settings.inphasePixelsPerUnit),
      plotOffset(inphaseTop, filed.horizontalInphase, settings.inphasePixelsPerUnit)};
}

}  // namespace gc40

#pragma once
// One pass over a recorded file that gathers what positioning needs: every
// reading with its line, station, decoded values and clock time, and every
// usable GPS fix, all on one unwrapped tick line (milliseconds, 64 bits, so
// a counter that wrapped past 2^32 during the survey keeps counting on).

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "datafile/data_file_reader.h"
#include "survey/receiver_sentences.h"
#include "survey/survey_lines.h"

namespace gc40 {

struct ScannedReading {
  std::size_t lineIndex = 0;
  double station = 0.0;
  std::uint32_t tick = 0;  // as written
  std::int64_t time = 0;   // unwrapped
  std::optional<std::int64_t> localMs;
  char dipole = ' ';
  std::int16_t range = 0;
  std::optional<float> verticalConductivity;
  std::optional<float> horizontalConductivity;
  std::optional<float> verticalInphase;
  std::optional<float> horizontalInphase;
};

struct ScannedFix {
  std::int64_t time = 0;  // unwrapped tick of the sentence's arrival
  GgaFix fix;
  std::optional<double> speedKnots;  // from the RMC of the same fix
  std::optional<double> courseDegrees;
};

// A moment known on both the tick line and the receiver's UTC clock.
struct UtcAnchor {
  std::int64_t time = 0;
  std::int64_t utcMs = 0;
};

struct FileScan {
  std::vector<ScannedReading> readings;  // in file order
  std::vector<ScannedFix> fixes;         // in tick order
  std::vector<UtcAnchor> utcAnchors;     // in tick order
};

// `survey` must be what splitSurveyLines made of `contents`.
FileScan scanRecordedFile(const DataFileContents& contents, const SurveyFile& survey);

// The receiver's clock at `time`, from the anchor nearest to it.
std::optional<std::int64_t> utcAt(const std::vector<UtcAnchor>& anchors, std::int64_t time);

}  // namespace gc40

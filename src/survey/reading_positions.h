#pragma once
// Every reading of a recorded file with where it was taken: the readings are
// placed on their survey lines and stations as View Files places them, and
// joined by tick to the GPS fixes recorded beside them, corrected for the
// delay between the meter and the receiver (lag) and for where the sensor
// rides relative to the antenna (layback and cross-track offset).

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/local_time.h"
#include "datafile/data_file_reader.h"
#include "survey/survey_lines.h"

namespace gc40 {

// The direction of travel comes from the track between the two fixes around
// a reading, or from the receiver's course where they lie too close together
// (standing still) or a gap apart; with neither, the sensor is placed at the
// antenna.
struct PositionOptions {
  int lagMs = 0;             // the meter's values lag the GPS by this much; negative allowed
  double laybackM = 0.0;     // sensor behind the antenna along the travel; negative ahead
  double crossTrackM = 0.0;  // sensor to the right of the travel; negative left
  double maxGapS = 2.0;      // bracketing fixes further apart than this give no position
  bool operator==(const PositionOptions&) const = default;
};

// Why a reading has no position; kPositioned when it has one.
enum class NoPositionReason {
  kPositioned,
  kNoFixes,         // the file holds no usable fix at all (grid coordinates apply)
  kBeforeFirstFix,  // the corrected tick lies before the first fix
  kAfterLastFix,    // ... or after the last one
  kGapTooLong,      // the bracketing fixes are more than maxGapS apart
};

// Text for the reason column: "", "no fixes", "before first fix",
// "after last fix", "gap too long".
const char* noPositionText(NoPositionReason reason);

struct GeoPosition {
  double latitude = 0.0;           // degrees, WGS 84, north positive
  double longitude = 0.0;          // degrees, east positive
  std::optional<double> altitude;  // metres above mean sea level, from GGA
  int fixQuality = 0;              // GGA field 6 of the nearer fix
  int satellites = 0;              // of the nearer fix
  std::optional<double> hdop;
  std::uint32_t fixAgeMs = 0;        // corrected tick minus the earlier fix's tick
  std::optional<double> speedKnots;  // from RMC where present
  std::optional<double> courseDegrees;
};

struct PositionedReading {
  std::size_t lineIndex = 0;  // into SurveyFile::lines
  std::string lineName;
  char direction = ' ';
  double station = 0.0;
  std::size_t readingNumber = 0;  // 1-based, in file order over the whole file
  std::uint32_t tick = 0;
  std::optional<LocalTime> localTime;  // from the "Z" and "*" records tying ticks to the clock
  // The receiver's clock at the reading's tick: from the RMC or ZDA date and
  // time, or a GGA time on the date of the RMC/ZDA nearest it.
  std::optional<LocalTime> utc;
  char dipole = ' ';  // 'V' or 'H' as the record says
  std::int16_t range = 0;
  std::optional<float> verticalConductivity;
  std::optional<float> horizontalConductivity;
  std::optional<float> verticalInphase;
  std::optional<float> horizontalInphase;
  std::optional<GeoPosition> position;
  NoPositionReason noPosition = NoPositionReason::kPositioned;
  // For files without fixes: x = station, y = the line's name read as a number.
  std::optional<double> gridX;
  std::optional<double> gridY;
};

struct PositionedFile {
  std::vector<PositionedReading> readings;
  bool hasFixes = false;  // false: grid coordinates only
};

// The whole join, from what readDataFile and splitSurveyLines returned.
PositionedFile positionReadings(const DataFileContents& contents, const SurveyFile& survey,
                                const PositionOptions& options);

}  // namespace gc40

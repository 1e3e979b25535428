#pragma once
// What the join of readings to positions takes from the receiver's
// sentences: the fix of a GGA, the speed, course and date of an RMC, the
// date of a ZDA. Each parser returns nullopt for any other sentence and for
// one whose needed fields are missing or out of range.

#include <cstdint>
#include <optional>
#include <string_view>

namespace gc40 {

struct GgaFix {
  std::optional<std::int64_t> msOfDay;  // UTC time of the fix
  double latitude = 0.0;                // degrees, north positive
  double longitude = 0.0;               // degrees, east positive
  std::optional<double> altitude;       // metres above mean sea level
  int fixQuality = 0;                   // never 0: a GGA without a fix gives nullopt
  int satellites = 0;
  std::optional<double> hdop;
};

struct RmcData {
  std::optional<std::int64_t> msOfDay;  // UTC time of the fix it reports
  std::optional<std::int64_t> utcMs;    // date and time, when both are readable
  bool active = false;                  // status "A": speed and course mean something
  std::optional<double> speedKnots;
  std::optional<double> courseDegrees;
};

std::optional<GgaFix> parseGga(std::string_view sentence);
std::optional<RmcData> parseRmc(std::string_view sentence);
// The UTC date and time of a ZDA, in ms since 1970.
std::optional<std::int64_t> parseZda(std::string_view sentence);

}  // namespace gc40

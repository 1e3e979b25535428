#pragma once
// What the logging screen shows for the GPS receiver, worked out from each
// sentence: an activity mark flipped by every valid GGA, the count of valid
// GGA sentences while recording, and the satellites, fix quality and PDOP.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace gc40 {

struct GpsStatus {
  char gpsActivityMark = '\\';
  std::int32_t gpsFixCount = 0;
};

// The texts one sentence changes; a field it leaves as it was is nullopt,
// and an empty text clears its field.
struct GpsFieldsShown {
  std::optional<std::string> activity{};    // "%c"
  std::optional<std::string> fixCount{};    // "%-5d"
  std::optional<std::string> satellites{};  // "%2d", " 0" or "??"
  std::optional<std::string> fix{};         // "NO FIX", "AGPS", "DGPS", "RTK", "CODE" or ""
  std::optional<std::string> pdop{};        // "%-4.1f", "N/A" or "??"
  bool operator==(const GpsFieldsShown&) const = default;
};

// One sentence and its checksum verdict, as the logging window handles it.
GpsFieldsShown onGpsSentence(GpsStatus& status, std::string_view sentence, bool valid,
                             bool recording);

std::string gpsFixCountText(std::int32_t count);

}  // namespace gc40

#include "gps/gps_status.h"

#include "base/number_text.h"
#include "gps/nmea.h"

namespace gc40 {
namespace {

constexpr int kFixQualityField = 7;  // GGA
constexpr int kSatellitesField = 8;  // GGA
constexpr int kPdopField = 16;       // GSA
constexpr std::size_t kShortestSentence = 6;

// The meaning of the fix quality's first character; anything else clears it.
std::string fixText(std::optional<std::string_view> field) {
  if (!field || field->empty()) return "";
  switch (field->front()) {
    case '0':
      return "NO FIX";
    case '1':
      return "AGPS";
    case '2':
      return "DGPS";
    case '3':
      return "RTK";
    case '4':
      return "CODE";
    default:
      return "";
  }
}

void showGga(GpsStatus& status, std::string_view sentence, bool recording, GpsFieldsShown& shown) {
  status.gpsActivityMark = status.gpsActivityMark == '/' ? '\\' : '/';
  shown.activity = std::string(1, status.gpsActivityMark);
  if (recording) shown.fixCount = gpsFixCountText(++status.gpsFixCount);
  const auto satellites = getField(sentence, kSatellitesField);
  shown.satellites =
      satellites ? rightAligned(formatInteger(parseIntegerPrefix(*satellites)), 2) : " 0";
  shown.fix = fixText(getField(sentence, kFixQualityField));
}

void showGsa(std::string_view sentence, GpsFieldsShown& shown) {
  const auto pdop = getField(sentence, kPdopField);
  shown.pdop = pdop ? leftAligned(formatFixed(parseDecimalPrefix(*pdop), 1), 4) : "N/A";
}

}  // namespace

GpsFieldsShown onGpsSentence(GpsStatus& status, std::string_view sentence, bool valid,
                             bool recording) {
  GpsFieldsShown shown;
  const bool gga = sentence.find("GGA") != std::string_view::npos;
  const bool gsa = sentence.find("GSA") != std::string_view::npos;
  if (valid && sentence.size() >= kShortestSentence) {
    if (gga) showGga(status, sentence, recording, shown);
    if (gsa) showGsa(sentence, shown);
    return shown;
  }
  if (gga) shown.fix = "", shown.satellites = "??";
  if (gsa) shown.pdop = "??";
  return shown;
}

std::string gpsFixCountText(std::int32_t count) { return leftAligned(formatInteger(count), 5); }

}  // namespace gc40

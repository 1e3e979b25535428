#include "survey/receiver_sentences.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "gps/nmea.h"
#include "survey/survey_time.h"

namespace gc40 {
namespace {

// $xxGGA,hhmmss.ss,ddmm.mmmm,N,dddmm.mmmm,E,q,ss,h.h,alt,M,geoid,M,age,station*cs
namespace gga {
constexpr int kTime = 2, kLatitude = 3, kNorthSouth = 4, kLongitude = 5, kEastWest = 6;
constexpr int kQuality = 7, kSatellites = 8, kHdop = 9, kAltitude = 10;
}  // namespace gga
// $xxRMC,hhmmss.ss,A,ddmm.mmmm,N,dddmm.mmmm,E,knots,course,ddmmyy,var,E,mode*cs
namespace rmc {
constexpr int kTime = 2, kStatus = 3, kSpeed = 8, kCourse = 9, kDate = 10;
}  // namespace rmc
// $xxZDA,hhmmss.ss,dd,mm,yyyy,zh,zm*cs
namespace zda {
constexpr int kTime = 2, kDay = 3, kMonth = 4, kYear = 5;
}  // namespace zda

// Two-digit years of the receiver's date fall in the GPS era.
constexpr int kCenturyPivot = 80;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isSentence(std::string_view sentence, std::string_view type) {
  const auto name = getField(sentence, 1);
  return name && name->size() >= type.size() + 1 && name->front() == '$' && name->ends_with(type);
}

// A field without the checksum tail that the last field of a sentence keeps.
std::string_view field(std::string_view sentence, int n) {
  const std::string_view text = getField(sentence, n).value_or(std::string_view{});
  return text.substr(0, text.find('*'));
}

// Digits with at most one decimal point, and a sign where allowed.
std::optional<double> number(std::string_view text, bool signedAllowed = false) {
  const std::string_view body =
      signedAllowed && !text.empty() && text.front() == '-' ? text.substr(1) : text;
  const bool digits = std::any_of(body.begin(), body.end(), isDigit);
  const bool wellFormed =
      std::all_of(body.begin(), body.end(), [](char c) { return isDigit(c) || c == '.'; }) &&
      std::count(body.begin(), body.end(), '.') <= 1;
  if (!digits || !wellFormed) return std::nullopt;
  return parseDecimalPrefix(text);
}

// Like substr, but past the end is empty rather than an error.
std::string_view part(std::string_view text, std::size_t at,
                      std::size_t count = std::string_view::npos) {
  return at < text.size() ? text.substr(at, count) : std::string_view{};
}

std::optional<int> digitsValue(std::string_view text, std::size_t count) {
  if (text.size() != count || !std::all_of(text.begin(), text.end(), isDigit)) return std::nullopt;
  return parseIntegerPrefix(text);
}

// "hhmmss" with any fraction of a second.
std::optional<std::int64_t> timeOfDay(std::string_view text) {
  const auto hours = digitsValue(part(text, 0, 2), 2);
  const auto minutes = digitsValue(part(text, 2, 2), 2);
  const auto seconds = number(part(text, 4));
  if (!hours || !minutes || !seconds || *hours > 23 || *minutes > 59 || *seconds >= 61)
    return std::nullopt;
  return (*hours * 60 + *minutes) * 60'000 + std::llround(*seconds * 1000);
}

// "ddmm.mmmm" or "dddmm.mmmm" and its hemisphere letter.
std::optional<double> angle(std::string_view text, std::string_view hemisphere, char positive,
                            char negative, double limit) {
  const auto value = number(text);
  if (!value || hemisphere.size() != 1 || (hemisphere[0] != positive && hemisphere[0] != negative))
    return std::nullopt;
  const double degrees = std::floor(*value / 100);
  const double minutes = *value - degrees * 100;
  const double result = degrees + minutes / 60;
  if (minutes >= 60 || result > limit) return std::nullopt;
  return hemisphere[0] == negative ? -result : result;
}

}  // namespace

std::optional<GgaFix> parseGga(std::string_view sentence) {
  if (!isSentence(sentence, "GGA")) return std::nullopt;
  const auto quality = digitsValue(field(sentence, gga::kQuality), 1);
  const auto latitude =
      angle(field(sentence, gga::kLatitude), field(sentence, gga::kNorthSouth), 'N', 'S', 90);
  const auto longitude =
      angle(field(sentence, gga::kLongitude), field(sentence, gga::kEastWest), 'E', 'W', 180);
  if (!quality || *quality == 0 || !latitude || !longitude) return std::nullopt;
  GgaFix fix;
  fix.msOfDay = timeOfDay(field(sentence, gga::kTime));
  fix.latitude = *latitude;
  fix.longitude = *longitude;
  fix.altitude = number(field(sentence, gga::kAltitude), true);
  fix.fixQuality = *quality;
  fix.satellites = parseIntegerPrefix(field(sentence, gga::kSatellites));
  fix.hdop = number(field(sentence, gga::kHdop));
  return fix;
}

std::optional<RmcData> parseRmc(std::string_view sentence) {
  if (!isSentence(sentence, "RMC")) return std::nullopt;
  RmcData data;
  const std::string_view date = field(sentence, rmc::kDate);
  const auto day = digitsValue(part(date, 0, 2), 2);
  const auto month = digitsValue(part(date, 2, 2), 2);
  const auto year = digitsValue(part(date, 4), 2);
  data.msOfDay = timeOfDay(field(sentence, rmc::kTime));
  if (day && month && year && data.msOfDay) {
    const int fullYear = *year + (*year < kCenturyPivot ? 2000 : 1900);
    data.utcMs = epochMs(fullYear, *month, *day, *data.msOfDay);
  }
  data.active = field(sentence, rmc::kStatus) == "A";
  if (data.active) {
    data.speedKnots = number(field(sentence, rmc::kSpeed));
    data.courseDegrees = number(field(sentence, rmc::kCourse));
  }
  return data;
}

std::optional<std::int64_t> parseZda(std::string_view sentence) {
  if (!isSentence(sentence, "ZDA")) return std::nullopt;
  const auto time = timeOfDay(field(sentence, zda::kTime));
  const auto day = digitsValue(field(sentence, zda::kDay), 2);
  const auto month = digitsValue(field(sentence, zda::kMonth), 2);
  const auto year = digitsValue(field(sentence, zda::kYear), 4);
  if (!time || !day || !month || !year) return std::nullopt;
  return epochMs(*year, *month, *day, *time);
}

}  // namespace gc40

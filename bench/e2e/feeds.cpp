#include "e2e/feeds.h"

#include <array>

#include "base/number_text.h"
#include "gc40-sim/instrument_records.h"
#include "gps/nmea.h"

namespace gc40::bench {
namespace {

constexpr std::int64_t kValueRange = 100'000;  // what five digits hold
constexpr std::int64_t kFixesPerDay = 24 * 3600 * 10;

// hhmmss.ss of a fix taken every tenth of a second from midnight.
std::string fixTime(std::int64_t fix) {
  const std::int64_t tenths = fix % kFixesPerDay;
  const std::int64_t seconds = tenths / 10;
  return formatZeroPadded(seconds / 3600, 2) + formatZeroPadded(seconds / 60 % 60, 2) +
         formatZeroPadded(seconds % 60, 2) + '.' + formatZeroPadded(tenths % 10 * 10, 2);
}

std::string sentence(std::string_view body, std::int64_t number) {
  const std::string numbered = std::string(body) + ',' + formatInteger(number);
  return numbered + nmeaChecksumTail(numbered) + "\r\n";
}

// Digits only, at least one.
std::optional<std::int64_t> wholeNumber(std::string_view digits) {
  if (digits.empty()) return std::nullopt;
  std::int64_t number = 0;
  for (const char digit : digits) {
    if (digit < '0' || digit > '9') return std::nullopt;
    number = number * 10 + (digit - '0');
  }
  return number;
}

}  // namespace

std::string meterRecord(std::int64_t number) {
  return "T " + formatValueField(number / kValueRange % kValueRange) +
         formatValueField(number % kValueRange) + '\r';
}

std::optional<std::int64_t> meterRecordNumber(std::string_view instrumentRecord) {
  if (instrumentRecord.size() < 12 || instrumentRecord[0] != 'T') return std::nullopt;
  return wholeNumber(instrumentRecord.substr(2, 10));
}

std::string gpsFix(std::int64_t fix) {
  const std::string utc = fixTime(fix);
  const std::array<std::string, kSentencesPerFix> bodies{
      "$GPGGA," + utc + ",4523.2212,N,07541.7648,W,1,08,0.9,81.2,M,-34.0,M,,",
      "$GPGSA,A,3,03,06,09,12,17,19,22,28,,,,,1.8,0.9,1.5",
      "$GPRMC," + utc + ",A,4523.2212,N,07541.7648,W,2.7,30.0,150624,,,A",
      "$GPGSV,2,1,08,03,45,120,42,06,30,200,38,09,60,045,45,12,15,300,30",
      "$GPVTG,30.0,T,,M,2.7,N,5.0,K,A"};
  std::string bytes;
  for (std::size_t place = 0; place < bodies.size(); ++place)
    bytes += sentence(bodies[place], fix * kSentencesPerFix + std::int64_t(place));
  return bytes;
}

std::optional<std::int64_t> sentenceNumber(std::string_view sentence) {
  const std::size_t star = sentence.rfind('*');
  const std::size_t comma = sentence.rfind(',', star);
  if (star == std::string_view::npos || comma == std::string_view::npos) return std::nullopt;
  return wholeNumber(sentence.substr(comma + 1, star - comma - 1));
}

}  // namespace gc40::bench

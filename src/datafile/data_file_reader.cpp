#include "datafile/data_file_reader.h"

#include <charconv>
#include <limits>
#include <optional>

#include "base/number_text.h"
#include "datafile/data_records.h"

namespace gc40 {
namespace {

namespace letter = recordLetter;
using Record = std::string_view;  // the 24 bytes of one record
struct Fault {                    // what is wrong with a record
  std::string what;
};
using Decoded = std::variant<RecordValue, Fault>;

constexpr std::size_t kLength = dataRecordLength;
constexpr std::string_view kKnownLetters = "GHLBAZT23456S*CX@#?\"!";

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string rightTrimmed(std::string_view text) {
  const std::size_t last = text.find_last_not_of(' ');
  return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

// The field must be one number and nothing else, spaces around it aside.
std::optional<double> parseNumber(std::string_view field) {
  field = trimmed(field);
  double value = 0.0;
  const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
  if (field.empty() || error != std::errc() || end != field.data() + field.size()) return {};
  return value;
}

// Written as a signed 32-bit number; read back into the unsigned counter.
std::optional<std::uint32_t> parseTick(std::string_view field) {
  field = trimmed(field);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
  if (field.empty() || error != std::errc() || end != field.data() + field.size() ||
      value < std::numeric_limits<std::int32_t>::min() ||
      value > std::numeric_limits<std::int32_t>::max()) {
    return {};
  }
  return static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
}

// Exactly `field.size()` decimal digits.
std::optional<int> parseDigits(std::string_view field) {
  int value = 0;
  for (const char c : field) {
    if (c < '0' || c > '9') return {};
    value = value * 10 + (c - '0');
  }
  return value;
}

// "hh:mm:ss" (or with another separator, or none) from `text`.
bool parseClock(std::string_view text, std::size_t step, TimeOfDay& time) {
  const auto hour = parseDigits(text.substr(0, 2));
  const auto minute = parseDigits(text.substr(step, 2));
  const auto second = parseDigits(text.substr(2 * step, 2));
  if (!hour || !minute || !second) return false;
  if (step == 3 && (text[2] != ':' || text[5] != ':')) return false;
  time.hour = *hour, time.minute = *minute, time.second = *second;
  return true;
}

Decoded decodeIdentification(Record record) {
  IdentificationRecord id;
  id.identifier = std::string(record.substr(0, 15));
  const std::string_view variant = record.substr(0, 8);
  const std::string_view input = record.substr(12, 3);
  if ((variant != kStandardVariantText && variant != kShortVariantText) ||
      record.substr(8, 4) != kFirmwareText || (input != kGroundText && input != kGpsText)) {
    return Fault{"unknown identification \"" + id.identifier + "\""};
  }
  id.instrumentVariant = variant == kShortVariantText ? 1 : 0;
  id.gpsEnabled = input == kGpsText;
  std::int32_t* digits[] = {&id.distanceUnits, &id.dipoleMode, &id.surveyMode, &id.component};
  for (std::size_t i = 0; i < 4; ++i) {
    const auto value = parseDigits(record.substr(15 + i, 1));
    if (!value)
      return Fault{"identification: settings digit at " +
                   formatInteger(static_cast<std::int64_t>(15 + i))};
    *digits[i] = *value;
  }
  id.platformMark = record[22];
  if (id.platformMark != ' ' && id.platformMark != '2' && id.platformMark != '3')
    return Fault{"identification: unknown platform mark"};
  return id;
}

Decoded decodeFileName(Record record) {
  const std::string_view timing = trimmed(record.substr(11, 12));
  if (record[1] != ' ' || !parseNumber(timing)) return Fault{"H record: unreadable timing field"};
  return FileNameRecord{rightTrimmed(record.substr(2, kBaseNameFieldLength)), std::string(timing)};
}

Decoded decodeLineAttributes(Record record) {
  const auto increment = parseNumber(record.substr(2, 21));
  if (kDirectionLetters.find(record[1]) == std::string_view::npos || !increment)
    return Fault{"A record: unreadable direction or increment"};
  return LineAttributesRecord{record[1], *increment};
}

Decoded decodeDateTime(Record record) {
  DateTimeRecord date;
  const auto day = parseDigits(record.substr(1, 2));
  const auto month = parseDigits(record.substr(3, 2));
  const auto year = parseDigits(record.substr(5, 4));
  if (!day || !month || !year || record[9] != ' ' || !parseClock(record.substr(10), 3, date.time))
    return Fault{"Z record: unreadable date or time"};
  date.day = *day, date.month = *month, date.year = *year;
  return date;
}

// The station may be wider than its field and push the time along, so the
// two are read as words rather than by position.
Decoded decodeStation(Record record) {
  std::string_view rest = trimmed(record.substr(1, 22));
  const std::size_t space = rest.find(' ');
  const auto station = parseNumber(rest.substr(0, space));
  const std::string_view time = space == std::string_view::npos ? "" : trimmed(rest.substr(space));
  StationRecord result;
  const auto hundredths = time.size() == 8 ? parseDigits(time.substr(6)) : std::nullopt;
  if (!station || !hundredths || !parseClock(time, 2, result.time))
    return Fault{"S record: unreadable station or time"};
  result.station = *station;
  result.time.millisecond = *hundredths * 10;
  return result;
}

Decoded decodeTimeMark(Record record) {
  TimeMarkRecord mark;
  const auto milliseconds = parseDigits(record.substr(10, 3));
  const auto tick = parseTick(record.substr(13, 10));
  if (!parseClock(record.substr(1), 3, mark.time) || record[9] != '.' || !milliseconds || !tick)
    return Fault{"* record: unreadable time or tick"};
  mark.time.millisecond = *milliseconds;
  mark.tick = *tick;
  return mark;
}

Decoded decodeReading(Record record) {
  const auto tick = parseTick(record.substr(12, 11));
  if (!tick) return Fault{"T record: unreadable tick"};
  return ReadingRecord{std::string(record.substr(0, kInstrumentRecordLength)), *tick};
}

Decoded decodeText(Record record) {
  const auto tick = parseTick(record.substr(12, 11));
  if (!tick) return Fault{std::string{record[0]} + " record: unreadable tick"};
  return TextRecord{record[0], rightTrimmed(record.substr(1, kTextFieldLength)), *tick};
}

// Records that stand alone (everything but a GPS sentence's records).
Decoded decodeSingle(Record record) {
  switch (record[0]) {
    case letter::kIdentification:
      return decodeIdentification(record);
    case letter::kFileName:
      return decodeFileName(record);
    case letter::kLine:
      return LineRecord{rightTrimmed(record.substr(1, kLineNameLength))};
    case letter::kLineStart:
      if (const auto station = parseNumber(record.substr(1, 22))) return LineStartRecord{*station};
      return Fault{"B record: unreadable station"};
    case letter::kLineAttributes:
      return decodeLineAttributes(record);
    case letter::kDateTime:
      return decodeDateTime(record);
    case letter::kReading:
    case '2':  // a reading's repeat number at its station replaces the 'T'
    case '3':
    case '4':
    case '5':
    case '6':
      return decodeReading(record);
    case letter::kStation:
      return decodeStation(record);
    case letter::kTimeMark:
      return decodeTimeMark(record);
    case letter::kComment:
    case letter::kEvent:
      return decodeText(record);
    case letter::kGpsValidContinuation:
    case letter::kGpsInvalidContinuation:
      return Fault{"GPS piece without the start of its sentence"};
    default:
      return Fault{"GPS time record without a sentence"};
  }
}

// A sentence shorter than one piece is written whole in its first record and
// again in its last; otherwise the pieces follow each other and the last one
// is padded.
std::string joinGpsPieces(std::string_view first, const std::vector<std::string_view>& rest) {
  std::string firstText = rightTrimmed(first);
  const std::string lastText = rightTrimmed(rest.back());
  if (rest.size() == 1 && firstText.size() < kGpsPieceLength && firstText == lastText)
    return firstText;
  std::string sentence(first);
  for (std::size_t i = 0; i + 1 < rest.size(); ++i) sentence += rest[i];
  return sentence + lastText;
}

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {
    contents_.records.reserve(bytes.size() / kLength);
  }

  std::optional<DataFileContents> read(const ReadProgress& progress) && {
    constexpr std::size_t kProgressEvery = 256 * 1024;
    std::size_t nextReport = 0;
    while (position_ < bytes_.size()) {
      if (progress && position_ >= nextReport) {
        if (!progress(position_, bytes_.size())) return std::nullopt;
        nextReport = position_ + kProgressEvery;
      }
      readAt();
    }
    return std::move(contents_);
  }

 private:
  bool isFramed(std::size_t at) const {
    return at + kLength <= bytes_.size() && bytes_[at + kLength - 1] == '\n' &&
           kKnownLetters.find(bytes_[at]) != std::string_view::npos;
  }

  Record recordAt(std::size_t at) const { return bytes_.substr(at, kLength); }

  // The next place after `from` where a record plausibly starts: a known
  // letter with a line feed 23 bytes on and none before it. The end when none.
  std::size_t nextBoundary(std::size_t from) const {
    for (std::size_t start = from;;) {
      const std::size_t lineFeed = bytes_.find('\n', start);
      if (lineFeed == std::string_view::npos) return bytes_.size();
      if (lineFeed >= start + kLength - 1 && isFramed(lineFeed - (kLength - 1)))
        return lineFeed - (kLength - 1);
      start = lineFeed + 1;
    }
  }

  void addProblem(std::size_t at, std::size_t length, std::string what) {
    contents_.problems.push_back({at, length, std::move(what)});
  }

  void readAt() {
    if (position_ + kLength > bytes_.size()) {
      addProblem(position_, bytes_.size() - position_, "truncated record");
      position_ = bytes_.size();
    } else if (!isFramed(position_)) {
      const std::size_t next = nextBoundary(position_ + 1);
      addProblem(position_, next - position_,
                 bytes_[position_ + kLength - 1] == '\n' ? "unknown record type"
                                                         : "record without its line feed at 23");
      position_ = next;
    } else if (bytes_[position_] == letter::kGpsValid || bytes_[position_] == letter::kGpsInvalid) {
      readGpsSentence();
    } else {
      readSingle();
    }
  }

  void readSingle() {
    Decoded decoded = decodeSingle(recordAt(position_));
    if (auto* value = std::get_if<RecordValue>(&decoded)) {
      contents_.records.push_back({position_, kLength, std::move(*value)});
    } else {
      addProblem(position_, kLength, std::move(std::get<Fault>(decoded).what));
    }
    position_ += kLength;
  }

  void readGpsSentence() {
    const std::size_t start = position_;
    const bool valid = bytes_[start] == letter::kGpsValid;
    const char continuation =
        valid ? letter::kGpsValidContinuation : letter::kGpsInvalidContinuation;
    std::vector<std::string_view> pieces;
    std::size_t at = start + kLength;
    for (; isFramed(at) && bytes_[at] == continuation; at += kLength)
      pieces.push_back(recordAt(at).substr(1, kGpsPieceLength));
    const bool timed = isFramed(at) && bytes_[at] == letter::kGpsTime;
    const auto tick = timed ? parseTick(recordAt(at).substr(1, 22)) : std::nullopt;
    if (!timed) {
      addProblem(start, at - start, "GPS pieces without their \"!\" record");
    } else if (pieces.empty() || !tick) {
      at += kLength;
      addProblem(start, at - start, "GPS sentence without its last piece or tick");
    } else {
      at += kLength;
      const std::string sentence =
          joinGpsPieces(recordAt(start).substr(1, kGpsPieceLength), pieces);
      contents_.records.push_back({start, at - start, GpsSentenceRecord{sentence, valid, *tick}});
    }
    position_ = at;
  }

  std::string_view bytes_;
  std::size_t position_ = 0;
  DataFileContents contents_;
};

}  // namespace

DataFileContents readDataFile(std::string_view bytes) { return *Reader(bytes).read({}); }

std::optional<DataFileContents> readDataFile(std::string_view bytes, const ReadProgress& progress) {
  return Reader(bytes).read(progress);
}

}  // namespace gc40

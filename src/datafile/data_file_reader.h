#pragma once
// Reads a whole survey data file back into typed records. Damage never stops
// it: what it cannot read is reported with its byte offset and length, and
// reading goes on from the next place where a well-formed record starts.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace gc40 {

// Times as the records hold them; the parts a record lacks stay 0.
struct TimeOfDay {
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
  bool operator==(const TimeOfDay&) const = default;
};

struct IdentificationRecord {
  std::string identifier;              // e.g. "GC40STD W211GRD"
  std::int32_t instrumentVariant = 0;  // 0 standard, 1 short
  bool gpsEnabled = false;
  std::int32_t distanceUnits = 0;
  std::int32_t dipoleMode = 0;
  std::int32_t surveyMode = 0;
  std::int32_t component = 0;
  char platformMark = ' ';  // ' ', '2' landscape, '3' portrait
  bool operator==(const IdentificationRecord&) const = default;
};

struct FileNameRecord {  // "H "
  std::string baseName;
  std::string timing;  // as written: interval, wheel step or sample count
  bool operator==(const FileNameRecord&) const = default;
};

struct LineRecord {  // "L"
  std::string name;
  bool operator==(const LineRecord&) const = default;
};

struct LineStartRecord {  // "B"
  double station = 0.0;
  bool operator==(const LineStartRecord&) const = default;
};

struct LineAttributesRecord {  // "A"
  char direction = 'S';        // 'W', 'S', 'N' or 'E'
  double stationIncrement = 0.0;
  bool operator==(const LineAttributesRecord&) const = default;
};

struct DateTimeRecord {  // "Z": the start of a line, to the second
  int year = 0;
  int month = 0;
  int day = 0;
  TimeOfDay time;
  bool operator==(const DateTimeRecord&) const = default;
};

struct ReadingRecord {           // "T", or "2".."6" for a repeat at one station
  std::string instrumentRecord;  // the 12 bytes as written
  std::uint32_t tick = 0;
  bool operator==(const ReadingRecord&) const = default;
};

struct StationRecord {  // "S": time to the hundredth
  double station = 0.0;
  TimeOfDay time;
  bool operator==(const StationRecord&) const = default;
};

struct TimeMarkRecord {  // "*"
  TimeOfDay time;
  std::uint32_t tick = 0;
  bool operator==(const TimeMarkRecord&) const = default;
};

struct TextRecord {  // "C" comment or "X" event; padding removed
  char typeLetter = 'C';
  std::string text;
  std::uint32_t tick = 0;
  bool operator==(const TextRecord&) const = default;
};

struct GpsSentenceRecord {  // its pieces joined, and the tick of its "!"
  std::string sentence;
  bool valid = false;  // written as "@"/"#" (checksum right) or "?"/'"'
  std::uint32_t tick = 0;
  bool operator==(const GpsSentenceRecord&) const = default;
};

using RecordValue = std::variant<IdentificationRecord, FileNameRecord, LineRecord, LineStartRecord,
                                 LineAttributesRecord, DateTimeRecord, ReadingRecord, StationRecord,
                                 TimeMarkRecord, TextRecord, GpsSentenceRecord>;

struct FileRecord {
  std::size_t offset = 0;
  std::size_t length = 0;  // 24, or all the records of a GPS sentence
  RecordValue value;
};

struct FileProblem {
  std::size_t offset = 0;
  std::size_t length = 0;
  std::string what;
};

struct DataFileContents {
  std::vector<FileRecord> records;
  std::vector<FileProblem> problems;
};

// Ticks are read as written: a tick of 11 characters has lost its last
// digit to the record's length, and the reader gives what is left.
DataFileContents readDataFile(std::string_view bytes);

// Called now and then with the bytes read so far; false stops the reading.
using ReadProgress = std::function<bool(std::size_t done, std::size_t total)>;

// As above; nullopt only when `progress` stopped it.
std::optional<DataFileContents> readDataFile(std::string_view bytes, const ReadProgress& progress);

}  // namespace gc40

// r40: looks into survey data files and serial captures.
//   r40 dump FILE      one line per record: offset, type and fields
//   r40 check FILE     one line per problem; exit 0 only when there is none
//   r40 gps CAPTURE    each line a GPS receiver sent, as gc40 judges it
//   r40 meter CAPTURE  the readings gc40 takes from a meter's bytes
//   r40 export FILE... -o OUT   every reading as a point feature (GIS formats)
//   r40 lag FILE...    the meter-to-GPS lag the survey shows
//   r40 plot FILE --map OUT.png | --profile LINE OUT.png   pictures for reports
// Exit 2 when a file cannot be read or the command line is wrong.

#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/number_text.h"
#include "base/raw_file.h"
#include "capture_listings.h"
#include "command_options.h"
#include "datafile/data_file_reader.h"
#include "plot_command.h"
#include "survey_commands.h"

namespace gc40 {
namespace {

std::string number(std::int64_t value) { return formatInteger(value); }

// Quoted, any record on one line.
std::string escaped(std::string_view text) { return '"' + escapedText(text) + '"'; }

std::string clock(const TimeOfDay& time) {
  return formatZeroPadded(time.hour, 2) + ":" + formatZeroPadded(time.minute, 2) + ":" +
         formatZeroPadded(time.second, 2);
}

std::string tick(std::uint32_t value) { return " tick=" + number(value); }

struct Describe {
  std::string operator()(const IdentificationRecord& r) const {
    return "id " + escaped(r.identifier) + " variant=" + number(r.instrumentVariant) +
           " gps=" + number(r.gpsEnabled) + " units=" + number(r.distanceUnits) +
           " dipole=" + number(r.dipoleMode) + " mode=" + number(r.surveyMode) +
           " component=" + number(r.component) + " platform=" + escaped({&r.platformMark, 1});
  }
  std::string operator()(const FileNameRecord& r) const {
    return "H base=" + escaped(r.baseName) + " timing=" + r.timing;
  }
  std::string operator()(const LineRecord& r) const { return "L name=" + escaped(r.name); }
  std::string operator()(const LineStartRecord& r) const {
    return "B station=" + formatFixed(r.station, 2);
  }
  std::string operator()(const LineAttributesRecord& r) const {
    return std::string("A direction=") + r.direction +
           " increment=" + formatFixed(r.stationIncrement, 3);
  }
  std::string operator()(const DateTimeRecord& r) const {
    return "Z date=" + number(r.year) + "-" + formatZeroPadded(r.month, 2) + "-" +
           formatZeroPadded(r.day, 2) + " time=" + clock(r.time);
  }
  std::string operator()(const ReadingRecord& r) const {
    return "T record=" + escaped(r.instrumentRecord) + tick(r.tick);
  }
  std::string operator()(const StationRecord& r) const {
    return "S station=" + formatFixed(r.station, 2) + " time=" + clock(r.time) + "." +
           formatZeroPadded(r.time.millisecond / 10, 2);
  }
  std::string operator()(const TimeMarkRecord& r) const {
    return "* time=" + clock(r.time) + "." + formatZeroPadded(r.time.millisecond, 3) + tick(r.tick);
  }
  std::string operator()(const TextRecord& r) const {
    return std::string(1, r.typeLetter) + " text=" + escaped(r.text) + tick(r.tick);
  }
  std::string operator()(const GpsSentenceRecord& r) const {
    return std::string(r.valid ? "@" : "?") + " sentence=" + escaped(r.sentence) + tick(r.tick);
  }
};

std::string problemLine(const FileProblem& problem) {
  return number(problem.offset) + " problem (" + number(problem.length) +
         " bytes): " + problem.what;
}

void dump(const DataFileContents& contents) {
  auto problem = contents.problems.begin();
  for (const FileRecord& record : contents.records) {
    for (; problem != contents.problems.end() && problem->offset < record.offset; ++problem)
      std::cout << problemLine(*problem) << '\n';
    std::cout << number(record.offset) << ' ' << std::visit(Describe{}, record.value) << '\n';
  }
  for (; problem != contents.problems.end(); ++problem) std::cout << problemLine(*problem) << '\n';
}

int check(const std::string& name, const DataFileContents& contents) {
  for (const FileProblem& problem : contents.problems) std::cout << problemLine(problem) << '\n';
  std::cout << name << ": " << number(contents.records.size()) << " records, "
            << number(contents.problems.size()) << " problems\n";
  return contents.problems.empty() ? 0 : 1;
}

std::optional<std::string> readWholeFile(const std::filesystem::path& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  std::string reason = error ? error.message() : "not a regular file";
  if (!error && std::filesystem::is_regular_file(status)) {
    if (auto bytes = readFilePrefix(path, std::string::npos)) return bytes;
    reason = "cannot be read";
  }
  std::cerr << "r40: " << path.string() << ": " << reason << '\n';
  return std::nullopt;
}

int usage() {
  std::cerr << "usage: r40 dump FILE       list every record with its byte offset\n"
               "       r40 check FILE      list the problems; exit 0 when there are none\n"
               "       r40 gps CAPTURE     each line a GPS receiver sent, as gc40 judges it\n"
               "       r40 meter CAPTURE   the readings gc40 takes from a meter's bytes\n"
               "       r40 export FILE... -o OUT [options]   every reading as a point feature\n"
               "       r40 lag FILE... [options]   the lag of the meter behind the GPS\n"
               "       r40 plot FILE --map OUT.png [options]   the map of the survey\n"
               "       r40 plot FILE --profile LINE OUT.png [options]   a line's profile\n";
  return kTrouble;
}

int run(int argc, char** argv) {
  if (argc >= 2) {
    const std::string_view name = argv[1];
    const std::vector<std::string> arguments(argv + 2, argv + argc);
    if (name == "export") return runExportCommand(arguments);
    if (name == "lag") return runLagCommand(arguments);
    if (name == "plot") return runPlotCommand(arguments);
  }
  const std::string_view command = argc == 3 ? argv[1] : "";
  if (command != "dump" && command != "check" && command != "gps" && command != "meter")
    return usage();
  const std::optional<std::string> bytes = readWholeFile(argv[2]);
  if (!bytes) return kTrouble;
  if (command == "gps") {
    GpsCaptureReader reader;
    reader.feed(*bytes);
    std::cout << gpsCaptureListing(std::filesystem::path(argv[2]).filename().string(),
                                   reader.lines());
  } else if (command == "meter") {
    std::cout << meterCaptureListing(*bytes);
  } else if (command == "check") {
    return check(argv[2], readDataFile(*bytes));
  } else {
    dump(readDataFile(*bytes));
  }
  return 0;
}

}  // namespace
}  // namespace gc40

int main(int argc, char** argv) { return gc40::run(argc, argv); }

// gc40-fuzz-seeds FOLDER: writes the starting inputs of the fuzz targets that
// read what gc40 itself writes (settings files, port maps, data files) and of
// the reading decoder, made with the core's own writers so they follow any
// change to the formats. FOLDER/<target>/<name>, one file per input.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "datafile/data_records.h"
#include "platform/port_map.h"
#include "settings/settings_file.h"

namespace gc40::fuzz {
namespace {

constexpr LocalTime kNow{2026, 11, 22, 9, 30, 5, 120};

class Seeds {
 public:
  explicit Seeds(std::filesystem::path folder) : folder_(std::move(folder)) {}

  bool write(const std::string& target, const std::string& name, std::string_view bytes) {
    const std::filesystem::path path = folder_ / target / name;
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (out.flush()) return true;
    std::cerr << "gc40-fuzz-seeds: cannot write " << path.string() << "\n";
    return false;
  }

 private:
  std::filesystem::path folder_;
};

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
}

std::vector<Settings> settingsVariety() {
  Settings wheel;
  wheel.surveyMode = SurveyMode::kWheel;
  wheel.component = Component::kInphase;
  wheel.instrumentVariant = 1;
  wheel.gpsEnabled = 1;
  wheel.surveyLine = u"N\u00e9-12";
  wheel.stationIncrementWheel = -0.5f;
  wheel.startStation = -1250.75;
  Settings manual;
  manual.surveyMode = SurveyMode::kManual;
  manual.dipoleMode = DipoleMode::kBoth;
  manual.distanceUnits = 1;
  manual.readingInterval = 1.5f;
  manual.conductivityScaleMax = manual.conductivityScaleMin;  // a flat scale
  return {Settings{}, wheel, manual};
}

std::string instrumentRecord(unsigned char status, std::string_view values, char marker = 'T') {
  return std::string(1, marker) + static_cast<char>(status) + std::string(values);
}

void add(std::string& file, const DataRecord& record) { file.append(record.begin(), record.end()); }

// A run as the logging screen writes it: header, line blocks, stations,
// readings with their repeats, notes and GPS sentences of one and of many
// pieces, valid and not.
std::string dataFile(const Settings& settings) {
  std::string file;
  std::uint32_t tick = 4000;
  add(file, formatIdentificationRecord(settings));
  add(file, formatFileNameRecord(settings, "SEED0001"));
  for (const double start : {settings.startStation, settings.startStation + 10.0}) {
    Settings line = settings;
    line.startStation = start;
    for (const DataRecord& record : formatLineBlock(line, kNow)) add(file, record);
    add(file, formatTimeMark(kNow, tick));
    add(file, formatStationRecord(start, kNow));
    for (const unsigned char status : {0x20, 0x21, 0x60, 0x04, 0x81}) {
      add(file, formatReadingRecord(instrumentRecord(status, " 1234-0056"), tick += 91));
      add(file, formatReadingRecord(instrumentRecord(status, "00012 9999", '2'), tick += 91));
    }
    add(file, formatTextRecord(u"seed note", 'C', tick));
    add(file, formatTextRecord(u"EVENT", 'X', tick));
    for (const DataRecord& record :
         formatGpsRecords("$GPGGA,093005,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47", tick,
                          recordLetter::kGpsValid, recordLetter::kGpsValidContinuation)) {
      add(file, record);
    }
    for (const DataRecord& record :
         formatGpsRecords("$GPGSA,A,3*00", tick, recordLetter::kGpsInvalid,
                          recordLetter::kGpsInvalidContinuation)) {
      add(file, record);
    }
  }
  return file;
}

bool writeSettingsSeeds(Seeds& seeds) {
  bool ok = true;
  int n = 0;
  for (const Settings& settings : settingsVariety()) {
    const std::string text = joined(settingsFileLines(settings));
    const std::string name = std::to_string(n++);
    ok &= seeds.write("settings_file", "GC40-" + name + ".INI", text);
    ok &= seeds.write("data_file", "SEED" + name + ".R40", dataFile(settings));
  }
  const std::string whole = joined(settingsFileLines(Settings{}));
  ok &= seeds.write("settings_file", "cut.INI", whole.substr(0, whole.size() / 2));
  return ok;
}

bool writePortMapSeeds(Seeds& seeds) {
  PortMap edited = defaultPortMap();
  edited.paths[2] = "/dev/pts/4";
  std::string text = formatPortMap(edited);
  text +=
      "; a comment\r\n  com7 = /dev/serial/by-id/usb-FTDI_0001 \r\nCOM13:=/dev/ttyS0\nrubbish\n";
  return seeds.write("port_map", "PORTS.INI", formatPortMap(defaultPortMap())) &&
         seeds.write("port_map", "edited.INI", text);
}

// The decoder takes its settings from the input's last four bytes, the last
// first: survey mode, component, variant, whether scales follow.
bool writeDecoderSeeds(Seeds& seeds) {
  bool ok = true;
  for (const unsigned char status : {0x20, 0x21, 0x46, 0x80, 0x81, 0xE5}) {
    for (const char mode : {0, 1, 2}) {
      const std::string settings{0, static_cast<char>(mode & 1), static_cast<char>(mode / 2), mode};
      ok &= seeds.write("decoder", std::to_string(status) + "-" + std::to_string(mode),
                        instrumentRecord(status, "-0123 45.67") + settings);
    }
  }
  return ok;
}

}  // namespace
}  // namespace gc40::fuzz

int main(int argc, char** argv) {
  using namespace gc40::fuzz;
  if (argc != 2) {
    std::cerr << "usage: gc40-fuzz-seeds FOLDER\n";
    return 2;
  }
  Seeds seeds(argv[1]);
  const bool ok = writeSettingsSeeds(seeds) && writePortMapSeeds(seeds) && writeDecoderSeeds(seeds);
  return ok ? 0 : 1;
}

#include "settings/settings_file.h"

#include <array>
#include <system_error>
#include <variant>

#include "base/number_text.h"
#include "base/raw_file.h"
#include "base/text_codec.h"

namespace gc40 {
namespace {

// A valid file is under 2 KB; this only bounds what a damaged one costs.
constexpr std::size_t kMaxSettingsFileBytes = 4 * 1024 * 1024;

struct WheelSign {
  float* increment;
};
using FieldRef = std::variant<std::int32_t*, SurveyMode*, Component*, DipoleMode*, Colorref*,
                              float*, double*, std::u16string*, WheelSign>;
using Derivation = void (*)(Settings&);

struct SettingsLine {
  FieldRef field;
  Derivation after = nullptr;
};

void deriveSurveyModeSetting(Settings& s) { s.surveyModeSetting = s.surveyMode; }

// Line 55 matters only for an unknown survey mode: otherwise the mode's own step wins.
void deriveStationState(Settings& s) {
  if (const float* perMode = perModeStationIncrement(s, s.surveyMode)) {
    s.stationIncrement = *perMode;
  }
  s.currentStation = s.startStation;
}

// Lines 2..55 in file order, with the derivation that follows each line.
std::array<SettingsLine, kSettingsValueLines> settingsLines(Settings& s) {
  auto& v = s.traceVisible;
  auto& t = s.traceThickness;
  auto& c = s.traceColour;
  const FieldRef line55 = s.surveyMode == SurveyMode::kWheel
                              ? FieldRef(WheelSign{&s.stationIncrement})
                              : FieldRef(&s.stationIncrement);
  // clang-format off
  return {{
      {&s.instrumentVariant}, {&s.distanceUnits}, {&s.instrumentPort}, {&s.audioEnabled},  // 2-5
      {&s.pauseKey},                                                                      // 6
      {&v[0]}, {&v[1]}, {&v[2]}, {&v[3]}, {&v[4]}, {&v[5]}, {&v[6]}, {&v[7]},             // 7-14
      {&t[0]}, {&t[1]}, {&t[2]}, {&t[3]}, {&t[4]}, {&t[5]}, {&t[6]}, {&t[7]},             // 15-22
      {&c[0]}, {&c[1]}, {&c[2]}, {&c[3]}, {&c[4]}, {&c[5]}, {&c[6]}, {&c[7]},             // 23-30
      {&s.gridScale},                                                                     // 31
      {&s.conductivityScaleMin}, {&s.conductivityScaleMax, recomputeConductivityScale},   // 32-33
      {&s.inphaseScaleMin}, {&s.inphaseScaleMax, recomputeInphaseScale},                  // 34-35
      {&s.gpsEnabled}, {&s.gpsPort}, {&s.gpsBaudIndex}, {&s.gpsDataBitsIndex},            // 36-39
      {&s.gpsParity}, {&s.gpsStopBitsIndex},                                              // 40-41
      {&s.surveyMode, deriveSurveyModeSetting}, {&s.component}, {&s.dipoleMode},          // 42-44
      {&s.samplesPerReading},                                                             // 45
      {&s.stationIncrementAuto}, {&s.stationIncrementWheel}, {&s.stationIncrementManual}, // 46-48
      {&s.readingInterval, computeSamplesPerReading},                                     // 49
      {&s.surveyLine}, {&s.lineIncrement}, {&s.lineSequence}, {&s.lineDirection},         // 50-53
      {&s.startStation}, {line55, deriveStationState}}};                                  // 54-55
  // clang-format on
}

struct FormatValue {
  std::string operator()(const std::int32_t* value) const { return formatInteger(*value); }
  template <SettingMode Mode>
  std::string operator()(const Mode* value) const {
    return formatInteger(modeIndex(*value));
  }
  // Written as a signed 32-bit long, so colours above 0x7FFFFFFF come out negative.
  std::string operator()(const Colorref* value) const {
    return formatInteger(static_cast<std::int32_t>(*value));
  }
  std::string operator()(const float* value) const { return formatFixed(*value, 6); }
  std::string operator()(const double* value) const { return formatFixed(*value, 6); }
  std::string operator()(const std::u16string* value) const { return wideToWindows1252(*value); }
  // In Wheel mode the step comes from its own line; this line keeps only the sign.
  std::string operator()(WheelSign sign) const {
    return *sign.increment >= 0.0f ? "1.000000" : "-1.000000";
  }
};

struct ParseValue {
  std::string_view text;
  void operator()(std::int32_t* value) const { *value = parseIntegerPrefix(text); }
  // Any number is kept, a mode the program does not know included.
  template <SettingMode Mode>
  void operator()(Mode* value) const {
    *value = modeFromIndex<Mode>(parseIntegerPrefix(text));
  }
  void operator()(Colorref* value) const {
    *value = static_cast<Colorref>(parseIntegerPrefix(text));
  }
  void operator()(float* value) const { *value = narrowToFloat(parseDecimalPrefix(text)); }
  void operator()(double* value) const { *value = parseDecimalPrefix(text); }
  void operator()(std::u16string* value) const {
    *value = leadingUnits(windows1252ToWide(text), kSurveyLineMaxLength);
  }
  void operator()(WheelSign sign) const { (*this)(sign.increment); }
};

// A NUL ends a line, so a damaged file reads up to its damage.
std::string_view untilNul(std::string_view line) { return line.substr(0, line.find('\0')); }

std::filesystem::path settingsPath(const std::filesystem::path& folder) {
  return folder / kSettingsFileName;
}

SettingsFileResult writeFile(const Settings& settings, const std::filesystem::path& folder,
                             SettingsFileResult::Outcome outcome) {
  const std::filesystem::path path = settingsPath(folder);
  std::string error;
  if (replaceFileByLines(path, settingsFileLines(settings), &error)) return {outcome, {}};
  return {SettingsFileResult::Outcome::kFailed,
          "Cannot write settings file " + path.string() + ": " + error};
}

}  // namespace

std::optional<std::string_view> readSettingsLine(std::string_view& rest) {
  const std::size_t lineFeed = rest.find('\n');
  if (lineFeed == std::string_view::npos) {
    rest = {};
    return std::nullopt;
  }
  std::string_view line = rest.substr(0, lineFeed);
  rest.remove_prefix(lineFeed + 1);
  if (!line.empty()) line.remove_suffix(1);
  return line;
}

std::vector<std::string> writeSettings(const Settings& settings) {
  Settings copy = settings;  // the line table hands out pointers into a record
  std::vector<std::string> lines;
  lines.reserve(kSettingsValueLines);
  for (const SettingsLine& line : settingsLines(copy)) {
    lines.push_back(std::visit(FormatValue{}, line.field) + "\r\n");
  }
  return lines;
}

std::vector<std::string> settingsFileLines(const Settings& settings) {
  std::vector<std::string> lines{std::string(kSettingsVersionTag) + "\r\n"};
  for (std::string& line : writeSettings(settings)) lines.push_back(std::move(line));
  return lines;
}

void readSettings(std::string_view& rest, Settings& settings) {
  for (const SettingsLine& line : settingsLines(settings)) {
    if (const std::optional<std::string_view> text = readSettingsLine(rest)) {
      std::visit(ParseValue{untilNul(*text)}, line.field);
    }
    if (line.after) line.after(settings);
  }
}

bool readSettingsFile(std::string_view bytes, Settings& settings) {
  const std::optional<std::string_view> tag = readSettingsLine(bytes);
  if (!tag || untilNul(*tag) != kSettingsVersionTag) return false;
  readSettings(bytes, settings);
  return true;
}

SettingsFileResult loadOrSaveSettings(Settings& settings,
                                      const std::filesystem::path& settingsFolder, bool save) {
  using Outcome = SettingsFileResult::Outcome;
  std::error_code ignored;  // the folder usually exists already
  std::filesystem::create_directories(settingsFolder, ignored);
  if (save) return writeFile(settings, settingsFolder, Outcome::kSaved);

  const std::optional<std::string> bytes =
      readFilePrefix(settingsPath(settingsFolder), kMaxSettingsFileBytes);
  if (!bytes) return writeFile(settings, settingsFolder, Outcome::kCreated);
  if (!readSettingsFile(*bytes, settings)) {
    return writeFile(settings, settingsFolder, Outcome::kReplaced);
  }
  return {Outcome::kLoaded, {}};
}

}  // namespace gc40

#include "survey/export_choices.h"

#include <charconv>
#include <system_error>

#include "base/number_text.h"
#include "base/raw_file.h"

namespace gc40 {
namespace {

constexpr std::size_t kMaxFileBytes = 64 * 1024;
constexpr std::size_t kProblemsListed = 3;

std::string_view trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

char lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

bool sameNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (lower(a[i]) != lower(b[i])) return false;
  return true;
}

// The whole text must be the number: a hand edit that left "1,5" or "2 m"
// is a damaged line, not 1 or 2.
template <typename Number>
std::optional<Number> wholeNumber(std::string_view text, Number from, Number to) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (!(value >= from && value <= to)) return std::nullopt;  // NaN fails too
  return value;
}

std::optional<std::size_t> formatNamed(std::string_view driver) {
  for (std::size_t i = 0; i < kExportFormats.size(); ++i)
    if (sameNoCase(driver, kExportFormats[i].driver)) return i;
  return std::nullopt;
}

bool readSystem(std::string_view text, ExportChoices& choices) {
  if (sameNoCase(text, "WGS84")) {
    choices.system = ExportSystem::kWgs84;
    return true;
  }
  if (sameNoCase(text, "UTM")) {
    choices.system = ExportSystem::kUtm;
    return true;
  }
  if (text.size() < 5 || !sameNoCase(text.substr(0, 5), "EPSG:")) return false;
  const std::optional<int> code = wholeNumber(text.substr(5), kEpsgFrom, kEpsgTo);
  if (!code) return false;
  choices.system = ExportSystem::kEpsg;
  choices.epsg = *code;
  return true;
}

// False when the key is unknown or its value unusable; `choices` then keeps
// what it had.
bool readLine(std::string_view key, std::string_view value, ExportChoices& choices) {
  const auto setIf = [](auto parsed, auto& field) {
    if (parsed) field = *parsed;
    return parsed.has_value();
  };
  if (sameNoCase(key, "Format")) return setIf(formatNamed(value), choices.format);
  if (sameNoCase(key, "System")) return readSystem(value, choices);
  if (sameNoCase(key, "LagMs"))
    return setIf(wholeNumber(value, -kLagLimitMs, kLagLimitMs), choices.lagMs);
  if (sameNoCase(key, "LaybackM"))
    return setIf(wholeNumber(value, -kOffsetLimitM, kOffsetLimitM), choices.laybackM);
  if (sameNoCase(key, "OffsetM"))
    return setIf(wholeNumber(value, -kOffsetLimitM, kOffsetLimitM), choices.offsetM);
  if (sameNoCase(key, "MaxGapS"))
    return setIf(wholeNumber(value, kMaxGapFromS, kMaxGapToS), choices.maxGapS);
  return false;
}

std::string systemText(const ExportChoices& choices) {
  switch (choices.system) {
    case ExportSystem::kWgs84:
      return "WGS84";
    case ExportSystem::kUtm:
      return "UTM";
    case ExportSystem::kEpsg:
      return "EPSG:" + formatInteger(choices.epsg);
  }
  return "WGS84";
}

std::string damageNote(const std::filesystem::path& path,
                       const std::vector<ExportChoicesProblem>& problems) {
  std::string note = path.string() + ": " + formatInteger(std::int64_t(problems.size())) +
                     (problems.size() == 1 ? " line" : " lines") +
                     " not understood, defaults used:";
  for (std::size_t i = 0; i < problems.size() && i < kProblemsListed; ++i)
    note += "\nline " + formatInteger(problems[i].lineNumber) + ": " + problems[i].line;
  if (problems.size() > kProblemsListed) note += "\n...";
  return note;
}

}  // namespace

PositionOptions positionOptions(const ExportChoices& choices) {
  return {.lagMs = choices.lagMs,
          .laybackM = choices.laybackM,
          .crossTrackM = choices.offsetM,
          .maxGapS = choices.maxGapS};
}

bool formatTakesProjection(std::size_t format) {
  return format >= kExportFormats.size() || kExportFormats[format].driver != "KML";
}

ParsedExportChoices parseExportChoices(std::string_view text) {
  ParsedExportChoices parsed;
  int lineNumber = 0;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = trim(text.substr(0, end));
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    ++lineNumber;
    if (line.empty() || line.front() == '#' || line.front() == ';') continue;
    const std::size_t equals = line.find('=');
    const bool read =
        equals != std::string_view::npos &&
        readLine(trim(line.substr(0, equals)), trim(line.substr(equals + 1)), parsed.choices);
    if (!read) parsed.problems.push_back({lineNumber, std::string(line)});
  }
  if (!formatTakesProjection(parsed.choices.format)) parsed.choices.system = ExportSystem::kWgs84;
  return parsed;
}

std::vector<std::string> formatExportChoices(const ExportChoices& choices) {
  const ExportFormat& format =
      kExportFormats[choices.format < kExportFormats.size() ? choices.format : 0];
  return {
      "; gc40: the last export's choices, written when an export is made.\r\n",
      "Format=" + std::string(format.driver) + "\r\n",
      "System=" + systemText(choices) + "\r\n",
      "LagMs=" + formatInteger(choices.lagMs) + "\r\n",
      "LaybackM=" + formatFixed(choices.laybackM, 2) + "\r\n",
      "OffsetM=" + formatFixed(choices.offsetM, 2) + "\r\n",
      "MaxGapS=" + formatFixed(choices.maxGapS, 1) + "\r\n",
  };
}

LoadedExportChoices loadExportChoices(const std::filesystem::path& settingsFolder) {
  const std::filesystem::path path = settingsFolder / kExportChoicesFileName;
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return {};  // nothing exported yet
  const std::optional<std::string> text = readFilePrefix(path, kMaxFileBytes);
  if (!text) return {{}, path.string() + " cannot be read: defaults used"};
  ParsedExportChoices parsed = parseExportChoices(*text);
  return {parsed.choices, parsed.problems.empty() ? "" : damageNote(path, parsed.problems)};
}

std::optional<std::string> saveExportChoices(const std::filesystem::path& settingsFolder,
                                             const ExportChoices& choices) {
  const std::filesystem::path path = settingsFolder / kExportChoicesFileName;
  std::error_code ignored;
  std::filesystem::create_directories(settingsFolder, ignored);  // a failure shows in the write
  std::string error;
  if (replaceFileByLines(path, formatExportChoices(choices), &error)) return std::nullopt;
  return "Cannot write " + path.string() + ": " + error;
}

std::filesystem::path defaultExportPath(const std::filesystem::path& dataFile, std::size_t format) {
  const std::size_t known = format < kExportFormats.size() ? format : 0;
  return std::filesystem::path(dataFile).replace_extension(kExportFormats[known].extension);
}

std::filesystem::path outputForFormat(const std::filesystem::path& output, std::size_t format) {
  if (format >= kExportFormats.size()) return output;
  const std::string extension = output.extension().string();
  bool ours = extension.empty();
  for (const ExportFormat& known : kExportFormats)
    ours = ours || sameNoCase(extension, known.extension);
  if (!ours) return output;
  return std::filesystem::path(output).replace_extension(kExportFormats[format].extension);
}

}  // namespace gc40

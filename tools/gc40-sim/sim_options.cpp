#include "gc40-sim/sim_options.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>

#include "base/number_text.h"

namespace gc40 {
namespace {

constexpr std::int64_t kMaxMilliseconds = 3'600'000;
constexpr std::int64_t kMaxEvery = 1'000'000'000;
constexpr double kMaxDropoutSeconds = 3600;
// Vertical dipole on the 100 range: a step of 0.025 mS/m resolves the
// targets' peaks, where the 1000 range's 0.25 would flatten them.
constexpr std::uint8_t kSurveyStatus = 36;
constexpr double kMaxLatitude = 85;  // the local plane makes no sense near a pole

using Given = std::set<std::string, std::less<>>;

std::string quoted(std::string_view text) {
  std::string result(1, '\'');
  result += text;
  result += '\'';
  return result;
}

// A whole number in min..max, the text all digits after a minus sign where
// min allows one.
std::optional<std::int64_t> parseWhole(std::string_view text, std::int64_t min, std::int64_t max) {
  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (text.empty() || (text[0] == '-' && min >= 0) || error != std::errc() || stop != end ||
      value < min || value > max) {
    return std::nullopt;
  }
  return value;
}

// A decimal number in min..max: digits with at most one point, a minus sign
// before them allowed.
std::optional<double> parseDecimal(std::string_view text, double min, double max) {
  const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
  const bool wellFormed = digits.find_first_not_of("0123456789.") == std::string_view::npos &&
                          digits.find_first_of("0123456789") != std::string_view::npos &&
                          digits.find('.') == digits.rfind('.');
  const double value = parseDecimalPrefix(text);
  if (!wellFormed || value < min || value > max) return std::nullopt;
  return value;
}

std::string setSeconds(std::string_view text, std::chrono::milliseconds& field) {
  const bool wellFormed = text.find_first_not_of("0123456789.") == std::string_view::npos &&
                          text.find_first_of("0123456789") != std::string_view::npos &&
                          text.find('.') == text.rfind('.');
  const double seconds = parseDecimalPrefix(text);
  if (!wellFormed || seconds > kMaxDropoutSeconds) {
    return "--dropout-seconds wants seconds from 0 to " + formatFixed(kMaxDropoutSeconds, 0) +
           ", not " + quoted(text);
  }
  field = std::chrono::milliseconds(truncateToInt32(seconds * 1000 + 0.5));
  return {};
}

std::string setPattern(std::string_view text, ValuePattern& pattern) {
  constexpr std::pair<std::string_view, ValuePattern> kPatterns[] = {
      {"constant", ValuePattern::kConstant},
      {"ramp", ValuePattern::kRamp},
      {"walk", ValuePattern::kWalk},
      {"sequence", ValuePattern::kSequence}};
  for (const auto& [name, value] : kPatterns) {
    if (text == name) {
      pattern = value;
      return {};
    }
  }
  return "--pattern wants constant, ramp, walk or sequence, not " + quoted(text);
}

// Two raw five-character texts around a comma, as "-0120,00040".
std::string setValues(std::string_view text, InstrumentOptions& options) {
  const bool printable = text.find_first_not_of(
                             " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                             "[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~") == std::string_view::npos;
  if (text.size() != 2 * kValueFieldWidth + 1 || text[kValueFieldWidth] != ',' || !printable) {
    return "--values wants two texts of exactly 5 printable characters, as -0120,00040, not " +
           quoted(text);
  }
  options.firstValue = text.substr(0, kValueFieldWidth);
  options.secondValue = text.substr(kValueFieldWidth + 1);
  return {};
}

// "LAT,LON" in degrees, as 45.38702,-75.69608.
std::string setOrigin(std::string_view text, LatLon& origin) {
  const std::size_t comma = text.find(',');
  const std::optional<double> latitude =
      parseDecimal(text.substr(0, comma), -kMaxLatitude, kMaxLatitude);
  const std::optional<double> longitude = comma == std::string_view::npos
                                              ? std::nullopt
                                              : parseDecimal(text.substr(comma + 1), -180, 180);
  if (!latitude || !longitude) {
    return "--origin wants LAT,LON in degrees (latitude -85 to 85, longitude -180 to 180), as "
           "45.38702,-75.69608, not " +
           quoted(text);
  }
  origin = {*latitude, *longitude};
  return {};
}

struct WholeOption {
  std::string_view name;
  std::int64_t min;
  std::int64_t max;
  void (*set)(SimOptions& options, std::int64_t value);
};

using std::chrono::milliseconds;
constexpr WholeOption kWholeOptions[] = {
    {"--settle", 0, kMaxMilliseconds, [](SimOptions& o, auto v) { o.settle = milliseconds(v); }},
    {"--period", 0, kMaxMilliseconds,
     [](SimOptions& o, auto v) { o.instrument.period = milliseconds(v); }},
    {"--seed", 0, UINT32_MAX, [](SimOptions& o, auto v) { o.instrument.seed = std::uint32_t(v); }},
    {"--status", 0, 255, [](SimOptions& o, auto v) { o.instrument.status = std::uint8_t(v); }},
    {"--trigger-every", 2, kMaxEvery,
     [](SimOptions& o, auto v) { o.instrument.triggerEvery = int(v); }},
    {"--trigger-length", 1, kMaxEvery,
     [](SimOptions& o, auto v) { o.instrument.triggerLength = int(v); }},
    {"--dropout-every", 1, kMaxEvery,
     [](SimOptions& o, auto v) { o.instrument.dropoutEvery = int(v); }},
    {"--junk-every", 1, kMaxEvery, [](SimOptions& o, auto v) { o.instrument.junkEvery = int(v); }},
    {"--count", 0, INT64_MAX, [](SimOptions& o, auto v) { o.instrument.count = v; }},
    {"--nmea-period", 0, kMaxMilliseconds,
     [](SimOptions& o, auto v) { o.nmea.period = milliseconds(v); }},
    {"--lines", 1, 1000, [](SimOptions& o, auto v) { o.survey.lines = int(v); }},
    {"--gps-rate", 1, 10, [](SimOptions& o, auto v) { o.survey.fixesPerSecond = int(v); }},
    {"--true-lag", -10'000, 10'000,
     [](SimOptions& o, auto v) { o.survey.trueLag = milliseconds(v); }},
};

struct DecimalOption {
  std::string_view name;
  double min;
  double max;
  double SurveyOptions::*field;
};

constexpr DecimalOption kDecimalOptions[] = {
    {"--line-length", 0.1, 10'000, &SurveyOptions::lineLength},
    {"--line-spacing", 0.1, 1000, &SurveyOptions::lineSpacing},
    {"--speed", 0.1, 50, &SurveyOptions::speed},
    {"--bearing", 0, 360, &SurveyOptions::bearing},
    {"--layback", -100, 100, &SurveyOptions::layback},
};

// Options that shape the survey and mean nothing without it.
constexpr std::string_view kSurveyOnly[] = {
    "--lines",  "--line-length", "--line-spacing", "--speed",   "--bearing",
    "--origin", "--repeat",      "--true-lag",     "--layback", "--gps-rate"};

// Options whose value is not a plain whole number; the message when it is wrong.
std::string applyText(std::string_view name, std::string_view value, SimOptions& options) {
  constexpr std::pair<std::string_view, std::filesystem::path SimOptions::*> kPaths[] = {
      {"--link", &SimOptions::link}, {"--gps-link", &SimOptions::gpsLink}};
  for (const auto& [pathOption, member] : kPaths) {
    if (name != pathOption) continue;
    options.*member = value;
    return value.empty() ? std::string(name) + " needs a path" : "";
  }
  if (name == "--nmea") {
    options.nmea.file = value;
    return value.empty() ? "--nmea needs a file" : "";
  }
  if (name == "--origin") return setOrigin(value, options.survey.origin);
  if (name == "--pattern") return setPattern(value, options.instrument.pattern);
  if (name == "--values") return setValues(value, options.instrument);
  return setSeconds(value, options.instrument.dropout);
}

bool takesText(std::string_view name) {
  return name == "--link" || name == "--gps-link" || name == "--nmea" || name == "--pattern" ||
         name == "--values" || name == "--dropout-seconds" || name == "--origin";
}

const DecimalOption* findDecimalOption(std::string_view name) {
  const auto found = std::ranges::find(kDecimalOptions, name, &DecimalOption::name);
  return found == std::end(kDecimalOptions) ? nullptr : found;
}

std::string applyDecimal(const DecimalOption& option, std::string_view value, SimOptions& options) {
  const std::optional<double> number = parseDecimal(value, option.min, option.max);
  if (!number) {
    return std::string(option.name) + " wants a number from " + formatRoundTrip(option.min) +
           " to " + formatRoundTrip(option.max) + ", not " + quoted(value);
  }
  options.survey.*option.field = *number;
  return {};
}

const WholeOption* findWholeOption(std::string_view name) {
  const auto found = std::ranges::find(kWholeOptions, name, &WholeOption::name);
  return found == std::end(kWholeOptions) ? nullptr : found;
}

std::string applyWhole(const WholeOption& option, std::string_view value, SimOptions& options) {
  const std::optional<std::int64_t> number = parseWhole(value, option.min, option.max);
  if (!number) {
    return std::string(option.name) + " wants a whole number from " + formatInteger(option.min) +
           " to " + formatInteger(option.max) + ", not " + quoted(value);
  }
  option.set(options, *number);
  return {};
}

// "--name VALUE" or "--name=VALUE"; advances `i` past a separate value.
std::string applyArgument(std::span<const std::string_view> arguments, std::size_t& i,
                          SimOptions& options) {
  const std::string_view argument = arguments[i];
  if (argument == "--help" || argument == "-h") {
    options.help = true;
    return {};
  }
  if (argument == "--lf") {
    options.instrument.lineFeed = true;
    return {};
  }
  if (argument == "--loop") {
    options.nmea.loop = true;
    return {};
  }
  if (argument == "--survey") {
    options.surveying = true;
    return {};
  }
  if (argument == "--repeat") {
    options.survey.repeat = true;
    return {};
  }
  const std::string_view name = argument.substr(0, argument.find('='));
  const WholeOption* const whole = findWholeOption(name);
  const DecimalOption* const decimal = findDecimalOption(name);
  if (whole == nullptr && decimal == nullptr && !takesText(name))
    return "unknown option " + quoted(argument);
  std::string_view value;
  if (name.size() < argument.size()) {
    value = argument.substr(name.size() + 1);
  } else if (i + 1 < arguments.size()) {
    value = arguments[++i];
  } else {
    return std::string(name) + " needs a value";
  }
  if (whole != nullptr) return applyWhole(*whole, value, options);
  if (decimal != nullptr) return applyDecimal(*decimal, value, options);
  return applyText(name, value, options);
}

std::string checkSurvey(const SimOptions& options, const Given& given) {
  if (!options.surveying) {
    for (const std::string_view name : kSurveyOnly)
      if (given.contains(name)) return std::string(name) + " goes with --survey";
    return {};
  }
  if (given.contains("--nmea")) return "--survey walks the GPS receiver itself: no --nmea with it";
  if (given.contains("--pattern") || given.contains("--values"))
    return "--pattern and --values go without --survey: the ground gives the values";
  if (options.survey.repeat && options.survey.lines < 2)
    return "--repeat needs at least 2 lines to walk back and forth";
  return {};
}

std::string checkTogether(const SimOptions& options, const Given& given) {
  const InstrumentOptions& instrument = options.instrument;
  if (options.link.empty() && options.gpsLink.empty())
    return "at least one of --link PATH and --gps-link PATH is required";
  if (!options.link.empty() && options.link == options.gpsLink)
    return "--link and --gps-link need paths of their own";
  if (!options.nmea.file.empty() && options.gpsLink.empty()) return "--nmea needs --gps-link";
  if (options.nmea.file.empty() && (options.nmea.period || options.nmea.loop))
    return "--nmea-period and --loop go with --nmea";
  if (instrument.triggerEvery > 0 && instrument.triggerLength >= instrument.triggerEvery) {
    return "--trigger-length must be shorter than --trigger-every, or the button never lets go";
  }
  return checkSurvey(options, given);
}

}  // namespace

std::variant<SimOptions, SimOptionsError> parseSimOptions(
    std::span<const std::string_view> arguments) {
  SimOptions options;
  Given given;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    given.emplace(arguments[i].substr(0, arguments[i].find('=')));
    if (std::string error = applyArgument(arguments, i, options); !error.empty()) {
      return SimOptionsError{std::move(error)};
    }
  }
  if (options.help) return options;
  if (std::string error = checkTogether(options, given); !error.empty()) {
    return SimOptionsError{std::move(error)};
  }
  if (options.surveying && !given.contains("--status")) options.instrument.status = kSurveyStatus;
  return options;
}

std::string simUsageText() {
  return "Usage: gc40-sim [--link PATH] [--gps-link PATH] [OPTION]...\n"
         "Simulates a GC40 meter, a GPS receiver, or both, each on a pseudo-terminal of its own\n"
         "that its link points to. Once a reader opens the meter's link it receives a record\n"
         "('T', status byte, two 5-character values, CR) every period; the GPS receiver's\n"
         "reader receives GGA, GSA and RMC once a second from someone walking a straight line\n"
         "with a fix, or the lines of a capture (--nmea). --survey drives both from one\n"
         "walker over a made-up ground. Prints 'gc40-sim: ready PATH' for each link, the\n"
         "meter's first, when it can be opened.\n"
         "\n"
         "  --link PATH            the meter's link (an existing link there is replaced)\n"
         "  --gps-link PATH        the GPS receiver's link\n"
         "  --settle MS            wait after a reader opens before sending (default 100)\n"
         "\n"
         "The meter:\n"
         "  --period MS            time between records (default 91; 0: as fast as read)\n"
         "  --pattern NAME         values: constant, ramp, walk (default) or sequence, whose\n"
         "                         first value is the record number 0..99999\n"
         "  --values A,B           raw value texts, 5 characters each (default -0120,00040):\n"
         "                         sent by constant; where ramp and walk start; sequence\n"
         "                         and ramp keep B\n"
         "  --seed N               seed of the walk and of the junk (default 1)\n"
         "  --status N             status byte 0..255 (default 32: vertical dipole, range 0;\n"
         "                         with --survey 36: vertical dipole, range 100)\n"
         "  --trigger-every N      press the trigger (status bit 64) every N records...\n"
         "  --trigger-length M     ...for M records (default 4)\n"
         "  --dropout-every N      fall silent after every N records...\n"
         "  --dropout-seconds S    ...for S seconds (default 3)\n"
         "  --junk-every N         put a few random bytes (never CR) before every Nth record\n"
         "  --lf                   send a line feed after each CR\n"
         "  --count N              stop after N records\n"
         "\n"
         "The GPS receiver:\n"
         "  --nmea FILE            replay FILE's bytes exactly as they are, line by line\n"
         "  --nmea-period MS       time after every line (0: as fast as read); without it the\n"
         "                         capture's own pace: a line whose GGA, RMC, ZDA or GLL time\n"
         "                         differs from the last one starts a burst, that much later\n"
         "                         (100 to 2000 ms; 1000 when it goes back), and the lines of\n"
         "                         a burst go back to back\n"
         "  --loop                 start FILE again after its end; without it the receiver\n"
         "                         falls silent after the last line\n"
         "\n"
         "The survey (--survey): someone walks a grid of parallel lines in alternate\n"
         "directions, with a half-circle turn from each line to the next. The receiver reports\n"
         "the antenna's position when it sends; each record carries the ground under the\n"
         "meter's sensor, carried behind the antenna, as it was --true-lag earlier. The ground:\n"
         "20 mS/m, a buried pipe across the lines, three round targets each on a line.\n"
         "  --survey               walk the grid: the meter's values come from the ground\n"
         "                         (no --pattern, --values or --nmea with it)\n"
         "  --lines N              lines to walk (default 10)\n"
         "  --line-length M        metres (default 100)\n"
         "  --line-spacing M       metres from each line to the next, on the right of the\n"
         "                         first line's direction (default 2)\n"
         "  --speed M              walking speed in metres per second (default 1.0)\n"
         "  --bearing DEG          the first line's direction, degrees from north (default 0)\n"
         "  --origin LAT,LON       the first line's start (default 45.38702,-75.69608)\n"
         "  --repeat               after the last line walk the lines back and forth without\n"
         "                         end; without it the walker stops at the last line's end\n"
         "  --true-lag MS          the meter's values lag the receiver's positions by MS\n"
         "                         (default 600; negative: they lead)\n"
         "  --layback M            the sensor rides M metres behind the antenna (default 1.5;\n"
         "                         negative: ahead)\n"
         "  --gps-rate HZ          fixes a second, 1 to 10 (default 1)\n"
         "\n"
         "  --help                 show this help and exit\n"
         "\n"
         "Once every link has sent its last byte (--count, --nmea without --loop) and its\n"
         "reader has closed it, gc40-sim exits. SIGINT or SIGTERM removes the links and\n"
         "exits with status 0.\n";
}

}  // namespace gc40

#include "gc40-sim/nmea_replay.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "gps/nmea.h"

namespace gc40 {
namespace {

using std::chrono::milliseconds;

// A real receiver sends a burst a second; a capture whose clock jumps about
// should neither flood the reader nor keep it waiting for long.
constexpr milliseconds kMinBurstGap{100};
constexpr milliseconds kMaxBurstGap{2000};
constexpr milliseconds kUnknownBurstGap{1000};

std::vector<std::string> splitLines(std::string_view bytes) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t lineFeed = bytes.find('\n', start);
    const std::size_t end = lineFeed == std::string_view::npos ? bytes.size() : lineFeed + 1;
    lines.emplace_back(bytes.substr(start, end - start));
    start = end;
  }
  return lines;
}

bool allDigits(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

int twoDigits(std::string_view text, std::size_t at) {
  return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

// "hhmmss" or "hhmmss.s..." in milliseconds of the day.
std::optional<std::int64_t> parseUtcTime(std::string_view text) {
  text = text.substr(0, text.find('*'));
  const bool fraction = text.size() > 7 && text[6] == '.' && allDigits(text.substr(7));
  if (text.size() < 6 || !allDigits(text.substr(0, 6)) || (text.size() > 6 && !fraction))
    return std::nullopt;
  const int hours = twoDigits(text, 0), minutes = twoDigits(text, 2), seconds = twoDigits(text, 4);
  if (hours > 23 || minutes > 59 || seconds > 59) return std::nullopt;
  std::int64_t millis = 0;
  for (std::size_t i = 7; i < 10; ++i) millis = millis * 10 + (i < text.size() ? text[i] - '0' : 0);
  return ((hours * 60 + minutes) * 60 + seconds) * std::int64_t{1000} + millis;
}

// The UTC time the line's sentence (from its first "$") carries.
std::optional<std::int64_t> sentenceTime(std::string_view line) {
  const std::size_t dollar = line.find('$');
  if (dollar == std::string_view::npos) return std::nullopt;
  const std::string_view sentence = line.substr(dollar);
  const std::string_view name = getField(sentence, 1).value_or("");
  int field = 2;
  if (name.ends_with("GLL")) {
    field = 6;
  } else if (!name.ends_with("GGA") && !name.ends_with("RMC") && !name.ends_with("ZDA")) {
    return std::nullopt;
  }
  const std::optional<std::string_view> time = getField(sentence, field);
  return time ? parseUtcTime(*time) : std::nullopt;
}

milliseconds burstGap(std::int64_t from, std::int64_t to) {
  // Backwards is a new day or a clock that was reset: no telling how long.
  if (to < from) return kUnknownBurstGap;
  return std::clamp(milliseconds(to - from), kMinBurstGap, kMaxBurstGap);
}

// The wait before line `next`: none unless it starts a burst.
milliseconds gapBefore(const NmeaReplay& replay, std::size_t next) {
  if (next == replay.lines.size()) {
    if (!replay.options.loop) return milliseconds(0);
    next = 0;
  }
  const std::optional<std::int64_t> time = sentenceTime(replay.lines[next]);
  if (!time || !replay.lastTime || *time == *replay.lastTime) return milliseconds(0);
  return burstGap(*replay.lastTime, *time);
}

}  // namespace

std::optional<std::string> readCapture(const std::filesystem::path& file, std::string* error) {
  const int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  std::string bytes;
  ssize_t got = fd < 0 ? -1 : 0;
  char buffer[65536];
  while (fd >= 0 && (got = ::read(fd, buffer, sizeof buffer)) > 0)
    bytes.append(buffer, static_cast<std::size_t>(got));
  const int reason = errno;
  if (fd >= 0) ::close(fd);
  if (got < 0) {
    *error = "gc40-sim: cannot read " + file.string() + ": " + std::strerror(reason);
    return std::nullopt;
  }
  return bytes;
}

NmeaReplay startNmeaReplay(std::string_view capture, const NmeaReplayOptions& options) {
  return NmeaReplay{
      .lines = splitLines(capture), .options = options, .next = 0, .lastTime = std::nullopt};
}

std::optional<Chunk> nextNmeaChunk(NmeaReplay& replay) {
  if (replay.next == replay.lines.size()) {
    if (!replay.options.loop || replay.lines.empty()) return std::nullopt;
    replay.next = 0;
  }
  const std::string& line = replay.lines[replay.next++];
  if (const std::optional<std::int64_t> time = sentenceTime(line)) replay.lastTime = time;
  const milliseconds gap = replay.options.period.value_or(gapBefore(replay, replay.next));
  return Chunk{.bytes = line, .gapAfter = gap};
}

}  // namespace gc40

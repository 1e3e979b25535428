#pragma once
// A GPS receiver played back from a capture: the file's bytes exactly as they
// were recorded, junk and all, one line (up to and including its LF) at a time,
// either a fixed time apart or at the pace the receiver's own clock gave them.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "gc40-sim/chunk_source.h"

namespace gc40 {

struct NmeaReplayOptions {
  std::filesystem::path file;                       // empty: the walker instead of a capture
  std::optional<std::chrono::milliseconds> period;  // nullopt: the capture's own pace
  bool loop = false;
};

// The replay's state between lines.
struct NmeaReplay {
  std::vector<std::string> lines;
  NmeaReplayOptions options;
  std::size_t next = 0;
  std::optional<std::int64_t> lastTime;  // milliseconds of the day, the last time field sent
};

// The whole file; nullopt and a message naming the file when it cannot be read.
std::optional<std::string> readCapture(const std::filesystem::path& file, std::string* error);

NmeaReplay startNmeaReplay(std::string_view capture, const NmeaReplayOptions& options);

// The next line; nullopt after the last one unless the replay loops. The gap
// after a line is the period, or else the wait before the next line: nothing
// within a burst, the time-field difference before a burst with a new time.
std::optional<Chunk> nextNmeaChunk(NmeaReplay& replay);

}  // namespace gc40

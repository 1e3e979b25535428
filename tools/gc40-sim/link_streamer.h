#pragma once
// Sending to a reader on a pseudo-terminal. A link waits for its reader, lets
// it settle (a reader purges its receive queue right after opening), sends
// what its source gives on an absolute schedule, and pauses while the reader
// is away. Several links share one wait, each with a device of its own.

#include <chrono>
#include <optional>
#include <span>
#include <string>

#include "gc40-sim/chunk_source.h"
#include "gc40-sim/pty_link.h"

namespace gc40 {

// Nanoseconds on CLOCK_MONOTONIC.
using Instant = std::chrono::nanoseconds;
Instant monotonicNow();

class LinkStreamer {
 public:
  LinkStreamer(const PtyLink& link, ChunkSource source, std::chrono::milliseconds settle);

  // What the streamer waits for: events on fd (-1 for none) and a time.
  struct Wait {
    int fd = -1;
    short events = 0;
    std::optional<Instant> wakeAt;
  };
  Wait nextWait() const;

  // Acts on what the wait found: `revents` of the fd it asked for, 0 when it
  // asked for none. False when the link failed; error() says how.
  bool advance(Instant now, short revents);

  // The source has run dry and its reader has gone.
  bool finished() const { return phase_ == Phase::kFinished; }
  const std::string& error() const { return error_; }

 private:
  enum class Phase { kAwaitingReader, kSettling, kStreaming, kDrained, kFinished };

  void readerLeft(Instant now);
  void discardInput();
  bool send(Instant now);

  const PtyLink& link_;
  ChunkSource source_;
  std::chrono::milliseconds settle_;
  Phase phase_ = Phase::kAwaitingReader;
  Instant wakeAt_{0};  // next look for a reader, end of settling, or next chunk due
  std::string pending_;
  std::string error_;
};

enum class RunEnd { kFinished, kStopped, kFailed };

// Runs the streamers until all have finished, a byte arrives on stopFd or a
// link fails (with `error` set).
RunEnd runStreamers(std::span<LinkStreamer* const> streamers, int stopFd, std::string* error);

}  // namespace gc40

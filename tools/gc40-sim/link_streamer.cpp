#include "gc40-sim/link_streamer.h"

#include <poll.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <vector>

namespace gc40 {
namespace {

using std::chrono::milliseconds;

// Nothing tells a master that its slave has been opened, only that it has
// been closed; a glance this often costs nothing.
constexpr milliseconds kReaderCheckInterval{20};

void sleepUntil(Instant instant) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(instant);
  const timespec until{.tv_sec = static_cast<time_t>(seconds.count()),
                       .tv_nsec = static_cast<long>((instant - seconds).count())};
  // A signal ends it early; the stop pipe then tells the loop.
  ::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr);
}

// Polls for the whole milliseconds left (a stop, or a reader coming or going,
// wakes it early), then sleeps the last fraction to the exact instant.
bool waitForEvents(std::span<pollfd> fds, std::optional<Instant> wakeAt) {
  int timeout = -1;
  if (wakeAt) {
    const Instant left = *wakeAt - monotonicNow();
    const auto wholeMs = std::chrono::duration_cast<milliseconds>(left);
    if (left.count() > 0 && wholeMs.count() == 0) sleepUntil(*wakeAt);
    timeout = static_cast<int>(std::clamp<milliseconds::rep>(wholeMs.count(), 0, INT_MAX));
  }
  return ::poll(fds.data(), fds.size(), timeout) >= 0 || errno == EINTR;
}

}  // namespace

Instant monotonicNow() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

LinkStreamer::LinkStreamer(const PtyLink& link, ChunkSource source, milliseconds settle)
    : link_(link), source_(std::move(source)), settle_(settle) {}

LinkStreamer::Wait LinkStreamer::nextWait() const {
  // The master is left out while nobody holds the slave: it reports the
  // hang-up continuously then, and would never let the wait sleep.
  const int fd = link_.masterFd();
  switch (phase_) {
    case Phase::kAwaitingReader:
      return {.wakeAt = wakeAt_};
    case Phase::kSettling:
      return {.fd = fd, .events = POLLIN, .wakeAt = wakeAt_};
    case Phase::kStreaming:
      if (pending_.empty()) return {.fd = fd, .events = POLLIN, .wakeAt = wakeAt_};
      return {.fd = fd, .events = POLLIN | POLLOUT, .wakeAt = std::nullopt};
    case Phase::kDrained:
      return {.fd = fd, .events = POLLIN, .wakeAt = std::nullopt};
    case Phase::kFinished:
      break;
  }
  return {};
}

bool LinkStreamer::advance(Instant now, short revents) {
  if (phase_ == Phase::kFinished) return true;
  if (phase_ == Phase::kAwaitingReader) {
    if (now < wakeAt_) return true;
    const bool present = link_.readerPresent();
    phase_ = present ? Phase::kSettling : Phase::kAwaitingReader;
    wakeAt_ = now + (present ? settle_ : kReaderCheckInterval);
    return true;
  }
  if (revents & (POLLERR | POLLNVAL)) {
    error_ = "gc40-sim: " + link_.linkPath().string() + ": the pseudo-terminal failed";
    return false;
  }
  if (revents & POLLHUP) {
    readerLeft(now);
    return true;
  }
  if (revents & POLLIN) discardInput();
  if (phase_ == Phase::kSettling && now >= wakeAt_) {
    phase_ = Phase::kStreaming;
    wakeAt_ = now;
  }
  return phase_ != Phase::kStreaming || send(now);
}

// A record cut off by the close is dropped: after a new open and purge its
// tail would only be noise.
void LinkStreamer::readerLeft(Instant now) {
  pending_.clear();
  phase_ = phase_ == Phase::kDrained ? Phase::kFinished : Phase::kAwaitingReader;
  wakeAt_ = now + kReaderCheckInterval;
}

// The instrument never listens; whatever a reader writes is read and dropped
// so that it cannot block the reader.
void LinkStreamer::discardInput() {
  char buffer[256];
  while (::read(link_.masterFd(), buffer, sizeof buffer) > 0) {
  }
}

bool LinkStreamer::send(Instant now) {
  while (true) {
    if (pending_.empty()) {
      if (now < wakeAt_) return true;
      std::optional<Chunk> chunk = source_();
      if (!chunk) {
        phase_ = Phase::kDrained;
        return true;
      }
      pending_ = std::move(chunk->bytes);
      // The schedule is absolute so the rate does not drift; only a reader
      // that held the link up for more than a gap moves it on.
      const Instant due = now - wakeAt_ > chunk->gapAfter ? now : wakeAt_;
      wakeAt_ = due + chunk->gapAfter;
    }
    const ssize_t written = ::write(link_.masterFd(), pending_.data(), pending_.size());
    if (written < 0) {
      if (errno == EAGAIN || errno == EINTR) return true;
      error_ =
          "gc40-sim: cannot write to " + link_.linkPath().string() + ": " + std::strerror(errno);
      return false;
    }
    pending_.erase(0, static_cast<std::size_t>(written));
  }
}

RunEnd runStreamers(std::span<LinkStreamer* const> streamers, int stopFd, std::string* error) {
  std::vector<pollfd> fds(streamers.size() + 1);
  while (!std::ranges::all_of(streamers, [](const LinkStreamer* s) { return s->finished(); })) {
    fds[0] = {.fd = stopFd, .events = POLLIN, .revents = 0};
    std::optional<Instant> wakeAt;
    for (std::size_t i = 0; i < streamers.size(); ++i) {
      const LinkStreamer::Wait wait = streamers[i]->nextWait();
      fds[i + 1] = {.fd = wait.fd, .events = wait.events, .revents = 0};
      if (wait.wakeAt && (!wakeAt || *wait.wakeAt < *wakeAt)) wakeAt = wait.wakeAt;
    }
    if (!waitForEvents(fds, wakeAt)) {
      *error = std::string("gc40-sim: cannot wait: ") + std::strerror(errno);
      return RunEnd::kFailed;
    }
    if (fds[0].revents != 0) return RunEnd::kStopped;
    const Instant now = monotonicNow();
    for (std::size_t i = 0; i < streamers.size(); ++i) {
      if (!streamers[i]->advance(now, fds[i + 1].revents)) {
        *error = streamers[i]->error();
        return RunEnd::kFailed;
      }
    }
  }
  return RunEnd::kFinished;
}

}  // namespace gc40

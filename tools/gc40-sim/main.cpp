// gc40-sim: a GC40 meter on a pseudo-terminal, for tests, demos and for trying
// the logger without the instrument.

#include <unistd.h>

#include <string>
#include <string_view>
#include <vector>

#include "gc40-sim/instrument_records.h"
#include "gc40-sim/link_streamer.h"
#include "gc40-sim/pty_link.h"
#include "gc40-sim/sim_options.h"
#include "gc40-sim/stop_signals.h"

namespace {

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

// Unbuffered, so that a test waiting on a pipe sees the line at once.
void writeOut(int fd, const std::string& text) {
  std::string_view rest = text;
  while (!rest.empty()) {
    const ssize_t written = ::write(fd, rest.data(), rest.size());
    if (written <= 0) return;
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
}

int run(const gc40::SimOptions& options) {
  std::string error;
  const std::optional<int> stopFd = gc40::watchStopSignals(&error);
  if (!stopFd) return writeOut(STDERR_FILENO, error + "\n"), kExitFailure;
  const std::optional<gc40::PtyLink> link = gc40::PtyLink::create(options.link, &error);
  if (!link) return writeOut(STDERR_FILENO, error + "\n"), kExitFailure;

  gc40::LinkStreamer instrument(
      *link,
      [stream = gc40::startInstrumentStream(options.instrument)]() mutable {
        return gc40::nextInstrumentChunk(stream);
      },
      options.settle);
  gc40::LinkStreamer* const streamers[] = {&instrument};
  writeOut(STDOUT_FILENO, "gc40-sim: ready " + options.link.string() + "\n");
  if (gc40::runStreamers(streamers, *stopFd, &error) == gc40::RunEnd::kFailed) {
    return writeOut(STDERR_FILENO, error + "\n"), kExitFailure;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string_view> arguments(argv + 1, argv + argc);
  const auto parsed = gc40::parseSimOptions(arguments);
  if (const auto* error = std::get_if<gc40::SimOptionsError>(&parsed)) {
    writeOut(STDERR_FILENO, "gc40-sim: " + error->message + "\n\n" + gc40::simUsageText());
    return kExitUsage;
  }
  const auto& options = std::get<gc40::SimOptions>(parsed);
  if (options.help) return writeOut(STDOUT_FILENO, gc40::simUsageText()), 0;
  return run(options);
}

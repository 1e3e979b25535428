// gc40-sim: a GC40 meter and a GPS receiver on pseudo-terminals, for tests,
// demos and for trying the logger without the instruments.

#include <unistd.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "gc40-sim/instrument_records.h"
#include "gc40-sim/link_streamer.h"
#include "gc40-sim/nmea_replay.h"
#include "gc40-sim/nmea_walker.h"
#include "gc40-sim/pty_link.h"
#include "gc40-sim/sim_options.h"
#include "gc40-sim/survey_links.h"
#include "platform/stop_signals.h"

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

int fail(const std::string& error) {
  writeOut(STDERR_FILENO, error + "\n");
  return kExitFailure;
}

gc40::ChunkSource instrumentSource(const gc40::InstrumentOptions& options) {
  return [stream = gc40::startInstrumentStream(options)]() mutable {
    return gc40::nextInstrumentChunk(stream);
  };
}

// The capture when one is given, else the walker from now on.
std::optional<gc40::ChunkSource> gpsSource(const gc40::NmeaReplayOptions& options,
                                           std::string* error) {
  if (options.file.empty()) {
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    return [walker = gc40::startNmeaWalker(now)]() mutable -> std::optional<gc40::Chunk> {
      return gc40::nextWalkerChunk(walker);
    };
  }
  const std::optional<std::string> capture = gc40::readCapture(options.file, error);
  if (!capture) return std::nullopt;
  return [replay = gc40::startNmeaReplay(*capture, options)]() mutable {
    return gc40::nextNmeaChunk(replay);
  };
}

std::optional<gc40::PtyLink> linkIfAsked(const std::filesystem::path& path, std::string* error) {
  if (path.empty()) return std::nullopt;
  return gc40::PtyLink::create(path, error);
}

int run(const gc40::SimOptions& options) {
  std::string error;
  const std::optional<int> stopFd = gc40::watchStopSignals(&error);
  if (!stopFd) return fail("gc40-sim: " + error);
  gc40::ChunkSource meter = instrumentSource(options.instrument);
  std::optional<gc40::ChunkSource> gps;
  if (options.surveying) {
    const auto now =
        std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    gc40::SurveyLinks survey =
        gc40::startSurveyLinks(options.survey, options.instrument, now, gc40::monotonicNow);
    meter = std::move(survey.meter);
    gps = std::move(survey.gps);
  } else if (!options.gpsLink.empty() && !(gps = gpsSource(options.nmea, &error))) {
    // The capture is read before any link appears, so a wrong file leaves none behind.
    return fail(error);
  }
  const std::optional<gc40::PtyLink> instrumentLink = linkIfAsked(options.link, &error);
  if (!instrumentLink && !options.link.empty()) return fail(error);
  const std::optional<gc40::PtyLink> gpsLink = linkIfAsked(options.gpsLink, &error);
  if (!gpsLink && !options.gpsLink.empty()) return fail(error);

  std::vector<gc40::LinkStreamer> streamers;
  streamers.reserve(2);
  if (instrumentLink) streamers.emplace_back(*instrumentLink, std::move(meter), options.settle);
  if (gpsLink) streamers.emplace_back(*gpsLink, std::move(*gps), options.settle);
  std::vector<gc40::LinkStreamer*> running;
  for (gc40::LinkStreamer& streamer : streamers) running.push_back(&streamer);
  // The meter's line first: those who start only the meter read just the first line.
  for (const std::optional<gc40::PtyLink>* link : {&instrumentLink, &gpsLink})
    if (*link) writeOut(STDOUT_FILENO, "gc40-sim: ready " + (*link)->linkPath().string() + "\n");
  if (gc40::runStreamers(running, *stopFd, &error) == gc40::RunEnd::kFailed) return fail(error);
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

// gc40-sim as a process, read through its link the way the logger reads a port.

#include <gtest/gtest.h>
#include <termios.h>

#include <cstdio>

#include "support/child_process.h"  // with the POSIX and standard headers used here
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr std::size_t kRecordSize = 13;
// Waiting half a second and a burst at full speed cost a busy loop far more.
constexpr auto kMaxCpu = 200ms;

// Records first.. as --pattern=sequence sends them.
std::string records(int first, int count) {
  std::string bytes(kRecordSize * count + 1, '\0');  // each snprintf ends with a NUL
  for (int i = 0; i < count; ++i)
    std::snprintf(&bytes[kRecordSize * i], 14, "T %05d00040\r", first + i);
  bytes.pop_back();
  return bytes;
}

// The link opened as the logger opens its port, its queue purged; the mode is
// left as the simulator set it, which must pass a CR through.
struct Reader {
  explicit Reader(const fs::path& link, std::chrono::milliseconds purgeAfter = 0ms)
      : fd(open(link.c_str(), O_RDONLY | O_NOCTTY)) {
    std::this_thread::sleep_for(purgeAfter);
    tcflush(fd, TCIFLUSH);
  }
  ~Reader() { close(fd); }

  // Up to `size` bytes; fewer once nothing came for `timeout` or the writer is gone.
  std::string read(std::size_t size, std::chrono::milliseconds timeout = 5s) const {
    std::string bytes(size, '\0');
    std::size_t got = 0;
    for (pollfd in{fd, POLLIN, 0}; got < size && poll(&in, 1, int(timeout.count())) > 0;) {
      const ssize_t n = ::read(fd, bytes.data() + got, size - got);
      if (n <= 0) break;
      got += std::size_t(n);
    }
    return bytes.substr(0, got);
  }

  int fd;
};

// gc40-sim on folder/gc40, where an earlier run left a dangling link; a later
// --link in `options` takes its place.
struct Sim {
  explicit Sim(std::vector<std::string> options)
      : process(GC40_SIM_BINARY, withLink(std::move(options)), folder.path() / "stderr.txt") {}
  std::vector<std::string> withLink(std::vector<std::string> options) const {
    fs::create_symlink("/nonexistent/left/by/an/earlier/run", link);
    options.insert(options.begin(), {"--link", link});
    return options;
  }
  bool ready() { return process.readLine(5s) == "gc40-sim: ready " + link.string(); }
  std::string errors() const { return testing::readBytes(folder.path() / "stderr.txt"); }
  // Ended with status 0 and its link removed.
  void expectCleanEnd(std::optional<int> status) const {
    EXPECT_EQ(status, 0) << errors();
    EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
  }

  testing::TempFolder folder;
  fs::path link = folder.path() / "gc40";
  testing::ChildProcess process;
};

TEST(Gc40Sim, WaitsForItsReaderThenDeliversEveryRecordInOrder) {
  Sim sim({"--pattern=sequence", "--period=0", "--count=2000", "--settle=300"});
  ASSERT_TRUE(sim.ready());
  std::this_thread::sleep_for(500ms);
  {
    const Reader reader(sim.link, 100ms);  // what came before the purge would be lost
    EXPECT_EQ(reader.read(2000 * kRecordSize), records(0, 2000));
    EXPECT_EQ(sim.process.waitForExit(200ms), std::nullopt);  // it ends once its reader has gone
    EXPECT_EQ(reader.read(1, 100ms), "");                     // and sends not a byte more
  }
  sim.expectCleanEnd(sim.process.waitForExit());
  EXPECT_LT(sim.process.usedCpu, kMaxCpu);
}

TEST(Gc40Sim, PausesWhileItsReaderIsAwayAndGoesOnWhenItComesBack) {
  Sim sim({"--pattern=sequence", "--period=10", "--settle=200"});
  ASSERT_TRUE(sim.ready());
  EXPECT_EQ(Reader(sim.link).read(10 * kRecordSize), records(0, 10));
  std::this_thread::sleep_for(500ms);  // running on, it would send 50 records meanwhile
  const std::string again = Reader(sim.link).read(10 * kRecordSize);
  const int first = std::stoi(again.substr(2, 5));
  EXPECT_TRUE(first >= 10 && first < 25) << again;
  EXPECT_EQ(again, records(first, 10));
  sim.expectCleanEnd(sim.process.stop());
  EXPECT_LT(sim.process.usedCpu, kMaxCpu);
}

TEST(Gc40Sim, StopsAtOnceOnASignalWhereverItWaits) {
  // Waiting for a reader, for the end of settling, for the end of a drop-out,
  // and for the reader to close after the last record.
  using Case = std::tuple<std::vector<std::string>, int, std::size_t>;
  for (const auto& [options, signal, bytesBefore] :
       {Case{{}, SIGTERM, 0}, Case{{"--settle=60000"}, SIGINT, 0},
        Case{{"--dropout-every=1", "--dropout-seconds=60"}, SIGINT, kRecordSize},
        Case{{"--count=1"}, SIGTERM, kRecordSize}}) {
    SCOPED_TRACE(options.empty() ? "" : options[0]);
    Sim sim(options);
    ASSERT_TRUE(sim.ready());
    std::optional<Reader> reader;
    if (!options.empty()) reader.emplace(sim.link);
    EXPECT_EQ(reader ? reader->read(kRecordSize, 300ms).size() : 0, bytesBefore);
    std::this_thread::sleep_for(200ms);
    sim.process.signal(signal);
    sim.expectCleanEnd(sim.process.waitForExit(3s));  // not the 60 s it waits for
  }
}

TEST(Gc40Sim, ReplaysACaptureByteForByteOnItsOwnLinkBesideTheMeter) {
  // NUL bytes and cut-off sentences; bytes above 127 and a truncated last sentence.
  for (const char* name : {"gp-320fw-2019-04-07-coldboot.log", "ublox-8.log"}) {
    const fs::path capture = fs::path(GC40_NMEA_DIR) / name;
    const std::string bytes = testing::readBytes(capture);
    testing::TempFolder gpsFolder;
    const fs::path gps = gpsFolder.path() / "gps";
    Sim sim({"--gps-link", gps, "--nmea", capture, "--nmea-period", "0"});
    ASSERT_TRUE(sim.ready());
    EXPECT_EQ(sim.process.readLine(5s), "gc40-sim: ready " + gps.string());
    {
      const Reader reader(gps);
      EXPECT_EQ(reader.read(bytes.size()), bytes) << name;
      EXPECT_EQ(reader.read(1, 200ms), "");  // and no more
    }
    sim.expectCleanEnd(sim.process.stop());
    EXPECT_FALSE(fs::exists(fs::symlink_status(gps)));
  }
}

TEST(Gc40Sim, RefusesWhatItCannotDoWithTheRightStatus) {
  testing::TempFolder folder;
  const fs::path file = folder.path() / "notes.txt", noFolder = folder.path() / "no/such/gc40";
  testing::writeBytes(file, "keep me");
  using Case = std::tuple<std::vector<std::string>, int, std::string>;
  for (const auto& [arguments, status, text] :
       {Case{{"--link", file, "--period", "fast"}, 2, "not 'fast'\n\nUsage: gc40-sim"},
        Case{{"--link", file}, 1, file.string() + " exists and is not a symbolic link"},
        Case{{"--link", noFolder}, 1, "cannot create the link " + noFolder.string()},
        Case{{"--gps-link", noFolder, "--nmea", file.string() + ".log"},
             1,
             "cannot read " + file.string() + ".log: No such file"}}) {
    Sim sim(arguments);
    EXPECT_EQ(sim.process.waitForExit(), status) << text;
    EXPECT_NE(sim.errors().find(text), std::string::npos) << sim.errors();
  }
  EXPECT_EQ(testing::readBytes(file), "keep me");
}

}  // namespace
}  // namespace gc40

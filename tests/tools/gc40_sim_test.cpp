// gc40-sim as a process, read through its link the way the logger reads a
// port: it waits for its reader, loses nothing, pauses while the reader is
// away, stops cleanly on a signal, and never burns the processor meanwhile.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <numeric>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "support/child_process.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

constexpr std::size_t kRecordSize = 13;
// Half a second waiting for a reader and a burst at full speed cost a busy
// loop far more than this; the sim itself needs a few tens of milliseconds.
constexpr auto kMaxCpu = 200ms;

// Up to `size` bytes, or fewer when `timeout` has passed or the writer is gone.
std::string readFor(int fd, std::size_t size, std::chrono::milliseconds timeout = 5s) {
  std::string bytes(size, '\0');
  std::size_t got = 0;
  for (const auto end = Clock::now() + timeout; got < size && Clock::now() < end;) {
    pollfd readable{.fd = fd, .events = POLLIN, .revents = 0};
    if (poll(&readable, 1, 10) <= 0) continue;
    const ssize_t n = read(fd, bytes.data() + got, size - got);
    if (n == 0 || (n < 0 && errno != EAGAIN)) break;
    got += static_cast<std::size_t>(std::max<ssize_t>(n, 0));
  }
  return bytes.substr(0, got);
}

// gc40-sim with its stderr in folder/stderr.txt.
testing::ChildProcess startSim(const std::vector<std::string>& arguments, const fs::path& folder) {
  return {GC40_SIM_BINARY, arguments, folder / "stderr.txt"};
}

// The link opened as the logger opens its port: raw, then its queue purged.
struct Reader {
  explicit Reader(const fs::path& link, std::chrono::milliseconds purgeAfter = 0ms)
      : fd(open(link.c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK)) {
    termios mode{};
    tcgetattr(fd, &mode);
    cfmakeraw(&mode);
    tcsetattr(fd, TCSANOW, &mode);
    std::this_thread::sleep_for(purgeAfter);
    tcflush(fd, TCIFLUSH);
  }
  ~Reader() { close(fd); }

  // The sequence numbers of the next `count` records; -1 for a malformed one.
  std::vector<int> sequenceNumbers(std::size_t count) const {
    const std::string bytes = readFor(fd, count * kRecordSize);
    std::vector<int> numbers;
    for (std::size_t at = 0; at + kRecordSize <= bytes.size(); at += kRecordSize) {
      const bool wellFormed =
          bytes.compare(at, 2, "T ") == 0 && bytes.compare(at + 7, 6, "00040\r") == 0;
      numbers.push_back(wellFormed ? std::stoi(bytes.substr(at + 2, 5)) : -1);
    }
    return numbers;
  }

  int fd;
};

std::vector<int> numbersFrom(int first, int count) {
  std::vector<int> numbers(static_cast<std::size_t>(count));
  std::iota(numbers.begin(), numbers.end(), first);
  return numbers;
}

std::string readyLine(const fs::path& link) { return "gc40-sim: ready " + link.string(); }

TEST(Gc40Sim, WaitsForItsReaderThenDeliversEveryRecordInOrder) {
  testing::TempFolder folder;
  const fs::path link = folder.path() / "gc40";
  fs::create_symlink("/nonexistent/left/by/an/earlier/run", link);
  testing::ChildProcess sim =
      startSim({"--link", link, "--pattern=sequence", "--period=0", "--count=2000", "--settle=300"},
               folder.path());
  ASSERT_EQ(sim.readLine(5s), readyLine(link));
  std::this_thread::sleep_for(500ms);
  {
    // Whatever the sim sent before the purge would be lost, as on the logger's port.
    const Reader reader(link, 100ms);
    EXPECT_EQ(reader.sequenceNumbers(2000), numbersFrom(0, 2000));
    EXPECT_EQ(readFor(reader.fd, 1, 200ms), "");  // and not a byte more
  }
  EXPECT_EQ(sim.waitForExit(), 0) << testing::readBytes(folder.path() / "stderr.txt");
  EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
  EXPECT_LT(sim.usedCpu, kMaxCpu);
}

TEST(Gc40Sim, PausesWhileItsReaderIsAwayAndGoesOnWhenItComesBack) {
  testing::TempFolder folder;
  const fs::path link = folder.path() / "gc40";
  testing::ChildProcess sim = startSim(
      {"--link", link, "--pattern=sequence", "--period=10", "--settle=200"}, folder.path());
  ASSERT_EQ(sim.readLine(5s), readyLine(link));

  EXPECT_EQ(Reader(link).sequenceNumbers(10), numbersFrom(0, 10));
  // 50 records' time away: running on, the sim would have sent them all.
  std::this_thread::sleep_for(500ms);
  const std::vector<int> again = Reader(link).sequenceNumbers(10);
  ASSERT_EQ(again.size(), 10u);
  EXPECT_TRUE(again[0] >= 10 && again[0] < 25) << again[0];
  EXPECT_EQ(again, numbersFrom(again[0], 10));

  sim.signal(SIGTERM);
  EXPECT_EQ(sim.waitForExit(), 0);
  EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
  EXPECT_LT(sim.usedCpu, kMaxCpu);
}

TEST(Gc40Sim, StopsAtOnceOnASignalWhereverItWaits) {
  struct Case {
    const char* waitingFor;
    std::vector<std::string> options;
    int signal;
  };
  for (const Case& c : std::vector<Case>{
           {"a reader", {}, SIGTERM},
           {"the end of its settling", {"--settle=60000"}, SIGINT},
           {"the end of a drop-out", {"--dropout-every=1", "--dropout-seconds=60"}, SIGINT},
           {"its reader to close after the last record", {"--count=1"}, SIGTERM}}) {
    testing::TempFolder folder;
    const fs::path link = folder.path() / "gc40";
    std::vector<std::string> arguments = c.options;
    arguments.insert(arguments.end(), {"--link", link});
    testing::ChildProcess sim = startSim(arguments, folder.path());
    ASSERT_EQ(sim.readLine(5s), readyLine(link)) << c.waitingFor;
    std::optional<Reader> reader;
    if (!c.options.empty()) reader.emplace(link);
    if (c.options.size() == 2) {
      EXPECT_EQ(readFor(reader->fd, kRecordSize).size(), kRecordSize);
    }
    std::this_thread::sleep_for(200ms);
    sim.signal(c.signal);
    EXPECT_EQ(sim.waitForExit(500ms), 0) << c.waitingFor;
    EXPECT_FALSE(fs::exists(fs::symlink_status(link))) << c.waitingFor;
  }
}

TEST(Gc40Sim, RefusesWhatItCannotDoWithTheRightStatus) {
  testing::TempFolder folder;
  const fs::path file = folder.path() / "notes.txt";
  const fs::path noFolder = folder.path() / "no/such/folder/gc40";
  testing::writeBytes(file, "keep me");
  for (const auto& [arguments, status, text] :
       std::vector<std::tuple<std::vector<std::string>, int, std::string>>{
           {{"--link", file, "--period", "fast"}, 2, "not 'fast'\n\nUsage: gc40-sim"},
           {{"--link", file}, 1, file.string() + " exists and is not a symbolic link"},
           {{"--link", noFolder}, 1, "cannot create the link " + noFolder.string()}}) {
    fs::remove(folder.path() / "stderr.txt");
    testing::ChildProcess sim = startSim(arguments, folder.path());
    EXPECT_EQ(sim.waitForExit(), status) << text;
    const std::string errors = testing::readBytes(folder.path() / "stderr.txt");
    EXPECT_NE(errors.find(text), std::string::npos) << errors;
  }
  EXPECT_EQ(testing::readBytes(file), "keep me");
}

}  // namespace
}  // namespace gc40

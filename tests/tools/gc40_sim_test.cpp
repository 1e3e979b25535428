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

// Records first.. as --pattern=sequence sends them.
std::string records(int first, int count) {
  std::string bytes;
  char record[32];
  for (int i = first; i < first + count; ++i)
    bytes += (std::snprintf(record, sizeof record, "T %05d00040\r", i), record);
  return bytes;
}

// What comes on the link, opened as the logger opens its port and its queue
// purged after `purgeAfter`, until `size` bytes or a second without any.
std::string readLink(const fs::path& link, std::size_t size, std::chrono::milliseconds purgeAfter) {
  const int fd = open(link.c_str(), O_RDONLY | O_NOCTTY);
  std::this_thread::sleep_for(purgeAfter);
  tcflush(fd, TCIFLUSH);
  std::string bytes(size, '\0');
  std::size_t got = 0;
  for (pollfd in{fd, POLLIN, 0}; got < size && poll(&in, 1, 1000) > 0;) {
    const ssize_t n = read(fd, bytes.data() + got, size - got);
    if (n <= 0) break;
    got += std::size_t(n);
  }
  close(fd);
  return bytes.substr(0, got);
}

// The reader opens after the settling time has begun and purges its queue;
// away, it misses records only up to what was already queued. After the count
// it ends and removes the link that replaced one an earlier run left dangling.
TEST(Gc40Sim, SendsInOrderOnlyWhileItsReaderIsThere) {
  testing::TempFolder folder;
  const fs::path link = folder.path() / "gc40";
  fs::create_symlink("/nonexistent/left/by/an/earlier/run", link);
  testing::ChildProcess sim(GC40_SIM_BINARY, {"--link", link, "--pattern=sequence", "--period=10",
                                              "--settle=200", "--count=40"});
  ASSERT_EQ(sim.readLine(5s), "gc40-sim: ready " + link.string());
  EXPECT_EQ(readLink(link, 10 * kRecordSize, 100ms), records(0, 10));
  std::this_thread::sleep_for(500ms);  // running on, it would send 50 records meanwhile
  const std::string again = readLink(link, 40 * kRecordSize, 0ms);
  const int first = std::stoi(again.substr(2, 5));
  EXPECT_TRUE(first >= 10 && first < 25) << again;
  EXPECT_EQ(again, records(first, 40 - first));
  EXPECT_EQ(sim.waitForExit(), 0);
  EXPECT_FALSE(fs::exists(fs::symlink_status(link)));
  EXPECT_LT(sim.usedCpu, 200ms);  // a busy loop while waiting would use far more
}

// A usage error exits 2, a link it cannot make 1; a file in the link's place is kept.
TEST(Gc40Sim, RefusesWhatItCannotDoWithTheRightStatus) {
  testing::TempFolder folder;
  const std::string file = folder.path() / "notes.txt", errors = folder.path() / "errors.txt";
  testing::writeBytes(file, "keep me");
  for (const auto& [arguments, status, text] :
       {std::tuple{std::vector<std::string>{"--link", file, "--period", "fast"}, 2,
                   std::string("not 'fast'\n\nUsage: gc40-sim")},
        {{"--link", file}, 1, file + " exists and is not a symbolic link"}}) {
    testing::ChildProcess sim(GC40_SIM_BINARY, arguments, errors);
    EXPECT_EQ(sim.waitForExit(), status) << text;
    EXPECT_NE(testing::readBytes(errors).find(text), std::string::npos)
        << testing::readBytes(errors);
  }
  EXPECT_EQ(testing::readBytes(file), "keep me");
}

}  // namespace
}  // namespace gc40

#pragma once
// A fresh folder per test, removed afterwards, whole-file helpers, and a cap
// on the size of the files written.

#include <signal.h>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace gc40::testing {

struct TempFolder {
  TempFolder() { std::filesystem::create_directories(path_); }
  ~TempFolder() { std::filesystem::remove_all(path_); }
  const std::filesystem::path& path() const { return path_; }

  std::filesystem::path path_ = std::filesystem::temp_directory_path() /
                                ("gc40-test-" + std::to_string(std::random_device()()));
};

inline std::string readBytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void writeBytes(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary).write(bytes.data(), std::ssize(bytes));
}

// A full card without a small file system: every file this process (and what
// it starts meanwhile) writes is held to `bytes`, a write past it cut short and
// the next refused ("File too large"). Lifted at the end of the scope.
struct FileSizeLimit {
  explicit FileSizeLimit(rlim_t bytes) {
    ::signal(SIGXFSZ, SIG_IGN);  // a refused write, not a killed process
    getrlimit(RLIMIT_FSIZE, &saved);
    const rlimit limit{bytes, saved.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &saved); }
  rlimit saved{};
};

}  // namespace gc40::testing

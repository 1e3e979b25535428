#pragma once
// A fresh folder per test, removed afterwards, and whole-file helpers.

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

}  // namespace gc40::testing

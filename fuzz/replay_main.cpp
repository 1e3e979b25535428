// Without libFuzzer (the g++ build), a fuzz target becomes this program: it
// runs every file named, or found under a folder named, through the target
// once, so the saved crashes and the seeds are replayed by ctest under the
// sanitizers. A folder that does not exist is skipped: a target may have no
// regressions yet.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz_support.h"

namespace {

std::vector<std::filesystem::path> inputsUnder(const std::filesystem::path& path) {
  if (std::filesystem::is_regular_file(path)) return {path};
  std::vector<std::filesystem::path> files;
  if (!std::filesystem::is_directory(path)) return files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  return files;
}

bool replay(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  if (!in && !in.eof()) {
    std::cerr << "cannot read " << file.string() << "\n";
    return false;
  }
  std::cerr << "replaying " << file.string() << " (" << bytes.size() << " bytes)\n";
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& file : inputsUnder(argv[i])) {
      if (!replay(file)) return 1;
      ++count;
    }
  }
  std::cerr << count << " inputs replayed\n";
  return count > 0 ? 0 : 1;  // nothing to replay means the paths are wrong
}

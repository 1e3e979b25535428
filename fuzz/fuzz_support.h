#pragma once
// What every fuzz target shares: the entry point libFuzzer calls, a check that
// stops the run with the broken rule, and the split of the fuzzer's bytes into
// the stream under test and the choices made about it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

// Both libFuzzer and the replay program (fuzz/replay_main.cpp) call this.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Unlike assert, stays on in optimised builds: a broken rule is a finding.
#define FUZZ_CHECK(condition)                                                            \
  do {                                                                                   \
    if (!(condition)) {                                                                  \
      std::fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #condition); \
      std::abort();                                                                      \
    }                                                                                    \
  } while (false)

namespace gc40::fuzz {

// Choices (chunk sizes, settings) come off the end of the input and the
// stream from its front, so a real capture given as a seed stays a real
// stream with only its tail turned into choices.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size)
      : bytes_(reinterpret_cast<const char*>(data), size) {}

  bool empty() const { return bytes_.empty(); }

  // 0 once the input is used up.
  std::uint8_t choice() {
    if (bytes_.empty()) return 0;
    const auto byte = static_cast<std::uint8_t>(bytes_.back());
    bytes_.remove_suffix(1);
    return byte;
  }

  std::uint32_t choice32() {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | choice();
    return value;
  }

  // Up to `count` bytes from the front.
  std::string_view front(std::size_t count) {
    const std::string_view taken = bytes_.substr(0, std::min(count, bytes_.size()));
    bytes_.remove_prefix(taken.size());
    return taken;
  }

  std::string_view rest() { return front(bytes_.size()); }

 private:
  std::string_view bytes_;
};

}  // namespace gc40::fuzz

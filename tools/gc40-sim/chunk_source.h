#pragma once
// What a simulated device hands to its link: bytes, and when the next are due.

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace gc40 {

struct Chunk {
  std::string bytes;
  std::chrono::milliseconds gapAfter{0};  // 0: as soon as the link takes them
};

// The device's next chunk; nullopt once it has nothing more to send.
using ChunkSource = std::function<std::optional<Chunk>()>;

}  // namespace gc40

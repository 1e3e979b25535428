#pragma once

#include <string_view>

namespace gc40 {

inline constexpr std::string_view kGc40Version = "2.11";

}  // namespace gc40

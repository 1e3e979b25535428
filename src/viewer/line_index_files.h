#pragma once
// The line index files of the viewer: the chosen survey line's stations, kept
// in the settings folder while it is viewed.
//
// Both files: a 24-byte header, then one fixed-size record per station, all
// numbers little-endian:
//   header  0  8 bytes  magic "GC40R4X1" (LINE1.R4X) or "GC40R4X2" (LINE2.R4X)
//           8  uint32   format version, 1
//          12  uint32   record size in bytes (16 or 40)
//          16  uint32   station count
//          20  uint32   0 (reserved)
//   LINE1.R4X record (16 bytes): float64 station; 8 x uint8 presence flags
//   LINE2.R4X record (40 bytes): float64 station; 8 x float32 values
// Trace order: C/V, C/H, I/V, I/H, then four never used. A value whose flag is
// 0 is written as 0.

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "survey/survey_lines.h"

namespace gc40 {

inline constexpr std::string_view kPresenceIndexName = "LINE1.R4X";
inline constexpr std::string_view kValueIndexName = "LINE2.R4X";

struct LineIndexBytes {
  std::string presence;  // LINE1.R4X
  std::string values;    // LINE2.R4X
};

LineIndexBytes encodeLineIndex(const std::vector<StationEntry>& stations);

struct LineIndexError {
  std::string message;  // names the file and what is wrong with it
};

// The stations back from both files' bytes; an error when either is not a
// line index file of this version or the two do not describe the same stations.
std::variant<std::vector<StationEntry>, LineIndexError> decodeLineIndex(
    const LineIndexBytes& bytes);

}  // namespace gc40

#include "viewer/line_index_files.h"

#include <bit>
#include <cstring>

namespace gc40 {
namespace {

constexpr std::string_view kPresenceMagic = "GC40R4X1";
constexpr std::string_view kValueMagic = "GC40R4X2";
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kHeaderSize = 24;
constexpr std::size_t kPresenceRecordSize = 8 + kTraceCount;
constexpr std::size_t kValueRecordSize = 8 + 4 * kTraceCount;

template <typename Unsigned>
void putLittleEndian(std::string& out, Unsigned value) {
  for (std::size_t i = 0; i < sizeof(Unsigned); ++i)
    out.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
}

template <typename Unsigned>
Unsigned getLittleEndian(std::string_view in, std::size_t at) {
  Unsigned value = 0;
  for (std::size_t i = 0; i < sizeof(Unsigned); ++i)
    value |= static_cast<Unsigned>(static_cast<unsigned char>(in[at + i])) << (8 * i);
  return value;
}

std::string header(std::string_view magic, std::size_t recordSize, std::size_t count) {
  std::string out(magic);
  putLittleEndian<std::uint32_t>(out, kVersion);
  putLittleEndian<std::uint32_t>(out, static_cast<std::uint32_t>(recordSize));
  putLittleEndian<std::uint32_t>(out, static_cast<std::uint32_t>(count));
  putLittleEndian<std::uint32_t>(out, 0);
  return out;
}

// The station count a file's header gives, once the header, the size and the
// length all agree; else why not.
std::variant<std::size_t, LineIndexError> checkedCount(std::string_view bytes,
                                                       std::string_view fileName,
                                                       std::string_view magic,
                                                       std::size_t recordSize) {
  const auto fail = [fileName](const std::string& what) {
    return LineIndexError{std::string(fileName) + ": " + what};
  };
  if (bytes.size() < kHeaderSize || bytes.substr(0, magic.size()) != magic)
    return fail("not a line index file");
  if (getLittleEndian<std::uint32_t>(bytes, 8) != kVersion) return fail("unknown format version");
  if (getLittleEndian<std::uint32_t>(bytes, 12) != recordSize)
    return fail("unexpected record size");
  const std::size_t count = getLittleEndian<std::uint32_t>(bytes, 16);
  if ((bytes.size() - kHeaderSize) / recordSize != count ||
      (bytes.size() - kHeaderSize) % recordSize != 0)
    return fail("holds " + std::to_string(bytes.size()) + " bytes for " + std::to_string(count) +
                " stations");
  return count;
}

}  // namespace

LineIndexBytes encodeLineIndex(const std::vector<StationEntry>& stations) {
  LineIndexBytes bytes{header(kPresenceMagic, kPresenceRecordSize, stations.size()),
                       header(kValueMagic, kValueRecordSize, stations.size())};
  for (const StationEntry& entry : stations) {
    const auto station = std::bit_cast<std::uint64_t>(entry.station);
    putLittleEndian(bytes.presence, station);
    putLittleEndian(bytes.values, station);
    for (std::size_t trace = 0; trace < kTraceCount; ++trace) {
      const bool present = entry.present[trace] != 0;
      bytes.presence.push_back(present ? 1 : 0);
      putLittleEndian(bytes.values,
                      std::bit_cast<std::uint32_t>(present ? entry.values[trace] : 0.0f));
    }
  }
  return bytes;
}

std::variant<std::vector<StationEntry>, LineIndexError> decodeLineIndex(
    const LineIndexBytes& bytes) {
  const auto presenceCount =
      checkedCount(bytes.presence, kPresenceIndexName, kPresenceMagic, kPresenceRecordSize);
  if (const auto* error = std::get_if<LineIndexError>(&presenceCount)) return *error;
  const auto valueCount =
      checkedCount(bytes.values, kValueIndexName, kValueMagic, kValueRecordSize);
  if (const auto* error = std::get_if<LineIndexError>(&valueCount)) return *error;
  const std::size_t count = std::get<std::size_t>(presenceCount);
  const auto mismatch =
      LineIndexError{std::string(kValueIndexName) + ": does not describe the stations of " +
                     std::string(kPresenceIndexName)};
  if (std::get<std::size_t>(valueCount) != count) return mismatch;

  std::vector<StationEntry> stations(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t flagsAt = kHeaderSize + i * kPresenceRecordSize;
    const std::size_t valuesAt = kHeaderSize + i * kValueRecordSize;
    const auto station = getLittleEndian<std::uint64_t>(bytes.presence, flagsAt);
    if (getLittleEndian<std::uint64_t>(bytes.values, valuesAt) != station) return mismatch;
    StationEntry& entry = stations[i];
    entry.station = std::bit_cast<double>(station);
    for (std::size_t trace = 0; trace < kTraceCount; ++trace) {
      entry.present[trace] = bytes.presence[flagsAt + 8 + trace] != 0 ? 1 : 0;
      entry.values[trace] = std::bit_cast<float>(
          getLittleEndian<std::uint32_t>(bytes.values, valuesAt + 8 + 4 * trace));
    }
  }
  return stations;
}

}  // namespace gc40

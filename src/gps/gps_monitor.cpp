#include "gps/gps_monitor.h"

#include "base/text_codec.h"

namespace gc40 {

bool NoDataWatch::due(std::uint32_t tick) {
  if (tick - lastLine_ <= kNoDataAfterMs) return false;
  lastLine_ = tick;
  return true;
}

std::string gpsCommandBytes(std::u16string_view text) { return wideToWindows1252(text) + "\r\n"; }

}  // namespace gc40

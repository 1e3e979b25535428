#include "app/uptime_guard.h"

namespace gc40 {

bool uptimeExceeded(std::uint32_t tickMs) { return tickMs > kUptimeLimitMs; }

std::string uptimeStopText() {
  return "Windows has run for more than 20 days.\r\n"
         "To assure accurate clock operation\r\n"
         "please restart the system.\r\n"
         "Press and hold On/Off key till blue screen\r\n"
         "and \"Warm Reset Detected\" is displayed.";
}

}  // namespace gc40

#include "platform/log_categories.h"

namespace gc40 {

// Info and up by default, so a field run's output stays as quiet as before.
Q_LOGGING_CATEGORY(lcSerial, "gc40.serial", QtInfoMsg)
Q_LOGGING_CATEGORY(lcGps, "gc40.gps", QtInfoMsg)
Q_LOGGING_CATEGORY(lcFile, "gc40.file", QtInfoMsg)
Q_LOGGING_CATEGORY(lcControl, "gc40.control", QtInfoMsg)

}  // namespace gc40

#pragma once
// The program's logging categories. Their debug messages are off unless asked
// for: QT_LOGGING_RULES="gc40.*=true" turns on all, "gc40.serial=true" one.

#include <QLoggingCategory>

namespace gc40 {

Q_DECLARE_LOGGING_CATEGORY(lcSerial)   // ports opened, closed and failing; raw captures
Q_DECLARE_LOGGING_CATEGORY(lcGps)      // the GPS port and what is sent to the receiver
Q_DECLARE_LOGGING_CATEGORY(lcFile)     // data files created, synced, closed, refused
Q_DECLARE_LOGGING_CATEGORY(lcControl)  // --control commands

}  // namespace gc40

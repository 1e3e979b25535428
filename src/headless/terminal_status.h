#pragma once
// The logging screen's status display as one line of text for a terminal:
// the state, the file, the line and station, the last reading's values, the
// GPS fields, and how many readings are recorded and how long ago the last
// one was. It keeps what the session last told the view, in the texts the
// screen shows, and makes the line when asked.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "gps/gps_status.h"
#include "logging/logging_view.h"
#include "settings/settings.h"

namespace gc40 {

class TerminalStatus {
 public:
  void setState(std::string_view text) { state_ = text; }
  void setFile(std::u16string_view text) { file_ = text; }
  void setLineAndStation(std::u16string_view line, std::string_view station);
  void setMessage(std::string_view text) { message_ = text; }
  // `now` is the tick the reading was shown at.
  void showReading(const ReadingShown& shown, const Settings& settings, std::uint32_t now);
  // "GPS  Input  disabled" until GPS fields come, as on the screen.
  void setGpsEnabled(bool enabled) { gpsEnabled_ = enabled; }
  void showGps(const GpsFieldsShown& shown);

  std::int64_t readingsRecorded() const { return recorded_; }
  // The line at tick `now` (UTF-8, no line end).
  std::string text(std::uint32_t now) const;

 private:
  std::string gpsText() const;

  std::string state_;
  std::u16string file_;
  std::u16string line_;
  std::string station_;
  std::string count_;
  std::string message_;
  char triggerIndicator_ = ' ';
  std::string values_;  // mode, conductivity, inphase, dipole and range of the last reading
  bool gpsEnabled_ = false;
  GpsFieldsShown gps_;
  std::int64_t recorded_ = 0;
  std::optional<std::uint32_t> lastRecordedTick_;
};

// The first `columns` characters of UTF-8 text: a line longer than the
// terminal is wide would wrap, and the next rewrite could not reach it.
std::string fitToColumns(std::string_view utf8, std::size_t columns);

}  // namespace gc40

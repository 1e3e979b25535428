#pragma once
// What the logging session asks of its screen and of the clock. The Qt
// logging window implements LoggingView: it draws what it is told, runs the
// dialogs it is asked for and leaves; every decision stays in the session.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/local_time.h"
#include "datafile/data_file.h"
#include "gps/gps_status.h"
#include "instrument/reading_decoder.h"
#include "logging/run_state.h"

namespace gc40 {

enum class ButtonGroup {
  kMonitor,  // kMonitorButtonLabels, ids 460, 461
  kStandBy,  // kStandByButtonLabels, ids 460..465
  kPause,    // the one pause button `pauseButton`, id 460 + pauseButton
};

struct ButtonGroupShown {
  ButtonGroup group = ButtonGroup::kMonitor;
  int pauseButton = 0;              // 0..7 (kPause only); labels in command_keys.h
  std::int32_t selectedButton = 0;  // the highlighted (default) button of the group
  bool operator==(const ButtonGroupShown&) const = default;
};

// One complete instrument reading, for the status screen.
struct ReadingShown {
  DecodedReading reading;  // a completed Manual average carries the averages
  FiledValues filed;
  char triggerIndicator = ' ';  // 'M' or a blank
  bool recorded = false;
  // Only when recorded: the station the next reading gets, and the readings
  // at it when a station takes more than one ("" otherwise).
  std::string station;
  std::string count;
  double recordedStation = 0.0;  // only when recorded: the station it was recorded at
};

class LoggingView {
 public:
  virtual ~LoggingView() = default;

  // The status screen. Each call replaces what its field showed before.
  virtual void showButtons(const ButtonGroupShown& buttons) = 0;  // hides the other groups
  virtual void showStateText(std::string_view text) = 0;    // "Monitor", "Stand By", "Logging"
  virtual void showFileName(std::u16string_view text) = 0;  // "File:" and up to 8 characters
  virtual void showLineAndStation(std::u16string_view line, std::string_view station) = 0;
  virtual void showMessage(std::string_view text) = 0;  // the message field; "" clears it
  virtual void showReading(const ReadingShown& shown) = 0;
  virtual void showGps(const GpsFieldsShown& shown) = 0;  // only the fields it carries
  virtual void redraw() = 0;  // the whole window and the profile, after a dialog or menu

  // The live profile. addToProfile draws a recorded reading's traces: joined
  // to their last points where traceContinues says so, and it sets the flag
  // of every trace it draws. A readingsAtStation of 0 means the station has
  // just advanced (the picture scrolls).
  virtual void addToProfile(const FiledValues& filed, std::int32_t readingsAtStation,
                            TraceFlags& traceContinues) = 0;
  virtual void restartProfile() = 0;  // no scroll before the next point

  virtual void beep() = 0;

  // Modal dialogs. Readings and timer ticks keep arriving while one is up,
  // and the connection watch may end the run before it returns (it calls
  // closeDialogs, which must make every open dialog return as if cancelled).
  // "Create Data File": the new file with its header written, or nullopt.
  virtual std::optional<DataFile> runCreateFile() = 0;
  // "New Line" and "New Station": true on OK, after they stored their values.
  virtual bool runNewLine() = 0;
  virtual bool runNewStation() = 0;
  // "Enter Comment": the text on OK (possibly empty), nullopt on Cancel.
  virtual std::optional<std::u16string> runComment() = 0;
  // "Enter Scale": true on OK, after it stored the new scales.
  virtual bool runScale() = 0;
  virtual void runDisplayOptions() = 0;
  // The popup menu (Scale, Display Options, Hide Menu): the chosen command
  // (kScaleMenuCommand...), or nullopt when it was dismissed.
  virtual std::optional<int> runPopupMenu() = 0;
  // kConfirmExitText in a Yes/No box captioned kConfirmExitCaption; true on Yes.
  virtual bool confirmExit() = 0;
  // The kNoConnectionText box captioned kNoConnectionCaption; returns once
  // the operator has acknowledged it.
  virtual void showNoConnection() = 0;
  virtual void closeDialogs() = 0;
  // The data file at `path` could not be written or committed (`reason` is
  // the system's): recording has stopped and the run is back in Monitor.
  // Tells the operator without holding up the readings.
  virtual void showWriteFailure(const std::filesystem::path& path, std::string_view reason) = 0;

  // The run is over and the data file closed: stop the connection timer,
  // close the ports, hide the window and give the main window its keys back.
  virtual void leave() = 0;
};

// Both clocks at the moment of asking; core code never reads them itself.
class LoggingClock {
 public:
  virtual ~LoggingClock() = default;
  virtual std::uint32_t tickCount() = 0;  // milliseconds, wrapping at 2^32
  virtual LocalTime localTime() = 0;
};

}  // namespace gc40

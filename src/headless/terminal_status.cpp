#include "headless/terminal_status.h"

#include "base/number_text.h"
#include "base/text_codec.h"
#include "logging/status_texts.h"

namespace gc40 {
namespace {

constexpr std::size_t kStateWidth = 8;  // "Stand By"

std::string trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

// Fields two spaces apart; an empty one takes no room.
void append(std::string& line, std::string_view field) {
  if (field.empty()) return;
  if (!line.empty()) line += "  ";
  line += field;
}

}  // namespace

void TerminalStatus::setLineAndStation(std::u16string_view line, std::string_view station) {
  line_ = line;
  station_ = trimmed(station);
}

void TerminalStatus::showReading(const ReadingShown& shown, const Settings& settings,
                                 std::uint32_t now) {
  triggerIndicator_ = shown.triggerIndicator;
  // The landscape forms: the short ones, with the widths that keep the
  // fields after them where they were.
  values_ = dipoleModeText(settings.dipoleMode);
  append(values_, conductivityText(shown.reading, settings.component, false));
  append(values_, inphaseText(shown.reading, false));
  append(values_, dipoleRangeText(shown.reading, false));
  if (!shown.recorded) return;
  station_ = trimmed(shown.station);
  count_ = shown.count;
  ++recorded_;
  lastRecordedTick_ = now;
}

void TerminalStatus::showGps(const GpsFieldsShown& shown) {
  for (auto [field, text] : {std::pair{&gps_.activity, &shown.activity},
                             {&gps_.fixCount, &shown.fixCount},
                             {&gps_.satellites, &shown.satellites},
                             {&gps_.fix, &shown.fix},
                             {&gps_.pdop, &shown.pdop}}) {
    if (*text) *field = trimmed(**text);
  }
}

std::string TerminalStatus::gpsText() const {
  if (!gpsEnabled_) return std::string(kGpsDisabledText);
  std::string text = "GPS";
  if (gps_.activity) text += *gps_.activity;
  if (gps_.fix && !gps_.fix->empty()) text += " " + *gps_.fix;
  if (gps_.satellites) text += " sat " + *gps_.satellites;
  if (gps_.pdop) text += " PDOP " + *gps_.pdop;
  if (gps_.fixCount) text += " fixes " + *gps_.fixCount;
  return text;
}

std::string TerminalStatus::text(std::uint32_t now) const {
  std::string line = leftAligned(state_, kStateWidth);
  append(line, wideToUtf8(file_));
  append(line, std::string(kLineLabel) + wideToUtf8(line_));
  append(line, std::string(kStationLabel) + station_ + (count_.empty() ? "" : " (" + count_ + ")"));
  if (triggerIndicator_ != ' ') append(line, std::string(1, triggerIndicator_));
  append(line, values_);
  append(line, gpsText());
  std::string recorded = formatInteger(recorded_) + " recorded";
  if (lastRecordedTick_)
    recorded += ", last " + formatFixed((now - *lastRecordedTick_) / 1000.0, 1) + " s ago";
  append(line, recorded);
  append(line, message_);
  return trimmed(line);
}

std::string fitToColumns(std::string_view utf8, std::size_t columns) {
  std::size_t characters = 0;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    if ((static_cast<unsigned char>(utf8[i]) & 0xC0) == 0x80) continue;
    if (characters++ == columns) return std::string(utf8.substr(0, i));
  }
  return std::string(utf8);
}

}  // namespace gc40

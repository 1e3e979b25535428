#pragma once
// The logging screen's status display above the live profile: data file,
// state, trigger mode, battery, station and line, GPS status, and the values
// of each reading. Every field keeps its text, so a repaint shows what was
// last set, and a change repaints only the field it touches.

#include <QString>
#include <QWidget>
#include <bitset>
#include <cstdint>
#include <functional>
#include <optional>

#include "instrument/reading_decoder.h"
#include "logging/field_text.h"
#include "logging/status_layout.h"
#include "settings/settings.h"

namespace gc40 {

class StatusPanel : public QWidget {
 public:
  using BatterySource = std::function<std::optional<int>()>;
  static BatterySource machineBattery();

  // `portrait` picks the layout and `scale` is the window's whole factor; the
  // panel takes the size its layout needs.
  StatusPanel(bool portrait, int scale, BatterySource battery = machineBattery(),
              QWidget* parent = nullptr);

  // The whole screen as the window shows it: the file (an empty name when no
  // file is open), the state, the trigger mode with the Manual label and
  // count, the station, the line and the GPS fields; the battery is asked now.
  void showStatus(const Settings& settings, LoggingState loggingState, const QString& fileBaseName,
                  std::uint32_t tick);

  void showState(LoggingState loggingState);
  void showFileName(const QString& baseName);
  void showStation(double station);
  void showLine(const QString& surveyLine);
  void showMessage(const QString& text);  // empty clears the message line

  // Per reading: the survey's dipole mode, the values and the reading's
  // dipole and range, drawn by the next showPending().
  void showReading(const DecodedReading& reading, const Settings& settings);
  // Asks the battery again once three minutes have passed since it was drawn.
  void refreshBattery(std::uint32_t tick);

  // Any field as it is, such as the GPS values worked out from the sentences.
  void setText(StatusField field, const QString& text);
  // As setText, but the field is repainted by the next showPending(): the
  // values and the GPS fields change many times a second, and the window
  // draws them together, a few times a second.
  void setTextLater(StatusField field, const QString& text);
  // Draws the fields set since, at once: a repaint posted for later would
  // wake the program once more.
  void showPending();
  QString text(StatusField field) const;
  QRect fieldRect(StatusField field) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void drawBattery(std::uint32_t tick);
  bool keepText(StatusField field, const QString& text);

  bool portrait_;
  BatterySource battery_;
  StatusLayout layout_;
  FieldText fieldText_;
  std::array<QString, kStatusFieldCount> texts_;
  std::uint32_t batteryTick_ = 0;
  // Fields changed since the last showPending(): a region grown per reading
  // cost more than the texts.
  std::bitset<kStatusFieldCount> pending_;
};

}  // namespace gc40

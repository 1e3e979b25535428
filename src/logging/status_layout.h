#pragma once
// Where each field of the status display stands, in either orientation and at
// any window scale: every field is as wide as the widest text it may show, as
// measured in the font it is drawn with, so no field reaches into another.

#include <array>
#include <functional>
#include <span>
#include <string_view>

#include "settings/settings.h"

namespace gc40 {

enum class StatusField {
  kFile,
  kTriggerMode,
  kState,
  kBattery,
  kStationLabel,
  kStation,
  kManualLabel,  // "S  :", Manual mode only
  kTriggerIndicator,
  kCount,
  kLineLabel,
  kLine,
  kGpsDisabled,  // stands where the GPS values stand when GPS input is on
  kGpsActivity,  // the GPS values, kept together from here to kGpsPdop
  kGpsFixCount,
  kGpsSatellites,
  kGpsFix,
  kGpsPdop,
  kMode,
  kConductivity,
  kInphase,
  kDipoleRange,
  kMessage,
};
inline constexpr int kStatusFieldCount = 22;

struct FieldRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

struct StatusLayout {
  int width = 0;
  int height = 0;
  std::array<FieldRect, kStatusFieldCount> fields{};

  const FieldRect& operator[](StatusField field) const {
    return fields[static_cast<std::size_t>(field)];
  }
};

// Width in device pixels of a text in the panel's font.
using TextWidth = std::function<int(std::string_view)>;

// Device pixels throughout: `scale` times the screen's layout pixels, with
// `textWidth` and `lineHeight` taken from the font the panel draws with (the
// caller scales the font too, so hinting cannot make a text outgrow its field).
StatusLayout statusLayout(bool portrait, int scale, const TextWidth& textWidth, int lineHeight);

// The widest texts a field must hold.
std::span<const std::string_view> fieldSamples(StatusField field, bool portrait);

// The GPS-disabled text and the GPS values take turns on the same place.
bool fieldsTakeTurns(StatusField a, StatusField b);

// The logging screen from the top: the status display, the live profile and
// the strip the buttons stand in at the bottom.
inline constexpr int kButtonStripHeight = 22;
inline constexpr int kMinPlotHeight = 40;

// The live profile takes the height the status display (`statusHeight`, in
// layout pixels, as measured in its font) and the button strip leave, at
// least kMinPlotHeight; its pixel scales follow the new height.
void fitProfileBetweenStatusAndButtons(Settings& settings, int screenHeight, int statusHeight);

}  // namespace gc40

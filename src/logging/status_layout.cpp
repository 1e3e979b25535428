#include "logging/status_layout.h"

#include <algorithm>

#include "logging/status_texts.h"
#include "ui/window_geometry.h"

namespace gc40 {
namespace {

using F = StatusField;
using Samples = std::span<const std::string_view>;

constexpr int kRowPitch = 16;    // the 14 px font's height
constexpr int kRightMargin = 1;  // fields may reach this close to the edge...
constexpr int kEndGap = 4;       // ...but stretched and right-hand ones keep this much more

enum class Anchor {
  kAt,     // at x
  kAfter,  // `gap` after the field before it on the row
  kRight,  // against the right end of the row
};

struct Placement {
  StatusField field;
  int row;
  Anchor anchor;
  int x = 0;          // for kAt; layout pixels like the gap
  int gap = 0;        // for kAfter
  bool fill = false;  // stretches to the next field on the row or the row's end
};

// clang-format off
// The trigger mode and the Manual label stand at x 130; the trigger indicator
// just right of that label (its width + 131).
constexpr Placement kLandscape[] = {
    {F::kFile, 0, Anchor::kAt, 5, 0, true},
    {F::kTriggerMode, 0, Anchor::kAt, 130},
    {F::kState, 0, Anchor::kAfter, 0, 8},
    {F::kBattery, 0, Anchor::kRight},
    {F::kStationLabel, 1, Anchor::kAt, 5},
    {F::kStation, 1, Anchor::kAfter, 0, 3},
    {F::kManualLabel, 1, Anchor::kAt, 130},
    {F::kTriggerIndicator, 1, Anchor::kAfter, 0, 1},
    {F::kCount, 1, Anchor::kAfter, 0, 4},
    {F::kLineLabel, 1, Anchor::kAfter, 0, 8},
    {F::kLine, 1, Anchor::kAfter, 0, 3, true},
    {F::kGpsDisabled, 2, Anchor::kAt, 5},
    {F::kGpsActivity, 2, Anchor::kAt, 5},
    {F::kGpsFixCount, 2, Anchor::kAfter, 0, 6},
    {F::kGpsSatellites, 2, Anchor::kAfter, 0, 6},
    {F::kGpsFix, 2, Anchor::kAfter, 0, 6},
    {F::kGpsPdop, 2, Anchor::kAfter, 0, 6},
    {F::kMode, 3, Anchor::kAt, 5},
    {F::kConductivity, 3, Anchor::kAfter, 0, 8},
    {F::kInphase, 3, Anchor::kAfter, 0, 8},
    {F::kDipoleRange, 4, Anchor::kAt, 5},
    {F::kMessage, 4, Anchor::kAfter, 0, 8, true},
};

// Narrower: the state moves down beside the line name, and the dipole and
// range text takes a whole row, from x 1, as its widest sample needs.
constexpr Placement kPortrait[] = {
    {F::kFile, 0, Anchor::kAt, 5, 0, true},
    {F::kTriggerMode, 0, Anchor::kAt, 130},
    {F::kBattery, 0, Anchor::kRight},
    {F::kState, 1, Anchor::kAt, 5},
    {F::kLineLabel, 1, Anchor::kAfter, 0, 8},
    {F::kLine, 1, Anchor::kAfter, 0, 3, true},
    {F::kStationLabel, 2, Anchor::kAt, 5},
    {F::kStation, 2, Anchor::kAfter, 0, 3},
    {F::kManualLabel, 2, Anchor::kAt, 130},
    {F::kTriggerIndicator, 2, Anchor::kAfter, 0, 1},
    {F::kCount, 2, Anchor::kAfter, 0, 4},
    {F::kGpsDisabled, 3, Anchor::kAt, 5},
    {F::kGpsActivity, 3, Anchor::kAt, 5},
    {F::kGpsFixCount, 3, Anchor::kAfter, 0, 6},
    {F::kGpsSatellites, 3, Anchor::kAfter, 0, 6},
    {F::kGpsFix, 3, Anchor::kAfter, 0, 6},
    {F::kGpsPdop, 3, Anchor::kAfter, 0, 6},
    {F::kConductivity, 4, Anchor::kAt, 5},
    {F::kInphase, 4, Anchor::kAfter, 0, 6},
    {F::kDipoleRange, 5, Anchor::kAt, 1},
    {F::kMode, 6, Anchor::kAt, 5},
    {F::kMessage, 6, Anchor::kAfter, 0, 8, true},
};
// clang-format on

constexpr std::string_view kFileSamples[] = {"File:00000000"};
constexpr std::string_view kTriggerModeSamples[] = {"Auto", "Wheel", "Manual"};
constexpr std::string_view kStateSamples[] = {"Stand By", "Monitor", "Logging"};
constexpr std::string_view kBatterySamples[] = {"100%", "AC"};
constexpr std::string_view kStationLabelSamples[] = {kStationLabel};
constexpr std::string_view kStationSamples[] = {"-1234567.89"};
constexpr std::string_view kManualLabelSamples[] = {kManualStationLabel};
constexpr std::string_view kIndicatorSamples[] = {"M"};
constexpr std::string_view kCountSamples[] = {"99"};
constexpr std::string_view kLineLabelSamples[] = {kLineLabel};
constexpr std::string_view kLineSamples[] = {"00000"};
constexpr std::string_view kGpsDisabledSamples[] = {kGpsDisabledText};
constexpr std::string_view kGpsActivitySamples[] = {"\\", "/"};
constexpr std::string_view kGpsFixCountSamples[] = {"99999"};
constexpr std::string_view kGpsSatellitesSamples[] = {"99", "??"};
constexpr std::string_view kGpsFixSamples[] = {"NO FIX", "AGPS", "DGPS", "RTK", "CODE"};
constexpr std::string_view kGpsPdopSamples[] = {"99.9", "N/A", "??"};
constexpr std::string_view kModeSamples[] = {"Mode:V", "Mode:H", "Mode:B"};
constexpr std::string_view kConductivityPortrait[] = {"C:-2000.00mS/m"};
constexpr std::string_view kConductivityLandscape[] = {"CH:-2000.00", "C:-2000.00"};
constexpr std::string_view kInphasePortrait[] = {"I:-2000.00ppt"};
constexpr std::string_view kInphaseLandscape[] = {"IH:-2000.00", "I:-2000.00"};
constexpr std::string_view kDipoleRangePortrait[] = {
    "Horizontal Dipoles  Range:1000", "Conductivity [mS/m]  Range:1000",
    "Horizontal Dipoles   Range:1000", "Vertical Dipoles   Range:1000"};
// "Horizontal  G1000" is wider than the mode-and-range sample, so both count.
constexpr std::string_view kDipoleRangeLandscape[] = {"Mode: H R:1000", "Horizontal  G1000",
                                                      "Vertical  G1000"};
constexpr std::string_view kMessageSamples[] = {"Sample 100 of 100", kPleaseWaitText};

int widest(Samples samples, const TextWidth& textWidth) {
  int width = 0;
  for (std::string_view text : samples) width = std::max(width, textWidth(text));
  return width;
}

// Stretches each filling field up to the next field on its row (keeping the
// gap) or to the end of the row; never narrower than its own texts.
void stretchFillingFields(std::span<const Placement> placements, StatusLayout& layout, int rowEnd,
                          int scale) {
  for (std::size_t i = 0; i < placements.size(); ++i) {
    if (!placements[i].fill) continue;
    FieldRect& rect = layout.fields[static_cast<std::size_t>(placements[i].field)];
    int end = rowEnd - kEndGap * scale;
    const bool nextOnRow = i + 1 < placements.size() && placements[i + 1].row == placements[i].row;
    if (nextOnRow) {
      end = layout[placements[i + 1].field].x - kEndGap * scale;
    }
    rect.width = std::max(rect.width, end - rect.x);
  }
}

}  // namespace

StatusLayout statusLayout(bool portrait, int scale, const TextWidth& textWidth, int lineHeight) {
  using Table = std::span<const Placement>;
  const Table placements = portrait ? Table(kPortrait) : Table(kLandscape);
  StatusLayout layout;
  layout.width = layoutSize(portrait).width * scale;
  const int pitch = std::max(kRowPitch * scale, lineHeight);
  const int rowEnd = layout.width - kRightMargin * scale;
  int rows = 0;
  const FieldRect* previous = nullptr;
  for (const Placement& place : placements) {
    FieldRect& rect = layout.fields[static_cast<std::size_t>(place.field)];
    rect.width = widest(fieldSamples(place.field, portrait), textWidth);
    rect.y = place.row * pitch;
    rect.height = pitch;
    switch (place.anchor) {
      case Anchor::kAt:
        rect.x = place.x * scale;
        break;
      case Anchor::kAfter:
        rect.x = (previous ? previous->x + previous->width : 0) + place.gap * scale;
        break;
      case Anchor::kRight:
        rect.x = rowEnd - kEndGap * scale - rect.width;
        break;
    }
    previous = &rect;
    rows = std::max(rows, place.row + 1);
  }
  stretchFillingFields(placements, layout, rowEnd, scale);
  for (FieldRect& rect : layout.fields) rect.width = std::min(rect.width, rowEnd - rect.x);
  layout.height = rows * pitch;
  return layout;
}

Samples fieldSamples(StatusField field, bool portrait) {
  switch (field) {
    case F::kFile:
      return kFileSamples;
    case F::kTriggerMode:
      return kTriggerModeSamples;
    case F::kState:
      return kStateSamples;
    case F::kBattery:
      return kBatterySamples;
    case F::kStationLabel:
      return kStationLabelSamples;
    case F::kStation:
      return kStationSamples;
    case F::kManualLabel:
      return kManualLabelSamples;
    case F::kTriggerIndicator:
      return kIndicatorSamples;
    case F::kCount:
      return kCountSamples;
    case F::kLineLabel:
      return kLineLabelSamples;
    case F::kLine:
      return kLineSamples;
    case F::kGpsDisabled:
      return kGpsDisabledSamples;
    case F::kGpsActivity:
      return kGpsActivitySamples;
    case F::kGpsFixCount:
      return kGpsFixCountSamples;
    case F::kGpsSatellites:
      return kGpsSatellitesSamples;
    case F::kGpsFix:
      return kGpsFixSamples;
    case F::kGpsPdop:
      return kGpsPdopSamples;
    case F::kMode:
      return kModeSamples;
    case F::kConductivity:
      return portrait ? Samples(kConductivityPortrait) : kConductivityLandscape;
    case F::kInphase:
      return portrait ? Samples(kInphasePortrait) : kInphaseLandscape;
    case F::kDipoleRange:
      return portrait ? Samples(kDipoleRangePortrait) : kDipoleRangeLandscape;
    case F::kMessage:
      return kMessageSamples;
  }
  return {};
}

bool fieldsTakeTurns(StatusField a, StatusField b) {
  const auto isGpsValue = [](StatusField f) { return f >= F::kGpsActivity && f <= F::kGpsPdop; };
  return (a == F::kGpsDisabled && isGpsValue(b)) || (b == F::kGpsDisabled && isGpsValue(a));
}

void fitProfileBetweenStatusAndButtons(Settings& settings, int screenHeight, int statusHeight) {
  settings.plotHeight =
      std::max(kMinPlotHeight, screenHeight - statusHeight - kButtonStripHeight - 2);
  recomputeScaleFactors(settings);
}

}  // namespace gc40

#pragma once
// The columns a reading is exported with, and the row each reading fills.
//   file, line, direction, station, reading, tick      where it was recorded
//   time                 UTC from the receiver where known, else local time
//   local_time           the logger's clock
//   dipole, range        as the meter reported them
//   cond_v, cond_h       conductivity in mS/m, vertical and horizontal dipole
//   inph_v, inph_h       inphase in ppt
//   latitude, longitude, altitude, fix_quality, satellites, hdop, fix_age_ms
//   no_position          why a reading has no position; empty when it has one
//   grid_x, grid_y       station and line number, when some file has no fixes
// For EMI inversion tools the value columns are named by coil geometry
// instead ("HCP1f9000h0", "HCP1f9000h0_inph", ...; the vertical dipole is
// horizontal coplanar coils, the horizontal one vertical coplanar), value
// columns that no reading fills are left out, and x, y, elevation follow.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "export/feature_table.h"
#include "survey/reading_positions.h"

namespace gc40 {

struct CoilGeometry {
  double spacingM = 1.0;
  double frequencyHz = 10000.0;
  double heightM = 0.0;  // above the ground
};

// The inversion tools' name for one coil pair: "HCP" or "VCP", then the
// spacing, "f" and the frequency, "h" and the height ("HCP3.66f9800h0.5").
std::string coilColumnName(bool horizontalCoplanar, const CoilGeometry& coils);

// Which of cond_v, cond_h, inph_v, inph_h some reading of the file holds.
std::array<bool, 4> valuesPresent(const PositionedFile& file);

struct ReadingColumnOptions {
  std::optional<CoilGeometry> inversionNames;          // name the values for EMI inversion tools
  std::array<bool, 4> values{true, true, true, true};  // cond_v, cond_h, inph_v, inph_h kept
  bool gridColumns = false;
};

class ReadingColumns {
 public:
  explicit ReadingColumns(const ReadingColumnOptions& options);

  const std::vector<FieldDef>& fields() const { return fields_; }

  // `point` is where the feature stands in the output's system, if anywhere.
  void fill(const std::string& file, const PositionedReading& reading,
            const std::optional<PointXY>& point, FeatureRow& row) const;

 private:
  ReadingColumnOptions options_;
  std::vector<FieldDef> fields_;
};

}  // namespace gc40

#include "survey/neighbour_grid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace gc40 {
namespace {

// Cells a quarter of the radius wide keep the points looked at few; a survey
// spread so wide that the cells would not fit gets coarser ones.
constexpr double kCellsPerRadius = 4.0;
constexpr double kMostCells = 4.0e6;

bool finite(Metres point) { return std::isfinite(point.east) && std::isfinite(point.north); }

}  // namespace

void NeighbourGrid::build(std::span<const Metres> points, std::span<const std::uint32_t> members,
                          double radiusM) {
  points_ = points;
  radius_ = radiusM;
  items_.clear();
  double west = std::numeric_limits<double>::infinity(), east = -west, south = west, north = -west;
  for (const std::uint32_t member : members) {
    const Metres point = points[member];
    if (!finite(point)) continue;
    west = std::min(west, point.east), east = std::max(east, point.east);
    south = std::min(south, point.north), north = std::max(north, point.north);
  }
  if (!(west <= east)) {
    columns_ = rows_ = 0;
    return;
  }
  const double width = east - west, height = north - south;
  cell_ = std::max({radiusM / kCellsPerRadius, std::sqrt(width * height / kMostCells),
                    std::max(width, height) / kMostCells, 1e-6});
  west_ = west, south_ = south;
  columns_ = static_cast<std::int64_t>(width / cell_) + 1;
  rows_ = static_cast<std::int64_t>(height / cell_) + 1;

  start_.assign(static_cast<std::size_t>(columns_ * rows_) + 1, 0);
  cellOf_.clear();
  for (const std::uint32_t member : members) {
    const Metres point = points[member];
    if (!finite(point)) continue;
    const auto column = static_cast<std::int64_t>((point.east - west_) / cell_);
    const auto row = static_cast<std::int64_t>((point.north - south_) / cell_);
    const auto cell = static_cast<std::uint32_t>(row * columns_ + column);
    cellOf_.push_back(cell);
    ++start_[cell + 1];
  }
  for (std::size_t i = 1; i < start_.size(); ++i) start_[i] += start_[i - 1];
  items_.resize(cellOf_.size());
  std::vector<std::uint32_t> next(start_.begin(), start_.end() - 1);
  std::size_t kept = 0;
  for (const std::uint32_t member : members)
    if (finite(points[member])) items_[next[cellOf_[kept++]]++] = member;
}

std::optional<std::uint32_t> NeighbourGrid::nearest(Metres at) const {
  if (columns_ == 0 || !finite(at)) return std::nullopt;
  const auto column = static_cast<std::int64_t>(std::floor((at.east - west_) / cell_));
  const auto row = static_cast<std::int64_t>(std::floor((at.north - south_) / cell_));
  const auto rings = static_cast<std::int64_t>(std::ceil(radius_ / cell_));
  double best = radius_ * radius_;
  std::optional<std::uint32_t> found;
  for (std::int64_t ring = 0; ring <= rings; ++ring) {
    for (std::int64_t r = row - ring; r <= row + ring; ++r) {
      if (r < 0 || r >= rows_) continue;
      // Inside rows only the ring's two ends; its first and last rows whole.
      const std::int64_t step =
          (r == row - ring || r == row + ring) ? 1 : std::max<std::int64_t>(2 * ring, 1);
      for (std::int64_t c = column - ring; c <= column + ring; c += step) {
        if (c < 0 || c >= columns_) continue;
        const auto cell = static_cast<std::size_t>(r * columns_ + c);
        for (std::uint32_t i = start_[cell]; i < start_[cell + 1]; ++i) {
          const Metres point = points_[items_[i]];
          const double d = (point.east - at.east) * (point.east - at.east) +
                           (point.north - at.north) * (point.north - at.north);
          if (d <= best) best = d, found = items_[i];
        }
      }
    }
    // Every point of the rings further out lies at least this far away.
    const double reach = static_cast<double>(ring) * cell_;
    if (found && best <= reach * reach) break;
  }
  return found;
}

}  // namespace gc40

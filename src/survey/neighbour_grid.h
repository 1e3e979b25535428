#pragma once
// Points of a plane bucketed into square cells, for "which point is nearest
// to here, within this radius". Built again for every lag tried, so it keeps
// its storage between builds.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "survey/fix_track.h"

namespace gc40 {

class NeighbourGrid {
 public:
  // `members` index `points`; a member whose point is not finite is left
  // out. `points` must outlive the questions.
  void build(std::span<const Metres> points, std::span<const std::uint32_t> members,
             double radiusM);

  // The member nearest to `at` no further than the radius.
  std::optional<std::uint32_t> nearest(Metres at) const;

 private:
  std::span<const Metres> points_;
  double radius_ = 0.0;
  double cell_ = 1.0;
  double west_ = 0.0;
  double south_ = 0.0;
  std::int64_t columns_ = 0;
  std::int64_t rows_ = 0;
  std::vector<std::uint32_t> start_;  // per cell, into items_; one more at the end
  std::vector<std::uint32_t> items_;
  std::vector<std::uint32_t> cellOf_;  // scratch: each kept member's cell
};

}  // namespace gc40

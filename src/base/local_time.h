#pragma once

#include <cstdint>

namespace gc40 {

// A moment of the local wall clock, as the records and file names want it.
struct LocalTime {
  int year = 0;
  int month = 0;  // 1..12
  int day = 0;    // 1..31
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
};

}  // namespace gc40

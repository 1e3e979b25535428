#pragma once
// Point features as every writer takes them, whatever the format: named and
// typed columns, then one row at a time, each with its point or none. Rows
// are streamed rather than held, so a day of readings never sits in memory
// twice.

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace gc40 {

enum class FieldType { kInteger, kReal, kText, kDateTime };

struct FieldDef {
  std::string name;
  FieldType type = FieldType::kText;
};

// A moment to the millisecond; `utc` false for the local clock, which names
// no zone.
struct DateTime {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
  bool utc = false;
};

// ISO 8601: "2026-03-15T08:00:01.500Z" in UTC, without the "Z" in local time.
std::string isoDateTime(const DateTime& time);

// monostate is an empty value; the others match kInteger, kReal, kText and
// kDateTime in that order.
using FieldValue = std::variant<std::monostate, std::int64_t, double, std::string, DateTime>;

struct PointXY {
  double x = 0.0;  // longitude or easting
  double y = 0.0;  // latitude or northing
};

struct FeatureRow {
  std::optional<PointXY> point;
  std::vector<FieldValue> values;  // one per field, in the order of the fields
};

}  // namespace gc40

#include "export/reading_columns.h"

#include <charconv>

#include "base/number_text.h"

namespace gc40 {
namespace {

// The meter's values are single precision; written as doubles they would
// read 12.300000190734863. The double nearest the float's shortest decimal
// text reads 12.3 again everywhere.
double asDecimal(float value) {
  char text[32];
  const auto printed = std::to_chars(text, text + sizeof text, value);
  double result = value;
  std::from_chars(text, printed.ptr, result);
  return result;
}

FieldValue optionalValue(const std::optional<float>& value) {
  return value ? FieldValue{asDecimal(*value)} : FieldValue{};
}

FieldValue optionalValue(const std::optional<double>& value) {
  return value ? FieldValue{*value} : FieldValue{};
}

FieldValue timeValue(const std::optional<LocalTime>& time, bool utc) {
  if (!time) return {};
  return DateTime{time->year,   time->month,  time->day,         time->hour,
                  time->minute, time->second, time->millisecond, utc};
}

// A blank letter (a line without its "A" record) is an empty value.
FieldValue letter(char c) { return c == ' ' ? FieldValue{} : FieldValue{std::string(1, c)}; }

const char* const kValueNames[4] = {"cond_v", "cond_h", "inph_v", "inph_h"};

}  // namespace

std::string coilColumnName(bool horizontalCoplanar, const CoilGeometry& coils) {
  return std::string(horizontalCoplanar ? "HCP" : "VCP") + formatRoundTrip(coils.spacingM) + "f" +
         formatRoundTrip(coils.frequencyHz) + "h" + formatRoundTrip(coils.heightM);
}

std::array<bool, 4> valuesPresent(const PositionedFile& file) {
  std::array<bool, 4> present{};
  for (const PositionedReading& reading : file.readings) {
    present[0] = present[0] || reading.verticalConductivity.has_value();
    present[1] = present[1] || reading.horizontalConductivity.has_value();
    present[2] = present[2] || reading.verticalInphase.has_value();
    present[3] = present[3] || reading.horizontalInphase.has_value();
  }
  return present;
}

ReadingColumns::ReadingColumns(const ReadingColumnOptions& options) : options_(options) {
  using enum FieldType;
  fields_ = {{"file", kText},     {"line", kText},           {"direction", kText},
             {"station", kReal},  {"reading", kInteger},     {"tick", kInteger},
             {"time", kDateTime}, {"local_time", kDateTime}, {"dipole", kText},
             {"range", kInteger}};
  for (std::size_t i = 0; i < 4; ++i) {
    if (!options_.values[i]) continue;
    std::string name = kValueNames[i];
    if (const auto& coils = options_.inversionNames) {
      // Values 0 and 2 are the vertical dipole's: horizontal coplanar coils.
      name = coilColumnName(i % 2 == 0, *coils) + (i >= 2 ? "_inph" : "");
    }
    fields_.push_back({name, kReal});
  }
  const std::vector<FieldDef> position = {{"latitude", kReal},      {"longitude", kReal},
                                          {"altitude", kReal},      {"fix_quality", kInteger},
                                          {"satellites", kInteger}, {"hdop", kReal},
                                          {"fix_age_ms", kInteger}, {"no_position", kText}};
  fields_.insert(fields_.end(), position.begin(), position.end());
  if (options_.gridColumns) fields_.insert(fields_.end(), {{"grid_x", kReal}, {"grid_y", kReal}});
  if (options_.inversionNames)
    fields_.insert(fields_.end(), {{"x", kReal}, {"y", kReal}, {"elevation", kReal}});
}

void ReadingColumns::fill(const std::string& file, const PositionedReading& reading,
                          const std::optional<PointXY>& point, FeatureRow& row) const {
  std::vector<FieldValue>& v = row.values;
  v.clear();
  row.point = point;
  v.emplace_back(file);
  v.emplace_back(reading.lineName);
  v.push_back(letter(reading.direction));
  v.emplace_back(reading.station);
  v.emplace_back(static_cast<std::int64_t>(reading.readingNumber));
  v.emplace_back(static_cast<std::int64_t>(reading.tick));
  v.push_back(reading.utc ? timeValue(reading.utc, true) : timeValue(reading.localTime, false));
  v.push_back(timeValue(reading.localTime, false));
  v.push_back(letter(reading.dipole));
  v.emplace_back(static_cast<std::int64_t>(reading.range));
  const std::optional<float>* values[4] = {&reading.verticalConductivity,
                                           &reading.horizontalConductivity,
                                           &reading.verticalInphase, &reading.horizontalInphase};
  for (std::size_t i = 0; i < 4; ++i)
    if (options_.values[i]) v.push_back(optionalValue(*values[i]));
  if (const auto& p = reading.position) {
    v.emplace_back(p->latitude);
    v.emplace_back(p->longitude);
    v.push_back(optionalValue(p->altitude));
    v.emplace_back(static_cast<std::int64_t>(p->fixQuality));
    v.emplace_back(static_cast<std::int64_t>(p->satellites));
    v.push_back(optionalValue(p->hdop));
    v.emplace_back(static_cast<std::int64_t>(p->fixAgeMs));
  } else {
    v.resize(v.size() + 7);
  }
  v.emplace_back(std::string(noPositionText(reading.noPosition)));
  if (options_.gridColumns) {
    v.push_back(optionalValue(reading.gridX));
    v.push_back(optionalValue(reading.gridY));
  }
  if (options_.inversionNames) {
    v.push_back(point ? FieldValue{point->x} : FieldValue{});
    v.push_back(point ? FieldValue{point->y} : FieldValue{});
    v.push_back(reading.position ? optionalValue(reading.position->altitude) : FieldValue{});
  }
}

}  // namespace gc40

#include "settings/setting_choices.h"

#include <algorithm>
#include <type_traits>

#include "base/number_text.h"

namespace gc40 {

std::int32_t IndexField::read(const Settings& settings) const {
  return std::visit([&](auto member) { return static_cast<std::int32_t>(settings.*member); },
                    member_);
}

void IndexField::write(Settings& settings, std::int32_t index) const {
  std::visit(
      [&](auto member) {
        using Field = std::remove_reference_t<decltype(settings.*member)>;
        settings.*member = static_cast<Field>(index);
      },
      member_);
}

std::optional<std::int32_t> validIndex(const Settings& settings, const IndexSetting& setting) {
  const std::int32_t stored = setting.field.read(settings);
  if (stored < 0 || static_cast<std::size_t>(stored) >= setting.items.size()) return std::nullopt;
  return stored;
}

std::int32_t effectiveIndex(const Settings& settings, const IndexSetting& setting) {
  return validIndex(settings, setting).value_or(setting.fallback);
}

SurveyMode effectiveSurveyMode(const Settings& settings) {
  return modeFromIndex<SurveyMode>(effectiveIndex(settings, kSurveyModeSetting));
}

std::string_view effectiveText(const Settings& settings, const IndexSetting& setting) {
  return setting.items[static_cast<std::size_t>(effectiveIndex(settings, setting))];
}

std::string comPortName(std::int32_t index) {
  return "COM" + formatInteger(std::int64_t{index} + 1) + ":";
}

std::int32_t effectiveTraceThickness(std::int32_t stored) { return std::clamp(stored, 1, 4); }

std::int32_t effectiveSamplesPerReading(std::int32_t stored) { return std::clamp(stored, 1, 100); }

}  // namespace gc40

#include "ui/combo_selection.h"

namespace gc40 {

std::int32_t selectionOf(std::int32_t index, std::size_t itemsShown) {
  if (index < 0 || static_cast<std::size_t>(index) >= itemsShown) return kNoSelection;
  return index;
}

std::int32_t selectionOf(const Settings& settings, const IndexSetting& setting,
                         std::size_t itemsShown) {
  return selectionOf(effectiveIndex(settings, setting), itemsShown);
}

std::int32_t selectionOf(const Settings& settings, const IndexSetting& setting) {
  return selectionOf(settings, setting, setting.items.size());
}

}  // namespace gc40

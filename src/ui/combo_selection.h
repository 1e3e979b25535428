#pragma once
// Which item a setup dialog's drop-down list shows selected for a stored
// index. A list selects nothing for an index it does not offer, and OK then
// reads -1, which is stored as it stands.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "settings/setting_choices.h"

namespace gc40 {

inline constexpr std::int32_t kNoSelection = -1;

inline constexpr std::array<std::string_view, choices::kComPortCount> kComPortItems = {
    "COM1:", "COM2:", "COM3:", "COM4:",  "COM5:",  "COM6:",
    "COM7:", "COM8:", "COM9:", "COM10:", "COM11:", "COM12:"};

// A port outside the list selects nothing rather than some other port. Only
// for the dialogs: these fallbacks name no item.
inline constexpr IndexSetting kInstrumentPortSetting{&Settings::instrumentPort, kComPortItems,
                                                     kNoSelection};
inline constexpr IndexSetting kGpsPortSetting{&Settings::gpsPort, kComPortItems, kNoSelection};

// `index` when it is one of the first `itemsShown` items, else kNoSelection.
std::int32_t selectionOf(std::int32_t index, std::size_t itemsShown);

// A value outside the field's whole list (a damaged file) shows the field's
// default, the value the program acts on; a valid value that this layout or
// mode does not offer (a landscape pause key in portrait) shows nothing.
std::int32_t selectionOf(const Settings& settings, const IndexSetting& setting,
                         std::size_t itemsShown);
std::int32_t selectionOf(const Settings& settings, const IndexSetting& setting);

// One drop-down list: the items it offers and the one selected.
struct ComboBox {
  std::span<const std::string_view> items;
  std::int32_t selection = kNoSelection;
};

// A dialog made of drop-down lists only, each editing one setting.
template <std::size_t N>
using ComboSettings = std::array<const IndexSetting*, N>;
template <std::size_t N>
using ComboBoxes = std::array<ComboBox, N>;

template <std::size_t N>
ComboBoxes<N> openComboBoxes(const Settings& settings, const ComboSettings<N>& fields) {
  ComboBoxes<N> boxes;
  for (std::size_t i = 0; i < N; ++i)
    boxes[i] = {fields[i]->items, selectionOf(settings, *fields[i])};
  return boxes;
}

template <std::size_t N>
void storeComboBoxes(Settings& settings, const ComboSettings<N>& fields,
                     const ComboBoxes<N>& boxes) {
  for (std::size_t i = 0; i < N; ++i) fields[i]->field.write(settings, boxes[i].selection);
}

}  // namespace gc40

#pragma once
// The core's texts on screen: 8-bit text is Windows-1252, wide text UTF-16.

#include <QString>
#include <string_view>

namespace gc40 {

QString qText(std::string_view text);
QString qText(std::u16string_view text);

}  // namespace gc40

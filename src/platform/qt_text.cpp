#include "platform/qt_text.h"

#include "base/text_codec.h"

namespace gc40 {

QString qText(std::string_view text) { return qText(windows1252ToWide(text)); }

QString qText(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace gc40

#include "export/feature_table.h"

#include "base/number_text.h"

namespace gc40 {

std::string isoDateTime(const DateTime& time) {
  std::string text = formatZeroPadded(time.year, 4) + "-" + formatZeroPadded(time.month, 2) + "-" +
                     formatZeroPadded(time.day, 2) + "T" + formatZeroPadded(time.hour, 2) + ":" +
                     formatZeroPadded(time.minute, 2) + ":" + formatZeroPadded(time.second, 2) +
                     "." + formatZeroPadded(time.millisecond, 3);
  if (time.utc) text += 'Z';
  return text;
}

}  // namespace gc40

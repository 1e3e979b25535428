#pragma once
// A logger prepared on a test's own storage root, as gc40 prepares itself.

#include <sstream>
#include <variant>

#include "app/start_up.h"
#include "support/temp_folder.h"

namespace gc40::testing {

inline LoggerContext preparedLogger(const TempFolder& folder,
                                    Orientation orientation = Orientation::kLandscape,
                                    std::optional<int> scale = std::nullopt) {
  CommandLine options;
  options.storage = folder.path();
  options.orientation = orientation;
  options.scale = scale;
  std::ostringstream warnings;
  return std::get<LoggerContext>(prepareLogger(options, nullptr, warnings));
}

}  // namespace gc40::testing

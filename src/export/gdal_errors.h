#pragma once
// GDAL reports through an error handler that prints by default; inside the
// export its messages become part of our own error texts instead.

#include <cpl_error.h>

#include <string>

namespace gc40 {

class QuietGdal {
 public:
  QuietGdal() {
    CPLPushErrorHandler(CPLQuietErrorHandler);
    CPLErrorReset();
  }
  ~QuietGdal() { CPLPopErrorHandler(); }
  QuietGdal(const QuietGdal&) = delete;
  QuietGdal& operator=(const QuietGdal&) = delete;

  static bool failed() { return CPLGetLastErrorType() >= CE_Failure; }
  // `what`, followed by GDAL's own words when it left any.
  static std::string message(const std::string& what) {
    const char* text = CPLGetLastErrorMsg();
    return text && *text ? what + ": " + text : what;
  }
};

}  // namespace gc40

#pragma once
// Geosoft-style XYZ text, which GDAL does not write for scattered points: a
// "/" line naming the columns, then a "Line NAME" line opening each survey
// line's block, then one row per point, values separated by blanks and "*"
// for a value that is missing. Blanks inside a text become "_" so the
// columns stay aligned with the header.

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/raw_file.h"
#include "export/feature_table.h"

namespace gc40 {

class XyzWriter {
 public:
  // X and Y come first, with `coordinateDecimals` decimals; then `fields`.
  // Replaces the file. False, with error(), when it cannot be created.
  bool open(const std::filesystem::path& path, const std::vector<FieldDef>& fields,
            int coordinateDecimals);
  void beginLine(std::string_view name);
  bool add(const FeatureRow& row);
  bool close();

  const std::string& error() const { return error_; }

 private:
  bool flush();

  std::filesystem::path path_;
  std::optional<RawFile> file_;
  std::string pending_;
  std::size_t fieldCount_ = 0;
  int decimals_ = 0;
  std::string error_;
};

}  // namespace gc40

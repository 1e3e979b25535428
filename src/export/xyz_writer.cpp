#include "export/xyz_writer.h"

#include <cmath>

#include "base/number_text.h"

namespace gc40 {
namespace {

constexpr std::size_t kFlushBytes = 1 << 20;

// One token per value: readers split the rows at blanks.
std::string token(std::string_view text) {
  if (text.empty()) return "*";
  std::string result(text);
  for (char& c : result)
    if (c == ' ' || c == '\t') c = '_';
  return result;
}

struct ValueText {
  std::string operator()(std::monostate) const { return "*"; }
  std::string operator()(std::int64_t value) const { return formatInteger(value); }
  std::string operator()(double value) const {
    return std::isfinite(value) ? formatRoundTrip(value) : "*";
  }
  std::string operator()(const std::string& value) const { return token(value); }
  std::string operator()(const DateTime& value) const { return isoDateTime(value); }
};

}  // namespace

bool XyzWriter::open(const std::filesystem::path& path, const std::vector<FieldDef>& fields,
                     int coordinateDecimals) {
  file_.reset();
  path_ = path;
  std::optional<RawFile> file = RawFile::create(path, &error_);
  if (!file) {
    error_ = path.string() + ": " + error_;
    return false;
  }
  file_.emplace(std::move(*file));
  fieldCount_ = fields.size();
  decimals_ = coordinateDecimals;
  pending_ = "/ X Y";
  for (const FieldDef& field : fields) pending_ += ' ' + token(field.name);
  pending_ += '\n';
  return true;
}

void XyzWriter::beginLine(std::string_view name) { pending_ += "Line " + token(name) + '\n'; }

bool XyzWriter::add(const FeatureRow& row) {
  if (row.point) {
    pending_ += formatFixed(row.point->x, decimals_) + ' ' + formatFixed(row.point->y, decimals_);
  } else {
    pending_ += "* *";
  }
  for (std::size_t i = 0; i < fieldCount_; ++i) {
    pending_ += ' ';
    pending_ += i < row.values.size() ? std::visit(ValueText{}, row.values[i]) : "*";
  }
  pending_ += '\n';
  return pending_.size() < kFlushBytes || flush();
}

bool XyzWriter::flush() {
  if (!file_) return false;
  if (!file_->write(pending_, &error_)) {
    error_ = path_.string() + ": " + error_;
    return false;
  }
  pending_.clear();
  return true;
}

bool XyzWriter::close() {
  if (!file_) return false;
  bool ok = flush();
  std::string reason;
  if (!file_->close(&reason) && ok) {
    error_ = path_.string() + ": " + reason;
    ok = false;
  }
  file_.reset();
  return ok;
}

}  // namespace gc40

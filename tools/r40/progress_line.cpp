#include "progress_line.h"

#include "base/number_text.h"

namespace gc40 {
namespace {

constexpr auto kQuietStart = std::chrono::milliseconds(300);
constexpr auto kInterval = std::chrono::milliseconds(100);

}  // namespace

ProgressLine::ProgressLine(std::ostream& out, bool enabled)
    : out_(out), enabled_(enabled), start_(std::chrono::steady_clock::now()) {}

ProgressLine::~ProgressLine() { clear(); }

void ProgressLine::show(const std::string& stage, std::size_t done, std::size_t total) {
  if (!enabled_) return;
  const auto now = std::chrono::steady_clock::now();
  if (now - start_ < kQuietStart || (shown_ && now - last_ < kInterval)) return;
  const std::size_t percent = total ? done * 100 / total : 100;
  const std::string text =
      "r40: " + stage + " " + formatInteger(static_cast<std::int64_t>(percent)) + "%";
  if (text == lastText_) return;
  out_ << '\r' << text << "\033[K" << std::flush;
  shown_ = true;
  last_ = now;
  lastText_ = text;
}

void ProgressLine::clear() {
  if (!shown_) return;
  out_ << "\r\033[K" << std::flush;
  shown_ = false;
  lastText_.clear();
}

}  // namespace gc40

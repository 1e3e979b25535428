#pragma once
// Programs without a window of their own (r40, the benchmarks) still need a
// QGuiApplication for QPainter to draw text. Without a platform chosen it
// draws offscreen; without XDG_RUNTIME_DIR Qt would leave /tmp/runtime-USER
// behind, so a private one lives as long as this does.

#include <filesystem>
#include <memory>

class QGuiApplication;

namespace gc40 {

class OffscreenGui {
 public:
  // Does nothing when the program already has its application.
  OffscreenGui();
  ~OffscreenGui();
  OffscreenGui(const OffscreenGui&) = delete;
  OffscreenGui& operator=(const OffscreenGui&) = delete;

 private:
  int argc_ = 1;
  char name_[5] = "gc40";
  char* argv_[2] = {name_, nullptr};
  std::filesystem::path runtimeFolder_;
  std::unique_ptr<QGuiApplication> app_;
};

}  // namespace gc40

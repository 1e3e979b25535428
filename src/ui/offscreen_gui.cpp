#include "ui/offscreen_gui.h"

#include <QGuiApplication>
#include <cstdlib>
#include <string>
#include <system_error>

namespace gc40 {

OffscreenGui::OffscreenGui() {
  if (QGuiApplication::instance()) return;
  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  if (!std::getenv("XDG_RUNTIME_DIR")) {
    std::string folder = (std::filesystem::temp_directory_path() / "gc40-XXXXXX").string();
    if (mkdtemp(folder.data())) {
      runtimeFolder_ = folder;
      setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
    }
  }
  app_ = std::make_unique<QGuiApplication>(argc_, argv_);
}

OffscreenGui::~OffscreenGui() {
  app_.reset();
  std::error_code ignored;
  if (!runtimeFolder_.empty()) {
    std::filesystem::remove_all(runtimeFolder_, ignored);
    unsetenv("XDG_RUNTIME_DIR");
  }
}

}  // namespace gc40

#pragma once

#include <QWidget>

#include "app/logger_setup.h"

namespace gc40 {

// The main window titled "GC40". Its title screen and menu come with the
// application shell; for now it holds the logger's context and its shape.
class MainWindow : public QWidget {
 public:
  explicit MainWindow(LoggerContext& context, QWidget* parent = nullptr);

  LoggerContext& context() { return context_; }

 private:
  void applyShape();

  LoggerContext& context_;
};

}  // namespace gc40

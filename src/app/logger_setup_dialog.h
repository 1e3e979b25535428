#pragma once
// Logger Setup: instrument type and port, units, audio and pause key.

#include <vector>

#include "app/start_up.h"
#include "ui/setup_dialog.h"

namespace gc40 {

class LoggerSetupView : public SetupDialog {
 public:
  LoggerSetupView(QWidget* owner, LoggerContext& context);

 protected:
  void onOk() override;

 private:
  LoggerContext& context_;
  std::vector<QComboBox*> combos_;  // 810, 823, 824, 825, 826
};

}  // namespace gc40

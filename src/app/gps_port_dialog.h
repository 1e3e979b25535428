#pragma once
// Set GPS Port: the GPS receiver's port and line settings, and the way into
// the Monitor GPS window.

#include <vector>

#include "app/start_up.h"
#include "ui/setup_dialog.h"

namespace gc40 {

class GpsPortView : public SetupDialog {
 public:
  GpsPortView(QWidget* owner, LoggerContext& context);

 protected:
  void onOk() override;

 private:
  void finish(bool monitor);

  LoggerContext& context_;
  std::vector<QComboBox*> combos_;  // 720..725
};

}  // namespace gc40

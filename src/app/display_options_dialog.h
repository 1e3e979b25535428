#pragma once
// Display Options: which traces the live profile draws, in what colour and
// width, and which scale its grid follows. Colour and width change the
// settings while the dialog is open; Cancel puts them back.

#include <array>

#include "app/display_options_model.h"
#include "app/start_up.h"
#include "ui/setup_dialog.h"

class QCheckBox;

namespace gc40 {

class ColourButton;

class DisplayOptionsView : public SetupDialog {
 public:
  DisplayOptionsView(QWidget* owner, LoggerContext& context);

 protected:
  void onOk() override;
  void onCancel() override;

 private:
  void addTraceRow(int trace);
  void pickColour(int trace);

  LoggerContext& context_;
  DisplayOptionsModel model_;
  std::array<QCheckBox*, kDialogTraceCount> visible_{};      // 750..753
  std::array<ColourButton*, kDialogTraceCount> colours_{};   // 758..761
  std::array<QComboBox*, kDialogTraceCount> thicknesses_{};  // 766..769
  QComboBox* grid_ = nullptr;                                // 775
};

}  // namespace gc40

#pragma once
// Survey Setup: survey mode and rate, component and dipole, line and station
// numbering. The rules behind the controls are the core dialog's
// (survey_setup_model.h); this view shows them and passes edits back.

#include "app/start_up.h"
#include "app/survey_setup_model.h"
#include "ui/setup_dialog.h"

class QLineEdit;

namespace gc40 {

class SurveySetupView : public SetupDialog {
 public:
  SurveySetupView(QWidget* owner, LoggerContext& context);

 protected:
  void onOk() override;

 private:
  void createControls();
  void showMode();
  void onIncrementEdited(const QString& text);

  LoggerContext& context_;
  SurveySetupModel model_;
  QComboBox* mode_ = nullptr;           // 620
  QLabel* rateLabel_ = nullptr;         // 601
  QLineEdit* rate_ = nullptr;           // 621
  QComboBox* component_ = nullptr;      // 622
  QComboBox* dipole_ = nullptr;         // 623
  QLineEdit* line_ = nullptr;           // 624
  QLineEdit* lineIncrement_ = nullptr;  // 625
  QComboBox* sequence_ = nullptr;       // 626
  QComboBox* direction_ = nullptr;      // 627
  QLineEdit* startStation_ = nullptr;   // 628
  QLabel* incrementLabel_ = nullptr;    // 609
  QLineEdit* increment_ = nullptr;      // 629
};

}  // namespace gc40

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "logging/line_station_dialogs.h"
#include "logging/line_station_model.h"
#include "settings/setting_choices.h"
#include "ui/setup_dialog.h"

namespace gc40 {
namespace {

// Landscape is too short for ten rows beside their labels: two columns, each
// label over its field.
constexpr int kLandscapeColumns = 2;

class NewLineView : public SetupDialog {
 public:
  NewLineView(QWidget* owner, LoggerContext& context)
      : SetupDialog(owner, QStringLiteral("New Line"), context.settings.portraitScreen == 1),
        context_(context) {
    createControls(openNewLine(context.settings));
    arrangeRows(kLandscapeColumns);
  }

 protected:
  void onOk() override {
    NewLineControls values;
    values.newLine = newLine_->text().toStdU16String();
    values.lineIncrement = lineIncrement_->text().toStdU16String();
    values.lineSequence = sequence_->currentIndex();
    values.lineDirection = direction_->currentIndex();
    values.startStation = startStation_->text().toStdU16String();
    values.stationIncrement = stationIncrement_->text().toStdU16String();
    acceptNewLine(context_.settings, values);
    saveSettings(context_, this);
    done(1);
  }

 private:
  void createControls(const NewLineControls& shown) {
    newLine_ = makeEdit(674, qText(shown.newLine));
    newLine_->setMaxLength(static_cast<int>(kSurveyLineMaxLength));
    lineIncrement_ = makeEdit(675, qText(shown.lineIncrement));
    sequence_ = makeCombo(676, {choices::kLineSequences, shown.lineSequence});
    direction_ = makeCombo(677, {choices::kLineDirections, shown.lineDirection});
    startStation_ = makeEdit(678, qText(shown.startStation));
    stationIncrement_ = makeEdit(679, qText(shown.stationIncrement));

    QLabel* currentLine = makeLabel(651, qText(shown.currentLine));
    // A long line name is cut at the edge rather than squeezing the fields.
    currentLine->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    addRow(makeLabel(650, QStringLiteral("Current Line:")), currentLine);
    addRow(makeLabel(652, QStringLiteral("Last Station:")),
           makeLabel(653, qText(shown.lastStation)));
    addRow(makeLabel(654, QStringLiteral("New Line")), newLine_);
    addRow(makeLabel(655, QStringLiteral("Line Increment")), lineIncrement_);
    addRow(makeLabel(656, QStringLiteral("Sequence")), sequence_);
    addRow(makeLabel(657, QStringLiteral("Direction")), direction_);
    addRow(makeLabel(658, QStringLiteral("Start Station")), startStation_);
    addRow(makeLabel(659, QStringLiteral("Stn Increment")), stationIncrement_);
  }

  LoggerContext& context_;
  QLineEdit* newLine_ = nullptr;           // 674
  QLineEdit* lineIncrement_ = nullptr;     // 675
  QComboBox* sequence_ = nullptr;          // 676
  QComboBox* direction_ = nullptr;         // 677
  QLineEdit* startStation_ = nullptr;      // 678
  QLineEdit* stationIncrement_ = nullptr;  // 679
};

}  // namespace

bool runNewLineDialog(QWidget* owner, LoggerContext& context) {
  return runModal<NewLineView>(owner, context) == 1;
}

}  // namespace gc40

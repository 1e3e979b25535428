#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "logging/line_station_dialogs.h"
#include "logging/line_station_model.h"
#include "logging/profile_scale_model.h"
#include "ui/setup_dialog.h"

namespace gc40 {
namespace {

// Landscape puts the two scales side by side, this far apart.
constexpr int kGapColumn = 2;
constexpr int kGroupGap = 8;

// One scale: its heading and the minimum and maximum under it.
struct ScaleGroup {
  QLabel* heading;
  QLabel* minLabel;
  QLineEdit* min;
  QLabel* maxLabel;
  QLineEdit* max;
};

class ProfileScaleView : public SetupDialog {
 public:
  ProfileScaleView(QWidget* owner, LoggerContext& context)
      : SetupDialog(owner, QStringLiteral("Enter Scale"), context.settings.portraitScreen == 1),
        context_(context) {
    const ProfileScaleControls shown = openProfileScale(context.settings);
    conductivity_ = makeGroup(830, QStringLiteral("Conductivity"), shown.conductivityMin,
                              shown.conductivityMax);
    inphase_ = makeGroup(835, QStringLiteral("Inphase"), shown.inphaseMin, shown.inphaseMax);
    if (usesLandscapeLayout(context.settings)) {
      placeSideBySide();
    } else {
      placeOneUnderTheOther();
    }
  }

 protected:
  void onOk() override {
    acceptProfileScale(
        context_.settings,
        {conductivity_.min->text().toStdU16String(), conductivity_.max->text().toStdU16String(),
         inphase_.min->text().toStdU16String(), inphase_.max->text().toStdU16String()});
    saveSettings(context_, this);
    done(1);
  }

 private:
  // Ids run heading, "Minimum:", "Maximum:", minimum edit, maximum edit.
  ScaleGroup makeGroup(int headingId, const QString& heading, const std::u16string& min,
                       const std::u16string& max) {
    return {makeLabel(headingId, heading), makeLabel(headingId + 1, QStringLiteral("Minimum:")),
            makeEdit(headingId + 3, qText(min)),
            makeLabel(headingId + 2, QStringLiteral("Maximum:")),
            makeEdit(headingId + 4, qText(max))};
  }

  // Returns the next free row.
  int placeGroup(const ScaleGroup& group, int row, int column) {
    QGridLayout* layout = grid();
    layout->addWidget(group.heading, row, column, 1, 2);
    layout->addWidget(group.minLabel, row + 1, column);
    layout->addWidget(group.min, row + 1, column + 1);
    layout->addWidget(group.maxLabel, row + 2, column);
    layout->addWidget(group.max, row + 2, column + 1);
    return row + 3;
  }

  void placeOneUnderTheOther() {
    const int row = placeGroup(inphase_, placeGroup(conductivity_, 0, 0), 0);
    addOkCancel(row, 2);
  }

  void placeSideBySide() {
    placeGroup(conductivity_, 0, 0);
    grid()->setColumnMinimumWidth(kGapColumn, kGroupGap * scale());
    const int row = placeGroup(inphase_, 0, kGapColumn + 1);
    addOkCancel(row, kGapColumn + 3);
  }

  LoggerContext& context_;
  ScaleGroup conductivity_{};  // 830..834
  ScaleGroup inphase_{};       // 835..839
};

}  // namespace

bool runProfileScaleDialog(QWidget* owner, LoggerContext& context) {
  return runModal<ProfileScaleView>(owner, context) == 1;
}

}  // namespace gc40

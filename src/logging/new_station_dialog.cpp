#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <array>
#include <span>
#include <utility>

#include "logging/line_station_dialogs.h"
#include "logging/line_station_model.h"
#include "ui/setup_dialog.h"

namespace gc40 {
namespace {

// The landscape layout sits this far from the left edge instead of centred.
constexpr int kLandscapeLeft = 35;
constexpr int kLabelColumn = 1;  // between the columns that place the block
constexpr int kColumns = 4;

class NewStationView : public SetupDialog {
 public:
  NewStationView(QWidget* owner, Settings& settings)
      : SetupDialog(owner, QStringLiteral("New Station"), settings.portraitScreen == 1),
        settings_(settings) {
    const NewStationControls shown = openNewStation(settings);
    newStation_ = makeEdit(865, qText(shown.newStation));
    const std::array<std::pair<QLabel*, QWidget*>, 3> rows = {{
        {makeLabel(860, QStringLiteral("Start Station:")),
         makeLabel(863, qText(shown.startStation))},
        {makeLabel(861, QStringLiteral("Last  Station:")),
         makeLabel(864, qText(shown.lastStation))},
        {makeLabel(862, QStringLiteral("New  Station:")), newStation_},
    }};
    placeRows(rows, usesLandscapeLayout(settings));
  }

 protected:
  void onOk() override {
    acceptNewStation(settings_, newStation_->text().toStdU16String());
    done(1);
  }

 private:
  void placeRows(std::span<const std::pair<QLabel*, QWidget*>> rows, bool landscape) {
    QGridLayout* layout = grid();
    int row = 0;
    for (const auto& [label, field] : rows) {
      layout->addWidget(label, row, kLabelColumn);
      layout->addWidget(field, row++, kLabelColumn + 1);
    }
    if (landscape) {
      layout->setColumnMinimumWidth(0, kLandscapeLeft * scale());
    } else {
      layout->setColumnStretch(0, 1);
    }
    layout->setColumnStretch(kColumns - 1, 1);
    addOkCancel(row, kColumns);
  }

  Settings& settings_;
  QLineEdit* newStation_ = nullptr;  // 865
};

}  // namespace

bool runNewStationDialog(QWidget* owner, Settings& settings) {
  return runModal<NewStationView>(owner, settings) == 1;
}

}  // namespace gc40

#include "app/display_options_dialog.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>

#include "app/colour_button.h"
#include "app/run_setup_dialogs.h"
#include "settings/setting_choices.h"
#include "ui/colour.h"

namespace gc40 {
namespace {

constexpr std::array<const char*, kDialogTraceCount> kTraceNames = {"C/V", "C/H", "I/V", "I/H"};
constexpr int kFirstCheckId = 750;
constexpr int kFirstColourId = 758;
constexpr int kFirstThicknessId = 766;
constexpr int kTraceRows = 1;  // grid row of the first trace, under the headings
constexpr int kColumns = 3;

}  // namespace

DisplayOptionsView::DisplayOptionsView(QWidget* owner, LoggerContext& context)
    : SetupDialog(owner, QStringLiteral("Display Options"), context.settings.portraitScreen == 1),
      context_(context),
      model_(openDisplayOptions(context.settings)) {
  QGridLayout* layout = grid();
  layout->addWidget(makeLabel(744, QStringLiteral("Display")), 0, 0);
  layout->addWidget(makeLabel(745, QStringLiteral("Color")), 0, 1);
  layout->addWidget(makeLabel(746, QStringLiteral("Thickness")), 0, 2);
  for (int trace = 0; trace < kDialogTraceCount; ++trace) addTraceRow(trace);
  layout->setColumnStretch(1, 1);  // the colour buttons take the spare width
  int row = kTraceRows + kDialogTraceCount;
  layout->addWidget(makeLabel(740, QStringLiteral("Grey Grid Lines can be displayed ")), row++, 0,
                    1, kColumns);
  layout->addWidget(makeLabel(741, QStringLiteral("for Conductivity or Inphase scale")), row++, 0,
                    1, kColumns);
  grid_ = makeCombo(775, {choices::kGridScales, model_.controls.gridScale});
  layout->addWidget(makeLabel(748, QStringLiteral("Display Grid for:")), row, 0, 1, 2);
  // Portrait is too narrow for the list beside its label.
  if (portrait())
    layout->addWidget(grid_, ++row, 1, 1, 2);
  else
    layout->addWidget(grid_, row, 2);
  ++row;
  addOkCancel(row, kColumns);
}

void DisplayOptionsView::addTraceRow(int trace) {
  const auto i = static_cast<std::size_t>(trace);
  const int row = kTraceRows + trace;
  visible_[i] = new QCheckBox(QString::fromLatin1(kTraceNames[i]), this);
  visible_[i]->setObjectName(QString::number(kFirstCheckId + trace));
  visible_[i]->setChecked(model_.controls.traceVisible[i]);
  colours_[i] = new ColourButton(context_.settings, trace, scale(), this);
  colours_[i]->setObjectName(QString::number(kFirstColourId + trace));
  colours_[i]->setAutoDefault(false);
  thicknesses_[i] = makeCombo(kFirstThicknessId + trace,
                              {choices::kTraceThicknesses, model_.controls.thickness[i]});
  grid()->addWidget(visible_[i], row, 0);
  grid()->addWidget(colours_[i], row, 1);
  grid()->addWidget(thicknesses_[i], row, 2);
  connect(colours_[i], &QPushButton::clicked, this, [this, trace] { pickColour(trace); });
  connect(thicknesses_[i], &QComboBox::currentIndexChanged, this, [this, trace](int selection) {
    selectTraceThickness(context_.settings, trace, selection);
    colours_[static_cast<std::size_t>(trace)]->update();
  });
}

// The picker starts at black every time; cancelling it leaves black.
void DisplayOptionsView::pickColour(int trace) {
  QColorDialog picker(Qt::black, this);
  picker.setOption(QColorDialog::DontUseNativeDialog);
  std::optional<Colorref> picked;
  if (picker.exec() == QDialog::Accepted) picked = colorref(picker.selectedColor());
  storePickedColour(context_.settings, trace, picked);
  colours_[static_cast<std::size_t>(trace)]->update();
}

void DisplayOptionsView::onOk() {
  DisplayOptionsControls controls = model_.controls;
  for (std::size_t i = 0; i < visible_.size(); ++i)
    controls.traceVisible[i] = visible_[i]->isChecked();
  controls.gridScale = grid_->currentIndex();
  context_.profileTraces = acceptDisplayOptions(context_.settings, controls);
  saveSettings(context_, this);
  done(0);
}

void DisplayOptionsView::onCancel() { cancelDisplayOptions(context_.settings, model_.backup); }

int runDisplayOptions(QWidget* owner, LoggerContext& context) {
  return runModal<DisplayOptionsView>(owner, context);
}

}  // namespace gc40

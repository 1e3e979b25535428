#include "app/survey_setup_dialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "app/run_setup_dialogs.h"
#include "settings/setting_choices.h"

namespace gc40 {

SurveySetupView::SurveySetupView(QWidget* owner, LoggerContext& context)
    : SetupDialog(owner, QStringLiteral("Survey Setup"), context.settings.portraitScreen == 1),
      context_(context),
      model_(openSurveySetup(context.settings)) {
  createControls();
  arrangeRows(3);
  connect(mode_, &QComboBox::currentIndexChanged, this, [this](int mode) {
    changeSurveyMode(model_, context_.settings, mode);
    showMode();
  });
  connect(rate_, &QLineEdit::textChanged, this,
          [this](const QString& text) { editRateOrSamples(model_, text.toStdU16String()); });
  connect(increment_, &QLineEdit::textChanged, this, &SurveySetupView::onIncrementEdited);
}

void SurveySetupView::createControls() {
  const SurveySetupControls& controls = model_.controls;
  const SurveySetupEntry& values = controls.values;
  // The landscape layout is short of width, so its longer labels are cut down.
  const bool full = portrait();
  mode_ = makeCombo(620, {choices::kSurveyModes, values.mode});
  rateLabel_ = makeLabel(601, qText(controls.rateLabel));
  rate_ = makeEdit(621, qText(values.rateOrSamples));
  rate_->setReadOnly(controls.rateReadOnly);
  component_ = makeCombo(622, {choices::kComponents, values.component});
  dipole_ = makeCombo(623, {controls.dipoleItems, values.dipoleMode});
  line_ = makeEdit(624, qText(values.line));
  line_->setMaxLength(static_cast<int>(kSurveySetupLineMaxLength));
  lineIncrement_ = makeEdit(625, qText(values.lineIncrement));
  sequence_ = makeCombo(626, {choices::kLineSequences, values.lineSequence});
  direction_ = makeCombo(627, {choices::kLineDirections, values.lineDirection});
  startStation_ = makeEdit(628, qText(values.startStation));
  incrementLabel_ =
      makeLabel(609, full ? QStringLiteral("Stn Increment") : QStringLiteral("Stn Incr."));
  increment_ = makeEdit(629, qText(values.stationIncrement));

  addRow(makeLabel(600, QStringLiteral("GC40 Mode")), mode_);
  addRow(rateLabel_, rate_);
  addRow(makeLabel(602, QStringLiteral("Component")), component_);
  addRow(makeLabel(603, QStringLiteral("Dipole Mode")), dipole_);
  addRow(makeLabel(604, QStringLiteral("Survey Line")), line_);
  addRow(makeLabel(605, full ? QStringLiteral("Line Increment") : QStringLiteral("Line Incr.")),
         lineIncrement_);
  addRow(makeLabel(606, QStringLiteral("Sequence")), sequence_);
  addRow(makeLabel(607, QStringLiteral("Direction")), direction_);
  addRow(makeLabel(608, full ? QStringLiteral("Start Station") : QStringLiteral("Start Stn.")),
         startStation_);
  addRow(incrementLabel_, increment_);
}

// What a mode change rewrites: labels, edit 621, the dipole list and 629.
void SurveySetupView::showMode() {
  const SurveySetupControls& controls = model_.controls;
  rateLabel_->setText(qText(controls.rateLabel));
  rate_->setReadOnly(controls.rateReadOnly);
  rate_->setText(qText(controls.values.rateOrSamples));
  if (controls.incrementLabel) incrementLabel_->setText(qText(*controls.incrementLabel));
  fillCombo(dipole_, {controls.dipoleItems, controls.values.dipoleMode});
  increment_->setText(qText(controls.values.stationIncrement));
}

void SurveySetupView::onIncrementEdited(const QString& text) {
  editStationIncrement(model_, text.toStdU16String());
  // An increment of 0 comes back as "1.000"; setting it raises this again.
  const QString shown = qText(model_.controls.values.stationIncrement);
  if (shown != text) increment_->setText(shown);
}

void SurveySetupView::onOk() {
  SurveySetupEntry values;
  values.mode = mode_->currentIndex();
  values.rateOrSamples = rate_->text().toStdU16String();
  values.component = component_->currentIndex();
  values.dipoleMode = dipole_->currentIndex();
  values.line = line_->text().toStdU16String();
  values.lineIncrement = lineIncrement_->text().toStdU16String();
  values.lineSequence = sequence_->currentIndex();
  values.lineDirection = direction_->currentIndex();
  values.startStation = startStation_->text().toStdU16String();
  values.stationIncrement = increment_->text().toStdU16String();
  acceptSurveySetup(context_.settings, values);
  saveSettings(context_, this);
  done(0);
}

int runSurveySetup(QWidget* owner, LoggerContext& context) {
  return runModal<SurveySetupView>(owner, context);
}

}  // namespace gc40

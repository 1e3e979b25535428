#include "logging/status_panel.h"

#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>
#include <QRegion>

#include "logging/status_texts.h"
#include "platform/battery.h"
#include "platform/qt_text.h"

namespace gc40 {
namespace {

constexpr int kFontPixels = 14;

QRect toQRect(const FieldRect& r) { return QRect(r.x, r.y, r.width, r.height); }

QFont panelFont(QFont font, int scale) {
  font.setPixelSize(kFontPixels * scale);
  return font;
}

}  // namespace

StatusPanel::BatterySource StatusPanel::machineBattery() {
  return [] { return platform::batteryPercent(); };
}

StatusPanel::StatusPanel(bool portrait, int scale, BatterySource battery, QWidget* parent)
    : QWidget(parent),
      portrait_(portrait),
      battery_(std::move(battery)),
      fieldText_(panelFont(font(), scale)) {
  setFont(panelFont(font(), scale));
  const QFontMetrics metrics(font());
  const auto textWidth = [&metrics](std::string_view text) {
    return metrics.horizontalAdvance(qText(text));
  };
  layout_ = statusLayout(portrait, scale, textWidth, metrics.height());
  setFixedSize(layout_.width, layout_.height);
  // paintEvent fills what it repaints, so the window's background need not be drawn first.
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void StatusPanel::showStatus(const Settings& settings, LoggingState loggingState,
                             const QString& fileBaseName, std::uint32_t tick) {
  using F = StatusField;
  showFileName(fileBaseName);
  showState(loggingState);
  const bool manual = settings.surveyMode == SurveyMode::kManual;
  setText(F::kTriggerMode, qText(triggerModeText(settings.surveyMode)));
  setText(F::kManualLabel, manual ? qText(kManualStationLabel) : QString());
  setText(F::kCount, manual ? qText(countText(0)) : QString());
  setText(F::kStationLabel, qText(kStationLabel));
  showStation(settings.currentStation);
  setText(F::kLineLabel, qText(kLineLabel));
  showLine(QString::fromStdU16String(settings.surveyLine));
  // While this text stands, the GPS values under it are not drawn.
  setText(F::kGpsDisabled, settings.gpsEnabled == 1 ? QString() : qText(kGpsDisabledText));
  drawBattery(tick);
}

void StatusPanel::showState(LoggingState loggingState) {
  setText(StatusField::kState, qText(stateText(loggingState)));
}

void StatusPanel::showFileName(const QString& baseName) {
  const QString shown = baseName.isEmpty()
                            ? QString()
                            : QString::fromStdU16String(fileText(baseName.toStdU16String()));
  setText(StatusField::kFile, shown);
}

void StatusPanel::showStation(double station) {
  setText(StatusField::kStation, qText(stationText(station)));
}

void StatusPanel::showLine(const QString& surveyLine) { setText(StatusField::kLine, surveyLine); }

void StatusPanel::showMessage(const QString& text) { setText(StatusField::kMessage, text); }

void StatusPanel::showReading(const DecodedReading& reading, const Settings& settings) {
  using F = StatusField;
  setTextLater(F::kMode, qText(dipoleModeText(settings.dipoleMode)));
  setTextLater(F::kConductivity, qText(conductivityText(reading, settings.component, portrait_)));
  setTextLater(F::kInphase, qText(inphaseText(reading, portrait_)));
  setTextLater(F::kDipoleRange, qText(dipoleRangeText(reading, portrait_)));
}

void StatusPanel::refreshBattery(std::uint32_t tick) {
  if (batteryRefreshDue(tick, batteryTick_)) drawBattery(tick);
}

void StatusPanel::drawBattery(std::uint32_t tick) {
  setText(StatusField::kBattery, qText(batteryText(battery_())));
  batteryTick_ = tick;
}

void StatusPanel::setText(StatusField field, const QString& text) {
  if (keepText(field, text)) update(fieldRect(field));
}

void StatusPanel::setTextLater(StatusField field, const QString& text) {
  if (keepText(field, text)) pending_.set(static_cast<std::size_t>(field));
}

void StatusPanel::showPending() {
  if (pending_.none()) return;
  QRegion changed;
  for (int i = 0; i < kStatusFieldCount; ++i)
    if (pending_.test(std::size_t(i))) changed += fieldRect(static_cast<StatusField>(i));
  repaint(changed);
  pending_.reset();
}

// False when the field already shows `text`.
bool StatusPanel::keepText(StatusField field, const QString& text) {
  QString& kept = texts_[static_cast<std::size_t>(field)];
  if (kept == text) return false;
  kept = text;
  return true;
}

QString StatusPanel::text(StatusField field) const {
  return texts_[static_cast<std::size_t>(field)];
}

QRect StatusPanel::fieldRect(StatusField field) const { return toQRect(layout_[field]); }

void StatusPanel::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.fillRect(event->rect(), Qt::white);
  painter.setPen(Qt::black);
  const bool gpsDisabled = !text(StatusField::kGpsDisabled).isEmpty();
  for (int i = 0; i < kStatusFieldCount; ++i) {
    const auto field = static_cast<StatusField>(i);
    const QRect rect = fieldRect(field);
    const QString& shown = texts_[static_cast<std::size_t>(i)];
    // The region, not its bounding box: a reading and a GPS mark changed
    // together must not lay out every text between them again.
    if (shown.isEmpty() || !event->region().intersects(rect)) continue;
    if (gpsDisabled && fieldsTakeTurns(field, StatusField::kGpsDisabled)) continue;
    // A text wider than its field (a huge value, a long line name) is cut at
    // the field's edge rather than drawn over its neighbour.
    painter.setClipRect(rect);
    fieldText_.draw(painter, rect, shown);
  }
}

}  // namespace gc40

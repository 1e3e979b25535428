#include "gps/gps_line_list.h"

#include <QScrollBar>
#include <QTextOption>

namespace gc40 {
namespace {

// Often enough to look live, seldom enough that a burst is one layout and one repaint.
constexpr int kAppendEveryMs = 50;

// A carriage return inside a line would start a block of its own and split
// the line in two; it shows as the replacement character instead.
QString oneBlock(QString line) {
  return line.replace(QLatin1Char('\r'), QChar::ReplacementCharacter);
}

}  // namespace

GpsLineList::GpsLineList(QWidget* parent) : QPlainTextEdit(parent) {
  setReadOnly(true);
  setUndoRedoEnabled(false);  // appended text would otherwise pile up in the undo stack
  setMaximumBlockCount(kMaxLines);
  setLineWrapMode(QPlainTextEdit::WidgetWidth);
  setWordWrapMode(QTextOption::WrapAnywhere);  // NMEA fields hold no spaces to break at
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // a constant width to wrap to
  setFocusPolicy(Qt::NoFocus);
  appendTimer_.setSingleShot(true);
  appendTimer_.setInterval(kAppendEveryMs);
  connect(&appendTimer_, &QTimer::timeout, this, &GpsLineList::appendQueued);
  // The last lines are laid out after the append and may add wrapped rows
  // then: the end stays in view whenever the range grows.
  connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &GpsLineList::showEnd);
}

void GpsLineList::showEnd() { verticalScrollBar()->setValue(verticalScrollBar()->maximum()); }

void GpsLineList::addLine(const QString& line) {
  queued_ << oneBlock(line);
  if (!appendTimer_.isActive()) appendTimer_.start();
}

void GpsLineList::appendQueued() {
  QString text = queued_.join(QLatin1Char('\n'));
  // A lone blank line leaves the document empty, and the next text would fill its block.
  if (listedAny_ && document()->isEmpty()) text.prepend(QLatin1Char('\n'));
  appendPlainText(text);
  listedAny_ = true;
  queued_.clear();
  showEnd();
}

}  // namespace gc40

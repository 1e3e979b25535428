#pragma once
// The Monitor GPS screen's list of received lines. A sentence is far wider
// than a field screen, so each line wraps to the list's width instead
// of running off its edge: the operator checking a cable sees all of it.
// A receiver can send hundreds of lines a second for hours, so the list keeps
// only the newest ones and adds them in batches: each line costs the same
// however long the screen has been open, and none is skipped.

#include <QPlainTextEdit>
#include <QStringList>
#include <QTimer>

namespace gc40 {

class GpsLineList : public QPlainTextEdit {
 public:
  static constexpr int kMaxLines = 1000;

  explicit GpsLineList(QWidget* parent);

  // Queues `line`; within a moment it is at the end of the list and in view.
  void addLine(const QString& line);

 private:
  void appendQueued();
  void showEnd();

  QStringList queued_;
  bool listedAny_ = false;
  QTimer appendTimer_;
};

}  // namespace gc40

#pragma once
// The Monitor GPS screen's list of received lines. A sentence is far wider
// than a field screen, so each line wraps to the list's width instead
// of running off its edge: the operator checking a cable sees all of it.

#include <QListWidget>

namespace gc40 {

class GpsLineList : public QListWidget {
 public:
  explicit GpsLineList(QWidget* parent);

  // Appends `line` and scrolls so that it is in view.
  void addLine(const QString& line);
};

}  // namespace gc40

#pragma once
// Scripted runs of the whole program (--control): key presses, typed text and
// button clicks come in on standard input, one command a line, and each time
// the window in front changes its title goes out on standard output. The
// whole-program tests drive gc40 through this, exactly as an operator's keys
// would.
//
//   key L | key l | key Return | key Escape | key Tab | key Space | key Left ...
//   text LINE7          typed into the widget that has the focus
//   click 460 | click Yes   the visible button in the window in front with that
//                           id, or with that text (without its '&')
//   mute recorded       report() lines that start with that word are left out
//                       (a benchmark of the field's cost has no use for them)
//
// Out: "front TITLE" whenever the window in front (a dialog or message box, or
// else the main window) changes, with " / SCREEN" added when the keys go to
// one of the main window's screens ("front GC40 / LoggingWnd"); whatever
// else the program reports through report(), such as "recorded 12.5" for each
// reading written to a data file, with the station it was recorded at.

#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QStringList>
#include <QTimer>

namespace gc40 {

class RemoteControl : public QObject {
  Q_OBJECT
 public:
  explicit RemoteControl(QObject* parent = nullptr);

  // One line on standard output, unless its first word is muted.
  void report(const QString& line);
  // Whether lines that start with `word` are muted, so that a report made
  // for every reading need not even be put together.
  bool muted(const QString& word) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void readCommands();
  void runCommand(const QString& line);
  void reportFront();

  QSocketNotifier input_;
  QTimer frontWatch_;
  QString buffered_;
  QString lastFront_;
  QStringList muted_;
  bool reportedOnce_ = false;
};

}  // namespace gc40

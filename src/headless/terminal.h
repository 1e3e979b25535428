#pragma once
// The terminal the headless logger runs in. Standard input is read key by
// key (raw, without echo, on a terminal, whose modes are put back on the way
// out); standard output carries the status line, rewritten in place on a
// terminal, and standard error the events and warnings.

#include <termios.h>

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <memory>
#include <optional>
#include <string_view>

namespace gc40 {

class Terminal : public QObject {
  Q_OBJECT
 public:
  explicit Terminal(QObject* parent = nullptr);
  ~Terminal() override;

  // Standard input is a terminal this program reads keys from.
  bool interactive() const { return savedModes_.has_value(); }
  // Standard output is a terminal: the status line is rewritten in place.
  bool statusInPlace() const { return statusInPlace_; }

  // The status line: in place on a terminal (cut to its width), else a line.
  void showStatus(std::string_view line);
  // A line of its own on standard error, the status line cleared first.
  void showEvent(std::string_view line);
  void bell();

 signals:
  // Bytes typed or piped in. Nothing more comes after the end of the input.
  void bytesRead(const QByteArray& bytes);

 private:
  void readInput();
  void clearStatus();

  std::optional<termios> savedModes_;
  bool statusInPlace_ = false;
  bool statusShown_ = false;  // a status line stands on the terminal without its line end
  std::unique_ptr<QSocketNotifier> input_;
};

}  // namespace gc40

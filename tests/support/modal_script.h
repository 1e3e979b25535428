#pragma once
// Drives modal dialogs and message boxes from a test: each step is offered
// the active modal widget until it takes it (returns true), then the next step
// waits for the next one. A watchdog rejects whatever is left open so a
// failing test ends instead of hanging in exec().

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <vector>

namespace gc40::testing {

class ModalScript {
 public:
  using Step = std::function<bool(QWidget* modal)>;

  explicit ModalScript(std::vector<Step> steps, int timeoutMs = 15000)
      : steps_(std::move(steps)), timeoutMs_(timeoutMs) {
    QObject::connect(&timer_, &QTimer::timeout, [this] { poll(); });
    timer_.start(20);
    clock_.start();
  }

  bool finished() const { return next_ == steps_.size(); }
  bool timedOut() const { return timedOut_; }

 private:
  void poll() {
    QWidget* modal = QApplication::activeModalWidget();
    if (clock_.elapsed() > timeoutMs_) {
      timedOut_ = true;
      if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->reject();
      return;
    }
    if (modal && !finished() && modal != taken_ && steps_[next_](modal)) {
      taken_ = modal;
      ++next_;
    }
  }

  std::vector<Step> steps_;
  std::size_t next_ = 0;
  QPointer<QWidget> taken_;  // the widget the last step acted on, while it lives
  int timeoutMs_;
  bool timedOut_ = false;
  QTimer timer_;
  QElapsedTimer clock_;
};

// A step that reads a message box and presses its button.
inline ModalScript::Step acknowledgeMessageBox(QString* caption, QString* text) {
  return [=](QWidget* modal) {
    auto* box = qobject_cast<QMessageBox*>(modal);
    if (!box) return false;
    *caption = box->windowTitle();
    *text = box->text();
    box->accept();
    return true;
  };
}

// A step that types `name` into a file dialog (the name only: a path would
// make it navigate) and accepts it, or cancels when `name` is empty; `check`
// first sees the dialog and the name it offered.
inline ModalScript::Step fileDialogStep(
    const QString& name, std::function<void(QFileDialog*, const QString& offered)> check = {}) {
  return [=](QWidget* modal) {
    auto* dialog = qobject_cast<QFileDialog*>(modal);
    auto* edit = dialog ? dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")) : nullptr;
    if (!edit) return false;
    if (check) check(dialog, edit->text());
    if (name.isEmpty()) return dialog->reject(), true;
    edit->setText(name);
    QTest::keyClick(edit, Qt::Key_Return);
    return true;
  };
}

}  // namespace gc40::testing

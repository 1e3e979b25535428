#include "ui/background_task.h"

#include <QEventLoop>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <memory>

namespace gc40 {
namespace {

constexpr int kSteps = 1000;
constexpr int kPollMs = 30;

}  // namespace

void TaskProgress::report(int permille, const std::string& stage) {
  permille_ = permille;
  if (stage.empty()) return;
  const std::lock_guard lock(mutex_);
  stage_ = stage;
}

std::string TaskProgress::stage() const {
  const std::lock_guard lock(mutex_);
  return stage_;
}

bool runInBackground(QWidget* parent, const TaskLook& look,
                     const std::function<void(TaskProgress&)>& work) {
  TaskProgress progress;
  QProgressDialog dialog(look.text, QStringLiteral("Cancel"), 0, look.measured ? kSteps : 0,
                         parent);
  dialog.setWindowTitle(look.title);
  dialog.setWindowModality(Qt::WindowModal);
  dialog.setMinimumDuration(look.showAfterMs);
  dialog.setAutoReset(false);
  dialog.setAutoClose(false);
  // Cancel asks the work to stop, and the dialog stays up until it has: the
  // window under it must not take another command meanwhile.
  QObject::disconnect(&dialog, &QProgressDialog::canceled, &dialog, &QProgressDialog::cancel);
  const auto stop = [&] {
    if (progress.cancelled()) return;
    progress.cancel();
    dialog.setLabelText(QStringLiteral("Stopping..."));
    if (auto* button = dialog.findChild<QPushButton*>()) button->setEnabled(false);
    dialog.show();
  };
  QObject::connect(&dialog, &QProgressDialog::canceled, stop);
  QObject::connect(&dialog, &QDialog::rejected, stop);  // Escape

  std::unique_ptr<QThread> worker(QThread::create([&] { work(progress); }));
  QEventLoop loop;
  QObject::connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit);
  std::string shownStage;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    if (dialog.wasCanceled()) stop();  // cancel() called on the dialog itself
    if (look.measured) dialog.setValue(progress.permille());
    const std::string stage = progress.stage();
    if (progress.cancelled() || stage.empty() || stage == shownStage) return;
    shownStage = stage;
    dialog.setLabelText(QString::fromStdString(stage));
  });
  QTimer::singleShot(look.showAfterMs, &dialog, [&] {
    if (!worker->isFinished()) dialog.show();
  });
  worker->start();
  poll.start(kPollMs);
  loop.exec();
  worker->wait();
  return !progress.cancelled();
}

}  // namespace gc40

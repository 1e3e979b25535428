#include "viewer/survey_file_loader.h"

#include <QEventLoop>
#include <QFile>
#include <QProgressDialog>
#include <QThread>
#include <QTimer>
#include <atomic>
#include <memory>
#include <optional>

#include "platform/qt_text.h"

namespace gc40 {
namespace {

constexpr int kProgressSteps = 1000;  // the first half reads, the second splits
constexpr int kPollMs = 30;

// The work done on the worker thread; the UI reads `progress` and sets `cancel`.
struct LoadJob {
  std::filesystem::path path;
  std::atomic<int> progress{0};
  std::atomic<bool> cancel{false};
  std::optional<LoadResult> result;

  bool report(std::size_t done, std::size_t total, int from) {
    const int half = kProgressSteps / 2;
    if (total > 0) progress = from + static_cast<int>(done * half / total);
    return !cancel;
  }

  void run() {
    QFile file(QString::fromStdString(path.string()));
    if (!file.open(QIODevice::ReadOnly)) {
      result = LoadFailure{
          QStringLiteral("Cannot read %1: %2").arg(file.fileName(), file.errorString())};
      return;
    }
    const QByteArray bytes = file.readAll();
    const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    const auto contents = readDataFile(
        view, [this](std::size_t done, std::size_t total) { return report(done, total, 0); });
    if (!contents) return;
    auto split = splitSurveyLines(*contents, [this](std::size_t done, std::size_t total) {
      return report(done, total, kProgressSteps / 2);
    });
    if (split) result = std::move(*split);
  }
};

}  // namespace

LoadResult loadSurveyFile(const std::filesystem::path& path, QWidget* parent,
                          int showProgressAfterMs) {
  LoadJob job;
  job.path = path;
  QProgressDialog progress(QStringLiteral("Reading %1").arg(qText(path.filename().string())),
                           QStringLiteral("Cancel"), 0, kProgressSteps, parent);
  progress.setWindowTitle(QStringLiteral("View Files"));
  progress.setWindowModality(Qt::WindowModal);
  progress.setMinimumDuration(showProgressAfterMs);
  progress.setAutoReset(false);
  QObject::connect(&progress, &QProgressDialog::canceled, [&job] { job.cancel = true; });

  std::unique_ptr<QThread> worker(QThread::create([&job] { job.run(); }));
  QEventLoop loop;
  QObject::connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit);
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    if (progress.wasCanceled()) job.cancel = true;
    progress.setValue(job.progress);
  });
  QTimer::singleShot(showProgressAfterMs, &progress, [&] {
    if (!worker->isFinished()) progress.show();
  });
  worker->start();
  poll.start(kPollMs);
  loop.exec();
  worker->wait();
  if (job.cancel || !job.result) return LoadCancelled{};
  return std::move(*job.result);
}

}  // namespace gc40

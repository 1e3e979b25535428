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

// The reading takes the first part, the split the second; placing the
// readings, the last, tells no progress of its own.
constexpr int kProgressSteps = 1000;
constexpr int kSplitFrom = 450;
constexpr int kPlaceFrom = 900;
constexpr int kPollMs = 30;

// The work done on the worker thread; the UI reads `progress` and sets `cancel`.
struct LoadJob {
  std::filesystem::path path;
  PositionOptions positions;
  std::atomic<int> progress{0};
  std::atomic<bool> cancel{false};
  std::optional<LoadResult> result;

  bool report(std::size_t done, std::size_t total, int from, int to) {
    if (total > 0)
      progress = from + static_cast<int>(done * static_cast<std::size_t>(to - from) / total);
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
    const auto contents = readDataFile(view, [this](std::size_t done, std::size_t total) {
      return report(done, total, 0, kSplitFrom);
    });
    if (!contents) return;
    auto split = splitSurveyLines(*contents, [this](std::size_t done, std::size_t total) {
      return report(done, total, kSplitFrom, kPlaceFrom);
    });
    if (!split || cancel) return;
    progress = kPlaceFrom;
    MapReadings map = mapReadings(positionReadings(*contents, *split, positions), *split);
    result = ViewedFile{std::move(*split), std::move(map)};
  }
};

}  // namespace

LoadResult loadSurveyFile(const std::filesystem::path& path, const PositionOptions& positions,
                          QWidget* parent, int showProgressAfterMs) {
  LoadJob job;
  job.path = path;
  job.positions = positions;
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

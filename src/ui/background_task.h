#pragma once
// Long work (estimating the lag, writing an export) on a thread of its own,
// so the window keeps drawing; a progress dialog with Cancel shows when it
// takes longer than half a second. The work looks at cancelled() where it
// can stop; until it does, the dialog says it is stopping.

#include <QString>
#include <atomic>
#include <functional>
#include <mutex>
#include <string>

class QWidget;

namespace gc40 {

inline constexpr int kShowTaskProgressAfterMs = 500;

class TaskProgress {
 public:
  // From the work's thread: `permille` of the whole done, under `stage`
  // ("Writing SURVEY.gpkg"); an empty stage keeps the last one.
  void report(int permille, const std::string& stage = {});
  bool cancelled() const { return cancel_; }
  // For work that takes a flag to stop by.
  const std::atomic<bool>* cancelFlag() const { return &cancel_; }

  // From the dialog's side.
  void cancel() { cancel_ = true; }
  int permille() const { return permille_; }
  std::string stage() const;

 private:
  std::atomic<int> permille_{0};
  std::atomic<bool> cancel_{false};
  mutable std::mutex mutex_;
  std::string stage_;
};

struct TaskLook {
  QString title;
  QString text;          // until the work names its first stage
  bool measured = true;  // false: a busy bar, for work that cannot tell how far it is
  int showAfterMs = kShowTaskProgressAfterMs;
};

// Runs `work` and returns once it has ended; false when the operator
// cancelled it.
bool runInBackground(QWidget* parent, const TaskLook& look,
                     const std::function<void(TaskProgress&)>& work);

}  // namespace gc40

#pragma once
// The Qt application object a test needs for events, timers and widgets.

#include <QCoreApplication>

namespace gc40::testing {

template <typename Application = QCoreApplication>
class TestApplication {
 public:
  Application& get() { return application_; }

 private:
  int argc_ = 1;
  char name_[8] = "gc40";
  char* argv_[2] = {name_, nullptr};
  Application application_{argc_, argv_};
};

}  // namespace gc40::testing

#include "app/profile_setup.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace gc40 {
namespace {

std::string tracesOn(const Settings& settings) {
  const ProfileTraces traces = setupProfileTraces(settings);
  EXPECT_EQ(traces.readingsPerStation, 1);
  std::string on;
  for (std::int32_t flag : traces.traceOn) on += static_cast<char>('0' + flag);
  return on;
}

// Flags of C/V, C/H, I/V, I/H and the four unused slots, with every trace
// visible. Wheel draws as Auto; Manual draws conductivity only.
TEST(ProfileSetup, TracesFollowModeComponentAndDipole) {
  using Case = std::tuple<int, int, const char*, const char*>;
  for (const auto& [component, dipole, timed, manual] :
       {Case{0, 0, "10100000", "10000000"}, Case{0, 1, "01010000", "01000000"},
        Case{0, 2, "00000000", "11000000"}, Case{1, 0, "00100000", "00000000"},
        Case{1, 1, "00010000", "00000000"}, Case{1, 2, "00000000", "00000000"}}) {
    for (int mode : {0, 1, 2}) {
      Settings settings;
      settings.surveyMode = mode;
      settings.component = component;
      settings.dipoleMode = dipole;
      EXPECT_EQ(tracesOn(settings), mode == 2 ? manual : timed) << mode << component << dipole;
    }
  }
}

}  // namespace
}  // namespace gc40

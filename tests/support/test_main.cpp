// Every test program runs without a display and with the project's own test
// locale, whether ctest starts it or a developer does.

#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  setenv("XDG_RUNTIME_DIR", GC40_TEST_RUNTIME_DIR, 0);
  setenv("LOCPATH", GC40_TEST_LOCALES, 0);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

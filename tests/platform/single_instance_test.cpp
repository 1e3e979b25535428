#include "platform/single_instance.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

#include "support/temp_folder.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

TEST(SingleInstance, TheSecondCopyOfARootRaisesTheFirstOtherRootsAreFree) {
  testing::TestApplication application;
  testing::TempFolder folder;
  SingleInstance first(folder.path());
  QSignalSpy raised(&first, &SingleInstance::raiseRequested);
  ASSERT_TRUE(first.isFirst());
  {
    const SingleInstance second(folder.path());
    EXPECT_FALSE(second.isFirst());
    EXPECT_TRUE(second.askFirstToRaise());
  }
  EXPECT_TRUE(raised.wait(2000));
  std::filesystem::create_directories(folder.path() / "other");
  EXPECT_TRUE(SingleInstance(folder.path() / "other").isFirst());
}

}  // namespace
}  // namespace gc40

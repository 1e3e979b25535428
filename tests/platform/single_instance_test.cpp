#include "platform/single_instance.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "support/temp_folder.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

TEST(SingleInstance, ALaterCopyRaisesTheFirstAndTheFolderFreesWhenItEnds) {
  testing::TestApplication<> application;
  testing::TempFolder folder, otherFolder;
  auto first = std::make_unique<SingleInstance>(folder.path());
  ASSERT_TRUE(first->claim());
  QSignalSpy raised(first.get(), &SingleInstance::raiseRequested);
  SingleInstance second(folder.path());
  EXPECT_FALSE(second.claim());
  EXPECT_TRUE(raised.wait(5000));
  EXPECT_EQ(raised.count(), 1);
  EXPECT_TRUE(SingleInstance(otherFolder.path()).claim());
  first.reset();
  EXPECT_TRUE(SingleInstance(folder.path()).claim());
}

}  // namespace
}  // namespace gc40

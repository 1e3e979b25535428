#include <gtest/gtest.h>

#include <QSignalSpy>
#include <sstream>

#include "harness/temp_folder.h"
#include "platform/log_categories.h"
#include "platform/port_map.h"
#include "platform/single_instance.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

// Written with defaults on the first run; a malformed line later is named by
// its line number and leaves its port at the default, while the good lines count.
TEST(PortMap, FileIsCreatedOnFirstRunAndMalformedLinesReported) {
  testing::TempFolder folder;
  std::ostringstream warnings;
  EXPECT_EQ(loadPortMap(folder.path(), warnings).paths, defaultPortMap().paths);
  const std::string written = testing::readBytes(folder.path() / "PORTS.INI");
  EXPECT_NE(written.find("\nCOM12:=/dev/ttyUSB11\n"), std::string::npos);
  EXPECT_TRUE(parsePortMap(written).problems.empty());
  testing::writeBytes(folder.path() / "PORTS.INI", written + "COM5 /dev/ttyS4\nCOM6:=/dev/S5\n");
  const PortMap map = loadPortMap(folder.path(), warnings);
  EXPECT_EQ(std::pair(map.paths[4], map.paths[5]),
            std::pair(defaultPortMap().paths[4], std::string("/dev/S5")));
  EXPECT_NE(warnings.str().find((folder.path() / "PORTS.INI:15:").string()), std::string::npos)
      << warnings.str();
}

// A field run says nothing unless something is wrong; the rules turn the
// debug messages on.
TEST(LogCategories, DebugMessagesOnlyWhenAskedFor) {
  const auto categories = {&lcSerial, &lcGps, &lcFile, &lcControl};
  for (const auto category : categories)
    EXPECT_TRUE(!category().isDebugEnabled() && category().isWarningEnabled())
        << category().categoryName();
  QLoggingCategory::setFilterRules(QStringLiteral("gc40.*=true"));
  for (const auto category : categories)
    EXPECT_TRUE(category().isDebugEnabled()) << category().categoryName();
  QLoggingCategory::setFilterRules(QString());
}

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

#include "app/command_line.h"

#include <gtest/gtest.h>

#include <sstream>

#include "app/logger_setup.h"
#include "app/window_geometry.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

TEST(CommandLine, OptionsInBothSpellingsAndErrorsThatNameTheArgument) {
  const std::vector<std::string_view> args{"--storage",       "/media/card",           "--port",
                                           "COM1=/dev/pts/7", "--port=COM2:=/tmp/gps", "--portrait",
                                           "--scale=3",       "--raw-log=/tmp/caps",   "--simulate",
                                           "--control"};
  const auto options = std::get<CommandLine>(parseCommandLine(args));
  EXPECT_EQ(options.storage, std::filesystem::path("/media/card"));
  EXPECT_EQ(options.portOverrides.at(1).path, "/tmp/gps");
  EXPECT_EQ(options.orientation, Orientation::kPortrait);
  EXPECT_EQ(options.scale, 3);
  EXPECT_EQ(options.rawLogFolder, std::filesystem::path("/tmp/caps"));
  EXPECT_TRUE(options.simulate && options.remoteControl);
  for (const auto& [bad, named] :
       std::vector<std::pair<std::vector<std::string_view>, std::string>>{
           {{"--storage"}, "--storage needs"},
           {{"--port", "COM13=/x"}, "COM13=/x"},
           {{"--scale", "9"}, "'9'"},
           {{"--help", "extra"}, "unknown option 'extra'"}}) {
    const auto result = parseCommandLine(bad);
    const auto* error = std::get_if<CommandLineError>(&result);
    ASSERT_NE(error, nullptr) << named;
    EXPECT_NE(error->message.find(named), std::string::npos) << error->message;
  }
}

TEST(WindowGeometry, FullScreenOnSmallScreensElseAComfortableWholeScale) {
  const LayoutSize portrait = layoutSize(Orientation::kPortrait);
  EXPECT_EQ(chooseWindowScale(480, 272, portrait, std::nullopt), 0);
  EXPECT_EQ(chooseWindowScale(1366, 728, portrait, std::nullopt), 2);
  EXPECT_EQ(chooseWindowScale(1920, 1040, layoutSize(Orientation::kLandscape), std::nullopt), 3);
  EXPECT_EQ(chooseWindowScale(480, 272, portrait, 5), 5);
}

TEST(LoggerSetup, CommandLinePortsWinAndAFolderThatCannotBeMadeIsNamed) {
  testing::TempFolder folder;
  CommandLine options;
  options.storage = folder.path();
  options.portOverrides.push_back({2, "/tmp/instrument"});
  std::ostringstream warnings;
  const auto prepared = prepareLogger(options, nullptr, warnings);
  EXPECT_EQ(std::get<LoggerContext>(prepared).ports.paths[2], "/tmp/instrument");

  testing::writeBytes(folder.path() / "file", "x");
  options.storage = folder.path() / "file" / "GC40";
  const auto blocked = prepareLogger(options, nullptr, warnings);
  EXPECT_NE(std::get<SetupError>(blocked).message.find((folder.path() / "file").string()),
            std::string::npos);

  options.storage = folder.path();
  options.rawLogFolder = folder.path() / "file" / "captures";
  const auto noCaptures = prepareLogger(options, nullptr, warnings);
  EXPECT_NE(std::get<SetupError>(noCaptures).message.find("captures"), std::string::npos);
}

}  // namespace
}  // namespace gc40

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
  EXPECT_EQ(
      std::tuple(options.storage, options.portOverrides.at(1).path, options.orientation,
                 options.scale, options.rawLogFolder, options.simulate, options.remoteControl),
      std::tuple(std::filesystem::path("/media/card"), "/tmp/gps", Orientation::kPortrait, 3,
                 std::filesystem::path("/tmp/caps"), true, true));
  using Case = std::pair<std::vector<std::string_view>, std::string>;
  for (const auto& [bad, named] :
       {Case{{"--storage"}, "--storage needs"}, Case{{"--port", "COM13=/x"}, "COM13=/x"},
        Case{{"--scale", "9"}, "'9'"}, Case{{"--help", "extra"}, "unknown option 'extra'"}}) {
    const auto result = parseCommandLine(bad);
    const auto* error = std::get_if<CommandLineError>(&result);
    EXPECT_TRUE(error && error->message.find(named) != std::string::npos) << named;
  }
}

TEST(WindowGeometry, FullScreenOnSmallScreensElseAComfortableWholeScale) {
  const LayoutSize portrait = layoutSize(Orientation::kPortrait);
  EXPECT_EQ(chooseWindowScale(480, 272, portrait, std::nullopt), 0);
  EXPECT_EQ(chooseWindowScale(1366, 728, portrait, std::nullopt), 2);
  EXPECT_EQ(chooseWindowScale(1920, 1040, layoutSize(Orientation::kLandscape), std::nullopt), 3);
  EXPECT_EQ(chooseWindowScale(480, 272, portrait, 5), 5);
}

// A storage or capture folder that cannot be made is named.
TEST(LoggerSetup, AFolderThatCannotBeMadeIsNamed) {
  testing::TempFolder folder;
  testing::writeBytes(folder.path() / "file", "x");
  CommandLine options;
  std::ostringstream warnings;
  for (const auto& [storage, captures, named] :
       {std::tuple(folder.path() / "file" / "GC40", std::filesystem::path(),
                   (folder.path() / "file").string()),
        std::tuple(folder.path(), folder.path() / "file" / "captures", std::string("captures"))}) {
    options.storage = storage;
    if (!captures.empty()) options.rawLogFolder = captures;
    const auto result = prepareLogger(options, nullptr, warnings);
    const auto* error = std::get_if<SetupError>(&result);
    EXPECT_TRUE(error && error->message.find(named) != std::string::npos) << named;
  }
}

}  // namespace
}  // namespace gc40

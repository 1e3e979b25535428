#include "app/command_line.h"

#include <gtest/gtest.h>

#include "ui/window_geometry.h"

namespace gc40 {
namespace {

TEST(CommandLine, OptionsInBothSpellingsAndErrorsThatNameTheArgument) {
  const std::vector<std::string_view> args{
      "--storage", "/media/card", "--port",     "COM1=/dev/pts/7", "--port=COM2:=/tmp/gps",
      "-platform", "offscreen",   "--portrait", "--scale=3",       "--raw-log=/tmp/caps",
      "-reverse",  "--simulate",  "--control",  "-style=fusion",   "--list-ports"};
  const auto options = std::get<CommandLine>(parseCommandLine(args));
  EXPECT_EQ(std::tuple(options.storage, options.portOverrides.at(1).path, options.orientation,
                       options.scale, options.rawLogFolder, options.simulate, options.remoteControl,
                       options.listPorts),
            std::tuple(std::filesystem::path("/media/card"), "/tmp/gps", Orientation::kPortrait, 3,
                       std::filesystem::path("/tmp/caps"), true, true, true));
  EXPECT_EQ(options.qtArguments,
            (std::vector<std::string_view>{"-platform", "offscreen", "-reverse", "-style=fusion"}));
  using Case = std::pair<std::vector<std::string_view>, std::string>;
  for (const auto& [bad, named] :
       {Case{{"--storage"}, "--storage needs"}, Case{{"--port", "COM13=/x"}, "COM13=/x"},
        Case{{"--scale", "9"}, "'9'"}, Case{{"--help", "extra"}, "unknown option 'extra'"},
        Case{{"--version", "-platform"}, "-platform needs a value"},
        Case{{"-plat", "offscreen"}, "unknown option '-plat'"},
        Case{{"--auto-start"}, "--auto-start goes with --headless"},
        Case{{"--headless", "--control"}, "--headless reads keys itself"}}) {
    const auto result = parseCommandLine(bad);
    const auto* error = std::get_if<CommandLineError>(&result);
    EXPECT_TRUE(error && error->message.find(named) != std::string::npos) << named;
  }
  const std::vector<std::string_view> headless{"--auto-start", "--simulate", "--headless"};
  const auto cart = std::get<CommandLine>(parseCommandLine(headless));
  EXPECT_TRUE(cart.headless && cart.autoStart && cart.simulate);
}

// An asked-for scale wins even on a small screen.
TEST(WindowGeometry, FullScreenOnSmallScreensElseAComfortableWholeScale) {
  const LayoutSize portrait = layoutSize(Orientation::kPortrait);
  EXPECT_EQ(chooseWindowScale(480, 272, portrait, std::nullopt), 0);
  EXPECT_EQ(chooseWindowScale(1920, 1040, layoutSize(Orientation::kLandscape), std::nullopt), 3);
  EXPECT_EQ(chooseWindowScale(480, 272, portrait, 5), 5);
}

}  // namespace
}  // namespace gc40

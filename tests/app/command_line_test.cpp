#include "app/command_line.h"

#include <gtest/gtest.h>

#include <sstream>

#include "app/logger_setup.h"
#include "app/window_geometry.h"
#include "settings/settings_file.h"
#include "support/settings_listing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

std::variant<CommandLine, CommandLineError> parse(std::initializer_list<std::string_view> args) {
  return parseCommandLine(std::span<const std::string_view>(args.begin(), args.size()));
}

std::string errorOf(std::initializer_list<std::string_view> args) {
  const auto parsed = parse(args);
  const auto* error = std::get_if<CommandLineError>(&parsed);
  return error ? error->message : "(accepted)";
}

TEST(CommandLine, AcceptsEveryOptionInBothSpellings) {
  const auto parsed = parse({"--storage", "/media/card/GC40", "--port", "COM1=/dev/pts/7",
                             "--port=COM2:=/tmp/gps", "--portrait", "--scale=3"});
  ASSERT_TRUE(std::holds_alternative<CommandLine>(parsed)) << errorOf({});
  const CommandLine& options = std::get<CommandLine>(parsed);
  EXPECT_EQ(options.storage, std::filesystem::path("/media/card/GC40"));
  ASSERT_EQ(options.portOverrides.size(), 2u);
  EXPECT_EQ(options.portOverrides[1].index, 1);
  EXPECT_EQ(options.portOverrides[1].path, "/tmp/gps");
  EXPECT_EQ(options.orientation, Orientation::kPortrait);
  EXPECT_EQ(options.scale, 3);
  EXPECT_FALSE(options.help);

  EXPECT_TRUE(std::get<CommandLine>(parse({"--version"})).version);
  EXPECT_TRUE(std::get<CommandLine>(parse({"--help"})).help);
  EXPECT_FALSE(std::get<CommandLine>(parse({})).storage);
}

TEST(CommandLine, RejectsBadInputWithAMessageThatNamesIt) {
  EXPECT_NE(errorOf({"--storage"}).find("--storage needs a value"), std::string::npos);
  EXPECT_NE(errorOf({"--port", "COM13=/dev/x"}).find("COM13=/dev/x"), std::string::npos);
  EXPECT_NE(errorOf({"--scale", "0"}).find("--scale"), std::string::npos);
  EXPECT_NE(errorOf({"--scale", "9"}).find("'9'"), std::string::npos);
  EXPECT_NE(errorOf({"--frobnicate"}).find("unknown option '--frobnicate'"), std::string::npos);
  EXPECT_NE(errorOf({"extra"}).find("--help"), std::string::npos);
}

TEST(WindowGeometry, FullScreenOnSmallScreensElseAComfortableWholeScale) {
  const LayoutSize landscape = layoutSize(Orientation::kLandscape);
  const LayoutSize portrait = layoutSize(Orientation::kPortrait);
  EXPECT_EQ(chooseWindowScale(320, 240, landscape, std::nullopt), 0);
  EXPECT_EQ(chooseWindowScale(480, 272, portrait, std::nullopt), 0);
  EXPECT_EQ(chooseWindowScale(1920, 1040, landscape, std::nullopt), 3);
  EXPECT_EQ(chooseWindowScale(1920, 1040, portrait, std::nullopt), 2);
  EXPECT_EQ(chooseWindowScale(1366, 728, portrait, std::nullopt), 2);
  EXPECT_EQ(chooseWindowScale(400, 300, landscape, std::nullopt), 1);
  EXPECT_EQ(chooseWindowScale(100000, 100000, landscape, std::nullopt), kMaxWindowScale);
  EXPECT_EQ(chooseWindowScale(1920, 1040, landscape, 5), 5);
}

TEST(LoggerSetup, PreparesFoldersSettingsAndPortsAndReportsProblems) {
  testing::TempFolder folder;
  CommandLine options;
  options.storage = folder.path() / "survey";
  options.portOverrides.push_back({2, "/tmp/instrument"});
  testing::writeBytes(folder.path() / "survey" / "FLDINI" / "PORTS.INI", "COM3:=/dev/ttyS2\nbad\n");
  testing::writeBytes(folder.path() / "survey" / "FLDINI" / "GC40.INI",
                      testing::fileWithLine(33, "300.000000"));
  std::ostringstream warnings;
  auto prepared = prepareLogger(options, "/nonexistent-home", warnings);
  ASSERT_TRUE(std::holds_alternative<LoggerContext>(prepared));
  const LoggerContext& context = std::get<LoggerContext>(prepared);
  EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "survey" / "DATA40"));
  EXPECT_EQ(context.settings.conductivityScaleMax, 300.0f);
  EXPECT_FLOAT_EQ(context.settings.conductivityPixelsPerUnit, 0.6f);
  EXPECT_EQ(context.ports.paths[2], "/tmp/instrument");  // the command line wins for this run
  EXPECT_NE(warnings.str().find("PORTS.INI:2:"), std::string::npos) << warnings.str();

  EXPECT_EQ(defaultStorageRoot("/home/op"), std::filesystem::path("/home/op/GC40"));

  // A storage root that cannot be made stops the logger with a message naming it.
  testing::writeBytes(folder.path() / "file", "x");
  options.storage = folder.path() / "file" / "GC40";
  const auto blocked = prepareLogger(options, nullptr, warnings);
  ASSERT_TRUE(std::holds_alternative<SetupError>(blocked));
  EXPECT_NE(std::get<SetupError>(blocked).message.find((folder.path() / "file").string()),
            std::string::npos);
}

}  // namespace
}  // namespace gc40

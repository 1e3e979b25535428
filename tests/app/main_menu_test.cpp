#include "app/main_menu.h"

#include <gtest/gtest.h>

#include <string_view>

#include "app/title_screen_layout.h"
#include "app/window_geometry.h"

namespace gc40 {
namespace {

// Letters in both cases, Return on each button and clicks by id name commands;
// a key that means nothing names none, not even the one before it.
TEST(MainMenu, LettersReturnAndClicksNameCommandsWithoutMovingTheRing) {
  const std::string_view keys = "LlSsOoGgDdVvXxEe";
  const std::string_view commands = "0011223344556666";
  for (std::size_t i = 0; i < keys.size(); ++i) {
    MainMenuState state{.focusedButton = 3};
    EXPECT_EQ(mainMenuKey(state, keys[i]).command, MainCommand(commands[i] - '0')) << keys[i];
    EXPECT_EQ(state.focusedButton, 3);
  }
  MainMenuState state;
  ASSERT_EQ(mainMenuKey(state, 'x').command, MainCommand::kExit);
  for (const int key : std::initializer_list<int>{'q', 'Q', 'a', '0', 27, 0, -1, 420, 'L' + 256})
    EXPECT_EQ(mainMenuKey(state, key).command, std::nullopt) << key;
  for (int focused = 0; focused < kMainButtonCount; ++focused) {
    state.focusedButton = focused;
    EXPECT_EQ(mainMenuKey(state, kKeyReturn).command, MainCommand(focused));
    EXPECT_EQ(commandForButtonId(420 + focused), MainCommand(focused));
  }
  for (const int id : {0, 419, 427}) EXPECT_EQ(commandForButtonId(id), std::nullopt);
}

TEST(MainMenu, FocusRingWrapsOverTheSevenButtonsAndAHeldRunStopsKeys) {
  for (int from = 0; from < kMainButtonCount; ++from)
    for (const int key : {kKeyTab, kKeyRight, kKeyDown, kKeyLeft, kKeyUp}) {
      MainMenuState state{.focusedButton = from};
      const MainMenuStep step = mainMenuKey(state, key);
      const int to = (from + (key == kKeyLeft || key == kKeyUp ? 6 : 1)) % 7;
      EXPECT_EQ(std::tuple(state.focusedButton, step.previousFocus, step.command),
                std::tuple(to, from, std::nullopt))
          << from << " key " << key;
    }
  MainMenuState state{.focusedButton = 2, .keysActive = 1};
  for (const int key : std::initializer_list<int>{'x', kKeyReturn, kKeyTab, kKeyLeft}) {
    EXPECT_EQ(mainMenuKey(state, key).command, std::nullopt) << key;
    EXPECT_EQ(state.focusedButton, 2) << key;
  }
}

TEST(TitleScreenLayout, ButtonsStackInsideTheGreyFieldWithoutOverlapping) {
  for (const Orientation orientation : {Orientation::kLandscape, Orientation::kPortrait}) {
    const LayoutSize screen = layoutSize(orientation);
    const LayoutRect grey = titleScreenLayout(orientation).greyArea;
    EXPECT_EQ(std::pair(grey.x + grey.width, grey.y + grey.height),
              std::pair(screen.width, screen.height));
    for (int i = 0; i < kMainButtonCount; ++i) {
      const LayoutRect button = mainButtonRect(orientation, i);
      EXPECT_TRUE(button.x >= grey.x && button.x + button.width <= screen.width &&
                  button.y + button.height <= screen.height)
          << i;
      if (i > 0) {
        EXPECT_GT(button.y, mainButtonRect(orientation, i - 1).y + button.height);
      }
    }
  }
}

}  // namespace
}  // namespace gc40

#include "app/main_menu.h"

#include <gtest/gtest.h>

#include <string_view>
#include <tuple>

#include "app/title_screen_layout.h"
#include "app/uptime_guard.h"
#include "app/window_geometry.h"

namespace gc40 {
namespace {

TEST(MainMenu, LettersAndReturnNameCommandsWithoutMovingTheRing) {
  const std::string_view keys = "LlSsOoGgDdVvXxEe";
  const std::string_view commands = "0011223344556666";
  for (std::size_t i = 0; i < keys.size(); ++i) {
    MainMenuState state{.focusedButton = 3};
    EXPECT_EQ(mainMenuKey(state, keys[i]).command, static_cast<MainCommand>(commands[i] - '0'))
        << keys[i];
    EXPECT_EQ(state.focusedButton, 3);
  }
  for (const int key : std::initializer_list<int>{'q', 'Q', 'a', '0', 27, 0, -1, 420, 'L' + 256}) {
    MainMenuState state;
    EXPECT_EQ(mainMenuKey(state, key).command, std::nullopt) << key;
  }
  for (int focused = 0; focused < kMainButtonCount; ++focused) {
    MainMenuState state{.focusedButton = focused};
    EXPECT_EQ(mainMenuKey(state, kKeyReturn).command, static_cast<MainCommand>(focused));
  }
  MainMenuState state;  // a key that means nothing does not repeat the one before it
  ASSERT_EQ(mainMenuKey(state, 'x').command, MainCommand::kExit);
  EXPECT_EQ(mainMenuKey(state, 'q').command, std::nullopt);
}

TEST(MainMenu, FocusRingWrapsOverTheSevenButtons) {
  for (const auto& [from, key, to] : {std::tuple{6, kKeyTab, 0},
                                      {0, kKeyTab, 1},
                                      {6, kKeyRight, 0},
                                      {6, kKeyDown, 0},
                                      {0, kKeyLeft, 6},
                                      {0, kKeyUp, 6},
                                      {4, kKeyLeft, 3},
                                      {1, kKeyUp, 0}}) {
    MainMenuState state{.focusedButton = from};
    const MainMenuStep step = mainMenuKey(state, key);
    EXPECT_EQ(state.focusedButton, to) << from << " key " << key;
    EXPECT_EQ(step.previousFocus, from);
    EXPECT_EQ(step.command, std::nullopt);
  }
}

TEST(MainMenu, WhileARunHoldsTheKeysOnlyClicksAct) {
  MainMenuState state{.focusedButton = 2, .keysActive = 1};
  for (const int key : std::initializer_list<int>{'x', kKeyReturn, kKeyTab, kKeyLeft}) {
    EXPECT_EQ(mainMenuKey(state, key).command, std::nullopt) << key;
    EXPECT_EQ(state.focusedButton, 2) << key;
  }
  for (int id = 420; id <= 426; ++id)
    EXPECT_EQ(commandForButtonId(id), static_cast<MainCommand>(id - 420));
  for (const int id : {0, 419, 427}) EXPECT_EQ(commandForButtonId(id), std::nullopt);
}

TEST(UptimeGuard, StopsOnlyPastTwentyDays) {
  for (const auto& [tick, exceeded] :
       {std::pair{0u, false}, {1'728'000'000u, false}, {1'728'000'001u, true}, {0xFFFFFFFFu, true}})
    EXPECT_EQ(uptimeExceeded(tick), exceeded) << tick;
}

TEST(TitleScreenLayout, ButtonsStackInsideTheGreyFieldWithoutOverlapping) {
  for (const Orientation orientation : {Orientation::kLandscape, Orientation::kPortrait}) {
    const LayoutSize screen = layoutSize(orientation);
    const LayoutRect grey = titleScreenLayout(orientation).greyArea;
    EXPECT_EQ(grey.x + grey.width, screen.width);
    EXPECT_EQ(grey.y + grey.height, screen.height);
    for (int i = 0; i < kMainButtonCount; ++i) {
      const LayoutRect button = mainButtonRect(orientation, i);
      EXPECT_GE(button.x, grey.x);
      EXPECT_LE(button.x + button.width, screen.width);
      EXPECT_LE(button.y + button.height, screen.height);
      if (i > 0) {
        EXPECT_GT(button.y, mainButtonRect(orientation, i - 1).y + button.height);
      }
    }
  }
}

}  // namespace
}  // namespace gc40

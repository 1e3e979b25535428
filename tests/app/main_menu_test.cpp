#include "app/main_menu.h"

#include <gtest/gtest.h>

#include <string_view>

namespace gc40 {
namespace {

// Letters in both cases, Return and clicks by id name commands without moving
// the ring; arrows move it with wrapping; a key that means nothing names none,
// not even the one before it, and a held run ignores every key.
TEST(MainMenu, KeysAndClicksNameCommandsAndMoveTheRing) {
  const std::string_view keys = "LlSsOoGgDdVvXxEe";
  for (std::size_t i = 0; i < keys.size(); ++i) {
    MainMenuState state{.focusedButton = 3};
    EXPECT_EQ(mainMenuKey(state, keys[i]).command, MainCommand(std::min<int>(i / 2, 6))) << keys[i];
    EXPECT_EQ(state.focusedButton, 3);
  }
  for (int from = 0; from < kMainButtonCount; ++from) {
    MainMenuState state{.focusedButton = from};
    EXPECT_EQ(mainMenuKey(state, kKeyReturn).command, MainCommand(from));
    EXPECT_EQ(commandForButtonId(420 + from), MainCommand(from));
    for (const int key : {kKeyTab, kKeyRight, kKeyDown, kKeyLeft, kKeyUp}) {
      state.focusedButton = from;
      const MainMenuStep step = mainMenuKey(state, key);
      const int to = (from + (key == kKeyLeft || key == kKeyUp ? 6 : 1)) % 7;
      EXPECT_EQ(std::tuple(state.focusedButton, step.previousFocus, step.command),
                std::tuple(to, from, std::nullopt))
          << from << " key " << key;
    }
  }
  for (const int id : {0, 419, 427}) EXPECT_EQ(commandForButtonId(id), std::nullopt);
  MainMenuState state;
  ASSERT_EQ(mainMenuKey(state, 'x').command, MainCommand::kExit);
  for (const int key : std::initializer_list<int>{'q', 'Q', 'a', '0', 27, 0, -1, 420, 'L' + 256})
    EXPECT_EQ(mainMenuKey(state, key).command, std::nullopt) << key;
  MainMenuState held{.focusedButton = 2, .keysActive = 1};
  for (const int key : std::initializer_list<int>{'x', kKeyReturn, kKeyTab, kKeyLeft}) {
    EXPECT_EQ(std::pair(mainMenuKey(held, key).command, held.focusedButton),
              std::pair(std::optional<MainCommand>(), 2))
        << key;
  }
}

}  // namespace
}  // namespace gc40

// The terminal front end's own rules: bytes into keys, a question answered
// key by key, and the status line made from what the session showed.

#include <gtest/gtest.h>

#include "headless/terminal_keys.h"
#include "headless/terminal_prompt.h"
#include "headless/terminal_status.h"
#include "logging/command_keys.h"
#include "logging/status_texts.h"

namespace gc40 {
namespace {

std::vector<int> codes(std::string_view bytes) {
  std::vector<int> result;
  for (const TerminalKey& key : decodeTerminalKeys(bytes)) result.push_back(key.code);
  return result;
}

// A terminal in raw mode sends CR or LF for Return, DEL for Backspace and
// sequences for arrows; a pipe sends lines.
TEST(TerminalKeys, BytesBecomeTheScreensKeyCodes) {
  EXPECT_EQ(codes("C\r\nG \n"), (std::vector<int>{'C', kKeyReturn, 'G', kKeySpace, kKeyReturn}));
  EXPECT_EQ(codes("\r\r\x7f\b"),
            (std::vector<int>{kKeyReturn, kKeyReturn, kKeyBackspace, kKeyBackspace}));
  // An arrow (ESC [ A), a function key (ESC O P, ESC [ 1 5 ~) and a lone Escape.
  EXPECT_EQ(codes("\x1b[Ax\x1bOP\x1b[15~\x1b"),
            (std::vector<int>{kNoKeyCode, 'x', kNoKeyCode, kNoKeyCode, kKeyEscape}));
  const std::vector<TerminalKey> typed = decodeTerminalKeys("\xc3\xa9\xe2\x82\xac\xff\x01");
  EXPECT_EQ(typed, (std::vector<TerminalKey>{
                       {0xe9, "\xc3\xa9"}, {0x20ac, "\xe2\x82\xac"}, {kNoKeyCode, ""}, {1, ""}}));
}

TerminalPrompt::Step feedAll(TerminalPrompt& prompt, std::string_view bytes) {
  for (const TerminalKey& key : decodeTerminalKeys(bytes)) prompt.feed(key);
  return prompt.step();
}

TEST(TerminalPrompt, ALineIsEditedThenAcceptedOrCancelled) {
  using Step = TerminalPrompt::Step;
  TerminalPrompt name = TerminalPrompt::line("Create File", "031514A", 8);
  EXPECT_EQ(name.shown(), "Create File: 031514A");
  // Backspace takes a whole character, Ctrl-U the line; nothing past 8.
  EXPECT_EQ(feedAll(name,
                    "\x7f\x7f\xc3\xa9\x7f"
                    "BC\x15LINE-\xc3\xa9-9ABC"),
            Step::kAsking);
  EXPECT_EQ(name.answer(), "LINE-\xc3\xa9-9");
  EXPECT_EQ(feedAll(name, "\rmore"), Step::kAccepted);
  EXPECT_EQ(name.answer(), "LINE-\xc3\xa9-9");  // keys after the answer are not its own

  TerminalPrompt comment = TerminalPrompt::line("Comment", "", 42);
  EXPECT_EQ(feedAll(comment, "ROCK\x1b"), Step::kCancelled);

  TerminalPrompt exit = TerminalPrompt::yesNo("Exit Logging?");
  EXPECT_EQ(exit.shown(), "Exit Logging? [Y/n] ");
  EXPECT_EQ(feedAll(exit, "q x"), Step::kAsking);
  EXPECT_EQ(feedAll(exit, "n"), Step::kCancelled);
  for (const char* yes : {"y", "Y", "\r"}) {
    TerminalPrompt again = TerminalPrompt::yesNo("Exit Logging?");
    EXPECT_EQ(feedAll(again, yes), Step::kAccepted) << yes;
  }
}

ReadingShown reading(float conductivity, float inphase, bool recorded, double nextStation) {
  ReadingShown shown;
  shown.reading = {.conductivity = conductivity, .inphase = inphase, .dipole = 'V', .range = 100};
  shown.recorded = recorded;
  shown.station = stationText(nextStation);
  return shown;
}

TEST(TerminalStatus, OneLineOfWhatTheScreenShows) {
  Settings settings;
  TerminalStatus status;
  status.setState("Monitor");
  status.setLineAndStation(u"L\u00e97", stationText(0));
  EXPECT_EQ(status.text(1000),
            "Monitor   Line:L\xc3\xa9"
            "7  Stn:0.00  GPS  Input  disabled  0 recorded");

  // Shown but not recorded: the values change, the count and station do not.
  status.setState("Logging");
  status.setFile(u"File:031514A");
  status.showReading(reading(20.5f, -1.25f, false, 0), settings, 1000);
  EXPECT_EQ(status.text(1000),
            "Logging   File:031514A  Line:L\xc3\xa9"
            "7  Stn:0.00  Mode:V  C:20.50     I:-1.25     "
            "Vertical  G100   GPS  Input  disabled  0 recorded");
  // Recorded twice, the second time just before the tick counter wraps.
  status.showReading(reading(21, 0, true, 0), settings, 2000);
  ReadingShown second = reading(1234.5f, 7, true, 1);
  second.count = "2";
  status.showReading(second, settings, 0xFFFFFF00u);
  status.setMessage("Please Wait...");
  status.setGpsEnabled(true);
  status.showGps(
      {.activity = "/", .fixCount = "17   ", .satellites = " 8", .fix = "DGPS", .pdop = "1.2 "});
  settings.component = Component::kInphase;  // no conductivity field from the next reading on
  ReadingShown triggered = reading(5, 3.5f, false, 0);
  triggered.triggerIndicator = 'M';
  status.showReading(triggered, settings, 0xFFFFFF00u);
  EXPECT_EQ(status.readingsRecorded(), 2);
  EXPECT_EQ(status.text(0x00000100u),
            "Logging   File:031514A  Line:L\xc3\xa9"
            "7  Stn:1.00 (2)  M  Mode:V  I:3.50      "
            "Vertical  G100   GPS/ DGPS sat 8 PDOP 1.2 fixes 17  2 recorded, last 0.5 s ago  "
            "Please Wait...");
  // The first fix before any satellites: only what came is shown.
  TerminalStatus fresh;
  fresh.setGpsEnabled(true);
  fresh.showGps({.activity = "\\", .fixCount = "0    "});
  EXPECT_NE(fresh.text(0).find("GPS\\ fixes 0  0 recorded"), std::string::npos) << fresh.text(0);
  // Cut to a terminal's width, never inside a character.
  EXPECT_EQ(fitToColumns("Stn:\xc3\xa9\xc3\xa9x", 5), "Stn:\xc3\xa9");
  EXPECT_EQ(fitToColumns("short", 80), "short");
}

}  // namespace
}  // namespace gc40

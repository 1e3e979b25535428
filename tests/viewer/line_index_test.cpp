#include <gtest/gtest.h>

#include <random>

#include "support/recorded_file.h"
#include "survey/survey_lines.h"
#include "viewer/line_index_files.h"
#include "viewer/line_view.h"

namespace gc40 {
namespace {

using testing::instrumentRecord;
using testing::RecordedFile;

TEST(LineIndexFiles, RoundTripAndRefusals) {
  const std::vector<StationEntry> stations{
      {-12.5, {1, 1, 0, 0, 0, 0, 0, 0}, {3.25f, -0.5f, 0, 0, 0, 0, 0, 0}},
      {0.1 + 0.2, {0, 0, 1, 1, 0, 0, 0, 0}, {0, 0, 1e-7f, 9000.f, 0, 0, 0, 0}},
      {1e9, {}, {}}};
  const LineIndexBytes bytes = encodeLineIndex(stations);
  EXPECT_EQ(bytes.presence.size(), 24u + 3 * 16);
  EXPECT_EQ(bytes.values.size(), 24u + 3 * 40);
  EXPECT_EQ(bytes.presence.substr(0, 16), std::string("GC40R4X1\1\0\0\0\x10\0\0\0", 16));
  EXPECT_EQ(std::get<std::vector<StationEntry>>(decodeLineIndex(bytes)), stations);
  EXPECT_EQ(std::get<std::vector<StationEntry>>(decodeLineIndex(encodeLineIndex({}))).size(), 0u);

  const auto refusal = [](LineIndexBytes damaged) {
    const auto result = decodeLineIndex(damaged);
    return std::holds_alternative<LineIndexError>(result) ? std::get<LineIndexError>(result).message
                                                          : std::string("accepted");
  };
  LineIndexBytes truncated = bytes;
  truncated.values.pop_back();
  EXPECT_EQ(refusal(truncated), "LINE2.R4X: holds 143 bytes for 3 stations");
  LineIndexBytes swapped{bytes.values, bytes.presence};
  EXPECT_EQ(refusal(swapped), "LINE1.R4X: not a line index file");
  LineIndexBytes otherLine = bytes;
  otherLine.values = encodeLineIndex({stations[0], stations[2], stations[1]}).values;
  EXPECT_EQ(refusal(otherLine), "LINE2.R4X: does not describe the stations of LINE1.R4X");
  LineIndexBytes newer = bytes;
  newer.presence[8] = 2;
  EXPECT_EQ(refusal(newer), "LINE1.R4X: unknown format version");
}

// Neighbours holding a trace are joined, a lone value is a point, a gap
// breaks the line; only the traces in use are drawn.
TEST(LineView, StrokesJoinNeighboursAndLeaveGaps) {
  Settings settings = viewingSettings(Settings{}, Settings{}, 100);  // Auto, vertical, 0..500
  std::vector<StationEntry> stations(5);
  const std::array<float, 5> values{100, 200, 0, 300, 400};
  for (std::size_t i : {0u, 1u, 3u}) {
    stations[i].present = {1, 1, 1, 0, 0, 0, 0, 0};  // H conductivity is not in use
    stations[i].values = {values[i], 0, 1.0f, 0, 0, 0, 0, 0};
  }
  const auto strokes = lineStrokes(stations, 0, 4, setupProfileTraces(settings), settings);
  // y = (500 - value) * 100 / 500 for conductivity; (25 - 1) * 2 for inphase.
  using S = ViewStroke;
  EXPECT_EQ(strokes, (std::vector{S{0, true, 0, 80, 1, 60}, S{0, false, 3, 40, 3, 40},
                                  S{2, true, 0, 48, 1, 48}, S{2, false, 3, 48, 3, 48}}));
  stations[4] = stations[3];  // now station 3 continues out of view
  stations[4].values[0] = 400;
  const auto continued = lineStrokes(stations, 1, 3, setupProfileTraces(settings), settings);
  EXPECT_EQ(continued.front(), (ViewStroke{0, true, -1, 80, 0, 60}));
  EXPECT_EQ(continued[1], (ViewStroke{0, true, 2, 40, 3, 20}));
}

// Damage of every kind through the reader, the split and the index files:
// nothing crashes or hangs, and every reading the reader found is placed.
TEST(SurveyLines, MutatedFilesNeverBreakTheViewer) {
  RecordedFile file({.surveyMode = SurveyMode::kManual, .dipoleMode = DipoleMode::kBoth});
  for (int i = 0; i < 40; ++i) {
    file.reading(instrumentRecord(i % 2 ? 0x24 : 0x04, "012.3004.5", "T23"[i % 3]));
    if (i % 9 == 0) file.newStation(i * 0.5).note(u"$PAUSED");
    if (i % 17 == 0) file.newLine(u"L" + std::u16string(1, char16_t('0' + i % 10)), i, -1.5f);
  }
  const std::string original = file.bytes();
  std::mt19937 random(20261122);
  const auto pick = [&random](std::size_t n) {
    return std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
  };
  const std::string interesting = "TSLBAZ*CX@#?\"!\n 0123456789.-+eE\xff";
  for (int round = 0; round < 10000; ++round) {
    std::string bytes = original;
    for (std::size_t edits = 1 + pick(8); edits > 0 && !bytes.empty(); --edits) {
      const std::size_t at = pick(bytes.size()), kind = pick(4);
      if (kind == 0) bytes[at] = interesting[pick(interesting.size())];
      if (kind == 1) bytes[at] = static_cast<char>(pick(256));
      if (kind == 2) bytes.erase(at, 1 + pick(30));
      if (kind == 3) bytes.insert(at, bytes.substr(pick(bytes.size()), 1 + pick(40)));
    }
    const DataFileContents contents = readDataFile(bytes);
    const std::optional<SurveyFile> survey = splitSurveyLines(contents);
    ASSERT_TRUE(survey);
    std::size_t readings = 0, placed = 0;
    for (const FileRecord& record : contents.records)
      readings += std::holds_alternative<ReadingRecord>(record.value);
    for (const SurveyLine& line : survey->lines) {
      placed += line.readingStations.size();
      ASSERT_LE(line.stations.size(), line.readingStations.size());
      EXPECT_EQ(std::get<std::vector<StationEntry>>(decodeLineIndex(encodeLineIndex(line.stations)))
                    .size(),
                line.stations.size());
    }
    ASSERT_EQ(placed, readings) << "round " << round;
  }
}

}  // namespace
}  // namespace gc40

#include "survey/survey_lines.h"

#include <gtest/gtest.h>

#include "instrument/reading_decoder.h"
#include "support/recorded_file.h"

namespace gc40 {
namespace {

using testing::instrumentRecord;
using testing::RecordedFile;

SurveyFile split(const std::string& bytes) {
  const DataFileContents contents = readDataFile(bytes);
  EXPECT_TRUE(contents.problems.empty());
  return *splitSurveyLines(contents);
}

std::vector<double> entryStations(const SurveyLine& line) {
  std::vector<double> stations;
  for (const StationEntry& entry : line.stations) stations.push_back(entry.station);
  return stations;
}

// A short-variant Manual survey with both dipoles: the first reading after a
// line or station start does not move the station, pauses change nothing,
// a station walked again merges with its entry, and the values decode with
// the file's settings.
TEST(SurveyLines, StationsFollowTheLoggerAndReadingsMergePerTrace) {
  RecordedFile file({.instrumentVariant = 1,
                     .surveyMode = SurveyMode::kManual,
                     .dipoleMode = DipoleMode::kBoth,
                     .surveyLine = u"10",
                     .lineDirection = 3,
                     .startStation = 5.0,
                     .stationIncrement = 2.5f});
  const std::string v1 = instrumentRecord(0x24, "012.3004.5");
  const std::string h1 = instrumentRecord(0x04, "020.0-01.0");
  const std::string v2 = instrumentRecord(0x24, "013.3005.5");
  const std::string v3 = instrumentRecord(0x25, "014.3006.5");
  file.note(u"$STARTED").reading(v1).reading(h1).reading(v2).note(u"$PAUSED");
  file.note(u"$STARTED").reading(v2).newStation(5.0).reading(v3).reading(v1);
  file.newLine(u"11.00", 10.0, -2.5f).reading(v1).reading(v1).reading(h1).reading(v1);

  const SurveyFile survey = split(file.bytes());
  ASSERT_EQ(survey.lines.size(), 2u);
  const SurveyLine& first = survey.lines[0];
  EXPECT_EQ(first.name, "10");
  EXPECT_EQ(first.readingStations, (std::vector<double>{5.0, 5.0, 7.5, 10.0, 5.0, 5.0}));
  EXPECT_EQ(entryStations(first), (std::vector<double>{5.0, 7.5, 10.0}));
  EXPECT_EQ(survey.lines[1].readingStations, (std::vector<double>{10.0, 10.0, 7.5, 5.0}));
  EXPECT_EQ(survey.lines[1].direction, 'E');
  EXPECT_FLOAT_EQ(survey.lines[1].stationIncrement, -2.5f);

  // Station 5: V from v3 then v1 (the last), H from h1, so all four traces.
  FiledValues lastV, onlyH, todays;
  decodeInstrumentRecord(v1, recordingSettings(survey.identification), lastV);
  decodeInstrumentRecord(h1, recordingSettings(survey.identification), onlyH);
  decodeInstrumentRecord(v1, Settings{}, todays);
  ASSERT_NE(lastV.verticalInphase, todays.verticalInphase);  // the variant counts
  const StationEntry& five = first.stations[0];
  using Present = std::array<std::uint8_t, kTraceCount>;
  EXPECT_EQ(five.present, (Present{1, 1, 1, 1, 0, 0, 0, 0}));
  EXPECT_EQ(std::tuple(five.values[0], five.values[1], five.values[2], five.values[3]),
            std::tuple(lastV.verticalConductivity, onlyH.horizontalConductivity,
                       lastV.verticalInphase, onlyH.horizontalInphase));
  EXPECT_EQ(first.stations[1].present, (Present{1, 0, 1, 0, 0, 0, 0, 0}));
}

// Repeat numbers in place of the "T" say how many readings made a station;
// with more than one, only the very first reading holds the station back.
TEST(SurveyLines, RepeatNumbersGroupReadingsAtOneStation) {
  RecordedFile file({.stationIncrement = 0.5f});
  for (int group = 0; group < 3; ++group)
    for (char marker : {'T', '2', '3'}) file.reading(instrumentRecord(0x20, "001.0002.0", marker));
  EXPECT_EQ(split(file.bytes()).lines[0].readingStations,
            (std::vector<double>{0, 0, 0, 0.5, 0.5, 0.5, 1, 1, 1}));
}

}  // namespace
}  // namespace gc40

// The simulated instrument's bytes: patterns, presses, junk, line feeds, drop-outs.

#include "gc40-sim/instrument_records.h"

#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <vector>

namespace gc40 {
namespace {

std::vector<std::string> take(const InstrumentOptions& options, int count) {
  InstrumentStream stream = startInstrumentStream(options);
  std::vector<std::string> records;
  while (std::ssize(records) < count) records.push_back(nextInstrumentChunk(stream).value().bytes);
  return records;
}

TEST(InstrumentRecords, ValueFieldsAreFiveCharactersWhateverTheNumber) {
  std::string fields;
  for (const std::int64_t value : {0L, 42L, -120L, 100000L, -10000L, INT64_MAX, INT64_MIN}) {
    fields += formatValueField(value) + ' ';
  }
  EXPECT_EQ(fields, "00000 00042 -0120 99999 -9999 99999 -9999 ");
}

TEST(InstrumentRecords, EachPatternSendsItsValues) {
  using Records = std::vector<std::string>;
  // Constant sends both texts, made to fit their fields when given in code.
  EXPECT_EQ(
      take({.pattern = ValuePattern::kConstant, .firstValue = "1.5", .secondValue = "1234567"}, 2),
      (Records{"T   1.512345\r", "T   1.512345\r"}));
  EXPECT_EQ(take({.pattern = ValuePattern::kRamp, .firstValue = "99998"}, 4),
            (Records{"T 9999800040\r", "T 9999900040\r", "T -999900040\r", "T -999800040\r"}));
  EXPECT_EQ(take({.pattern = ValuePattern::kSequence, .secondValue = "00007"}, 2),
            (Records{"T 0000000007\r", "T 0000100007\r"}));
  const Records wrapping = take({.pattern = ValuePattern::kSequence}, 100001);
  EXPECT_EQ(wrapping[99999] + wrapping[100000], "T 9999900040\rT 0000000040\r");
}

TEST(InstrumentRecords, WalkStaysPlausibleAndRepeatsItsSeed) {
  // Starting far outside its bounds, it is brought inside at once.
  const InstrumentOptions options{.firstValue = "99999", .secondValue = "-9999", .seed = 7};
  const std::vector<std::string> records = take(options, 5000);
  for (const std::string& record : records) {
    const int first = std::stoi(record.substr(2, 5)), second = std::stoi(record.substr(7, 5));
    ASSERT_TRUE(first >= kWalkFirstMin && first <= kWalkFirstMax) << record;
    ASSERT_TRUE(second >= kWalkSecondMin && second <= kWalkSecondMax) << record;
  }
  EXPECT_EQ(take(options, 5000), records);
  InstrumentOptions otherSeed = options;
  otherSeed.seed = 8;
  EXPECT_NE(take(otherSeed, 5000), records);  // and really walks
}

TEST(InstrumentRecords, PressesJunkAndLineFeedsLeaveEveryRecordReadable) {
  const InstrumentOptions clean{.status = 33, .triggerEvery = 10, .triggerLength = 3};
  InstrumentOptions noisy = clean;
  noisy.junkEvery = 3;
  noisy.lineFeed = true;
  const std::vector<std::string> cleanRecords = take(clean, 40);
  const std::vector<std::string> noisyRecords = take(noisy, 40);
  const std::set<std::size_t> pressed{10, 11, 12, 20, 21, 22, 30, 31, 32};
  for (std::size_t i = 0; i < noisyRecords.size(); ++i) {
    const std::size_t junk = noisyRecords[i].size() - 14;
    EXPECT_TRUE(i % 3 == 0 && i > 0 ? junk >= 1 && junk <= 8 : junk == 0) << i;
    EXPECT_EQ(noisyRecords[i].find('\r'), junk + 12) << i;  // never a CR in the junk
    EXPECT_EQ(noisyRecords[i].substr(junk), cleanRecords[i] + '\n') << i;
    EXPECT_EQ(static_cast<std::uint8_t>(cleanRecords[i][1]), pressed.contains(i) ? 97 : 33) << i;
  }
}

TEST(InstrumentRecords, GapsFollowThePeriodTheDropoutsAndTheCount) {
  using std::chrono::milliseconds;
  InstrumentStream stream = startInstrumentStream(
      {.period = milliseconds(91), .dropoutEvery = 4, .dropout = milliseconds(2500), .count = 10});
  std::vector<milliseconds::rep> gaps;
  while (std::optional<Chunk> chunk = nextInstrumentChunk(stream))
    gaps.push_back(chunk->gapAfter.count());
  EXPECT_EQ(gaps, (std::vector<milliseconds::rep>{91, 91, 91, 2591, 91, 91, 91, 2591, 91, 91}));
}

}  // namespace
}  // namespace gc40

#include "instrument/record_framer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace gc40 {
namespace {

using namespace std::string_literals;

// A record as currentRecord holds it, and as it comes on the wire.
std::string body(std::string_view values, char status = '\x20') {
  return "T"s + status + std::string(values);
}
std::string record(std::string_view values, char status = '\x20') {
  return body(values, status) + '\r';
}
const std::string kExample = record("12.34-0.56");

struct Feeder {
  explicit Feeder(std::int32_t recordsPerReading = 1) {
    framer.start(link);
    link.recordsPerReading = recordsPerReading;
  }
  void feed(std::string_view bytes, std::uint32_t tick = 0) {
    framer.feed(bytes, tick, link, [this] { readings.emplace_back(link.record()); });
  }
  RecordFramer framer;
  InstrumentLink link;
  std::vector<std::string> readings;
};

TEST(RecordFramer, FindsARecordBehindUpTo168BytesOfNoise) {
  // The 182nd byte buffered overflows and is itself discarded, so a record
  // whose CR would land beyond index 180 is lost; the one after it is not.
  for (const auto& [prefixLength, readings] :
       {std::pair{0, 2}, {1, 2}, {168, 2}, {169, 1}, {181, 1}, {182, 2}}) {
    Feeder run;
    run.link.staleTicks = 4;
    run.feed(std::string(prefixLength, 'T') + kExample, 77);  // noise of record markers
    run.feed(kExample, 78);
    EXPECT_EQ(run.readings, std::vector(readings, body("12.34-0.56"))) << prefixLength;
    EXPECT_EQ(run.link.currentRecord[12], '\0');
    EXPECT_EQ(run.link.lastRecordTick, 78u);
    EXPECT_EQ(run.link.staleTicks, 0);
  }
}

TEST(RecordFramer, ACarriageReturnWithFewerThan12BytesBeforeItIsAnOrdinaryByte) {
  const std::string statusCr = record("12.34-0.56", '\r');
  for (const auto& [stream, counter, good] : {std::tuple{"01234567890\r"s, 0, false},
                                              {"012345678901\r"s, 1, false},
                                              {statusCr, 1, true},
                                              {"\n" + statusCr, 1, true},
                                              {"\nabcdefghijk" + statusCr, 2, true}}) {
    Feeder run(5);
    run.feed(stream);
    EXPECT_EQ(run.link.recordCounter, counter) << stream;
    EXPECT_EQ(run.link.record() == body("12.34-0.56", '\r'), good) << stream;
  }
}

TEST(RecordFramer, AMalformedLineTakesAPlaceInTheReadingAndStaysBuffered) {
  Feeder run(3);
  run.feed(kExample + kExample, 5);
  run.link.staleTicks = 2;
  run.feed("xxxxxxxxxxxxx\r", 9);  // third place: the reading is dropped
  EXPECT_EQ(run.link.recordCounter, 0);
  EXPECT_EQ(run.link.lastRecordTick, 5u);
  EXPECT_EQ(run.link.staleTicks, 2);
  run.feed("ab\r");  // tested 12 bytes back, across the malformed line
  EXPECT_EQ(run.link.recordCounter, 1);
  run.feed(kExample + "ab\r");  // after a good record the buffer starts afresh
  EXPECT_EQ(run.link.recordCounter, 2);
  EXPECT_TRUE(run.readings.empty());

  // Malformed lines pile up toward the overflow; 169 bytes of them lose the next record.
  Feeder piled;
  for (int i = 0; i < 13; ++i) piled.feed("xxxxxxxxxxxx\r");
  piled.feed(kExample + kExample);
  EXPECT_EQ(piled.readings.size(), 1u);
}

TEST(RecordFramer, AReadingCarriesTheRecordThatCompletesItAndTheHandlerMayRecount) {
  std::string stream;
  for (char digit = '1'; digit <= '9'; ++digit) stream += record("0000"s + digit + "00000");
  Feeder run(5);
  run.feed(stream.substr(0, 3 * 13));
  EXPECT_EQ(run.link.record(), body("0000300000"));  // every good record is kept
  run.framer.feed(stream.substr(3 * 13), 0, run.link, [&run] {
    run.readings.emplace_back(run.link.record());
    EXPECT_EQ(run.link.recordCounter, 0);  // reset before the handler, which may set it
    run.link.recordsPerReading = 2;        // takes effect before the next byte
  });
  EXPECT_EQ(run.readings,
            (std::vector{body("0000500000"), body("0000700000"), body("0000900000")}));
  EXPECT_EQ(run.link.recordCounter, 0);
}

TEST(RecordFramer, ACountAboveRecordsPerReadingWaitsForAMalformedLine) {
  Feeder run(5);
  run.feed(kExample + kExample + kExample);
  run.link.recordsPerReading = 2;
  run.feed(kExample + kExample + kExample + kExample);
  EXPECT_EQ(run.link.recordCounter, 7);
  EXPECT_TRUE(run.readings.empty());
  run.feed("xxxxxxxxxxxxx\r" + kExample + kExample);
  EXPECT_EQ(run.readings.size(), 1u);
}

std::string randomStream(std::mt19937& random) {
  auto bytes = [&random](std::size_t count) {
    std::string text;
    while (text.size() < count)
      text += static_cast<char>(random() % 3 ? 32 + random() % 95 : random());
    return text;
  };
  std::string stream;
  while (stream.size() < 4000) {
    const unsigned kind = random() % 8;
    if (kind < 5) stream += record(bytes(10), static_cast<char>(random()));
    if (kind == 5) stream += bytes(random() % 20) + '\r';
    if (kind == 6) stream += bytes(random() % 200);
    if (kind == 7) stream += '\n';
  }
  return stream;
}

struct Framed {
  std::vector<std::pair<std::string, std::uint32_t>> readings;
  InstrumentLink link;
};

// Chunk k of the stream arrives at tick k; each chunk is fed whole or byte by byte.
Framed frame(const std::string& stream, const std::vector<std::size_t>& cuts, bool byByte) {
  Framed out;
  RecordFramer framer;
  framer.start(out.link);
  const auto onReading = [&out] {
    out.readings.emplace_back(out.link.record(), out.link.lastRecordTick);
    out.link.recordsPerReading = 1 + out.readings.size() % 4;
    if (out.readings.size() % 5 == 0) out.link.recordCounter = 3;
  };
  for (std::size_t k = 0; k + 1 < cuts.size(); ++k) {
    const std::string_view chunk = std::string_view(stream).substr(cuts[k], cuts[k + 1] - cuts[k]);
    const std::uint32_t tick = static_cast<std::uint32_t>(k);
    if (!byByte) framer.feed(chunk, tick, out.link, onReading);
    for (std::size_t i = 0; byByte && i < chunk.size(); ++i) {
      framer.feed(chunk.substr(i, 1), tick, out.link, onReading);
    }
  }
  return out;
}

TEST(RecordFramer, AnySplitOfTheStreamFramesTheSame) {
  for (const unsigned seed : {1u, 2u, 3u, 4u, 5u, 6u}) {
    std::mt19937 random(seed);
    const std::string stream = randomStream(random);
    std::vector<std::size_t> cuts{0};
    while (cuts.back() < stream.size()) {
      cuts.push_back(std::min(stream.size(), cuts.back() + random() % 40));
    }
    const Framed whole = frame(stream, cuts, false);
    const Framed bytes = frame(stream, cuts, true);
    EXPECT_GT(whole.readings.size(), 15u) << seed;
    EXPECT_EQ(whole.readings, bytes.readings) << seed;
    EXPECT_EQ(whole.link, bytes.link) << seed;
  }
}

}  // namespace
}  // namespace gc40

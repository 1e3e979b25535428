#include "survey/receiver_sentences.h"

#include <gtest/gtest.h>

#include "survey/survey_time.h"

namespace gc40 {
namespace {

// Southern and western fixes are negative; a damaged field loses the whole
// fix rather than giving a wrong one; dates need a real calendar day, and
// the checksum tail never sticks to the last field read.
TEST(ReceiverSentences, HemispheresDatesAndDamagedFields) {
  const auto fix = parseGga("$GNGGA,235959.50,3352.5000,S,15112.000000,W,2,12,0.7,-5.3,M,,M,,*5A");
  ASSERT_TRUE(fix);
  EXPECT_DOUBLE_EQ(fix->latitude, -(33 + 52.5 / 60));
  EXPECT_DOUBLE_EQ(fix->longitude, -(151 + 12.0 / 60));
  EXPECT_EQ(std::tuple(*fix->msOfDay, *fix->altitude, fix->fixQuality, fix->satellites, *fix->hdop),
            std::tuple(86'399'500, -5.3, 2, 12, 0.7));
  for (const char* damaged : {"$GPGGA,120000,4860.0000,N,00400.0000,E,1,08,0.9,1,M,,M,,*00",
                              "$GPGGA,120000,4800.0000,X,00400.0000,E,1,08,0.9,1,M,,M,,*00",
                              "$GPGGA,120000,4800.0000,N,18100.0000,E,1,08,0.9,1,M,,M,,*00",
                              "$GPGGA,120000,48OO.0000,N,00400.0000,E,1,08,0.9,1,M,,M,,*00",
                              "$GPGGA,120000,4800.0000,N,00400.0000,E,,08", "$GPGGA,1200"})
    EXPECT_FALSE(parseGga(damaged)) << damaged;

  const auto leapDay = parseRmc("$GPRMC,120000.25,A,4800.0,N,00400.0,E,2.5,271.0,290224,,,A*00");
  EXPECT_EQ(leapDay->utcMs, epochMs(2024, 2, 29, 43'200'250));
  EXPECT_EQ(std::tuple(*leapDay->speedKnots, *leapDay->courseDegrees), std::tuple(2.5, 271.0));
  const auto noDay = parseRmc("$GPRMC,120000.00,V,4800.0,N,00400.0,E,2.5,271.0,300224,,,N*00");
  EXPECT_EQ(std::tuple(noDay->utcMs, noDay->speedKnots), std::tuple(std::nullopt, std::nullopt));
  EXPECT_EQ(parseZda("$GPZDA,000001.00,01,01,2026*6A"), epochMs(2026, 1, 1, 1000));
  EXPECT_FALSE(parseZda("$GPRMC,000001.00,01,01,2026*6A"));
}

}  // namespace
}  // namespace gc40

#pragma once
// The fields a simulated receiver writes into its sentences, and the sentence
// itself with its checksum.

#include <chrono>
#include <string>
#include <string_view>

namespace gc40 {

// "ddmm.mmmm,N,dddmm.mmmm,E" with `minuteDecimals` decimals of a minute; four
// is what most receivers give, five resolves a couple of centimetres.
std::string nmeaPosition(double latitude, double longitude, int minuteDecimals);

// "hhmmss.ss", the hundredths truncated.
std::string nmeaTimeOfDay(std::chrono::sys_time<std::chrono::milliseconds> time);

// "ddmmyy".
std::string nmeaDate(std::chrono::sys_time<std::chrono::milliseconds> time);

// The body ("$GPGGA,...") with its checksum tail and CR LF.
std::string nmeaSentence(std::string_view body);

}  // namespace gc40

#include "gc40-sim/survey_walk.h"

#include <cmath>
#include <cstdint>
#include <numbers>
#include <utility>

namespace gc40 {
namespace {

constexpr double kPi = std::numbers::pi;

EastNorth operator+(const EastNorth& a, const EastNorth& b) {
  return {a.east + b.east, a.north + b.north};
}
EastNorth operator-(const EastNorth& a, const EastNorth& b) {
  return {a.east - b.east, a.north - b.north};
}
EastNorth operator*(const EastNorth& a, double k) { return {a.east * k, a.north * k}; }

EastNorth unitToward(double bearing) {
  return {std::sin(bearing * kPi / 180), std::cos(bearing * kPi / 180)};
}

double bearingOf(const EastNorth& direction) {
  const double degrees = std::atan2(direction.east, direction.north) * 180 / kPi;
  return degrees < 0 ? degrees + 360 : degrees;
}

// A point of the grid: `along` the first line's direction, `across` to its right.
EastNorth gridPoint(const SurveyOptions& survey, double along, double across) {
  return unitToward(survey.bearing) * along + unitToward(survey.bearing + 90) * across;
}

// Line k from where it is walked to where it ends: even lines the first
// line's way, odd ones back.
std::pair<EastNorth, EastNorth> lineEnds(const SurveyOptions& survey, int line) {
  const double across = line * survey.lineSpacing;
  const EastNorth base = gridPoint(survey, 0, across);
  const EastNorth far = gridPoint(survey, survey.lineLength, across);
  return line % 2 == 0 ? std::pair(base, far) : std::pair(far, base);
}

double lineHeading(const SurveyOptions& survey, int line) {
  return bearingOf(unitToward(survey.bearing + (line % 2 == 0 ? 0 : 180)));
}

// A single line has nowhere to turn back to.
bool walksBack(const SurveyOptions& survey) { return survey.repeat && survey.lines > 1; }

// The line walked in the leg-th leg: 0, 1, .. n-1, then with `repeat` back
// down to 0 and up again.
int lineOfLeg(const SurveyOptions& survey, std::int64_t leg) {
  if (!walksBack(survey)) return static_cast<int>(leg);
  const std::int64_t round = 2 * (survey.lines - 1);
  const auto place = static_cast<int>(leg % round);
  return place < survey.lines ? place : static_cast<int>(round) - place;
}

double lineSeconds(const SurveyOptions& survey) { return survey.lineLength / survey.speed; }

// A half circle across to the next line, as wide as the lines are apart.
double turnSeconds(const SurveyOptions& survey) {
  return kPi * survey.lineSpacing / 2 / survey.speed;
}

WalkPose alongLine(const SurveyOptions& survey, int line, double seconds) {
  const auto [start, end] = lineEnds(survey, line);
  const double heading = lineHeading(survey, line);
  if (seconds >= lineSeconds(survey)) return {end, heading, 0};
  return {start + unitToward(heading) * (survey.speed * seconds), heading, survey.speed};
}

// From the end of `line` to the start of `next`, bulging beyond the end.
WalkPose turning(const SurveyOptions& survey, int line, int next, double share) {
  const EastNorth end = lineEnds(survey, line).second, nextStart = lineEnds(survey, next).first;
  const double radius = survey.lineSpacing / 2;
  const EastNorth across = (nextStart - end) * (1 / survey.lineSpacing);
  const EastNorth ahead = unitToward(lineHeading(survey, line));
  const double angle = kPi * share;
  const EastNorth centre = (end + nextStart) * 0.5;
  return {centre + across * (-radius * std::cos(angle)) + ahead * (radius * std::sin(angle)),
          bearingOf(across * std::sin(angle) + ahead * std::cos(angle)), survey.speed};
}

}  // namespace

WalkPose antennaPose(const SurveyOptions& survey, double seconds) {
  if (seconds < 0) return alongLine(survey, 0, seconds);
  const double legSeconds = lineSeconds(survey) + turnSeconds(survey);
  const auto leg = static_cast<std::int64_t>(seconds / legSeconds);
  const int last = survey.lines - 1;
  if (!walksBack(survey) && leg >= last)
    return alongLine(survey, last, seconds - last * legSeconds);
  const double into = seconds - static_cast<double>(leg) * legSeconds;
  const int line = lineOfLeg(survey, leg);
  if (into < lineSeconds(survey)) return alongLine(survey, line, into);
  return turning(survey, line, lineOfLeg(survey, leg + 1),
                 (into - lineSeconds(survey)) / turnSeconds(survey));
}

EastNorth sensorPosition(const SurveyOptions& survey, double seconds) {
  const WalkPose antenna = antennaPose(survey, seconds);
  return antenna.position - unitToward(antenna.heading) * survey.layback;
}

double walkDuration(const SurveyOptions& survey) {
  return survey.lines * lineSeconds(survey) + (survey.lines - 1) * turnSeconds(survey);
}

SyntheticGround groundForSurvey(const SurveyOptions& survey) {
  const double length = survey.lineLength, spacing = survey.lineSpacing;
  const auto onLine = [&](double acrossShare, double alongShare) {
    const double line = std::round(acrossShare * (survey.lines - 1));
    return gridPoint(survey, alongShare * length, line * spacing);
  };
  const double middle = (survey.lines - 1) * spacing / 2;
  return SyntheticGround{
      .origin = survey.origin,
      .background = {.conductivity = 20, .inphase = 0.5},
      .pipes = {{.through = gridPoint(survey, 0.85 * length, middle),
                 .bearing = survey.bearing + 75,
                 .width = 0.4,
                 .peak = {.conductivity = 35, .inphase = 6}}},
      .targets = {{.centre = onLine(0.25, 0.30), .width = 1.5, .peak = {30, 2}},
                  {.centre = onLine(0.50, 0.70), .width = 1.5, .peak = {45, 4}},
                  {.centre = onLine(0.75, 0.45), .width = 1.5, .peak = {25, 1.5}}}};
}

}  // namespace gc40

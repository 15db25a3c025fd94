#include "survey/parts.h"

#include "survey/survey_trips.h"

#include <gtest/gtest.h>

namespace sondrix {
namespace {

struct MadePart {
  const char* path;
  double from;  // metres east of the start, and seconds; a metre is sounded a second
  double to;
  double aside = 0;  // metres
  bool hasTimes = true;
  const char* kind = "SL2";
};

// The first of each trip's parts.
std::string JourneysOf(const std::vector<MadePart>& parts) {
  Survey survey;
  for (const MadePart& part : parts) {
    survey.trips.push_back(
        MadeTrip(part.path, part.kind, static_cast<std::size_t>(part.to - part.from), [&](std::size_t i) {
          const double at = part.from + static_cast<double>(i);
          // The first has no fix yet.
          if (i == 0) return Sounding{};
          return SoundingAt(at, part.aside, part.hasTimes ? 1.6e9 + at : Unknown, 5);
        }));
  }
  JoinParts(survey);
  std::string text;
  for (const Trip& trip : survey.trips) text += std::to_string(trip.journey);
  return text;
}

TEST(Parts, GoOnWhereTheLastEnded) {
  struct Case {
    const char* name;
    std::vector<MadePart> parts;
    const char* journeys;
  };
  const Case cases[] = {
      {"numbered", {{"a/lake-1.sl2", 0, 100}, {"a/lake-2.sl2", 100, 200}}, "00"},
      {"in any order, and by number rather than letter",
       {{"lake10.sl2", 200, 300}, {"lake9.sl2", 100, 200}, {"lake8.sl2", 0, 100}},
       "222"},
      {"in brackets", {{"Chart 12_06 [1].sl2", 0, 50}, {"Chart 12_06 [2].sl2", 52, 90}}, "00"},
      {"by the time", {{"s_09.59.30.sl2", 0, 50}, {"s_10.00.20.sl2", 50, 90}}, "00"},
      {"another folder", {{"a/lake-1.sl2", 0, 100}, {"b/lake-2.sl2", 100, 200}}, "01"},
      {"another kind", {{"lake-1.sl2", 0, 100}, {"lake-2.sl2", 100, 200, 0, true, "SL3"}}, "01"},
      {"another stem", {{"lake-1.sl2", 0, 100}, {"pond-2.sl2", 100, 200}}, "01"},
      {"no number", {{"lake.sl2", 0, 100}, {"lakes.sl2", 100, 200}}, "01"},
      {"a pause", {{"lake-1.sl2", 0, 100}, {"lake-2.sl2", 170, 270}}, "01"},
      {"the same again", {{"lake-1.sl2", 0, 100}, {"lake-2.sl2", 0, 100}}, "01"},
      {"elsewhere", {{"lake-1.sl2", 0, 100}, {"lake-2.sl2", 100, 200, 150}}, "01"},
      {"a missing part", {{"lake-1.sl2", 0, 100}, {"lake-3.sl2", 200, 300}, {"lake-4.sl2", 300, 350}}, "011"},
      {"without times", {{"lake-1.sl2", 0, 100, 0, false}, {"lake-2.sl2", 110, 200, 0, false}}, "00"},
      {"without times, not the next", {{"lake-1.sl2", 0, 99, 0, false}, {"lake-3.sl2", 100, 200}}, "01"},
      {"without times, elsewhere", {{"lake-1.sl2", 0, 99, 0, false}, {"lake-2.sl2", 100, 200, 50}}, "01"},
      {"nothing in it", {{"lake-1.sl2", 0, 100}, {"lake-2.sl2", 100, 100}, {"lake-3.sl2", 100, 200}}, "010"},
  };
  for (const Case& test : cases) EXPECT_EQ(JourneysOf(test.parts), test.journeys) << test.name;
}

}  // namespace
}  // namespace sondrix

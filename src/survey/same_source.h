#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace sondrix {

struct Survey;

// A trip whose soundings another one of the survey has too.
struct RepeatedTrip {
  std::size_t trip = 0, of = 0;  // indices: to be left out, and of the trip that stays
  // "the same soundings as lake.sl2", "its soundings stand in lake.sl2", or "... lake.sl2 and 2 others"
  std::string words;
};

// Which trips are to be left out, in their order: the same recording given twice, a table made from a
// recording and thinned or rounded, a table that was read before and written again, a track into which
// several trips were put unchanged. Recordings stay, then logs, then tracks and tables; the fuller one of
// two, of equals the one that isn't retold by another source, the earlier one. Told from places, times and
// depths of up to 2048 soundings of a trip, before any of them is corrected; two trips that both have times
// repeat each other at the same times alone.
std::vector<RepeatedTrip> FindRepeatedTrips(const Survey& survey);

}  // namespace sondrix

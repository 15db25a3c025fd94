#include "survey/track_section.h"

#include "geo/near_places.h"

#include <algorithm>

namespace sondrix {
namespace {

// Spreads the way of the soundings from, from + 1, ... to - 1, which share a place, up to that of to.
void SpreadWay(std::vector<double>& way, std::size_t from, std::size_t to) {
  const double step = (way[to] - way[from]) / static_cast<double>(to - from);
  for (std::size_t i = from + 1; i < to; ++i) way[i] = way[from] + step * static_cast<double>(i - from);
}

}  // namespace

double WayBetween(const Sounding& from, const Sounding& to) {
  return MetresBetween(from.longitude, from.latitude, to.longitude, to.latitude);
}

void TrackSection::TellFates(SoundingList& soundings) const {
  for (std::size_t i = 0; i < size(); ++i) {
    if (fate[i] != Fate::Used) soundings[index[i]].fate = fate[i];
  }
}

bool SectionReader::Next(TrackSection& section) {
  section.index.clear();
  section.way.clear();
  section.depth.clear();
  std::size_t heldFrom = 0;
  double way = 0;
  for (; next_ < soundings_->size() && section.size() < TrackSection::MaxSize; ++next_) {
    const Sounding& sounding = (*soundings_)[next_];
    if (sounding.beginsLine && sounding.fate != Fate::NoPosition) {
      if (!section.index.empty()) break;
      ++line_;
    }
    if (sounding.fate != Fate::Used) continue;
    if (!section.index.empty()) {
      const Sounding& before = (*soundings_)[section.index.back()];
      if (before.longitude != sounding.longitude || before.latitude != sounding.latitude) {
        way += WayBetween(before, sounding);
        section.way.push_back(way);
        SpreadWay(section.way, heldFrom, section.way.size() - 1);
        heldFrom = section.way.size() - 1;
      } else {
        section.way.push_back(way);
      }
    } else {
      section.way.push_back(way);
    }
    section.index.push_back(static_cast<std::uint32_t>(next_));
    section.depth.push_back(sounding.recorded);
  }
  section.fate.assign(section.size(), Fate::Used);
  section.line = line_;
  return !section.index.empty();
}

}  // namespace sondrix

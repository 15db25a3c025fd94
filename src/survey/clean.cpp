#include "survey/clean.h"

#include "survey/clean_blind.h"
#include "survey/clean_lost.h"
#include "survey/clean_position.h"
#include "survey/clean_repeats.h"
#include "survey/clean_scatter.h"
#include "survey/clean_spikes.h"
#include "survey/track_section.h"

namespace sondrix {

Stretches CleanTrip(Trip& trip) {
  SoundingList& soundings = trip.soundings;
  MarkWithoutPosition(soundings);
  MarkJumpsOfPlace(soundings);
  BeginLines(soundings);
  MarkWithoutDepth(soundings);
  MarkHeldSmallest(soundings);
  MarkRepeats(soundings);
  const float resolution = DepthResolution(soundings);
  Stretches stretches;
  TrackSection section;
  SectionReader reader(soundings);
  while (reader.Next(section)) {
    FindNoise(section, resolution);
    FindSpikes(section);
    FindScatter(section);
    FindLost(section, stretches);
    section.TellFates(soundings);
  }
  return stretches;
}

void CleanOff(Trip& trip) {
  MarkWithoutPosition(trip.soundings);
  BeginLines(trip.soundings);
  MarkWithoutDepth(trip.soundings);
}

}  // namespace sondrix

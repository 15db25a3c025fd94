#pragma once

#include "app/chart/source_choice.h"
#include "sounders/common/reading.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace sondrix {

class Progress;

struct SourceReading {
  std::string kind;      // empty: no reader knows it
  std::string problem;   // why it gave no soundings; empty: it has some
  bool isGuess = false;  // the kind is the reader's guess, and it found none of it
  Reading reading;
};

// Reads the sources, as many at a time as there are threads, each of which makes itself options. What is
// returned depends on neither. EndAsked where a signal asked for it.
std::vector<SourceReading> ReadSources(std::span<const ChartSource> sources, int threads,
                                       const std::function<ReadOptions()>& makeOptions, Progress& progress);

}  // namespace sondrix

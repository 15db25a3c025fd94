#pragma once

#include "survey/track_section.h"

#include <span>

namespace sondrix {

// A sounding of a section that isn't a spike.
struct TrackPoint {
  double way = 0;        // metres
  float depth = 0;       // metres
  std::uint32_t at = 0;  // index into the section
};

// What the soundings at one end of a piece let expect beyond it.
struct PieceEnd {
  double way = 0;   // of the last sounding there
  float level = 0;  // metres, the depth there
  float slope = 0;  // metres a metre
  float depth = 0;  // metres, of that sounding
  float fall =
      0;  // metres a metre that the bed may fall beyond: twice the slope, and 0.1; 1 where too few tell
};

// Soundings without a jump between them.
struct TrackPiece {
  std::uint32_t first = 0, last = 0;  // indexes into the points
  PieceEnd begin, end;
};

std::vector<TrackPoint> PointsOf(const TrackSection& section);

// The level and slope of some points where the last one lies (the first, if atFirst): median of the slopes
// between all pairs and of the depths brought to that place by it, so that two of five points may be wrong
// (H. Theil, 1950; P. K. Sen, 1968).
PieceEnd EndOf(std::span<const TrackPoint> points, bool atFirst);

// By how many metres the piece behind a gap lies deeper than what may be expected of the one before it: going
// on level, with the slope of either end or with one halfway; from the levels, or from the two soundings
// beside the gap.
struct Jump {
  float least =
      0;  // metres, signed: as the bed explains it best; 1.5 times the noise more by two soundings alone
  float low = 0, high = 0;  // metres: the range of all of them
};
Jump JumpBetween(const PieceEnd& end, const PieceEnd& begin, float noise);

// A jump below it is no jump: four times the noise, a quarter of the depth or 3 m, whichever of these two is
// less.
float LeastJump(float noise, float depth);

// Whether more than five soundings in a row between the two told nothing.
bool IsGap(const TrackSection& section, const TrackPoint& before, const TrackPoint& behind);

// Cuts a section at its jumps and gaps, since behind a gap a sounder may come back with a wrong bottom.
std::vector<TrackPiece> PiecesOf(const TrackSection& section, std::span<const TrackPoint> points);

}  // namespace sondrix

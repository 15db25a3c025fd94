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

// By how many metres the piece behind a gap lies deeper than what explains it best: going on with the slope
// of either end, with both halfway, or level; from the levels, or from the two soundings beside the gap,
// which may be one and a half times the noise further apart.
float JumpBetween(const PieceEnd& end, const PieceEnd& begin, float noise);

// A jump below it is no jump: four times the noise, a quarter of the depth or 3 m, whichever of these two is
// less.
float LeastJump(float noise, float depth);

// Cuts a section at its jumps.
std::vector<TrackPiece> PiecesOf(const TrackSection& section, std::span<const TrackPoint> points);

}  // namespace sondrix

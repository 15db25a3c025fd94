#include "chart/track_lines.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace sondrix {
namespace {

// A sounding so many times as far off as usual begins a line.
constexpr double JumpSteps = 12;
// The course is taken between marks so many steps apart: from one sounding to the next it is mostly noise.
constexpr double MarkSteps = 4;
constexpr double ShortestMark = 3;  // metres: satellites scatter by that much
// A turn: cos 45 degrees off the way from the line's beginning.
constexpr double TurnCosine = 0.7071;

double Distance(const PlaneSounding& a, const PlaneSounding& b) { return std::hypot(a.x - b.x, a.y - b.y); }

double UsualStep(std::span<const PlaneSounding> soundings) {
  constexpr std::size_t enough = 200'000;
  const std::size_t stride = std::max<std::size_t>(1, soundings.size() / enough);
  std::vector<double> steps;
  for (std::size_t i = 1; i < soundings.size(); i += stride) {
    if (soundings[i].beginsLine) continue;
    const double step = Distance(soundings[i - 1], soundings[i]);
    if (step > 0) steps.push_back(step);  // a recorder may hold a fix for several soundings
  }
  // By way: a boat that stays at a place makes many steps and no way.
  std::sort(steps.begin(), steps.end());
  const double sum = std::accumulate(steps.begin(), steps.end(), 0.0);
  double way = 0;
  for (const double step : steps) {
    way += step;
    if (way >= sum / 2) return step;
  }
  return 0;
}

// Follows one line and tells where it ends.
class LineCourse {
 public:
  explicit LineCourse(double mark) : mark_(mark) {}

  void Begin(const PlaneSounding& at) { begin_ = last_ = at; }
  bool TurnsAt(const PlaneSounding& at) {
    const double wayX = at.x - last_.x, wayY = at.y - last_.y, way = std::hypot(wayX, wayY);
    if (way < mark_) return false;
    const double fromX = last_.x - begin_.x, fromY = last_.y - begin_.y, from = std::hypot(fromX, fromY);
    const bool turns = from > mark_ / 2 && fromX * wayX + fromY * wayY < TurnCosine * from * way;
    last_ = at;
    return turns;
  }

 private:
  double mark_;
  PlaneSounding begin_, last_;
};

}  // namespace

TrackLines CutLines(std::span<const PlaneSounding> soundings) {
  TrackLines lines;
  lines.step = UsualStep(soundings);
  lines.lineOf.resize(soundings.size());
  LineCourse course(std::max(ShortestMark, MarkSteps * lines.step));
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    const PlaneSounding& sounding = soundings[i];
    const bool begins = i == 0 || sounding.beginsLine ||
                        Distance(soundings[i - 1], sounding) > JumpSteps * lines.step ||
                        course.TurnsAt(sounding);
    if (begins) {
      ++lines.count;
      course.Begin(sounding);
    }
    lines.lineOf[i] = lines.count - 1;
  }
  return lines;
}

TrackLines CutStretches(std::span<const PlaneSounding> soundings, const TrackLines& lines, double longest) {
  TrackLines stretches;
  stretches.step = lines.step;
  stretches.lineOf.resize(soundings.size());
  double way = 0;
  for (std::size_t i = 0; i < soundings.size(); ++i) {
    const bool isNewLine = i == 0 || lines.lineOf[i] != lines.lineOf[i - 1];
    if (!isNewLine) way += Distance(soundings[i - 1], soundings[i]);
    if (isNewLine || way > longest) {
      ++stretches.count;
      way = 0;
    }
    stretches.lineOf[i] = stretches.count - 1;
  }
  return stretches;
}

}  // namespace sondrix

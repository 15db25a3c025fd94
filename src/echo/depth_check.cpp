#include "echo/depth_check.h"

#include "core/fault.h"
#include "core/files.h"
#include "core/messages.h"
#include "core/number_text.h"
#include "core/rounding.h"
#include "core/run.h"
#include "core/settings.h"
#include "core/window.h"
#include "echo/views.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sondrix {
namespace {

constexpr std::int32_t SearchDeepTop = 200;
constexpr std::int32_t SearchMargin = 30;
constexpr std::size_t SearchFloor = 100;  // the last rows, never searched

constexpr double OwnRateLimit = 0.04F;  // share of the own depth
constexpr float JumpLimit = 2.0F;       // metres
constexpr float FishDelta = -0.5F;      // metres
constexpr int FishRows = 10;

constexpr int OwnDepthDigits = 2;

std::int16_t FloorRow(double row) {
  using Limits = std::numeric_limits<std::int16_t>;
  const double whole = std::floor(row);
  if (!(whole >= Limits::min() && whole <= Limits::max())) throw Fault(FaultNumber::Overflow);
  return static_cast<std::int16_t>(whole);
}

void SaveFramePicture(Run& run, std::int32_t frameCounter) {
  std::string path = run.settings.TargetPath;
  path.append("echo").push_back(PathSeparator);
  AppendWhole(path, frameCounter);
  path.append(".bmp");
  SaveGraph(run.pictures, run.outputs, path);
}

void ShowCheck(Run& run, DepthState& state, const DepthFrame& frame, const DepthResult& result,
               std::string& badLog) {
  const bool compared = IsCompared(frame.Selected);
  if (compared) {
    MarkDepths(run.pictures, state.OwnRow, state.SounderRow);
    PrintDelta(run.pictures, result.DepthDelta);
  }
  if (IsDefect(frame, result.DepthDelta))
    PrintDepths(run.pictures, state.OwnRow, state.SounderRow, result.OwnDepth, frame.DepthM, frame.Selected);
  run.window.Pump();

  std::string& line = state.Line;
  line.assign(frame.Progress);
  if (IsFish(state, result.DepthDelta)) {
    line.append(run.messages.WordFish);
    if (run.settings.UseBeep) run.window.Beep();
  }
  if (compared) {
    line.append(" ").append(run.messages.WordOffset).append(" ");
    AppendWhole(line, frame.FilePosition);
    line.append(" - L").append(LocText(frame.DepthM));
    line.append("<>A").append(LocText(result.OwnDepth)).append("...");
    badLog.append(line).append("\r\n");
  }
  run.window.SetAtt(line);
  if (run.settings.SaveGraf) SaveFramePicture(run, frame.FrameCounter);
}

}  // namespace

std::int32_t SearchTopOf(std::int32_t sounderRow) {
  return sounderRow < SearchDeepTop ? std::max(sounderRow, 2 * SearchMargin) - SearchMargin : SearchDeepTop;
}

std::int16_t StrongestRow(std::span<const std::uint8_t> samples, std::int32_t searchTop) {
  const auto first = static_cast<std::size_t>(searchTop) + 1;
  if (samples.size() < first + SearchFloor + 1) return 0;
  const auto window = samples.subspan(first, samples.size() - SearchFloor - first);
  std::uint8_t best = 0;
  for (const std::uint8_t sample : window) best = std::max(best, sample);
  if (best == 0) return 0;
  std::size_t row = window.size();
  while (window[--row] != best) {
  }
  return FloorRow(static_cast<double>(first + row));
}

float LimitDepth(float ownDepth, float prevDepth) {
  const auto jump = static_cast<double>(std::abs(ownDepth - prevDepth));
  const double believed = OwnRateLimit * static_cast<double>(ownDepth);
  if (!(believed < jump)) return ownDepth;
  double step = jump * OwnRateLimit;
  if (jump > JumpLimit) {
    step = OwnRateLimit / 3;
  } else if (2 * believed > jump) {
    step = jump / 2;
  }
  const auto from = static_cast<double>(prevDepth);
  return static_cast<float>(ownDepth > prevDepth ? from + step : from - step);
}

DepthResult CompareDepths(DepthState& state, const DepthFrame& frame, bool search) {
  if (search) state.OwnRow = StrongestRow(frame.Samples, SearchTopOf(state.SounderRow));
  const auto rows = static_cast<double>(frame.Samples.size());
  const auto depth = static_cast<double>(frame.DepthM);
  const auto scale = static_cast<double>(frame.ScaleM);
  auto ownDepth = static_cast<float>(RoundTo(scale / rows * state.OwnRow, OwnDepthDigits));
  state.SounderRow = ToWhole32(depth / scale * rows);
  if (!IsCompared(frame.Selected)) {
    ownDepth = frame.DepthM;
  } else {
    if (frame.DepthM > 0 && frame.FrameCounter == 1) ownDepth = frame.DepthM;
    if (state.PrevOwnRow > 0 && state.OwnRow > 0) {
      const float limited = LimitDepth(ownDepth, state.PrevOwnDepth);
      if (limited != ownDepth) {
        ownDepth = limited;
        state.OwnRow = FloorRow(rows * static_cast<double>(ownDepth) / scale);
      }
    }
  }
  DepthResult result;
  result.DepthDelta = static_cast<float>(RoundTo(static_cast<double>(ownDepth) - depth, OwnDepthDigits));
  result.OwnDepth = static_cast<float>(RoundTo(static_cast<double>(ownDepth), OwnDepthDigits));
  return result;
}

bool IsDefect(const DepthFrame& frame, float depthDelta) {
  const auto level = static_cast<float>(frame.DefectLevel / 100.0);
  return frame.DepthM != 0 && std::abs(depthDelta) > level;
}

bool IsFish(const DepthState& state, float depthDelta) {
  return depthDelta < FishDelta && std::abs(state.PrevOwnRow - state.OwnRow) > FishRows;
}

void DepthCheck(Run& run, DepthState& state, const DepthFrame& frame, std::string& badLog) {
  const DepthResult result = CompareDepths(state, frame, run.settings.MakeGraf);
  if (run.settings.MakeGraf) {
    ShowCheck(run, state, frame, result, badLog);
  } else {
    run.window.SetAtt(frame.Progress);
  }
  state.PrevOwnRow = state.OwnRow;
  state.PrevOwnDepth = result.OwnDepth;
}

}  // namespace sondrix

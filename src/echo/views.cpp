#include "echo/views.h"

#include "core/fault.h"
#include "core/rounding.h"
#include "core/window.h"
#include "echo/curve.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sondrix {
namespace {

constexpr float EchoWidth = 512;
constexpr float CurveWidth = 256;
constexpr float ScaleWidth = 100;
constexpr float Height3D = 256;

constexpr float DeepestScaleM = 150;  // a deeper scale isn't believed
constexpr float DefaultScaleM = 15;
constexpr int DeltaX = 210, DeltaY = 1350;
constexpr int DepthX = 200;

// What a label of the depth scale takes of the picture's height, some air included.
constexpr float LabelShare = 10.0F / 420;
// Every how many-th tick has a label: the first of these that leaves the labels room.
constexpr int LabelMultiples[] = {1, 5, 10, 25, 50};

// The depth scale beside a frame. Rows per metre are whole, so the ticks lie up to a row per metre too high.
void DrawScale(Picture& metr, Channel selectedChannel, std::size_t sampleCount, float scaleM) {
  const double perMetre = std::floor(static_cast<double>(sampleCount) / static_cast<double>(scaleM));
  if (!(perMetre <= std::numeric_limits<std::int16_t>::max())) throw Fault(FaultNumber::Overflow);
  metr.Clear();
  const int step = selectedChannel == Channel::Sidescan ? 10 : 2;
  const double height = static_cast<double>(metr.ScaleHeight());
  const double label = height * static_cast<double>(LabelShare);
  const auto* multiple =
      std::ranges::find_if(LabelMultiples, [&](int m) { return perMetre * step * m >= label; });
  double free = -height;  // where the next label may begin
  for (int k = step; static_cast<float>(k) < scaleM; k += step) {
    const double row = perMetre * k;
    metr.DrawLine(0, row, 20, row, Black);
    if (multiple == std::end(LabelMultiples) || k % (step * *multiple) != 0 || row > height) continue;
    // The last one is moved up into the picture, or left out where another stands.
    const double y = std::min(row - 20, height - label);
    if (y < free) continue;
    metr.PrintAt(22, y, k);
    free = y + label;
  }
}

// The grid of the 3D view: depth grows to the left.
void DrawGrid(Pictures& pictures) {
  constexpr int labels[][2] = {{64, 15}, {128, 10}, {192, 5}};
  for (const auto& [x, metres] : labels) {
    AddLine(pictures, static_cast<float>(x), 0, static_cast<float>(x), Height3D, Grey);
    pictures.SMPL.PrintAt(x + 2, 1, metres);
  }
}

// Where several samples fall on a pixel the shallowest stays. Row 0, the surface, gets no dot.
void PrepareRows(ColumnTable& table, const Picture& echo, std::size_t sampleCount) {
  if (table.sampleCount == sampleCount && table.height == echo.Height() &&
      table.scaleHeight == echo.ScaleHeight())
    return;
  table.sampleCount = sampleCount;
  table.height = echo.Height();
  table.scaleHeight = echo.ScaleHeight();
  table.sampleOfRow.assign(static_cast<std::size_t>(echo.Height()), -1);
  for (std::size_t sample = sampleCount; sample-- > 1;) {
    const int row = echo.DeviceY(static_cast<double>(sample));
    if (row >= echo.Height()) continue;
    for (int up = 0; up < echo.DotHeight() && up <= row; ++up)
      table.sampleOfRow[static_cast<std::size_t>(row - up)] = static_cast<std::int32_t>(sample);
  }
}

void PrepareColours(ColumnTable& table, int ehoSens) {
  if (table.hasColours && table.contrast == ehoSens) return;
  table.hasColours = true;
  table.contrast = ehoSens;
  for (std::size_t sample = 0; sample < table.pixelOfSample.size(); ++sample)
    table.pixelOfSample[sample] = PixelOf(EchoGrey(static_cast<std::uint8_t>(sample), ehoSens));
}

void DrawColumn(Pictures& pictures, std::span<const std::uint8_t> samples, int ehoSens) {
  Picture& echo = pictures.ECHO;
  PrepareRows(pictures.Column, echo, samples.size());
  PrepareColours(pictures.Column, ehoSens);
  const int column = echo.DeviceX(EchoX);
  if (column >= echo.Width()) return;
  std::uint32_t* pixel = echo.Row(0) + column;
  for (const std::int32_t sample : pictures.Column.sampleOfRow) {
    if (sample >= 0) *pixel = pictures.Column.pixelOfSample[samples[static_cast<std::size_t>(sample)]];
    pixel += echo.Stride();
  }
  echo.Touch();
}

}  // namespace

void ClearViews(Pictures& pictures) {
  DropCurve(pictures);
  pictures.LastScale = 0;
  pictures.SMPL.Clear();
  pictures.ECHO.Clear();
  pictures.METR.Clear();
}

void ClearNeedles(Pictures& pictures) {
  pictures.CRS.Clear();
  pictures.HED.Clear();
}

void PrepareViews(Pictures& pictures, Channel selectedChannel, std::int16_t sampleCount) {
  ClearViews(pictures);
  pictures.ECHO.SetScaleWidth(EchoWidth);
  pictures.SMPL.SetScaleWidth(CurveWidth);
  pictures.METR.SetScaleWidth(ScaleWidth);
  if (!Is3D(selectedChannel)) {
    for (Picture* picture : {&pictures.ECHO, &pictures.SMPL, &pictures.METR})
      picture->SetScaleHeight(sampleCount);
    return;
  }
  pictures.ECHO.SetScaleHeight(EchoWidth);
  pictures.SMPL.SetScaleHeight(Height3D);
  pictures.METR.SetScaleHeight(Height3D);
  // The lower half only, the right side of the boat: 3 rows to the metre.
  for (int k = 0; k <= 120; k += 30) {
    pictures.METR.DrawLine(0, k + 128, 20, k + 128, Black);
    if (k > 0) pictures.METR.PrintAt(20, k + 123, k / 3);
  }
}

float ShownScale(Channel selectedChannel, float scaleM) {
  return scaleM > DeepestScaleM && !Is3D(selectedChannel) ? DefaultScaleM : scaleM;
}

void ShowFrame(Pictures& pictures, Channel selectedChannel, std::span<const std::uint8_t> samples,
               float scaleM, float depthM, int ehoSens, int defectPause, Window& window) {
  const bool is3D = Is3D(selectedChannel);
  if (!is3D) {
    if (scaleM > 0 && scaleM != pictures.LastScale)
      DrawScale(pictures.METR, selectedChannel, samples.size(), scaleM);
    pictures.LastScale = scaleM;
  }
  // The pace of the 3D view: the frame before stays to be seen until this one replaces it.
  if (is3D) window.Wait(defectPause);
  DropCurve(pictures);
  pictures.Curve.Waiting = true;
  pictures.SMPL.ClearTexts();
  pictures.SMPL.Touch();
  if (is3D) {
    DrawGrid(pictures);
    pictures.ECHO.ScrollLeft();
    if (depthM > 0) pictures.SMPL.PrintAt(3, 124, depthM);
    return;
  }
  pictures.Curve.Samples.assign(samples.begin(), samples.end());
  pictures.ECHO.ScrollLeft();
  DrawColumn(pictures, samples, ehoSens);
}

Colour EchoGrey(std::uint8_t sample, int ehoSens) {
  const auto grey = static_cast<Colour>(sample > 0 ? std::clamp(255 - sample + ehoSens, 0, 255) : 255);
  return grey << 16 | grey << 8 | grey;
}

void MarkDepths(Pictures& pictures, std::int16_t ownRow, std::int32_t sounderRow) {
  const auto recorded = static_cast<float>(sounderRow);
  AddLine(pictures, 0, recorded, CurveWidth, recorded, Blue);
  AddLine(pictures, 0, ownRow, CurveWidth, ownRow, Red);
  pictures.ECHO.DrawDot(EchoX, ownRow, Red);
  pictures.ECHO.DrawDot(EchoX, sounderRow, Blue);
}

void PrintDelta(Pictures& pictures, float depthDelta) { pictures.SMPL.PrintAt(DeltaX, DeltaY, depthDelta); }

void PrintDepths(Pictures& pictures, std::int16_t ownRow, std::int32_t sounderRow, float ownDepth,
                 float depthM, Channel channel) {
  if (IsCompared(channel)) pictures.SMPL.PrintAt(DepthX, ownRow + 10, ownDepth);
  pictures.SMPL.PrintAt(DepthX, static_cast<double>(sounderRow) - 50, depthM);
}

void DrawNeedle(Picture& picture, float angle, Colour colour) {
  constexpr int middle = 19;
  constexpr double length = 40;
  const auto direction = static_cast<double>(angle);
  const double x = RoundEven(std::sin(direction) * length + middle, 0);
  const double y = RoundEven(middle - std::cos(direction) * length, 0);
  picture.Clear();
  picture.DrawLine(middle, middle, x, y, colour);
  picture.DrawCircle(middle, middle, 2, colour);
}

}  // namespace sondrix

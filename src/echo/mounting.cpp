#include "core/messages.h"
#include "core/rounding.h"
#include "echo/curve.h"
#include "echo/views.h"

#include <algorithm>
#include <cmath>

namespace sondrix {
namespace {

constexpr double SketchSize = 512;
constexpr double Middle = SketchSize / 2;
constexpr double MaxShift = 128;
constexpr double FarShift = 1e9;  // far outside, whatever the size of the raster
constexpr double MarkRadius = 8;

struct SketchLine {
  int x1, y1, x2, y2;
};

constexpr SketchLine BoatFromAbove[] = {{128, 250, 384, 250},
                                        {128, 250, 128, 120},
                                        {384, 250, 384, 120},
                                        {128, 120, 256, 50},
                                        {384, 120, 256, 50}};
constexpr SketchLine BoatFromAstern[] = {{128, 320, 384, 320},
                                         {384, 320, 384, 370},
                                         {128, 320, 128, 370},
                                         {128, 370, 256, 400},
                                         {384, 370, 256, 400}};

// 12.5 units to the metre.
double ShiftOf(double metres) {
  return static_cast<double>(ToWhole(std::clamp(metres * 10000 / 400 / 2, -FarShift, MaxShift)));
}

}  // namespace

void DrawMounting(Pictures& pictures, float ducerXM, float ducerYM, const Messages& messages) {
  ClearViews(pictures);
  Picture& echo = pictures.ECHO;
  echo.SetScale(SketchSize, SketchSize);
  pictures.SMPL.SetScale(256, 256);
  pictures.METR.SetScale(100, 256);

  // Antenna and transducer lie the same way to both sides of the middle; whichever is further ahead is
  // higher.
  const double d = ShiftOf(static_cast<double>(ducerXM));
  const double e = ShiftOf(std::abs(static_cast<double>(ducerYM)));
  const double xd = Middle + d, yd = ducerYM > 0 ? Middle - e : Middle;
  const double xg = Middle - d, yg = ducerYM > 0 ? Middle : Middle - e;

  for (const SketchLine& line : BoatFromAbove) echo.DrawLine(line.x1, line.y1, line.x2, line.y2, Black);
  echo.DrawCircle(d < 3 ? xg - 3 : xg, yg, MarkRadius, Red);
  echo.DrawCircle(xd, yd, MarkRadius, Blue);
  echo.PrintAt(d > 0 ? xg - 65 : xg + 15, yg - 5, "GPS", Red);
  echo.PrintAt(d > 0 ? xd + 15 : xd + messages.DucerLabelShift, yd - 5, messages.WordDucer, Blue);

  for (const SketchLine& line : BoatFromAstern) echo.DrawLine(line.x1, line.y1, line.x2, line.y2, Black);
  echo.DrawCircle(xg, 316, MarkRadius, Red);
  echo.DrawCircle(xd, 370, MarkRadius, Blue);
  echo.DrawLine(xd, 370, 32, 470, Blue);
  echo.DrawLine(xd, 370, 480, 470, Blue);
}

}  // namespace sondrix

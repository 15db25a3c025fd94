#include "echo/curve.h"
#include "echo/views.h"

namespace sondrix {
namespace {

// SMPL is a cross-section laid on its side: the transducer at the right edge in the middle, the left side of
// the boat going up, depth growing to the left.
constexpr float DucerX = 256;
constexpr int DucerRow = 128;
// On ECHO an entry is two rows, counted from the boat's line.
constexpr int BoatRow = 256;
constexpr int LastEchoRow = 512;

int AwayFromBoat(Side3D side) { return side == Side3D::Left ? -1 : 1; }

}  // namespace

void Draw3DEntry(Pictures& pictures, Side3D side, int index, std::uint8_t depthPx, std::uint8_t lastPx,
                 int ehoSens) {
  const int away = AwayFromBoat(side);
  const float lastX = index == 0 ? DucerX : DucerX - lastPx;
  AddLine(pictures, lastX, static_cast<float>(DucerRow + away * index), DucerX - depthPx,
          static_cast<float>(DucerRow + away * (index + 1)), Blue);
  const Colour grey = EchoGrey(depthPx, ehoSens);
  const int row = BoatRow + away * (1 + 2 * index);
  pictures.ECHO.DrawDot(EchoX, row, grey);
  pictures.ECHO.DrawDot(EchoX, row + away, grey);
}

void Close3DSide(Pictures& pictures, Side3D side, int count, std::uint8_t lastPx) {
  const int away = AwayFromBoat(side);
  AddLine(pictures, DucerX - lastPx, static_cast<float>(DucerRow + away * (count + 1)), DucerX, DucerRow,
          Red);
  for (int row = BoatRow + away * (1 + 2 * count); row >= 0 && row <= LastEchoRow; row += away)
    pictures.ECHO.DrawDot(EchoX, row, White);
}

}  // namespace sondrix

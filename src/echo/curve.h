#pragma once

#include "echo/picture.h"

namespace sondrix {

inline constexpr float EchoX = 510;  // where a frame's column is drawn on ECHO

// Leaves nothing to be drawn on SMPL and forgets the frame.
void DropCurve(Pictures& pictures);

// A line on SMPL, drawn when somebody looks.
void AddLine(Pictures& pictures, float x1, float y1, float x2, float y2, Colour colour);

}  // namespace sondrix

#pragma once

#include <QLabel>

namespace sondrix {

// The height of the window's letters in pixels: small enough that the longest captions stand beside their
// fields.
inline constexpr int LetterPixels = 11;

// Whether the label's text fits its room as it is drawn.
bool FitsRoom(const QLabel* label);

// Narrows the letters of a label, and then makes them smaller, until its text fits its room.
void FitLabel(QLabel* label);

}  // namespace sondrix

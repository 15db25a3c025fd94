#pragma once

#include <QWidget>

class QLineEdit;

namespace sondrix {

inline constexpr int SettingsLeft = 410;   // pixels from the window's left edge, in its first size
inline constexpr int SettingsWidth = 365;  // pixels

// Builds the right half of the window, every control under its name: text fields, boxes, labels, the option
// buttons "UseTyp0" to "UseTyp9" in a widget "UseTyp", and boxLang. The needles' places are left free.
// Fields are in the order in which the tabulator visits them.
QWidget* BuildSettingsPanel(QWidget* parent);

// The places of the needles CRS and HED in the panel.
QRect CourseRect();
QRect HeadingRect();

// Flags without a visible box and their labels, below the lower edge of the window.
void BuildHiddenFlags(QWidget* parent);

}  // namespace sondrix

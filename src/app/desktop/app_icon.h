#pragma once

#include <QIcon>

namespace sondrix {

// The program's icon, drawn: a boat over a bottom, and its beam.
QIcon AppIcon();

}  // namespace sondrix

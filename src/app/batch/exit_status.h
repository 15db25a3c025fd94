#pragma once

namespace sondrix {

inline constexpr int ExitWell = 0;  // every source ended well
inline constexpr int ExitFailed =
    1;  // a run was refused, failed, lost an output or ended before its source did
inline constexpr int ExitUsage = 2;  // wrong usage; nothing was run

}  // namespace sondrix

#pragma once

namespace sondrix {

// What the programs of the command line leave with.
inline constexpr int ExitWell = 0;    // all was done
inline constexpr int ExitFailed = 1;  // something of it was refused, failed, was lost or was interrupted
inline constexpr int ExitUsage = 2;   // wrong usage; nothing was done

}  // namespace sondrix

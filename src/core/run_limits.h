#pragma once

#include <cstdint>
#include <string_view>

namespace sondrix {

struct Settings;

// The numbers of a run, read once from the fields at its start.
struct RunLimits {
  float DepthAddM = 0;   // added to every depth, metres
  float DepthStepM = 0;  // smallest change of depth between two points, metres
  float MinDistM = 0;    // smallest distance between two points, metres
  float MaxDistM = 0;    // a longer way is a gap, metres
  float SideLimitM = 0;  // reach of the 3D points, metres
  std::int16_t SidePercent = 0;
  float MaxTurnRad = 0;
  float DucerXM = 0;      // transducer to the right of the antenna, metres
  float DucerYM = 0;      // transducer ahead of the antenna, metres
  double DucerDist = 0;   // metres
  double DucerAngle = 0;  // radians from the bow
};

// A number field's value; 0 where the text isn't numeric.
double NumberOf(std::string_view text);

}  // namespace sondrix

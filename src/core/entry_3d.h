#pragma once

namespace sondrix {

// A sounding of a 3D frame, to one side of the boat. Feet.
struct Entry3D {
  float Depth = 0;
  float Distance = 0;  // from the boat
};

}  // namespace sondrix

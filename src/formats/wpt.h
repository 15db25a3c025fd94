#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {

// Waypoint files: UTF-8 with CR LF lines; whoever writes the file turns them into the code page.

// One of the two kinds of mark in a waypoint file.
struct WaypointKind {
  std::int32_t symbol, colour, direction;
  std::string_view middle, closing;  // the fixed pieces of a line around frame and speed
};
extern const WaypointKind ReliefWaypoint;
extern const WaypointKind FishWaypoint;

// A marked place; the texts stand in the line as they are.
struct Waypoint {
  std::int32_t number = 0;
  std::string_view name, latitude, longitude;  // degrees
  std::int32_t frameIndex = 0;
  std::string_view speed;
};

// The four head lines of a waypoint file.
std::string_view WptHead();

// Adds the line of a place at the end of text.
void AppendWaypoint(std::string& text, const WaypointKind& kind, const Waypoint& waypoint);

}  // namespace sondrix

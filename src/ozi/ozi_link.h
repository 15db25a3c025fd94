#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace sondrix {

class Window;
struct Messages;
struct Settings;

// A marked place as the map program takes it.
struct OziWaypoint {
  std::string name;
  std::int32_t symbol = 0;
  double latitude = 0, longitude = 0;  // degrees
  double altitude = 0;                 // metres
  double date = 0;                     // day count
  std::int32_t direction = 0;
  std::int32_t colour = 0;
  std::string description;
};

// The link to the map program's library: a record of its calls. As built it is no link at all: nothing can be
// opened, and the calls do nothing.
struct OziLink {
  bool IsOpen = false;

  // Finds the library and replaces the calls below by its own; false where there is none.
  std::function<bool(OziLink&)> Load = [](OziLink&) { return false; };
  std::function<std::string()> GetApiVersion = [] { return std::string(); };
  std::function<std::string()> GetVersion = [] { return std::string(); };
  std::function<std::int32_t()> FindOzi = [] { return 1; };  // 0: the map program is running
  std::function<void()> ShowAllTracks = [] {};
  std::function<void(std::int32_t)> ShowTrack = [](std::int32_t) {};
  // Track, code (1 starts a segment), degrees, degrees, feet, day count.
  std::function<void(std::int32_t, std::int32_t, double, double, double, double)> CreateTrackPoint =
      [](std::int32_t, std::int32_t, double, double, double, double) {};
  std::function<void(double, double)> CenterMapAtPosition = [](double, double) {};
  std::function<void(double, double)> CenterMapAtPositionWithMark = [](double, double) {};
  std::function<std::int32_t(double, double)> IsPositionOnMap = [](double, double) { return 1; };
  std::function<void(double, double)> FindMapAtPosition = [](double, double) {};
  std::function<std::int32_t(const OziWaypoint&)> CreateWp = [](const OziWaypoint&) { return 0; };
  std::function<void()> CloseApi = [] {};
};

// The user set ViewOzi: opens the link and reports the versions. Without a library or a running map program
// the report says so and ViewOzi is cleared again.
void OpenLink(OziLink& link, Settings& settings, const Messages& messages, Window& window);

// At the start of a job with ViewOzi set.
void OziTrackOpen(OziLink& link);

// A point of a text job's track; code 1 starts a segment. Asks for a map where the point is on none.
void OziLivePoint(OziLink& link, Window& window, std::int32_t code, double latitude, double longitude,
                  double altitudeFeet, double date);

}  // namespace sondrix

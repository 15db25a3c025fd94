#pragma once

namespace sondrix {

struct Settings;
struct RunLimits;
struct RunState;
struct Messages;
struct OziLink;
struct Pictures;
class Outputs;
class Window;

// What a click and a job may use: the one record that is handed down.
struct Run {
  Settings& settings;
  RunLimits& limits;
  RunState& state;
  const Messages& messages;
  Pictures& pictures;
  OziLink& link;
  Outputs& outputs;
  Window& window;
};

}  // namespace sondrix

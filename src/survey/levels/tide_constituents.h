#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace sondrix {

// A constituent that a tide may have. Speeds after P. Schureman, Manual of Harmonic Analysis and Prediction
// of Tides, 1940, table 2.
struct TideSpeed {
  std::string_view name;
  double speed = 0;  // degrees an hour
  // How large it is likely to be beside M2: the coefficients of the equilibrium tide there. That of M4, which
  // shallow water makes, and of SA, which weather makes, are rough means of gauges on open coasts.
  double size = 0;
  bool isDaily = false;  // once a day rather than twice
};

// Those that a fit may tell, the most needful first.
std::span<const TideSpeed> TideSpeeds();

// Those of TideSpeeds that readings over so many seconds can tell from the ones before them: they part by a
// whole turn at least (Rayleigh's criterion, as M. G. G. Foreman, 1977, uses it), and run through a half
// themselves.
std::vector<TideSpeed> SpeedsToldApart(double span);

}  // namespace sondrix

#include "samples/made_track.h"

#include "samples/echogram.h"
#include "samples/xorshift.h"

#include <cmath>
#include <numbers>

namespace sondrix {

std::vector<MadePing> PingsOf(const MadeTrack& track) {
  constexpr double step = 1.0 / 150;
  const double metresPerUnit = std::cos(track.latitude * std::numbers::pi / 180);
  XorShift random(track.seed);
  const auto off = [&] {
    double sum = 0;
    for (int i = 0; i < 12; ++i) sum += random.Signed() / 2;
    return sum * track.noise / metresPerUnit;
  };
  MadePing now;
  now.x = 4'000'000 + 50 * random.Signed();
  now.y = MadeRadius * std::asinh(std::tan(track.latitude * std::numbers::pi / 180)) + 50 * random.Signed();
  now.storedX = static_cast<std::int32_t>(std::lround(now.x));
  now.storedY = static_cast<std::int32_t>(std::lround(now.y));
  double heading = track.heading, nextFix = track.fixEvery * (0.6 + 0.4 * random.Signed());
  std::vector<MadePing> pings;
  std::int64_t steps = 0;
  for (double next = 0; next < track.seconds; next += 1 / track.framesPerSecond) {
    for (; static_cast<double>(steps) * step < next - 1e-9; ++steps) {
      const double time = static_cast<double>(steps) * step;
      const bool isAtRest = time >= track.restFrom && time < track.restUntil;
      const double units = isAtRest ? 0 : track.speed * step / metresPerUnit;
      heading += (track.turn + track.sway * std::sin(time / 2)) * step;
      now.x += units * std::sin(heading);
      now.y += units * std::cos(heading);
      if (time + step < nextFix - 1e-9) continue;
      if (time < track.lostFrom || time >= track.lostUntil) {
        const bool isJump = nextFix > track.jumpAt && nextFix <= track.jumpAt + track.fixEvery;
        const double jump = isJump ? track.jump / metresPerUnit : 0;
        now.storedX = static_cast<std::int32_t>(std::lround(now.x + off() + jump));
        now.storedY = static_cast<std::int32_t>(std::lround(now.y + off()));
      }
      nextFix += track.fixEvery;
    }
    now.time = next;
    pings.push_back(now);
  }
  return pings;
}

std::vector<std::uint8_t> RecordingOf(const std::vector<MadePing>& pings, int formatWord) {
  std::vector<SampleFrame> frames;
  for (const MadePing& ping : pings) {
    const auto time = static_cast<std::int32_t>(std::lround(ping.time * 1000));
    SampleFrame frame = Frame(0, 20.0F, ping.storedX, ping.storedY, 16);
    frame.TimeOffset = time;
    frames.push_back(frame);
    if (formatWord == 2) continue;
    frame.Channel = 2;
    frame.WaterDepth = 0;
    frame.TimeOffset = time + 5;
    frames.push_back(frame);
  }
  return EchogramBytes(formatWord, frames);
}

}  // namespace sondrix

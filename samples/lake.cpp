#include "samples/lake.h"

#include "samples/echogram.h"
#include "samples/xorshift.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace sondrix {

namespace {

constexpr double Pi = std::numbers::pi;
constexpr double FeetPerMetre = 1 / 0.3048;
constexpr double KnotsPerMetreSecond = 1 / 0.514444;

constexpr double LakeLat = 56.0;                     // degrees
constexpr double LakeLon = 37.0;                     // degrees
constexpr double MercatorRadius = 6356752.31424518;  // metres

constexpr int PingsPerSecond = 15;
constexpr int Pings = 80 * PingsPerSecond;
constexpr double BoatSpeed = 2.6;                  // metres a second
constexpr double LegLength = 52.0;                 // metres
constexpr double TurnRadius = 9.0;                 // metres
constexpr double FirstCourse = 1.35;               // radians clockwise from north
constexpr std::int32_t StartTime = 1'464'184'800;  // 2016-05-25 14:00:00

constexpr double DownLimit = 20.0;  // metres, Primary and Downscan
constexpr double SideLimit = 50.0;  // metres to each side
constexpr std::size_t DownSamples = 1920;
constexpr std::size_t SideSamples = 2800;
constexpr double SoundingStep = 1.1;  // feet between two soundings of the 3D strip

struct Mound {
  double X, Y, Height, Width;  // metres; a negative height is a hole
};
constexpr Mound Mounds[] = {{28, -12, -4.2, 7.0}, {45, -27, 3.0, 6.0}, {70, -60, -3.0, 15.0}};

struct WeedBed {
  double X, Y, Radius, Height;  // metres
};
constexpr WeedBed WeedBeds[] = {{16, 4, 11, 1.4}, {18, -33, 9, 1.1}};

struct Fish {
  double Time, Depth;  // seconds into the recording, metres
};
constexpr Fish Fishes[] = {{14.0, 4.3}, {41.2, 7.6}};
constexpr double FishSeconds = 1.6;  // from the first echo of a fish to its nearest
constexpr double FishSpeed = 1.3;    // metres a second between boat and fish

// The stretch where the sounder's depth is that of the weed, seconds.
constexpr double MistakenFrom = 67.0;
constexpr double MistakenTo = 68.4;

struct Boat {
  double Time = 0;              // seconds
  double X = 0, Y = 0;          // metres
  double Course = FirstCourse;  // radians clockwise from north
};

// How the two sounders that look straight down differ.
struct DownBeam {
  double Clutter;  // depth to which the surface clutter reaches, metres
  double Tail;     // length of the bottom's tail, metres
  int SecondEcho;  // strength of the bottom's second echo
  int FishStrength;
  int WeedStrength;
};
constexpr DownBeam PrimaryBeam{0.45, 0.50, 95, 190, 90};
constexpr DownBeam DownscanBeam{0.20, 0.22, 40, 150, 130};

// 0 to 255, the same for all points of one square of a grid of that size in metres.
int GridNoise(double x, double y, double size) {
  const auto column = static_cast<std::uint32_t>(static_cast<std::int32_t>(std::floor(x / size)));
  const auto row = static_cast<std::uint32_t>(static_cast<std::int32_t>(std::floor(y / size)));
  std::uint32_t h = column * 0x9E3779B1U ^ row * 0x85EBCA77U;
  h = (h ^ h >> 15) * 0x2C1B3C6DU;
  return static_cast<int>((h ^ h >> 13) & 0xFF);
}

void Advance(Boat& boat, int ping) {
  constexpr double turn = Pi * TurnRadius;
  const double way = BoatSpeed * ping / PingsPerSecond;
  const bool firstTurn = way >= LegLength && way < LegLength + turn;
  const bool secondTurn = way >= 2 * LegLength + turn && way < 2 * (LegLength + turn);
  const double step = BoatSpeed / PingsPerSecond;
  const double bend = (firstTurn ? 1 : secondTurn ? -1 : 0) * step / TurnRadius;
  const double middle = boat.Course + bend / 2;
  boat.X += step * std::sin(middle);
  boat.Y += step * std::cos(middle);
  boat.Course += bend;
  boat.Time = static_cast<double>(ping) / PingsPerSecond;
}

std::uint8_t Echo(double strength) { return static_cast<std::uint8_t>(std::clamp(strength, 0.0, 240.0)); }

// Strength of a fish at a depth: it is nearest, strongest and highest in the middle of its arch.
double FishEcho(double time, double z, int strength) {
  for (const Fish& fish : Fishes) {
    const double apart = (time - fish.Time) / FishSeconds;
    if (std::abs(apart) >= 1) continue;
    const double range = std::hypot(fish.Depth, FishSpeed * FishSeconds * apart);
    if (z >= range && z < range + 0.2) return strength * (1 - 0.7 * apart * apart);
  }
  return 0;
}

std::vector<std::uint8_t> DownColumn(const Boat& boat, const DownBeam& beam, XorShift& random) {
  const double depth = LakeDepth(boat.X, boat.Y);
  const double weedTop = depth - LakeWeed(boat.X, boat.Y);
  std::vector<std::uint8_t> samples(DownSamples);
  for (std::size_t row = 0; row < samples.size(); ++row) {
    const double z = static_cast<double>(row) * DownLimit / static_cast<double>(DownSamples);
    const double speckle = random.Signed();
    double strength = 7 + 9 * speckle + 230 * std::exp(-z / beam.Clutter) * (0.85 + 0.15 * speckle);
    strength += FishEcho(boat.Time, z, beam.FishStrength) * (0.9 + 0.1 * speckle);
    if (z >= weedTop && z < depth) strength += beam.WeedStrength * (0.7 + 0.5 * speckle);
    if (z >= depth) strength += 236 * std::exp(-(z - depth) / beam.Tail) * (0.9 + 0.1 * speckle);
    if (z >= 2 * depth) {
      strength += beam.SecondEcho * std::exp(-(z - 2 * depth) / (2 * beam.Tail)) * (0.8 + 0.2 * speckle);
    }
    samples[row] = Echo(strength);
  }
  // The first row of the bottom alone is the strongest of the frame.
  const auto bottom = static_cast<std::size_t>(std::lround(depth / DownLimit * DownSamples));
  if (bottom < samples.size()) samples[bottom] = 252;
  return samples;
}

// Port in the first half, from far to near, starboard in the second, from near to far. Between the boat and
// the first echo of the bottom lies the water column.
std::vector<std::uint8_t> SideRow(const Boat& boat, XorShift& random) {
  const double depth = LakeDepth(boat.X, boat.Y);
  const double middle = (SideSamples - 1) / 2.0;
  std::vector<std::uint8_t> samples(SideSamples);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double across = (static_cast<double>(i) - middle) / middle;  // -1 port to 1 starboard
    const double range = std::abs(across) * SideLimit;
    double strength = 5 + 5 * random.Signed();
    if (range < 0.35) strength = 225;
    if (range >= depth) {
      const double ground = std::sqrt(range * range - depth * depth);
      const double angle = boat.Course + (across < 0 ? -Pi / 2 : Pi / 2);
      const double east = std::sin(angle);
      const double north = std::cos(angle);
      const double x = boat.X + ground * east;
      const double y = boat.Y + ground * north;
      const double rise = LakeDepth(x, y) - LakeDepth(x + 0.5 * east, y + 0.5 * north);
      strength += 120 * std::exp(-ground / 40) * (1 + 3 * rise);
      strength += (GridNoise(x, y, 0.35) - 128) * 0.12 + 20 * random.Signed();
      strength += 60 * LakeWeed(x, y) * GridNoise(x, y, 0.8) / 255;
      if (range < depth + 0.4) strength += 60;
    }
    samples[i] = Echo(strength);
  }
  return samples;
}

std::vector<SampleSounding> Strip(const Boat& boat, bool port, XorShift& random) {
  const double angle = boat.Course + (port ? -Pi / 2 : Pi / 2);
  // The deeper the water, the farther the outer beams reach.
  const auto count = static_cast<std::size_t>(std::clamp(12 * LakeDepth(boat.X, boat.Y), 60.0, 120.0));
  std::vector<SampleSounding> soundings(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double dist = SoundingStep * static_cast<double>(i) + 0.2 * (1 + random.Signed());
    const double away = dist / FeetPerMetre;
    const double depth = LakeDepth(boat.X + away * std::sin(angle), boat.Y + away * std::cos(angle));
    soundings[i].Dist = static_cast<float>(dist);
    soundings[i].Depth = static_cast<float>(depth * FeetPerMetre * (1 + 0.004 * random.Signed()));
  }
  return soundings;
}

// The fields that the frames of all channels of one ping share.
SampleFrame FieldsOf(const Boat& boat, XorShift& random) {
  const LakePlace place = LakePlaceOf(boat.X, boat.Y);
  double depth = LakeDepth(boat.X, boat.Y) + 0.01 * random.Signed();
  if (boat.Time >= MistakenFrom && boat.Time < MistakenTo) depth -= 0.8 * LakeWeed(boat.X, boat.Y);

  SampleFrame frame;
  frame.WaterDepth = static_cast<float>(depth * FeetPerMetre);
  frame.LowerLimit = static_cast<float>(DownLimit * FeetPerMetre);
  frame.MercX = static_cast<std::int32_t>(std::lround(place.MercX));
  frame.MercY = static_cast<std::int32_t>(std::lround(place.MercY));
  frame.Speed = static_cast<float>(BoatSpeed * KnotsPerMetreSecond + 0.1 * random.Signed());
  frame.Course = static_cast<float>(boat.Course + 0.01 * random.Signed());
  frame.Heading = static_cast<float>(boat.Course + 0.04 + 0.005 * random.Signed());
  frame.Aux44 = std::bit_cast<std::uint32_t>(-1.0F);
  frame.Aux68 = std::bit_cast<std::uint32_t>(17.5F);
  frame.Aux7C = std::bit_cast<std::uint32_t>(420.0F);
  return frame;
}

}  // namespace

double LakeDepth(double x, double y) {
  double depth = 5.6 + 0.05 * x - 0.07 * y;
  for (const Mound& mound : Mounds) {
    const double away = ((x - mound.X) * (x - mound.X) + (y - mound.Y) * (y - mound.Y)) / mound.Width;
    depth -= mound.Height * std::exp(-away / mound.Width / 2);
  }
  depth += 0.08 * std::sin(x / 3.1) * std::sin(y / 2.3) + 0.15 * std::sin((x + y) / 9.0);
  return std::clamp(depth, 0.4, 17.9);
}

LakePlace LakePlaceOf(double x, double y) {
  const double lat = LakeLat * Pi / 180;
  const double stretch = 1 / std::cos(lat);
  LakePlace place;
  place.MercX = MercatorRadius * LakeLon * Pi / 180 + x * stretch;
  place.MercY = MercatorRadius * std::log(std::tan(Pi / 4 + lat / 2)) + y * stretch;
  place.Lat = (2 * std::atan(std::exp(place.MercY / MercatorRadius)) - Pi / 2) * 180 / Pi;
  place.Lon = place.MercX / MercatorRadius * 180 / Pi;
  return place;
}

double LakeWeed(double x, double y) {
  for (const WeedBed& bed : WeedBeds) {
    const double away = std::hypot(x - bed.X, y - bed.Y) / bed.Radius;
    if (away < 1) return bed.Height * (1 - away * away) * (0.55 + 0.45 * GridNoise(x, y, 0.5) / 255);
  }
  return 0;
}

std::vector<std::uint8_t> LakeEchogram() {
  struct Beam {
    std::uint16_t Channel;
    std::int32_t Delay;  // milliseconds behind the ping
  };
  constexpr Beam beams[] = {{0, 0}, {2, 4}, {5, 9}, {9, 14}};

  XorShift random(20160525);
  std::vector<std::uint8_t> bytes;
  bytes.reserve(12'000'000);
  EchogramWriter writer(3);
  writer.Start(bytes);
  Boat boat;
  for (int ping = 0; ping < Pings; ++ping) {
    if (ping > 0) Advance(boat, ping);
    SampleFrame frame = FieldsOf(boat, random);
    for (const Beam& beam : beams) {
      frame.Channel = beam.Channel;
      frame.TimeOffset = ping * 1000 / PingsPerSecond + beam.Delay;
      // Sounders put the date into the first frame alone and repeat the offset in the others.
      frame.TimeBase = ping == 0 && beam.Channel == 0 ? StartTime : *frame.TimeOffset;
      if (beam.Channel == 0) frame.Samples = DownColumn(boat, PrimaryBeam, random);
      if (beam.Channel == 2) frame.Samples = DownColumn(boat, DownscanBeam, random);
      if (beam.Channel == 5) {
        frame.Samples = SideRow(boat, random);
        frame.LowerLimit = static_cast<float>(SideLimit * FeetPerMetre);
        frame.Aux28 = std::bit_cast<std::uint32_t>(-frame.LowerLimit);
      }
      if (beam.Channel == 9) {
        const std::vector<SampleSounding> port = Strip(boat, true, random);
        frame.Samples = Payload3D(port, Strip(boat, false, random));
        frame.Aux28 = 0;
      }
      writer.Add(frame, bytes);
    }
  }
  return bytes;
}

}  // namespace sondrix

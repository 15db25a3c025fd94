#include "samples/text_steps.h"

#include "samples/lake.h"
#include "samples/open_file.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace sondrix {

namespace {

constexpr std::size_t PieceBytes = 1 << 20;

constexpr double LaneLength = 90;  // metres
constexpr double LaneStep = 4;     // metres from lane to lane, to the south
constexpr int Lanes = 23;
constexpr double NorthernLane = 10;  // metres

}  // namespace

std::string StepsText(const TextStep& add, std::int64_t steps) {
  std::string text;
  for (std::int64_t step = 0; step < steps; ++step) add(text, step);
  return text;
}

bool WriteSteps(const std::string& path, const TextStep& add, std::int64_t bytes) {
  const SampleFile file = OpenSample(path);
  if (!file) return false;
  std::string piece;
  std::int64_t written = 0;
  const auto write = [&] {
    written += static_cast<std::int64_t>(piece.size());
    const bool done = std::fwrite(piece.data(), 1, piece.size(), file.get()) == piece.size();
    piece.clear();
    return done;
  };
  for (std::int64_t step = 0;; ++step) {
    const std::size_t whole = piece.size();
    add(piece, step);
    if (written + static_cast<std::int64_t>(piece.size()) > bytes) {
      piece.resize(whole);
      return write() && std::fflush(file.get()) == 0;
    }
    if (piece.size() >= PieceBytes && !write()) return false;
  }
}

void AddFixed(std::string& text, double number, int decimals) {
  char digits[64];
  const auto result =
      std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed, decimals);
  text.append(digits, result.ptr);
}

void AddNumber(std::string& text, std::int64_t number) {
  char digits[24];
  text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

void AddDigits(std::string& text, std::int64_t number, std::size_t digits) {
  const std::size_t start = text.size();
  AddNumber(text, number);
  const std::size_t length = text.size() - start;
  if (length < digits) text.insert(start, digits - length, '0');
}

SurveyPoint SurveyAt(double way) {
  const double round = LaneLength + LaneStep;
  const double lanes = std::floor(way / round);
  const double along = way - lanes * round;
  const auto lane = static_cast<std::int64_t>(lanes);
  const std::int64_t phase = lane % (2 * Lanes);
  const bool southward = phase < Lanes;
  const double down = static_cast<double>(southward ? phase : 2 * Lanes - phase);
  const bool eastward = lane % 2 == 0;

  SurveyPoint point;
  const double done = along < LaneLength ? along : LaneLength;
  point.X = eastward ? done : LaneLength - done;
  point.Y = NorthernLane - LaneStep * down - (along - done) * (southward ? 1 : -1);
  point.Course = along > LaneLength ? (southward ? 180 : 0) : eastward ? 90 : 270;
  point.Depth = LakeDepth(point.X, point.Y);
  return point;
}

}  // namespace sondrix

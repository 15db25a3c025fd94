#pragma once

#include <cstdint>
#include <functional>
#include <string>

// What the text samples share: a sample is laid out step by step, so that one of any length needs memory for
// a piece of it only.

namespace sondrix {

// Appends the lines of one step, counted from 0; those of step 0 begin with the head.
using TextStep = std::function<void(std::string& text, std::int64_t step)>;

// The lines of so many steps.
std::string StepsText(const TextStep& add, std::int64_t steps);

// Replaces the file by whole steps, at most so many bytes. False when it can't be written.
bool WriteSteps(const std::string& path, const TextStep& add, std::int64_t bytes);

void AddFixed(std::string& text, double number, int decimals);
// Filled up with zeros at the left to so many digits; number is not negative.
void AddDigits(std::string& text, std::int64_t number, std::size_t digits);
void AddNumber(std::string& text, std::int64_t number);

// Where a boat is that mows the lake in lanes from west to east and back, after so many metres of way.
struct SurveyPoint {
  double X, Y;    // metres on the lake's plane
  double Course;  // degrees
  double Depth;   // metres
};
SurveyPoint SurveyAt(double way);

// How the rows of a table are written.
struct TableForm {
  bool CrLf = false;
  char Separator = ',';
  bool Mixed =
      false;  // in an export: rows of Primary, Downscan and Sidescan in turn instead of Downscan alone
};

}  // namespace sondrix

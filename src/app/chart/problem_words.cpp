#include "app/chart/problem_words.h"

#include <span>
#include <string_view>

namespace sondrix {
namespace {

struct ProblemRow {
  FaultNumber number;
  std::string_view words;
};

std::string WordsOf(const Fault& fault, std::span<const ProblemRow> rows) {
  for (const ProblemRow& row : rows) {
    if (fault.Number() == static_cast<int>(row.number)) return std::string(row.words);
  }
  return std::string(fault.Description());
}

}  // namespace

std::string SourceProblem(const Fault& fault) {
  static constexpr ProblemRow rows[] = {
      {FaultNumber::BadFileName, "it is no file"},
      {FaultNumber::PathNotFound, "its folder is missing"},
  };
  return WordsOf(fault, rows);
}

std::string OutputProblem(const Fault& fault) {
  static constexpr ProblemRow rows[] = {
      {FaultNumber::BadFileName, "what stands there is no file, or no file can have that name"},
      {FaultNumber::PathAccess, "a folder stands there"},
      {FaultNumber::PathNotFound, "its folder is missing"},
  };
  return WordsOf(fault, rows);
}

}  // namespace sondrix

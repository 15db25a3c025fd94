#include "core/run_result.h"

#include "core/settings.h"

#include <gtest/gtest.h>
#include <tuple>

namespace sondrix {
namespace {

TEST(Fault, NumbersAreThoseOfTheirDescriptions) {
  const std::pair<int, const char*> rows[] = {{5, "Invalid procedure call or argument"},
                                              {6, "Overflow"},
                                              {7, "Out of memory"},
                                              {9, "Subscript out of range"},
                                              {11, "Division by zero"},
                                              {13, "Type mismatch"},
                                              {52, "Bad file name or number"},
                                              {53, "File not found"},
                                              {55, "File already open"},
                                              {57, "Device I/O error"},
                                              {61, "Disk full"},
                                              {62, "Input past end of file"},
                                              {67, "Too many files"},
                                              {68, "Device unavailable"},
                                              {70, "Permission denied"},
                                              {75, "Path/File access error"},
                                              {76, "Path not found"},
                                              {380, "Invalid property value"}};
  for (const auto& [number, text] : rows) {
    const Fault fault(static_cast<FaultNumber>(number));
    EXPECT_EQ(FaultLine("GO", fault), " ! error GO: " + std::to_string(number) + ". " + text);
    EXPECT_EQ(FaultLine("JobLog", fault), " ! error JobLog: " + std::to_string(number) + ": " + text);
  }
}

TEST(RunResult, IsWellAfterAWantedEndWithWholeOutputs) {
  const Fault lost(FaultNumber::DiskFull);
  const std::tuple<RunEnd, std::vector<RunOutput>, std::vector<Fault>, bool> rows[] = {
      {RunEnd::Finished, {{"a", true}}, {}, true},
      {RunEnd::Stopped, {}, {}, true},
      {RunEnd::Refused, {}, {}, false},
      {RunEnd::EndedEarly, {}, {}, false},
      {RunEnd::Failed, {}, {}, false},
      {RunEnd::Finished, {}, {lost}, false},
      {RunEnd::Finished, {{"a", true}, {"b"}}, {}, false}};
  for (const auto& [end, outputs, faults, isWell] : rows) {
    RunResult result;
    result.end = end;
    result.outputs = outputs;
    result.lost = faults;
    EXPECT_EQ(result.IsWell(), isWell) << NameOf(end) << outputs.size();
  }
}

TEST(Settings, BeginAtTheDefaultsOfTheTable) {
  const Settings settings;
  for (const Field& field : Fields()) EXPECT_EQ(FieldText(settings, field), field.defaultText) << field.name;
  EXPECT_TRUE(settings.UseHead && !settings.UseUTM);
}

}  // namespace
}  // namespace sondrix

#include "app/chart/lines.h"

#include "app/chart/assemble.h"
#include "app/chart/chart_lines.h"
#include "app/chart/chart_run.h"
#include "core/date_time.h"

#include <cmath>
#include <utility>

namespace sondrix {
namespace {

constexpr double LatestTime = 253402300799;  // the last second of the year 9999

// "2 bad rows", "1 bad row": one has no "s" at the end of the first word with one.
std::string Counted(std::uint64_t count, std::string_view what) {
  std::string words(what);
  const auto isEnd = [](char c) { return c < 'a' || c > 'z'; };
  for (std::size_t i = 0; count == 1 && i < words.size(); ++i) {
    if (words[i] != 's' || (i + 1 < words.size() && !isEnd(words[i + 1]))) continue;
    words.erase(i, 1);
    break;
  }
  return std::to_string(count) + " " + words;
}

std::string FatesText(const FateCounts& fates) {
  std::string text;
  for (std::size_t i = 0; i < fates.size(); ++i) {
    const auto fate = static_cast<Fate>(i);
    if (fates[i] == 0 && fate != Fate::Used) continue;
    text += (text.empty() ? "" : ", ") + Counted(fates[i], NameOf(fate));
  }
  return text;
}

void Join(std::string& line, std::string_view sentence) {
  if (!sentence.empty()) line.append("; ").append(sentence);
}

std::string RangeText(const TimeRange& range) {
  if (std::isnan(range.from)) return "without times";
  return TimeText(range.from) + " to " + TimeText(range.to) + " UTC";
}

// Of which journey the source is a later part.
std::string PartsText(const SourceAccount& account, const ChartRun& run) {
  std::string text;
  for (std::size_t t = account.firstTrip; t < account.firstTrip + account.tripCount; ++t) {
    const std::uint32_t journey = run.survey.trips[t].journey;
    if (journey != t) text += (text.empty() ? "goes on from " : ", ") + run.survey.trips[journey].name;
  }
  return text;
}

std::string LineOf(const SourceAccount& account, const ChartRun& run) {
  const TripAccount sum = AccountOf(account, run);
  std::string line = account.kind + ", " + CountedThings(account.soundings, "sounding");
  if (account.tripCount > 1) line += " of " + CountedThings(account.tripCount, "trip");
  if (account.tripCount > 0) {
    line += ", " + (run.options.verbose ? FatesText(sum.fates) : Counted(sum.fates[0], NameOf(Fate::Used))) +
            ", " + RangeText(sum.times);
  }
  if (account.tripCount == 0 && account.leftOut.size() == 1) {
    Join(line, "left out: " + account.leftOut.front().words);
  } else {
    for (const LeftOutTrip& trip : account.leftOut) Join(line, trip.name + " left out: " + trip.words);
  }
  if (const std::string parts = PartsText(account, run); !parts.empty()) Join(line, parts);
  for (const std::string& sentence : account.takenFor) Join(line, sentence);
  for (const std::string& sentence : account.remarks) Join(line, sentence);
  const std::string passedOver = CountsText(account.passedOver);
  if (!passedOver.empty()) Join(line, "passed over: " + passedOver);
  return line;
}

void AddFolderLines(const ChartRun& run, std::vector<ChartLine>& lines) {
  for (std::size_t f = 0; f < run.folders.size(); ++f) {
    std::uint64_t used = 0, passed = 0;
    for (const SourceAccount& account : run.sources) {
      if (account.source.folder != f) continue;
      ++(account.IsPassed() ? passed : used);
    }
    if (run.folders[f].isTakenBefore) ++used;
    std::string line = ShownName(run.folders[f].path) + ": ";
    if (used == 0) line += "nothing in it can be read";
    if (passed > 0)
      line += (used == 0 ? ", " : "") + CountedThings(passed, "file") + " left out that no reader knows";
    if (used == 0 || passed > 0) lines.push_back({line, true});
  }
}

}  // namespace

std::string CountedThings(std::uint64_t count, std::string_view thing) {
  return Counted(count, thing) + (count == 1 ? "" : "s");
}

std::string CountsText(const PassedOverCounts& counts) {
  std::string text;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts[i] == 0) continue;
    text += (text.empty() ? "" : ", ") + Counted(counts[i], NameOf(static_cast<PassedOver>(i)).text);
  }
  return text;
}

std::string TimeText(double seconds) {
  if (!(std::abs(seconds) <= LatestTime)) return "?";
  std::string text;
  AppendStamp(text, DateOfUnix(static_cast<std::int64_t>(std::floor(seconds))));
  text[text.find('T')] = ' ';
  return text;
}

std::vector<ChartLine> ChartLines(const ChartRun& run) {
  std::vector<ChartLine> lines;
  for (const SourceAccount& account : run.sources) {
    if (account.IsPassed() && !run.options.verbose) continue;
    const std::string name = ShownName(account.source.path) + ": ";
    if (account.problem.empty()) {
      lines.push_back({name + LineOf(account, run)});
    } else {
      lines.push_back({name + account.problem, true});
    }
  }
  AddFolderLines(run, lines);
  TripAccount sum;
  for (const TripAccount& trip : run.trips) sum.Add(trip);
  lines.push_back({CountedThings(run.survey.SoundingCount(), "sounding") + ": " + FatesText(sum.fates)});
  for (const std::string& remark : run.remarks) lines.push_back({remark});
  for (std::string& sentence : ChartSentences(run)) lines.push_back({std::move(sentence)});
  for (const OutputAccount& output : run.outputs) {
    const std::string name = ShownName(output.path) + ": ";
    if (output.problem.empty()) {
      lines.push_back({name + CountedThings(static_cast<std::uint64_t>(output.bytes), "byte") +
                       (output.note.empty() ? "" : ", " + output.note)});
    } else {
      lines.push_back({name + "not made: " + output.problem, true});
    }
  }
  return lines;
}

}  // namespace sondrix

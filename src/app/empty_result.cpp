#include "app/empty_result.h"

#include "app/note_texts.h"
#include "core/channel.h"
#include "core/files.h"
#include "core/number_text.h"
#include "core/run_limits.h"
#include "core/run_result.h"
#include "core/settings.h"
#include "core/text.h"
#include "jobs/job_csv.h"
#include "jobs/job_log.h"
#include "jobs/job_mp.h"
#include "jobs/job_table.h"

#include <algorithm>

namespace sondrix {
namespace {

struct Empty {
  const RunResult& result;
  const Settings& settings;
  LangId langId;
  const NoteTexts& texts = NoteTextsOf(langId);
  std::string channel = ChannelName(settings.UseTyp, langId);
};

// What a field sets; 0 where it isn't a number.
std::string ValueOf(const std::string& field) { return LocText(NumberOf(field)); }

// Of the chosen channel; null where the source has none of it.
const ChannelCount* ChosenCount(const Empty& empty) {
  for (const ChannelCount& count : empty.result.channels)
    if (count.channel == empty.settings.UseTyp) return &count;
  return nullptr;
}

void AddOtherChannels(const Empty& empty, std::vector<std::string>& lines) {
  for (const ChannelCount& count : empty.result.channels) {
    if (count.channel == empty.settings.UseTyp) continue;
    lines.push_back(Filled(count.withDepth > 0 ? empty.texts.depths : empty.texts.noDepth,
                           {ChannelName(count.channel, empty.langId), std::to_string(count.withDepth),
                            std::to_string(count.frames)}));
  }
}

struct Interval {
  double first = 0, last = 0;  // 0: open
  std::string text;            // empty where there is none
};

Interval IntervalOf(const Empty& empty) {
  const auto bound = [](const std::string& field) { return std::max(NumberOf(field), 0.0); };
  Interval interval = {bound(empty.settings.ScanSkip), bound(empty.settings.ScanCut), {}};
  if (interval.first == 0 && interval.last == 0) return interval;
  const NoteTexts& texts = empty.texts;
  if (interval.first == 0) {
    interval.text = Filled(texts.to, {LocText(interval.last)});
  } else if (interval.last == 0) {
    interval.text = Filled(texts.from, {LocText(interval.first)});
  } else {
    interval.text = Filled(texts.fromTo, {LocText(interval.first), LocText(interval.last)});
  }
  return interval;
}

// Of a channel none of whose frames was used. A run goes no further than the end of its interval.
std::string NoSoundingReason(const Empty& empty) {
  const NoteTexts& texts = empty.texts;
  const RunResult& result = empty.result;
  const Interval interval = IntervalOf(empty);
  if (interval.text.empty() || !result.firstIndex) return Filled(texts.unfit, {empty.channel});
  const std::string first = std::to_string(*result.firstIndex), last = std::to_string(*result.lastIndex);
  if (interval.first > *result.lastIndex) return Filled(texts.outside, {interval.text, first, last});
  if (interval.last > 0 && interval.last < *result.firstIndex) {
    return Filled(texts.before, {interval.text, first});
  }
  return Filled(texts.noFrameInside, {interval.text, empty.channel});
}

std::vector<std::string> WhyNoSonarPoint(const Empty& empty) {
  const NoteTexts& texts = empty.texts;
  const RunResult& result = empty.result;
  if (result.frames == 0) return {std::string(texts.nothingRead)};
  const ChannelCount* chosen = ChosenCount(empty);
  std::vector<std::string> lines;
  if (!chosen) {
    lines = {Filled(texts.noFrame, {empty.channel})};
  } else if (result.soundings == 0) {
    return {NoSoundingReason(empty)};
  } else if (result.withDepth == 0) {
    const Interval interval = IntervalOf(empty);
    lines = {chosen->withDepth == 0 || interval.text.empty()
                 ? Filled(texts.noDepth, {empty.channel})
                 : Filled(texts.noDepthInside, {interval.text, empty.channel})};
  } else {
    const std::string count = std::to_string(result.withDepth);
    if (const auto channel = ChannelOf(empty.settings.UseTyp); channel && Is3D(*channel)) {
      return {Filled(texts.fellTo3D, {count})};
    }
    return {Filled(texts.fellToDistance, {count, ValueOf(empty.settings.DistDiff)})};
  }
  AddOtherChannels(empty, lines);
  return lines;
}

std::vector<std::string> WhyNoTablePoint(const Empty& empty) {
  const NoteTexts& texts = empty.texts;
  const RunResult& result = empty.result;
  if (result.frames == 0) return {std::string(texts.nothingRead)};
  if (result.soundings > 0) return {std::string(result.withDepth == 0 ? texts.zeroDepths : texts.noPosition)};
  const auto channel = ChannelOf(empty.settings.UseTyp);
  std::vector<std::string> lines;
  if (channel && !RowOf(*channel).isInTables) {
    lines = {Filled(texts.noTable3D, {empty.channel})};
  } else {
    lines = {Filled(texts.noRow, {empty.channel})};
  }
  if (result.channels.empty()) lines.emplace_back(texts.noPlainRow);
  AddOtherChannels(empty, lines);
  return lines;
}

std::vector<std::string> WhyNoLogPoint(const Empty& empty) {
  const NoteTexts& texts = empty.texts;
  const RunResult& result = empty.result;
  if (result.soundings == 0) return {std::string(texts.noSounding)};
  if (result.withDepth == 0) return {std::string(texts.zeroDepths)};
  if (result.withFix == 0) return {std::string(texts.noFix)};
  return {Filled(texts.fellToLimits, {std::to_string(result.withDepth), ValueOf(empty.settings.DistDiff),
                                      ValueOf(empty.settings.DepthDiff)})};
}

std::vector<std::string> WhyNoMapPoint(const Empty& empty) { return {std::string(empty.texts.noContour)}; }

struct ReasonRow {
  RunResult (*run)(Run& run);
  std::vector<std::string> (*why)(const Empty& empty);
};
constexpr ReasonRow Reasons[] = {{JobCsv, WhyNoTablePoint}, {JobLog, WhyNoLogPoint}, {JobMp, WhyNoMapPoint}};

std::vector<std::string> ReasonsOf(const Empty& empty, std::string_view source) {
  const JobRow& job = JobOf(source);
  // What an unfinished run has counted says nothing of its source.
  if (empty.result.end == RunEnd::Stopped) return {std::string(empty.texts.stopped)};
  for (const ReasonRow& row : Reasons)
    if (row.run == job.run) return row.why(empty);
  return WhyNoSonarPoint(empty);
}

}  // namespace

std::string ChannelName(int number, LangId langId) {
  if (const auto channel = ChannelOf(number)) return std::string(RowOf(*channel).name);
  return Filled(NoteTextsOf(langId).channel, {std::to_string(number)});
}

std::string ExtensionNote(std::string_view source, LangId langId) {
  const std::string_view file = FileNameOf(source);
  const std::size_t point = file.rfind('.');
  if (point == std::string_view::npos) return {};
  std::string lower(file.substr(point));
  std::ranges::transform(lower, lower.begin(), Lower);
  if (JobOf(lower).run == JobOf(source).run) return {};
  return Filled(NoteTextsOf(langId).extension, {file.substr(point), lower});
}

std::vector<std::string> WhyEmpty(const RunResult& result, const Settings& settings, std::string_view source,
                                  LangId langId) {
  if (result.points > 0) return {};
  std::vector<std::string> lines;
  if (std::string note = ExtensionNote(source, langId); !note.empty()) {
    lines = {std::move(note)};
  } else if (result.end != RunEnd::Refused && result.end != RunEnd::Failed) {
    lines = ReasonsOf({result, settings, langId}, source);
  }
  if (!lines.empty()) lines.front().insert(0, NoteTextsOf(langId).noPoints);
  return lines;
}

std::string WhyEmptyLine(const RunResult& result, const Settings& settings, std::string_view source,
                         LangId langId) {
  std::string line;
  for (const std::string& part : WhyEmpty(result, settings, source, langId)) {
    if (!line.empty()) line += "; ";
    line += part;
  }
  return line;
}

}  // namespace sondrix

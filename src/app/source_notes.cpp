#include "app/source_notes.h"

#include "app/empty_result.h"
#include "app/note_texts.h"
#include "core/date_time.h"
#include "core/fault.h"
#include "core/files.h"
#include "core/number_text.h"
#include "core/rounding.h"
#include "core/text.h"
#include "jobs/job_table.h"
#include "jobs/text_summary.h"
#include "sonar/source_summary.h"

#include <algorithm>
#include <array>
#include <optional>

namespace sondrix {
namespace {

constexpr int DepthDigits = 2;

std::string SizeText(std::int64_t bytes) {
  constexpr std::array<std::string_view, 4> units = {" B", " kB", " MB", " GB"};
  auto value = static_cast<double>(bytes);
  std::size_t unit = 0;
  for (; value >= 1000 && unit + 1 < units.size(); ++unit) value /= 1000;
  return LocText(RoundTo(value, 1)).append(units[unit]);
}

std::string TimeText(DateSeconds date) {
  std::string text;
  AppendStamp(text, date);
  std::ranges::replace(text, 'T', ' ');
  return text;
}

template <typename Value>
void AddRange(std::vector<std::string>& lines, std::string_view pattern, std::optional<Value> least,
              std::optional<Value> greatest) {
  const auto text = [](Value value) { return LocText(RoundTo(static_cast<double>(value), DepthDigits)); };
  if (least) lines.push_back(Filled(pattern, {text(*least), text(*greatest)}));
}

template <typename Counts>
std::vector<Channel> MissingIn(const Counts& counts) {
  std::vector<Channel> missing;
  for (const ChannelRow& row : Channels) {
    const auto isIt = [&row](const auto& count) { return count.channel == ChannelByte(row.channel); };
    if (std::ranges::none_of(counts, isIt)) missing.push_back(row.channel);
  }
  return missing;
}

SourceNotes NotesOnEchogram(std::string_view path, LangId langId) {
  const NoteTexts& texts = NoteTextsOf(langId);
  const SourceSummary summary = LookAtEchogram(path);
  SourceNotes notes;
  notes.lines = {Filled(summary.isWhole ? texts.echogram : texts.sampledEchogram,
                        {FileNameOf(path), SizeText(summary.bytes), std::to_string(summary.frames)})};
  for (const ChannelSummary& channel : summary.channels) {
    notes.lines.push_back(
        Filled(texts.channelFrames, {ChannelName(channel.channel, langId), std::to_string(channel.frames),
                                     std::to_string(channel.withDepth), std::to_string(channel.firstIndex),
                                     std::to_string(channel.lastIndex)}));
  }
  if (summary.firstTime) {
    notes.lines.push_back(Filled(texts.times, {TimeText(*summary.firstTime), TimeText(*summary.lastTime)}));
  }
  AddRange(notes.lines, texts.depthRange, summary.leastDepth, summary.greatestDepth);
  if (summary.frames > 0) notes.missing = MissingIn(summary.channels);
  return notes;
}

SourceNotes NotesOnText(std::string_view path, LangId langId) {
  const NoteTexts& texts = NoteTextsOf(langId);
  const TextSummary summary = LookAtText(path);
  const std::string_view kinds[] = {texts.exportTable, texts.plainTable, texts.log, texts.map};
  SourceNotes notes;
  notes.lines = {Filled(summary.isWhole ? texts.text : texts.sampledText,
                        {FileNameOf(path), kinds[static_cast<std::size_t>(summary.kind)],
                         SizeText(summary.bytes), std::to_string(summary.lines)})};
  for (const ChannelCount& channel : summary.channels) {
    notes.lines.push_back(
        Filled(texts.channelRows, {ChannelName(channel.channel, langId), std::to_string(channel.frames),
                                   std::to_string(channel.withDepth)}));
  }
  notes.lines.push_back(Filled(texts.soundings, {std::to_string(summary.soundings)}));
  AddRange(notes.lines, texts.depthRange, summary.leastDepth, summary.greatestDepth);
  if (!summary.channels.empty()) notes.missing = MissingIn(summary.channels);
  return notes;
}

}  // namespace

SourceNotes NotesOn(std::string_view path, LangId langId) {
  if (path.empty()) return {};
  SourceNotes notes;
  try {
    notes = JobOf(path).hasPictures ? NotesOnEchogram(path, langId) : NotesOnText(path, langId);
    if (std::string note = ExtensionNote(path, langId); !note.empty()) notes.lines = {std::move(note)};
  } catch (...) {
    notes.lines = {Filled(NoteTextsOf(langId).unreadable, {FileNameOf(path)})};
  }
  return notes;
}

}  // namespace sondrix

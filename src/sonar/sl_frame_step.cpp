#include "core/fault.h"
#include "core/messages.h"
#include "core/number_text.h"
#include "core/rounding.h"
#include "core/run.h"
#include "core/run_limits.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "core/text.h"
#include "core/window.h"
#include "echo/views.h"
#include "sonar/layout/sl_verdict.h"
#include "sonar/sl_run.h"

#include <algorithm>
#include <limits>
#include <span>
#include <vector>

namespace sondrix {

std::int64_t PercentOf(const SlRun& sl, std::int64_t filePosition) {
  return 100 * filePosition / sl.source->FileLength();
}

namespace {

constexpr std::int64_t MissingChannelScans = 5000;
constexpr float MaxWaterDepth = 1500.0F;  // feet
constexpr int DepthDigits = 2;
constexpr std::int16_t SavedListBytes = 480;  // of a 3D list, while pictures are saved

const std::string& ProgressOf(SlRun& sl) {
  ProgressLine& progress = sl.progress;
  const std::int64_t position = sl.source->FilePosition();
  if (position < progress.nextPercent && sl.FrameCounter == progress.counter) return progress.text;
  const std::int64_t percent = PercentOf(sl, position);
  progress.nextPercent = ((percent + 1) * sl.source->FileLength() + 99) / 100;
  progress.counter = sl.FrameCounter;
  progress.isShown = false;
  progress.text.assign(" ");
  AppendWhole(progress.text, percent);
  progress.text.append("% ").append(sl.run.messages.WordScan);
  AppendWhole(progress.text, sl.FrameCounter);
  return progress.text;
}

// Whether to go on without the selected channel; it may be asked at every frame.
const std::string& QuestionOf(SlRun& sl) {
  sl.line.clear();
  AppendFilled(sl.line, sl.run.messages.AskNoChannel,
               {RowOf(sl.run.state.SelectedChannel).name, std::to_string(sl.lead.FrameIndex),
                std::to_string(PercentOf(sl, sl.source->FilePosition()))});
  return sl.line;
}

// A frame of another channel. While none of the selected channel has come, the user decides whether to go on.
Step PassOver(SlRun& sl) {
  Run& run = sl.run;
  const std::int64_t scans = static_cast<std::int64_t>(sl.lead.FrameIndex) - sl.FirstIndex;
  if (run.state.KnownSamples == 0 && scans > MissingChannelScans) {
    run.window.Beep();
    run.window.SetAtt("");
    sl.progress.isShown = false;
    if (!run.window.Ask(QuestionOf(sl), run.messages.TitleNoChannel)) {
      sl.result.end = RunEnd::Stopped;
      run.window.SetAtt(run.messages.MsgAborted, LineKind::Notice);
      return Step::Close;
    }
  }
  const std::string& progress = ProgressOf(sl);
  if (!sl.progress.isShown) run.window.SetAtt(progress);
  sl.progress.isShown = true;
  return Step::NextFrame;
}

Step ReportBadFrame(SlRun& sl) {
  ShowLogError(sl, sl.source->FilePosition());
  sl.BadLog.append(sl.line).append("\r\n");
  if (sl.format.FormatWord == 3) {
    sl.isCutShort = !sl.run.state.StopFlag;
    sl.run.state.StopFlag = true;
  }
  return Step::Resync;
}

// Whether a good frame lies in the interval that the user chose.
Step CheckInterval(SlRun& sl, bool& inside) {
  const std::int32_t index = sl.lead.FrameIndex;
  inside = false;
  if (sl.FirstIndex > 0) {
    if (index < sl.FirstIndex) {
      sl.line.assign(sl.run.messages.MsgSkipScan);
      AppendWhole(sl.line, index);
      sl.progress.isShown = false;
      sl.run.window.SetAtt(sl.line);
      sl.run.window.RepaintAtt();
      return Step::NextFrame;
    }
    sl.FrameCounter = sl.FirstIndex;
    sl.FirstIndex = 0;
  }
  if (sl.LastIndex > 0 && index > sl.LastIndex) return Step::Close;
  inside = true;
  return Step::NextFrame;
}

// Every byte of a frame that a run decodes or shows, from its start; valid until other bytes are asked for.
// Fault 9 where the file ends before.
std::span<const std::uint8_t> FrameBytes(SlRun& sl, bool is3D) {
  std::int32_t length =
      std::max<std::int32_t>(sl.format.offsets->bodyEnd, sl.format.HeaderLength + sl.lead.SampleCount);
  if (is3D) length = std::max(length, ListsEnd3D);
  return sl.source->Bytes(sl.source->Pos, static_cast<std::size_t>(length));
}

std::span<const std::uint8_t> SamplesOf(const SlRun& sl, std::span<const std::uint8_t> bytes) {
  return bytes.subspan(static_cast<std::size_t>(sl.format.HeaderLength),
                       static_cast<std::size_t>(sl.lead.SampleCount));
}

// Several frames fall into a second.
void StampFrame(SlRun& sl, std::int32_t timeOffset) {
  const DateSeconds time = *sl.RunDate + timeOffset / 1000 - (timeOffset % 1000 < 0);
  if (sl.stampTime == time) return;
  sl.stampTime = time;
  sl.track.fix.StampText.clear();
  AppendStamp(sl.track.fix.StampText, time);
}

void CutFrame(SlRun& sl, const SlFrame& frame) {
  const std::int32_t length = std::max<std::int32_t>(
      {frame.FrameSize, sl.format.offsets->bodyEnd, sl.format.HeaderLength + frame.SampleCount});
  const auto bytes = sl.source->Bytes(sl.source->Pos, static_cast<std::size_t>(length));
  const CutSource source = {.frame = bytes.first(static_cast<std::size_t>(frame.FrameSize)),
                            .body = bytes.first(sl.format.offsets->bodyEnd),
                            .samples = SamplesOf(sl, bytes)};
  sl.cut.Add(source, frame, sl.format, sl.run.settings);
}

void CheckDepth(SlRun& sl, std::span<const std::uint8_t> samples, const SlFrame& frame, float depthM,
                float scaleM) {
  sl.line.assign(ProgressOf(sl)).append(" ^");
  sl.progress.isShown = false;
  AppendHms(sl.line, frame.TimeOffset);
  DepthCheck(sl.run, sl.depth,
             {.Samples = samples,
              .Selected = sl.run.state.SelectedChannel,
              .DepthM = depthM,
              .ScaleM = scaleM,
              .FrameCounter = sl.FrameCounter,
              .FilePosition = sl.source->FilePosition(),
              .DefectLevel = sl.DefectLevel,
              .Progress = sl.line},
             sl.BadLog);
}

List3D ListOf(std::span<const std::uint8_t> payload, std::int64_t start, std::int16_t lastBytes,
              std::int16_t bytes, std::vector<Entry3D>& entries) {
  DecodeList3D(payload, start, bytes, entries);
  return {entries, EntriesOf(bytes), LastDistance3D(payload, start, lastBytes)};
}

// While pictures are saved the lists are cut short; the share of the width counts by the whole left list all
// the same, and by what is left of the right one.
Frame3DLists ListsOf(SlRun& sl, SlLists3D lists, std::span<const std::uint8_t> payload) {
  const std::int16_t most =
      sl.run.settings.SaveGraf ? SavedListBytes : std::numeric_limits<std::int16_t>::max();
  const std::int16_t leftBytes = std::min(lists.LeftBytes, most);
  const std::int16_t rightBytes = std::min(lists.RightBytes, most);
  const std::int64_t rightStart = LeftListStart + lists.LeftBytes;
  return {ListOf(payload, LeftListStart, lists.LeftBytes, leftBytes, sl.LeftEntries),
          ListOf(payload, rightStart, rightBytes, rightBytes, sl.RightEntries)};
}

// Counts the points that stand behind a length of the buffer.
void CountPoints(SlRun& sl, std::size_t from) {
  sl.result.points +=
      std::count(sl.CsvBuffer.begin() + static_cast<std::ptrdiff_t>(from), sl.CsvBuffer.end(), '\n');
}

Step ProcessFrame(SlRun& sl) {
  Run& run = sl.run;
  const std::size_t written = sl.CsvBuffer.size();
  const bool is3D = Is3D(run.state.SelectedChannel);
  SlFrame frame = SlBody(FrameBytes(sl, is3D), sl.format, sl.lead);
  if (is3D) frame.LowerLimit = LowerLimit3D;

  StampFrame(sl, frame.TimeOffset);

  if (!(frame.WaterDepth >= 0 && frame.WaterDepth <= MaxWaterDepth)) return Step::Resync;
  const auto depthM = static_cast<float>(RoundTo(frame.WaterDepth * MetresPerFoot, DepthDigits));
  auto scaleM = static_cast<float>(RoundTo(frame.LowerLimit * MetresPerFoot, DepthDigits));
  if (scaleM == 0) return Step::Resync;

  ++sl.result.soundings;
  if (depthM != 0) ++sl.result.withDepth;
  TrackPointOf(run, sl.track, {frame, depthM, *sl.RunDate, sl.FrameCounter}, sl.CsvBuffer);
  if (sl.cut.IsOpen()) CutFrame(sl, frame);
  if (sl.FrameCounter == std::numeric_limits<std::int32_t>::max()) throw Fault(FaultNumber::Overflow);
  ++sl.FrameCounter;
  const std::span<const std::uint8_t> bytes = FrameBytes(sl, is3D);
  const std::span<const std::uint8_t> samples = SamplesOf(sl, bytes);
  if (run.settings.MakeGraf) {
    scaleM = ShownScale(run.state.SelectedChannel, scaleM);
    ShowFrame(run.pictures, run.state.SelectedChannel, samples, scaleM, depthM, run.settings.EhoSens,
              run.state.DefectPause, run.window);
  }
  if (is3D) {
    Points3D(run, sl.points, sl.track.fix, ListsOf(sl, SlSamples3D(bytes), samples), sl.CsvBuffer);
  } else {
    CheckDepth(sl, samples, frame, depthM, scaleM);
  }
  CountPoints(sl, written);
  return Step::NextFrame;
}

// The bytes of the lead fields and, where the file has it, of the depth.
std::span<const std::uint8_t> HeadBytes(SlSource& source, const SlOffsets& at) {
  const auto depthEnd = std::max<std::size_t>(at.leadEnd, at.WaterDepth + sizeof(float));
  return source.Bytes(source.Pos, source.Has(source.Pos, depthEnd) ? depthEnd : at.leadEnd);
}

// A frame that comes twice, at the seam of two chunks, counts once.
void CountFrame(SlRun& sl, std::span<const std::uint8_t> head) {
  const std::int64_t position = sl.source->FilePosition();
  if (position <= sl.countedTo) return;
  sl.countedTo = position;
  ChannelCount& count = sl.counts[sl.lead.Channel];
  count.channel = sl.lead.Channel;
  ++count.frames;
  const std::size_t at = sl.format.offsets->WaterDepth;
  const bool hasDepth = head.size() >= at + sizeof(float) && FloatAt(head.data() + at) > 0;
  if (hasDepth) ++count.withDepth;
}

void NoteIndex(RunResult& result, std::int32_t index) {
  result.firstIndex = std::min(index, result.firstIndex.value_or(index));
  result.lastIndex = std::max(index, result.lastIndex.value_or(index));
}

}  // namespace

Step StepFrame(SlRun& sl) {
  Run& run = sl.run;
  SlSource& source = *sl.source;
  const std::span<const std::uint8_t> head = HeadBytes(source, *sl.format.offsets);
  sl.lead = SlLead(head, sl.format);
  if (!sl.RunDate) sl.RunDate = sl.lead.TimeBase > 0 ? DateOfUnix(sl.lead.TimeBase) : ClockNow();
  sl.lead.SampleCount = EffectiveSamples(sl.lead, run.state.SelectedChannel, sl.format);
  const SlVerdict verdict = SlCheck(sl.lead, run.state.SelectedChannel, run.state.KnownSamples);
  if (verdict != SlVerdict::Bad) CountFrame(sl, head);
  if (verdict == SlVerdict::OtherChannel) return PassOver(sl);
  if (verdict != SlVerdict::Bad && run.state.KnownSamples == 0) {
    run.state.KnownSamples = KnownSamplesOf(run.state.SelectedChannel, sl.lead.SampleCount);
    PrepareViews(run.pictures, run.state.SelectedChannel, sl.lead.SampleCount);
    run.window.Pump();
  }
  if (verdict == SlVerdict::Bad) return ReportBadFrame(sl);
  if (verdict == SlVerdict::StepOver) return Step::NextFrame;
  NoteIndex(sl.result, sl.lead.FrameIndex);
  bool inside = false;
  const Step step = CheckInterval(sl, inside);
  return inside ? ProcessFrame(sl) : step;
}

}  // namespace sondrix

#include "sonar/job_sl.h"

#include "core/code_page.h"
#include "core/fault.h"
#include "core/messages.h"
#include "core/number_text.h"
#include "core/rounding.h"
#include "core/run.h"
#include "core/run_limits.h"
#include "core/run_lock.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "core/window.h"
#include "echo/views.h"
#include "ozi/ozi_link.h"
#include "sonar/sl_run.h"

#include <algorithm>
#include <exception>
#include <span>

namespace sondrix {

std::string TargetFile(const SlRun& sl, std::string_view suffix) {
  return (sl.run.settings.TargetPath + sl.run.settings.TargetName).append(suffix);
}

void AppendPercent(std::string& text, const SlRun& sl, std::int64_t filePosition) {
  AppendWhole(text, 100 * filePosition / sl.source->FileLength());
}

namespace {

constexpr std::int32_t MinDefectPause = 100;
constexpr double PauseShare3D = 50;
constexpr std::int64_t MissingChannelScans = 5000;
constexpr std::size_t CsvPiece = 0x8000;  // characters that are collected before they go to the disk
constexpr float MaxWaterDepth = 1500.0F;  // feet
constexpr int DepthDigits = 2;
constexpr std::size_t PercentWidth = 3;  // characters of a progress line that the final percentage replaces

enum class Step { NextFrame, Resync, Close };

// A blank field counts as 0. Fault 13 for a text that is no number.
std::int32_t WholeOf(std::string_view text) { return text.empty() ? 0 : ToWhole32(LocParse(text)); }

void Refuse(Run& run, std::string_view message) {
  run.window.Beep();
  run.window.SetAtt(message);
}

void MakeEchoFolder(Run& run) {
  const std::string folder = run.settings.TargetPath + "echo" + PathSeparator;
  if (!MakeFolders(folder)) Refuse(run, run.messages.MsgEchoFolder);
}

void ReadRunNumbers(SlRun& sl) {
  const Settings& settings = sl.run.settings;
  RunState& state = sl.run.state;
  state.DefectPause = std::max(WholeOf(settings.DefSlp), MinDefectPause);
  if (state.SelectedChannel == 9) state.DefectPause = ToWhole32(state.DefectPause / PauseShare3D);
  sl.DefectLevel = std::max(WholeOf(settings.DefLvl), 1);
  sl.FirstIndex = std::max(WholeOf(settings.ScanSkip), 0);
  sl.LastIndex = std::max(WholeOf(settings.ScanCut), 0);
}

void OpenFiles(SlRun& sl, std::size_t blockSize) {
  Run& run = sl.run;
  sl.source.emplace(run.settings.Source, blockSize);
  const std::string csvPath = TargetFile(sl, ".csv");
  DeleteIfThere(csvPath);
  run.window.Pump();
  sl.csv = OutputFile(csvPath);
  if (run.settings.MakeCut) {
    const std::string suffix = "_ch" + std::to_string(run.state.SelectedChannel) + ".sl2";
    sl.cut.Open(TargetFile(sl, suffix), run.settings.Source, sl.source->FileLength());
  }
  sl.format = SlFormatOf(U16At(sl.source->Bytes(0, 2).data()));
}

// False if the run is refused: it has opened nothing and keeps its message.
bool Prepare(SlRun& sl, std::size_t blockSize) {
  Run& run = sl.run;
  if (run.settings.SaveGraf) MakeEchoFolder(run);
  ReadRunNumbers(sl);
  if (sl.FirstIndex > 0 && sl.LastIndex > 0 && sl.FirstIndex >= sl.LastIndex) {
    Refuse(run, run.messages.MsgBadInterval);
    return false;
  }
  if (run.settings.MakeCut && run.state.SelectedChannel == 9) {
    Refuse(run, run.messages.Msg3dInSl2);
    return false;
  }
  if (run.settings.ViewOzi) {
    OziTrackOpen(run.link);
    sl.track.TrackStart = 1;
    sl.track.LastWpNumber = -1;
  }
  run.state.KnownSamples = 0;
  ClearNeedles(run.pictures);
  OpenFiles(sl, blockSize);
  return true;
}

// The progress line as far as it stands for frames of every channel.
void ComposeProgress(SlRun& sl) {
  sl.line.assign(" ");
  AppendPercent(sl.line, sl, sl.source->FilePosition());
  sl.line.append("% ").append(sl.run.messages.WordScan);
  AppendWhole(sl.line, sl.FrameCounter);
}

// A frame of another channel. While none of the selected channel has come, the user decides whether to go on.
Step PassOver(SlRun& sl) {
  Run& run = sl.run;
  const std::int64_t scans = static_cast<std::int64_t>(sl.lead.FrameIndex) - sl.FirstIndex;
  if (run.state.KnownSamples == 0 && scans > MissingChannelScans) {
    run.window.Beep();
    run.window.SetAtt("");
    if (!run.window.Ask(run.messages.AskNoChannel, run.messages.TitleNoChannel)) {
      run.window.SetAtt(run.messages.MsgAborted);
      return Step::Close;
    }
  }
  ComposeProgress(sl);
  run.window.SetAtt(sl.line);
  return Step::NextFrame;
}

Step ReportBadFrame(SlRun& sl) {
  ShowLogError(sl, sl.source->FilePosition());
  sl.BadLog.append(sl.line).append("\r\n");
  if (sl.format.FormatWord == 3) sl.run.state.StopFlag = true;
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

// Every byte of a frame that a run may use, from its start. Fault 9 where the file ends before.
std::span<const std::uint8_t> FrameBytes(SlRun& sl, bool is3D) {
  std::int32_t length = std::max<std::int32_t>(sl.format.offsets->bodyEnd,  //
                                               sl.format.HeaderLength + sl.lead.SampleCount);
  if (is3D) length = std::max(length, ListsEnd3D);
  if (sl.cut.IsOpen()) length = std::max<std::int32_t>(length, sl.lead.FrameSize);
  return sl.source->Bytes(sl.source->Pos, static_cast<std::size_t>(length));
}

void CutFrame(SlRun& sl, std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> samples,
              const SlFrame& frame) {
  if (!sl.cut.IsOpen()) return;
  const CutSource source = {.frame = bytes.first(static_cast<std::size_t>(frame.FrameSize)),
                            .body = bytes.first(sl.format.offsets->bodyEnd),
                            .samples = samples};
  sl.cut.Add(source, frame, sl.format, sl.run.settings);
}

void CheckDepth(SlRun& sl, std::span<const std::uint8_t> samples, const SlFrame& frame, float depthM,
                float scaleM) {
  ComposeProgress(sl);
  sl.line.append(" ^");
  AppendHms(sl.line, frame.TimeOffset);
  DepthCheck(sl.run, sl.depth,
             {.Samples = samples,
              .Channel = frame.Channel,
              .DepthM = depthM,
              .ScaleM = scaleM,
              .FrameCounter = sl.FrameCounter,
              .FilePosition = sl.source->FilePosition(),
              .DefectLevel = sl.DefectLevel,
              .Progress = sl.line},
             sl.BadLog);
}

Step ProcessFrame(SlRun& sl) {
  Run& run = sl.run;
  const bool is3D = run.state.SelectedChannel == 9;
  const std::span<const std::uint8_t> bytes = FrameBytes(sl, is3D);
  SlFrame frame = SlBody(bytes, sl.format, sl.lead);
  const std::span samples = bytes.subspan(static_cast<std::size_t>(sl.format.HeaderLength),
                                          static_cast<std::size_t>(frame.SampleCount));
  if (is3D) frame.LowerLimit = LowerLimit3D;

  sl.track.fix.StampText.clear();
  AppendStamp(sl.track.fix.StampText, *sl.RunDate + frame.TimeOffset / 1000 - (frame.TimeOffset % 1000 < 0));

  if (!(frame.WaterDepth >= 0 && frame.WaterDepth <= MaxWaterDepth)) return Step::Resync;
  const auto depthM = static_cast<float>(RoundTo(frame.WaterDepth * MetresPerFoot, DepthDigits));
  auto scaleM = static_cast<float>(RoundTo(frame.LowerLimit * MetresPerFoot, DepthDigits));
  if (scaleM == 0) return Step::Resync;

  TrackPointOf(run, sl.track, {frame, depthM, *sl.RunDate, sl.FrameCounter}, sl.CsvBuffer);
  CutFrame(sl, bytes, samples, frame);
  ++sl.FrameCounter;
  if (run.settings.MakeGraf) {
    ShowFrame(run.pictures, run.state.SelectedChannel, samples, scaleM, depthM, run.settings.EhoSens,
              run.state.DefectPause, run.window);
  }
  if (is3D) {
    const SlLists3D lists = SlSamples3D(bytes);
    Points3D(run, sl.points, sl.track.fix, {samples, lists.LeftBytes, lists.RightBytes}, sl.CsvBuffer);
  } else {
    CheckDepth(sl, samples, frame, depthM, scaleM);
  }
  return Step::NextFrame;
}

Step StepFrame(SlRun& sl) {
  Run& run = sl.run;
  SlSource& source = *sl.source;
  sl.lead = SlLead(source.Bytes(source.Pos, sl.format.offsets->leadEnd), sl.format);
  if (!sl.RunDate) sl.RunDate = sl.lead.TimeBase > 0 ? DateOfUnix(sl.lead.TimeBase) : ClockNow();
  sl.lead.SampleCount = EffectiveSamples(sl.lead, run.state.SelectedChannel, sl.format);
  const SlVerdict verdict = SlCheck(sl.lead, run.state.SelectedChannel, run.state.KnownSamples);
  if (verdict == SlVerdict::OtherChannel) return PassOver(sl);
  if (verdict != SlVerdict::Bad && run.state.KnownSamples == 0) {
    run.state.KnownSamples = KnownSamplesOf(run.state.SelectedChannel, sl.lead.SampleCount);
    PrepareViews(run.pictures, run.state.SelectedChannel, sl.lead.SampleCount);
    run.window.Pump();
  }
  if (verdict == SlVerdict::Bad) return ReportBadFrame(sl);
  if (verdict == SlVerdict::StepOver) return Step::NextFrame;
  bool inside = false;
  const Step step = CheckInterval(sl, inside);
  return inside ? ProcessFrame(sl) : step;
}

// Steps to the next frame; false if the run closes.
bool NextFrame(SlRun& sl) {
  SlSource& source = *sl.source;
  source.Pos += sl.lead.FrameSize;
  if (source.FilePosition() > source.FileLength()) return false;
  sl.run.window.Pump();
  if (source.Pos + sl.format.HeaderLength > SlSource::ChunkLength) {
    // A new chunk begins with the frame just finished, which so comes twice.
    source.BaseOffset += source.Pos - sl.lead.FrameSize;
    source.Pos = 0;
  }
  if (sl.CsvBuffer.size() > CsvPiece) {
    sl.csv.Write(sl.CsvBuffer);
    sl.CsvBuffer.clear();
  }
  return true;
}

void ScanFrames(SlRun& sl) {
  bool found = false;  // the search for the marker has put Pos at a frame
  for (;;) {
    if (!found && sl.source->FilePosition() >= sl.source->FileLength()) return;
    if (!MayGoOn(sl, sl.run.messages.MsgAborted)) return;
    const Step step = StepFrame(sl);
    found = step == Step::Resync;
    if (step == Step::Close || !(found ? Resynchronise(sl) : NextFrame(sl))) return;
  }
}

void ShowEnd(Run& run) {
  const std::string_view att = run.window.Att();
  if (att.starts_with(" *")) return;
  std::string line = " 100";
  line.append(FromCharacter(att, PercentWidth)).append(run.messages.MsgDone);
  run.window.SetAtt(line);
}

void FinishCsv(SlRun& sl) {
  if (!sl.csv.IsOpen()) return;
  sl.CsvBuffer.append("\r\n");
  sl.csv.Write(sl.CsvBuffer);
  sl.csv.Close();
}

// Every step runs, whatever became of the ones before it. Returns the first fault of the closing.
std::optional<Fault> CloseAll(SlRun& sl) {
  Run& run = sl.run;
  std::optional<Fault> first;
  const auto guarded = [&first](auto&& step) {
    try {
      step();
    } catch (...) {
      if (!first) first = CaughtFault();
    }
  };
  if (sl.source) sl.source->Close();
  guarded([&] {
    if (sl.cut.IsOpen()) sl.cut.Close(run.state.KnownSamples + sl.format.HeaderLength);
  });
  guarded([&] { WriteWaypointFile(run); });
  guarded([&] { SetRunLock(run.window, false); });
  guarded([&] { ShowEnd(run); });
  guarded([&] { FinishCsv(sl); });
  guarded([&] {
    if (!sl.BadLog.empty()) WriteF(TargetFile(sl, "_bad.txt"), sl.BadLog, run.window);
  });
  return first;
}

}  // namespace

void JobSl(Run& run, std::size_t blockSize) {
  SlRun sl(run);
  std::optional<Fault> fault;
  SetRunLock(run.window, true);
  try {
    if (!Prepare(sl, blockSize)) {
      SetRunLock(run.window, false);
      return;
    }
    ScanFrames(sl);
  } catch (...) {
    fault = CaughtFault();
  }
  const std::optional<Fault> closingFault = CloseAll(sl);
  if (fault && closingFault) throw *closingFault;
  if (closingFault) fault = closingFault;
  if (fault) run.window.SetAtt(FaultLine("JobSl", *fault));
}

}  // namespace sondrix

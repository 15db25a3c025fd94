#include "sonar/job_sl.h"

#include "core/code_page.h"
#include "core/fault.h"
#include "core/messages.h"
#include "core/number_text.h"
#include "core/outputs.h"
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

namespace {

constexpr std::int32_t MinDefectPause = 100;
constexpr double PauseShare3D = 50;
constexpr std::size_t CsvPiece = 0x8000;  // characters that are collected before they go to the disk
constexpr std::size_t PercentWidth = 3;   // characters of a progress line that the final percentage replaces

// A blank field counts as 0. Fault 13 for a text that is no number.
std::int32_t WholeField(std::string_view text) { return ToWhole32(LocParse(Nz(text))); }

void Warn(Run& run, std::string_view message) {
  run.window.Beep();
  run.window.SetAtt(message, LineKind::Fault);
}

// For the preparation, which ends with it.
bool Refuse(SlRun& sl, std::string_view Messages::*message) {
  sl.result.end = RunEnd::Refused;
  sl.result.message = message;
  Warn(sl.run, LineOf(sl.result, sl.run.messages));
  return false;
}

void MakeEchoFolder(Run& run) {
  const std::string folder = run.settings.TargetPath + "echo" + PathSeparator;
  if (!MakeFolders(folder)) Warn(run, run.messages.MsgEchoFolder);
}

void ReadRunNumbers(SlRun& sl) {
  const Settings& settings = sl.run.settings;
  RunState& state = sl.run.state;
  state.DefectPause = std::max(WholeField(settings.DefSlp), MinDefectPause);
  if (Is3D(state.SelectedChannel)) state.DefectPause = ToWhole32(state.DefectPause / PauseShare3D);
  sl.DefectLevel = std::max(WholeField(settings.DefLvl), 1);
  sl.FirstIndex = std::max(WholeField(settings.ScanSkip), 0);
  sl.LastIndex = std::max(WholeField(settings.ScanCut), 0);
}

void OpenFiles(SlRun& sl, std::size_t blockSize) {
  Run& run = sl.run;
  sl.source.emplace(sl.sourcePath, blockSize);
  sl.csvPath = TargetFile(sl, ".csv");
  run.window.Pump();
  sl.csv = run.outputs.Grow(sl.csvPath);
  if (run.settings.MakeCut) {
    const std::string suffix = "_ch" + std::to_string(ChannelByte(run.state.SelectedChannel)) + ".sl2";
    sl.cut.Open(run.outputs, TargetFile(sl, suffix), sl.source->FileLength());
  }
  sl.format = SlFormatOf(U16At(sl.source->Bytes(0, 2).data()));
}

// False if the run is refused: it has opened nothing and keeps its message.
bool Prepare(SlRun& sl, std::size_t blockSize) {
  Run& run = sl.run;
  if (run.settings.SaveGraf) MakeEchoFolder(run);
  ReadRunNumbers(sl);
  if (sl.FirstIndex > 0 && sl.LastIndex > 0 && sl.FirstIndex >= sl.LastIndex) {
    return Refuse(sl, &Messages::MsgBadInterval);
  }
  if (run.settings.MakeCut && Is3D(run.state.SelectedChannel)) {
    return Refuse(sl, &Messages::Msg3dInSl2);
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

// A file that couldn't take a piece takes no more, so that the closing has nothing more to report of it.
void WriteCsvPiece(SlRun& sl) {
  sl.isCsvCut = true;
  sl.csv.File().Write(sl.CsvBuffer);
  sl.isCsvCut = false;
  sl.CsvBuffer.clear();
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
    sl.progress.nextPercent = -1;
  }
  if (sl.CsvBuffer.size() > CsvPiece) WriteCsvPiece(sl);
  return true;
}

void ScanFrames(SlRun& sl) {
  bool found = false;  // the search for the marker has put Pos at a frame
  for (;;) {
    if (!found && sl.source->FilePosition() >= sl.source->FileLength()) return;
    if (!MayScanOn(sl, &Messages::MsgAborted)) return;
    const Step step = StepFrame(sl);
    found = step == Step::Resync;
    if (step == Step::Close || !(found ? Resynchronise(sl) : NextFrame(sl))) return;
  }
}

void ShowEnd(Run& run) {
  if (run.window.AttKind() == LineKind::Notice) return;
  std::string line = " 100";
  line.append(FromCharacter(run.window.Att(), PercentWidth)).append(run.messages.MsgDone);
  run.window.SetAtt(line);
}

void FinishCsv(SlRun& sl) {
  if (!sl.csv.IsOpen()) return;
  std::optional<Fault> fault;
  if (!sl.isCsvCut) {
    try {
      sl.CsvBuffer.append("\r\n");
      WriteCsvPiece(sl);
    } catch (...) {
      fault = CaughtFault();
    }
  }
  sl.csv.PutInPlace();  // the rows of a run that failed are kept
  if (fault) throw *fault;
  if (!sl.isCsvCut) sl.run.outputs.SetWhole(sl.csvPath);
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
    if (sl.cut.IsOpen()) sl.cut.Close(run.outputs, run.state.KnownSamples + sl.format.HeaderLength);
  });
  guarded([&] { WriteWaypointFile(run); });
  guarded([&] { SetRunLock(run.window, false); });
  guarded([&] { ShowEnd(run); });
  guarded([&] { FinishCsv(sl); });
  guarded([&] {
    if (!sl.BadLog.empty()) run.outputs.WriteF(TargetFile(sl, "_bad.txt"), sl.BadLog, run.window);
  });
  return first;
}

void TakeCounts(SlRun& sl) {
  for (const ChannelCount& count : sl.counts) {
    if (count.frames > 0) sl.result.channels.push_back(count);
    sl.result.frames += count.frames;
  }
}

}  // namespace

RunResult JobSl(Run& run, std::size_t blockSize) {
  SlRun sl(run);
  std::optional<Fault> fault;
  SetRunLock(run.window, true);
  try {
    if (!Prepare(sl, blockSize)) {
      SetRunLock(run.window, false);
      return sl.result;
    }
    ScanFrames(sl);
    if (sl.source->HasChanged()) throw Fault(FaultNumber::DeviceIo, sl.sourcePath);
  } catch (...) {
    fault = CaughtFault();
  }
  const std::optional<Fault> closingFault = CloseAll(sl);
  if (fault && closingFault) throw *closingFault;
  if (closingFault) fault = closingFault;
  TakeCounts(sl);
  if (fault) {
    sl.result.end = RunEnd::Failed;
    sl.result.place = "JobSl";
    sl.result.fault = fault;
    Warn(run, LineOf(sl.result, run.messages));
  }
  return sl.result;
}

}  // namespace sondrix

#include "jobs/job_mp.h"

#include "core/fault.h"
#include "core/files.h"
#include "core/messages.h"
#include "core/outputs.h"
#include "core/run.h"
#include "core/settings.h"
#include "core/text.h"
#include "core/window.h"
#include "jobs/line_input.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace sondrix {
namespace {

constexpr std::size_t HeadLength = 100;  // bytes at the start that show what the line ends are
constexpr std::size_t OutputPiece = 0x10000;
constexpr std::string_view SourceSuffix = ".mp";
constexpr std::string_view LabelKey = "label=";
constexpr std::string_view DataKey = "data";
constexpr std::string_view VertexBreak = "),(";

struct MpRun {
  RunResult result;
  std::string target;
  bool targetMade = false;
  OutputFile output;
  std::string collected;  // of the output, not yet handed over
  std::string leaving;
  bool inPolyline = false;
  std::string label;
  std::int32_t polylines = 0;  // data lines that produced points
};

// start is in lower case.
bool StartsWith(std::string_view line, std::string_view start) {
  return line.size() >= start.size() &&
         std::equal(start.begin(), start.end(), line.begin(), [](char s, char c) { return s == Lower(c); });
}

// What fails to be written is gone, so that the closing doesn't write it once more.
void HandOver(MpRun& mp) {
  mp.leaving.swap(mp.collected);
  mp.collected.clear();
  mp.output.Write(mp.leaving);
}

void AddEmptyLine(MpRun& mp) { mp.collected += "\r\n"; }

void AddVertex(MpRun& mp, std::string_view vertex) {
  mp.collected += vertex;
  mp.collected += ',';
  mp.collected += mp.label;
  mp.collected += "\r\n";
  ++mp.result.points;
  if (mp.collected.size() >= OutputPiece) HandOver(mp);
}

// Fault 5 for a vertex without a comma and for a line that ends in its first bracket.
void AddVertices(MpRun& mp, std::string_view line) {
  std::string_view rest = line.substr(line.find('(') + 1);  // the whole line where there is no bracket
  if (rest.empty()) throw Fault(FaultNumber::InvalidCall);
  rest.remove_suffix(1);
  while (true) {
    const std::size_t end = rest.find(VertexBreak);
    const std::string_view vertex = rest.substr(0, end);
    if (vertex.find(',') == std::string_view::npos) throw Fault(FaultNumber::InvalidCall);
    AddVertex(mp, vertex);
    if (end == std::string_view::npos) break;
    rest.remove_prefix(end + VertexBreak.size());
  }
  AddEmptyLine(mp);
  ++mp.polylines;
}

void TakeLine(MpRun& mp, std::string_view line) {
  if (StartsWith(line, "[po")) {
    mp.inPolyline = line.size() == std::string_view("[polyline]").size() && StartsWith(line, "[polyline]");
    if (mp.inPolyline) AddEmptyLine(mp);
  } else if (!mp.inPolyline) {
    return;
  } else if (StartsWith(line, LabelKey)) {
    mp.label = line.substr(LabelKey.size());
    if (mp.label == "0") mp.label = "-1";
  } else if (!mp.label.empty() && StartsWith(line, DataKey)) {
    AddVertices(mp, line);
  }
}

// Fault 62 for a file that is shorter than the head.
bool HasWindowsLineEnds(InputFile& source) {
  std::array<std::uint8_t, HeadLength> head;
  if (source.ReadAt(0, head) < head.size()) throw Fault(FaultNumber::PastEnd);
  const std::string_view text(reinterpret_cast<const char*>(head.data()), head.size());
  return text.find("\r\n") != std::string_view::npos;
}

void Show(Run& run, RunResult& result, std::string_view Messages::*message, LineKind kind) {
  result.message = message;
  run.window.SetAtt(LineOf(result, run.messages), kind);
}

void Close(Run& run, MpRun& mp) {
  if (mp.output.IsOpen()) {
    HandOver(mp);
    mp.output.Close();
    run.outputs.SetWhole(mp.target);
  }
  if (mp.polylines > 0) return;
  run.window.Beep();
  DeleteIfThere(mp.target);
  run.outputs.Forget(mp.target);
  if (mp.result.end != RunEnd::Stopped) Show(run, mp.result, &Messages::MsgPolyNone, LineKind::Notice);
}

void ReadMap(Run& run, MpRun& mp) {
  InputFile source(run.settings.Source, [&window = run.window] { return window.IsToEnd(); });
  if (!HasWindowsLineEnds(source)) {
    mp.result.end = RunEnd::Refused;
    run.window.Beep();
    return Show(run, mp.result, &Messages::MsgUnixNewlines, LineKind::Fault);
  }
  mp.output = run.outputs.Open(mp.target);
  mp.targetMade = true;
  LineInput lines(source);
  while (const auto line = lines.Next()) {
    ++mp.result.frames;
    TakeLine(mp, Trimmed(*line));
  }
  Show(run, mp.result, &Messages::MsgPolyDone, LineKind::Progress);
}

void Convert(Run& run, MpRun& mp) {
  try {
    ReadMap(run, mp);
  } catch (const EndAsked&) {
    mp.result.end = RunEnd::Stopped;
    Show(run, mp.result, &Messages::MsgAborted, LineKind::Notice);
  }
  if (mp.targetMade) Close(run, mp);
}

// What was converted before the fault stays; a closing that fails as well has nothing to add to the report.
void CloseAfterFault(Run& run, MpRun& mp) {
  if (!mp.targetMade) return;
  try {
    Close(run, mp);
  } catch (...) {
    CaughtFault();
  }
}

// The message that stands for a fault; null for one that is reported by its number.
std::string_view Messages::*MessageOf(const Fault& fault) {
  switch (static_cast<FaultNumber>(fault.Number())) {
    case FaultNumber::FileNotFound:
    case FaultNumber::BadFileName:
    case FaultNumber::InvalidCall:
      return &Messages::MsgNeedPolish;
    case FaultNumber::PermissionDenied:
      return &Messages::MsgFileBusy;
    default:
      return nullptr;
  }
}

}  // namespace

RunResult JobMp(Run& run) {
  MpRun mp;
  const std::string& source = run.settings.Source;
  mp.target = source.substr(0, source.size() - std::min(SourceSuffix.size(), source.size())) + ".txt";
  try {
    Convert(run, mp);
  } catch (...) {
    const Fault fault = CaughtFault();
    CloseAfterFault(run, mp);
    mp.result.end = RunEnd::Failed;
    mp.result.place = "ReadShp";
    mp.result.fault = fault;
    run.window.Beep();
    const auto message = MessageOf(fault);
    Show(run, mp.result, message, message == &Messages::MsgNeedPolish ? LineKind::Notice : LineKind::Fault);
  }
  mp.result.soundings = mp.result.withDepth = mp.result.points;
  return mp.result;
}

}  // namespace sondrix

#include "jobs/job_log.h"

#include "core/code_page.h"
#include "core/depth_report.h"
#include "core/messages.h"
#include "core/number_text.h"
#include "core/point.h"
#include "core/rounding.h"
#include "core/run_limits.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "core/window.h"
#include "formats/mp_points.h"
#include "formats/plt.h"
#include "formats/point_list.h"
#include "geo/mercator.h"
#include "geo/nmea.h"
#include "jobs/log_time.h"
#include "jobs/point_filter.h"
#include "jobs/point_writer.h"
#include "jobs/text_job.h"
#include "jobs/text_source.h"
#include "ozi/ozi_link.h"

namespace sondrix {
namespace {

constexpr std::string_view Rmc = "$GPRMC", Gga = "$GPGGA", Dbt = "$SDDBT";
constexpr std::size_t RmcTime = 1, RmcDate = 9;
constexpr std::size_t GgaTime = 1, GgaLatitude = 2, GgaNorth = 3, GgaLongitude = 4, GgaEast = 5, GgaFix = 6,
                      GgaSatellites = 7;
constexpr std::size_t DbtFeet = 1;
constexpr std::size_t FieldsRead = 10;

constexpr double FewSatellites = 5;
constexpr int DegreeDigits = 6;
constexpr int DepthDigits = 2;

struct LogRun {
  explicit LogRun(Run& theRun)
      : run(theRun), source(SourceOf(theRun, LineStart::CutLf)), filter(LogFilterRules, theRun.limits) {}

  Run& run;
  RunResult result;
  TextSource source;
  PointFilter filter;
  PointBodies bodies;
  TextBody drd, srf, bad;
  EyeTime nextWait = NextEyeTime();

  char separator = ',';
  std::int64_t line = 0;
  std::string_view sentence;  // of the last line that wasn't empty
  Columns fields;
  std::string text;  // buffer

  LogTime clock;
  bool hasFix = false;
  std::string xText, yText;  // Mercator metres
  Point point;
  std::string latitude, longitude, depth;  // its texts
};

// Makes the next line the current one. Fault 9 behind the last.
void TakeLine(LogRun& log) {
  const std::optional<std::string_view> line = log.source.Next();
  if (!line) throw Fault(FaultNumber::Subscript);
  // The fields of the line before stand where this one is empty.
  if (!line->empty()) log.sentence = *line;
}

void StepLine(LogRun& log) {
  ++log.line;
  TakeLine(log);
}

// Whether the first field of the current line is that name.
bool IsSentence(const LogRun& log, std::string_view name) {
  return log.sentence.starts_with(name) &&
         (log.sentence.size() == name.size() || log.sentence[name.size()] == log.separator);
}

void SplitSentence(LogRun& log) { log.fields.Split(log.sentence, log.separator, FieldsRead); }

void ReadDate(LogRun& log) {
  SplitSentence(log);
  log.clock.SetTime(log.fields.At(RmcTime));
  log.clock.SetDate(log.fields.At(RmcDate));
}

// A coordinate keeps its value where the hemisphere is another one.
void ReadPosition(LogRun& log) {
  const Columns& fields = log.fields;
  if (fields.At(GgaNorth) == "N") {
    log.point.Latitude = RoundTo(Nmea2Deg(fields.At(GgaLatitude)), DegreeDigits);
    log.latitude = LocText(log.point.Latitude);
    log.yText = LocText(Lat2MercY(log.point.Latitude));
  }
  if (fields.At(GgaEast) == "E") {
    log.point.Longitude = RoundTo(Nmea2Deg(fields.At(GgaLongitude)), DegreeDigits);
    log.longitude = LocText(log.point.Longitude);
    log.xText = LocText(Lon2MercX(log.point.Longitude));
  }
}

void ReadFix(LogRun& log) {
  SplitSentence(log);
  log.clock.SetTime(log.fields.At(GgaTime));
  log.clock.NeedDate();
  log.point.Time = log.clock.Read() + 1;
  log.hasFix = log.fields.At(GgaFix) != "0";
  ReadPosition(log);
  const std::string_view satellites = log.fields.At(GgaSatellites);
  if (LocParse(satellites) <= FewSatellites) {
    ReportBadLine(log.run, log.bad, log.run.messages.ReasonSats, satellites, log.line);
  }
}

// Depth text and feet keep their values where the field is empty.
void ReadDepth(LogRun& log) {
  while (!IsSentence(log, Dbt)) StepLine(log);
  SplitSentence(log);
  const std::string_view field = log.fields.At(DbtFeet);
  log.point.Depth = 0;
  if (field.empty()) return;
  log.point.Feet = FloatOf(field);
  log.depth =
      Ft2MtOrReport(log.point.Feet, log.run.limits.DepthAddM, DepthDigits, log.run.settings, log.run.window);
  log.point.Depth = FloatOf(log.depth);
}

void ReportGap(LogRun& log, float way) {
  std::string metres;
  AppendWhole(metres, ToWhole32(way));
  ReportBadLine(log.run, log.bad, log.run.messages.ReasonDistance, metres, log.line);
}

void TakePoint(LogRun& log, const Verdict& verdict) {
  Point& point = log.point;
  point.Gap = verdict.gap;
  point.Segment = verdict.segment;
  point.LatText = log.latitude;
  point.LonText = log.longitude;
  point.DepthText = log.depth;
  WritePoint(log.run, log.bodies, point, log.line);
  AppendDepthRow(Fresh(log.text), point);
  log.drd.Add(log.text);
  AppendHeightRow(Fresh(log.text), point);
  log.srf.Add(log.text);
}

void TakeSounding(LogRun& log) {
  const bool hasDepth = log.point.Depth != 0;
  ++log.result.soundings;
  if (hasDepth) ++log.result.withDepth;
  if (log.hasFix) ++log.result.withFix;
  const auto read = [&]() -> OfferedSounding {
    return {.x = log.xText,
            .y = log.yText,
            .depth = log.point.Depth,
            .isRejected = !log.hasFix || !hasDepth,
            .endsSegment = log.hasFix && !hasDepth};
  };
  const Verdict verdict = log.filter.Offer(log.xText, log.yText, read);
  if (verdict.gap) ReportGap(log, verdict.way);
  if (verdict.outcome == Outcome::Rejected) {
    const Messages& messages = log.run.messages;
    PassOverLine(log.run, log.bad, log.nextWait,
                 log.hasFix ? messages.ReasonZeroDepth : messages.ReasonNoSats, log.line);
  } else if (verdict.outcome == Outcome::Selected) {
    TakePoint(log, verdict);
  }
}

enum class End { Complete, Stopped, Refused };

End ReadLines(LogRun& log) {
  TakeLine(log);
  const std::optional<char> separator = SeparatorOf(log.sentence);
  if (!separator) return End::Refused;
  log.separator = *separator;
  for (;;) {
    if (IsSentence(log, Rmc)) {
      ReadDate(log);
      StepLine(log);
    }
    if (IsSentence(log, Gga)) {
      ReadFix(log);
      StepLine(log);
      ReadDepth(log);
      TakeSounding(log);
    }
    if (!MayReadOn(log.run)) return End::Stopped;
    ShowLineProgress(log.run, log.text, {log.line, log.source.LineCount(), log.filter.Selected()});
    if (log.line + 1 >= log.source.LineCount()) return End::Complete;
    StepLine(log);
  }
}

End ReadOrStop(LogRun& log) {
  try {
    return ReadLines(log);
  } catch (const EndAsked&) {
    ShowStop(log.run);
    return End::Stopped;
  }
}

void WriteFiles(LogRun& log) {
  Run& run = log.run;
  log.source.Finish();
  const std::string name = ToCodePage(run.settings.TargetName);
  WriteBodies(run, {{".drd.txt", ToCodePage(run.messages.HeadCsv) + "\r\n", log.drd},
                    {".srf.txt", {}, log.srf},
                    {".plt", PltHead(name, log.filter.Selected()), log.bodies.plt},
                    {".mp", MpHead(LogMpHead, name), log.bodies.mp},
                    {".bad.txt", {}, log.bad, true}});
  ClearTargetName(run);
  run.window.SetAtt(run.messages.MsgFilesDone);
}

bool IsLogCorrupt(const Fault& fault) {
  return fault.Number() == static_cast<int>(FaultNumber::Subscript) ||
         fault.Number() == static_cast<int>(FaultNumber::PastEnd);
}

}  // namespace

RunResult JobLog(Run& run) {
  RunResult result;
  try {
    LogRun log(run);
    if (run.settings.ViewOzi) OziTrackOpen(run.link);
    const End end = ReadOrStop(log);
    if (end == End::Complete) WriteFiles(log);
    result = std::move(log.result);
    result.frames = log.line + 1;
    result.points = log.filter.Selected();
    if (end == End::Refused) RefuseSource(run, result);
    if (end == End::Stopped) result.end = RunEnd::Stopped;
  } catch (const EndAsked&) {
    StopBeforeLines(run, result);
  } catch (...) {
    const Fault fault = CaughtFault();
    ShowTextFault(run, result, "JobLog", IsLogCorrupt(fault) ? &Messages::MsgLogCorrupt : nullptr);
  }
  return result;
}

}  // namespace sondrix

#include "jobs/job_csv.h"

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
#include "jobs/point_filter.h"
#include "jobs/point_writer.h"
#include "jobs/text_job.h"
#include "jobs/text_source.h"
#include "ozi/ozi_link.h"

#include <algorithm>
#include <array>

namespace sondrix {
namespace {

// Columns of an export row.
constexpr std::size_t ColChannel = 0, ColDepth = 5, ColX = 11, ColY = 12, ColTime = 13, ExportColumns = 14;
// Columns of a row of three.
constexpr std::size_t ColLatitude = 0, ColLongitude = 1, ColMetres = 2, PlainColumns = 3;

constexpr std::string_view NoDepth = "0.000000";
constexpr int DegreeDigits = 6;
constexpr int DepthDigits = 2;
constexpr std::int64_t ProgressLines = 100;

struct CsvRun {
  explicit CsvRun(Run& theRun)
      : run(theRun),
        source(SourceOf(theRun, LineStart::CutWithCr)),
        channel(RowOf(theRun.state.SelectedChannel)),
        filter(CsvFilterRules, theRun.limits) {}

  Run& run;
  RunResult result;
  std::array<ChannelCount, Channels.size()> counts;  // in the order of the channels
  TextSource source;
  ChannelRow channel;
  PointFilter filter;
  LocalClock clock;
  PointBodies bodies;
  TextBody points, bad;
  EyeTime nextWait = NextEyeTime();

  std::int64_t line = 0;
  char separator = ',';
  bool isPlain = false;  // a row of three columns has been met
  Columns columns;
  std::string xText, yText;  // of a row of three columns, Mercator metres
  std::string text;          // buffer

  // The sounding of the current row. An export row's position becomes degrees only if it is selected.
  bool isExportRow = false;
  Point point;
  std::string latitude, longitude, depth;  // what its texts are made in
};

void CountRow(CsvRun& csv) {
  const Columns& columns = csv.columns;
  const std::string_view name = columns.At(ColChannel);
  for (std::size_t i = 0; i < Channels.size(); ++i) {
    if (!Channels[i].isInTables || name != Channels[i].name) continue;
    ++csv.counts[i].frames;
    if (columns.Count() > ColDepth && columns.At(ColDepth) != NoDepth) ++csv.counts[i].withDepth;
    return;
  }
}

void TakeCounts(CsvRun& csv) {
  csv.result.frames = csv.line;
  csv.result.points = csv.filter.Selected();
  for (std::size_t i = 0; i < Channels.size(); ++i) {
    csv.counts[i].channel = ChannelByte(Channels[i].channel);
    if (csv.counts[i].frames > 0) csv.result.channels.push_back(csv.counts[i]);
  }
}

// Splits a line; the columns of the row before stand where it is empty. False for a row of no interest.
bool TakeRow(CsvRun& csv, std::string_view line) {
  Columns& columns = csv.columns;
  if (!line.empty()) {
    columns.Split(line, csv.separator, ExportColumns);
    if (columns.Count() == PlainColumns) {
      csv.isPlain = true;
      columns.Widen();
    }
  }
  csv.isExportRow = csv.channel.isInTables && columns.At(ColChannel) == csv.channel.name;
  if (!csv.isPlain && !line.empty()) CountRow(csv);
  if (!csv.isPlain) return csv.isExportRow;
  columns.Set(ColX, columns.At(ColLongitude));
  columns.Set(ColY, columns.At(ColLatitude));
  columns.Set(ColDepth, columns.At(ColMetres));
  columns.Set(ColTime, "0");
  return true;
}

void TakeExportDepth(CsvRun& csv) {
  Point& point = csv.point;
  point.Feet = FloatOf(csv.columns.At(ColDepth));
  csv.depth =
      Ft2MtOrReport(point.Feet, csv.run.limits.DepthAddM, DepthDigits, csv.run.settings, csv.run.window);
  point.DepthText = csv.depth;
  point.Depth = FloatOf(csv.depth);
}

void TakePlainPosition(CsvRun& csv) {
  Columns& columns = csv.columns;
  Point& point = csv.point;
  point.LonText = columns.At(ColX);
  point.LatText = columns.At(ColY);
  point.Longitude = LocParse(point.LonText);
  AppendWhole(Fresh(csv.xText), ToWhole(Lon2MercX(point.Longitude)));
  point.Latitude = LocParse(point.LatText);
  AppendWhole(Fresh(csv.yText), ToWhole(Lat2MercY(point.Latitude)));
  columns.Set(ColX, csv.xText);
  columns.Set(ColY, csv.yText);
}

// UseDcm adds the correction here and makes the altitude feet. Only rows of three columns take this step: an
// export row has had its correction with the conversion from feet.
void TakePlainDepth(CsvRun& csv) {
  Point& point = csv.point;
  point.DepthText = csv.columns.At(ColDepth);
  if (!csv.run.settings.UseDcm) {
    point.Depth = FloatOf(point.DepthText);
    point.Feet = point.Depth;
    return;
  }
  const double metres = LocParse(point.DepthText) + static_cast<double>(csv.run.limits.DepthAddM);
  csv.depth = LocText(RoundTo(metres, DepthDigits));
  point.DepthText = csv.depth;
  point.Depth = FloatOf(csv.depth);
  point.Feet = static_cast<float>(RoundTo(static_cast<double>(point.Depth) / MetresPerFoot, DepthDigits));
}

void TakeExportPosition(CsvRun& csv) {
  Point& point = csv.point;
  point.Longitude = MercX2Lon(csv.filter.X(), DegreeDigits);
  point.Latitude = MercY2Lat(csv.filter.Y(), DegreeDigits);
  AppendNumText(Fresh(csv.longitude), point.Longitude);
  AppendNumText(Fresh(csv.latitude), point.Latitude);
  point.LonText = csv.longitude;
  point.LatText = csv.latitude;
}

// The list alone has periods and two decimals.
void AddListRow(CsvRun& csv) {
  std::string period(csv.point.DepthText);
  std::replace(period.begin(), period.end(), ',', '.');
  const std::string padded = PadDecimals(period, DepthDigits);
  Point row = csv.point;
  row.DepthText = padded;
  AppendDepthRow(Fresh(csv.text), row);
  csv.points.Add(csv.text);
}

void TakePoint(CsvRun& csv, const Verdict& verdict) {
  if (csv.isExportRow) TakeExportPosition(csv);
  Point& point = csv.point;
  point.Gap = verdict.gap;
  point.Segment = verdict.segment;
  point.Time = csv.clock.Now() + ToWhole32(LocParse(csv.columns.At(ColTime)) / 1000);
  WritePoint(csv.run, csv.bodies, point, csv.line, ShortFeet);
  AddListRow(csv);
}

OfferedSounding ReadSounding(CsvRun& csv) {
  if (csv.isExportRow) {
    TakeExportDepth(csv);
  } else {
    TakePlainPosition(csv);
    TakePlainDepth(csv);
  }
  const Columns& columns = csv.columns;
  return {.x = columns.At(ColX),
          .y = columns.At(ColY),
          .depth = csv.point.Depth,
          .isRejected = columns.At(ColDepth) == NoDepth};
}

void ReadRow(CsvRun& csv, std::string_view line) {
  if (!TakeRow(csv, line)) return;
  ++csv.result.soundings;
  if (csv.columns.At(ColDepth) != NoDepth) ++csv.result.withDepth;
  const Columns& columns = csv.columns;
  const Verdict verdict =
      csv.filter.Offer(columns.At(ColX), columns.At(ColY), [&csv] { return ReadSounding(csv); });
  if (verdict.outcome == Outcome::Rejected) {
    PassOverLine(csv.run, csv.bad, csv.nextWait, csv.run.messages.ReasonZeroDepth, csv.line);
  } else if (verdict.outcome == Outcome::Selected) {
    TakePoint(csv, verdict);
  }
}

// False if the source is refused.
bool ReadLines(CsvRun& csv) {
  try {
    while (std::optional<std::string_view> next = csv.source.Next()) {
      if (csv.line == 0) {
        const std::optional<char> separator = SeparatorOf(*next);
        if (!separator) return false;
        csv.separator = *separator;
      } else {
        ReadRow(csv, *next);
      }
      if (!MayReadOn(csv.run)) break;
      if (csv.line % ProgressLines == 0) {
        ShowLineProgress(csv.run, csv.text, {csv.line, csv.source.LineCount(), csv.filter.Selected()});
      }
      ++csv.line;
    }
  } catch (const EndAsked&) {
    ShowStop(csv.run);
  }
  return true;
}

void WriteFiles(CsvRun& csv) {
  Run& run = csv.run;
  csv.source.Finish();
  const std::string name = ToCodePage(run.settings.TargetName);
  WriteBodies(run, {{".txt", {}, csv.points},
                    {".plt", PltHead(name, csv.filter.Selected()), csv.bodies.plt},
                    {".mp", MpHead(CsvMpHead, name), csv.bodies.mp},
                    {"_bad.txt", {}, csv.bad, true}});
  ClearTargetName(run);
  std::string report(run.messages.MsgFilesDone);
  AppendWhole(report, csv.filter.Selected());
  report.append(run.messages.WordFrom);
  AppendWhole(report, csv.line);
  run.window.SetAtt(report.append(run.messages.WordLines));
}

}  // namespace

RunResult JobCsv(Run& run) {
  RunResult result;
  try {
    CsvRun csv(run);
    if (run.settings.ViewOzi) OziTrackOpen(run.link);
    const bool isRead = ReadLines(csv);
    if (isRead) WriteFiles(csv);
    TakeCounts(csv);
    result = std::move(csv.result);
    if (!isRead) RefuseSource(run, result);
    if (run.state.StopFlag) result.end = RunEnd::Stopped;
  } catch (const EndAsked&) {
    StopBeforeLines(run, result);
  } catch (...) {
    ShowTextFault(run, result, "JobCsv");
  }
  return result;
}

}  // namespace sondrix

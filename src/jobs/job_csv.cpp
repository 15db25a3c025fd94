#include "jobs/job_csv.h"

#include "core/code_page.h"
#include "core/depth_text.h"
#include "core/messages.h"
#include "core/number_text.h"
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
#include "jobs/text_job.h"
#include "jobs/text_source.h"
#include "ozi/ozi_link.h"

#include <algorithm>

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
        source(theRun.settings.Source, LineStart::CutWithCr),
        channel(RowOf(theRun.state.SelectedChannel)),
        filter(CsvFilterRules, theRun.limits) {}

  Run& run;
  TextSource source;
  ChannelRow channel;
  PointFilter filter;
  LocalClock clock;
  TextBody points, plt, mp, bad;

  std::int64_t line = 0;
  char separator = ',';
  bool isPlain = false;  // a row of three columns has been met
  Columns columns;
  std::string xText, yText, text;  // buffers

  // The sounding of the current row. An export row's position becomes degrees only if it is selected.
  bool isExportRow = false;
  std::string latitude, longitude, depth;  // degrees, metres
  float depthM = 0, feet = 0;
};

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
  if (!csv.isPlain) return csv.isExportRow;
  columns.Set(ColX, columns.At(ColLongitude));
  columns.Set(ColY, columns.At(ColLatitude));
  columns.Set(ColDepth, columns.At(ColMetres));
  columns.Set(ColTime, "0");
  return true;
}

void TakeExportDepth(CsvRun& csv) {
  csv.feet = FloatOf(csv.columns.At(ColDepth));
  csv.depth = Ft2Mt(csv.feet, csv.run.limits.DepthAddM, DepthDigits, csv.run.settings, csv.run.window);
  csv.depthM = FloatOf(csv.depth);
}

void TakePlainPosition(CsvRun& csv) {
  Columns& columns = csv.columns;
  csv.longitude = columns.At(ColX);
  csv.latitude = columns.At(ColY);
  csv.xText.clear();
  csv.yText.clear();
  AppendWhole(csv.xText, ToWhole(Lon2MercX(LocParse(csv.longitude))));
  AppendWhole(csv.yText, ToWhole(Lat2MercY(LocParse(csv.latitude))));
  columns.Set(ColX, csv.xText);
  columns.Set(ColY, csv.yText);
}

// UseDcm adds the correction here and makes the altitude feet. Only rows of three columns take this step: an
// export row has had its correction with the conversion from feet.
void TakePlainDepth(CsvRun& csv) {
  csv.depth = csv.columns.At(ColDepth);
  if (!csv.run.settings.UseDcm) {
    csv.depthM = FloatOf(csv.depth);
    csv.feet = csv.depthM;
    return;
  }
  const double metres = LocParse(csv.depth) + static_cast<double>(csv.run.limits.DepthAddM);
  csv.depth = LocText(RoundTo(metres, DepthDigits));
  csv.depthM = FloatOf(csv.depth);
  csv.feet = static_cast<float>(RoundTo(static_cast<double>(csv.depthM) / MetresPerFoot, DepthDigits));
}

void TakeExportPosition(CsvRun& csv) {
  csv.longitude.clear();
  csv.latitude.clear();
  AppendNumText(csv.longitude, MercX2Lon(csv.filter.X, DegreeDigits));
  AppendNumText(csv.latitude, MercY2Lat(csv.filter.Y, DegreeDigits));
}

void AppendListRow(CsvRun& csv) {
  std::string period = csv.depth;
  std::replace(period.begin(), period.end(), ',', '.');
  AppendDepthRow(Fresh(csv.text), csv.latitude, csv.longitude, PadDecimals(period, DepthDigits));
  csv.points.Add(csv.text);
}

void WritePoint(CsvRun& csv) {
  Run& run = csv.run;
  if (csv.isExportRow) TakeExportPosition(csv);
  const MpPoint point = {csv.depth, csv.latitude, csv.longitude};
  if (csv.filter.Gap) {
    AppendMpBreak(Fresh(csv.text), point, csv.line);
  } else {
    AppendMpPoint(Fresh(csv.text), ToCodePage(run.settings.DepthMP), point);
  }
  csv.mp.Add(csv.text);
  const DateSeconds now = csv.clock.Now();
  const DateSeconds time = now + ToWhole32(LocParse(csv.columns.At(ColTime)) / 1000);
  AppendPltPoint(Fresh(csv.text),
                 {csv.latitude, csv.longitude, csv.filter.SegmentCode, ShortFeet(csv.feet), time});
  csv.plt.Add(csv.text);
  if (run.settings.ViewOzi) {
    OziLivePoint(run.link, run.window, csv.filter.SegmentCode, LocParse(csv.latitude),
                 LocParse(csv.longitude), static_cast<double>(csv.feet), DayOnly(now));
  }
  AppendListRow(csv);
  csv.filter.PointWritten();
}

void ReadRow(CsvRun& csv, std::string_view line) {
  if (!TakeRow(csv, line)) return;
  const Columns& columns = csv.columns;
  if (csv.filter.IsRepeat(columns.At(ColX), columns.At(ColY))) return;
  if (csv.isExportRow) {
    TakeExportDepth(csv);
  } else {
    TakePlainPosition(csv);
    TakePlainDepth(csv);
  }
  csv.filter.Offer(columns.At(ColX), columns.At(ColY), csv.depthM);
  if (columns.At(ColDepth) == NoDepth) {
    PassOverLine(csv.run, csv.bad, csv.run.messages.ReasonZeroDepth, csv.line);
  } else if (csv.filter.Select()) {
    WritePoint(csv);
  }
}

// False if the source is refused.
bool ReadLines(CsvRun& csv) {
  while (std::optional<std::string_view> next = csv.source.Next()) {
    if (csv.line == 0) {
      const std::optional<char> separator = SeparatorOf(*next);
      if (!separator) return false;
      csv.separator = *separator;
    } else {
      ReadRow(csv, *next);
    }
    if (!MayGoOn(csv.run)) return true;
    if (csv.line % ProgressLines == 0) {
      ShowLineProgress(csv.run, csv.text, {csv.line, csv.source.LineCount(), csv.filter.Selected});
    }
    ++csv.line;
  }
  return true;
}

void WriteFiles(CsvRun& csv) {
  Run& run = csv.run;
  csv.source.Close();
  const std::string name = ToCodePage(run.settings.TargetName);
  WriteBody(run, ".txt", {}, csv.points);
  WriteBody(run, ".plt", PltHead(name, csv.filter.Selected), csv.plt);
  WriteBody(run, ".mp", MpHead(CsvMpHead, name), csv.mp);
  if (!csv.bad.IsEmpty()) WriteBody(run, "_bad.txt", {}, csv.bad);
  ClearTargetName(run);
  std::string report(run.messages.MsgFilesDone);
  AppendWhole(report, csv.filter.Selected);
  report.append(run.messages.WordFrom);
  AppendWhole(report, csv.line);
  run.window.SetAtt(report.append(run.messages.WordLines));
}

}  // namespace

void JobCsv(Run& run) {
  try {
    CsvRun csv(run);
    if (run.settings.ViewOzi) OziTrackOpen(run.link);
    if (ReadLines(csv)) {
      WriteFiles(csv);
    } else {
      RefuseSource(run);
    }
  } catch (...) {
    ShowTextFault(run, "JobCsv", CaughtFault());
  }
}

}  // namespace sondrix

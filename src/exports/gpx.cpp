#include "exports/gpx.h"

#include "core/date_time.h"
#include "core/files.h"

#include <cmath>
#include <string>
#include <string_view>

namespace sondrix {
namespace {

constexpr std::string_view Head =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<gpx version="1.1" creator="sondrix" xmlns="http://www.topografix.com/GPX/1/1" xmlns:tpx="http://www.garmin.com/xmlschemas/TrackPointExtension/v1" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="http://www.topografix.com/GPX/1/1 http://www.topografix.com/GPX/1/1/gpx.xsd http://www.garmin.com/xmlschemas/TrackPointExtension/v1 http://www.garmin.com/xmlschemas/TrackPointExtensionv1.xsd">
)";
constexpr std::string_view Tail = "</gpx>\n";

constexpr double LatestTime = 253402300799;  // the last second of the year 9999

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

// "2021-05-15T07:29:00.25Z".
std::string TimeOf(double seconds) {
  const auto milliseconds = static_cast<std::int64_t>(std::round(seconds * 1000));
  const std::int64_t rest = ((milliseconds % 1000) + 1000) % 1000;
  std::string text;
  AppendStamp(text, DateOfUnix((milliseconds - rest) / 1000));
  if (rest != 0) {
    char decimals[NumberRoom];
    const char* const end = PutFixed(decimals, rest, 3, true);
    text.append(decimals + 1, static_cast<std::size_t>(end - decimals) - 1);  // without the zero at its start
  }
  return text += 'Z';
}

void PutPoint(const Sounding& sounding, RowText& rows) {
  constexpr std::size_t room = 200 + 4 * NumberRoom;
  char* to = rows.Room(room);
  to = PutChars(to, "<trkpt lat=\"");
  to = PutDegrees(to, sounding.latitude);
  to = PutChars(to, "\" lon=\"");
  to = PutDegrees(to, sounding.longitude);
  to = PutChars(to, "\">");
  if (std::abs(sounding.time) <= LatestTime) {
    to = PutChars(to, "<time>");
    to = PutChars(to, TimeOf(sounding.time));
    to = PutChars(to, "</time>");
  }
  to = PutChars(to, "<extensions><tpx:TrackPointExtension><tpx:depth>");
  to = PutMetres(to, sounding.depth);
  to = PutChars(to, "</tpx:depth></tpx:TrackPointExtension></extensions></trkpt>\n");
  rows.EndAt(to);
}

class TrackFile {
 public:
  TrackFile(const ExportRun& run, OutputFile& file) : run_(run), file_(file) { rows_.Append(Head); }

  void AddTrip(const Trip& trip) {
    bool isInTrack = false, begins = false;
    for (std::size_t b = 0; b < trip.soundings.BlockCount(); ++b) {
      const std::span<const Sounding> block = trip.soundings.Block(b);
      for (const Sounding& sounding : block) {
        begins = begins || sounding.beginsLine;
        if (sounding.fate != Fate::Used || !sounding.HasPosition()) continue;
        if (!isInTrack) {
          rows_.Append("<trk><name>" + Escaped(trip.name) + "</name>\n<trkseg>\n");
        } else if (begins) {
          rows_.Append("</trkseg>\n<trkseg>\n");
        }
        isInTrack = true;
        begins = false;
        PutPoint(sounding, rows_);
      }
      HandOver(block.size());
    }
    if (isInTrack) rows_.Append("</trkseg></trk>\n");
  }

  void End() {
    rows_.Append(Tail);
    HandOver(0);
  }

 private:
  void HandOver(std::size_t soundings) {
    run_.EndIfAsked();
    file_.Write(rows_.Text());
    rows_.Clear();
    run_.Advance(soundings);
  }

  const ExportRun& run_;
  OutputFile& file_;
  RowText rows_;
};

}  // namespace

void WriteGpx(const Survey& survey, const ExportRun& run, OutputFile& file) {
  TrackFile tracks(run, file);
  for (const Trip& trip : survey.trips) tracks.AddTrip(trip);
  tracks.End();
}

}  // namespace sondrix

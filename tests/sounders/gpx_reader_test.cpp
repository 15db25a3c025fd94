#include "sounders/gpx/gpx_reader.h"

#include "reading_text.h"

namespace sondrix {
namespace {

std::string Point(const std::string& longitude, const std::string& inside) {
  return "<trkpt lat=\"10\" lon=\"" + longitude + "\">" + inside + "</trkpt>\n";
}
std::string Depth(const std::string& metres) {
  return "<extensions><a:TrackPointExtension><a:depth>" + metres +
         "</a:depth></a:TrackPointExtension></extensions>";
}
std::string Gpx(const std::string& inside) {
  return "<?xml version=\"1.0\"?>\n<gpx version=\"1.1\" xmlns:a=\"x\">\n<trk><name>a</name><trkseg>\n" +
         inside + "</trkseg></trk></gpx>\n";
}
// Wide letters, low byte first.
std::string Utf16(const std::string& text) {
  std::string wide = "\xFF\xFE";
  for (const char c : text) wide.append(1, c).append(1, '\0');
  return wide;
}

struct Row {
  std::string file, soundings;
};

TEST(GpxReader, PointsWithADepth) {
  const std::string one = Point("20", "<time>2020-01-01T01:00:00.5+01:00</time>" + Depth(" 3.25\n"));
  for (const Row& row : std::vector<Row>{
           {Gpx(one + Point("21", "") + Point("22", Depth("4"))),
            "/ 20.0000 10.0000 1577836800.50 3.250; 22.0000 10.0000 - 4.000 | 1 points without a depth"},
           {Utf16(Gpx(one)), "/ 20.0000 10.0000 1577836800.50 3.250"},
           // A segment begins a line, also where its first point has no depth; so do marks behind a track.
           {Gpx(one + "</trkseg><trkseg>" + Point("21", "") + Point("22", Depth("4")) + "</trkseg></trk>" +
                "<wpt lat=\"1\" "
                "lon=\"2\"><extensions><DEPTH>5</DEPTH><depth>6</depth></extensions></wpt><trk><trkseg>"),
            "/ 20.0000 10.0000 1577836800.50 3.250; / 22.0000 10.0000 - 4.000; / 2.0000 1.0000 - 5.000 | 1 "
            "points without a depth"},
           {"<g:gpx xmlns:g='x'><g:rte><g:rtept lon='-20.5' lat=' +10.25 "
            "'><g:Depth>1e1</g:Depth></g:rtept></g:rte></g:gpx>",
            "/ -20.5000 10.2500 - 10.000"},
           // No fix, no depth told, what is no number, what lies nowhere.
           {Gpx("<trkpt lat='0' lon='0'><depth>2</depth></trkpt>" + Point("20", "<depth/>") +
                Point("20", "<depth>deep</depth>") + Point("200", "<depth>2</depth>") +
                Point("", "<depth>2</depth>") + Point("20", "<depth>nan</depth>")),
            "/ - - - 2.000; 20.0000 10.0000 - -; 20.0000 10.0000 - - | 3 bad rows"},
           // A clock that was not set.
           {Gpx(Point("20", "<time>1989-12-31T23:59:59Z</time>" + Depth("1")) +
                Point("20", "<time>1990-01-01T00:00:00Z</time>" + Depth("1"))),
            "/ 20.0000 10.0000 - 1.000; 20.0000 10.0000 631152000.00 1.000"},
           // Heights.
           {Gpx(Point("20", Depth("-2.5")) + Point("21", Depth("0"))),
            "/ 20.0000 10.0000 - 2.500; 21.0000 10.0000 - 0.000"},
           {Gpx(Point("20", "<time>soon</time>")), "no point with a depth"},
           {Gpx(""), "no points in it"},
           {"<svg><gpxpath/></svg>", "not recognised"},
       })
    EXPECT_EQ(ReadingText(row.file), row.soundings) << row.file;
}

TEST(GpxReader, DamagedXml) {
  const std::string a = Point("20", Depth("1")), b = Point("21", Depth("2")), c = Point("22", Depth("3"));
  std::string nested;
  for (int i = 0; i < 5000; ++i) nested += "<x>";
  const std::string bomb =
      "<!DOCTYPE gpx [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">]>\n";
  struct Damage {
    std::string file, soundings, remark;
  };
  for (const Damage& row : std::vector<Damage>{
           {Gpx(a + b + c).substr(0, 300), "/ 20.0000 10.0000 - 1.000 | 1 cut at the end",
            "damaged XML, line 5: unclosed token"},
           {Gpx(a + "<name>caf\xE9</name>\n" + b + c),
            "/ 20.0000 10.0000 - 1.000; / 21.0000 10.0000 - 2.000; 22.0000 10.0000 - 3.000 | 9 damaged bytes",
            "damaged XML, line 5: not well-formed (invalid token)"},
           {Gpx(a + "<trkpt lat=\"10\" lon=\"20><depth>5</depth></trkpt>\n" + b + "</wrong>" + c),
            "/ 20.0000 10.0000 - 1.000; / 21.0000 10.0000 - 2.000; / 22.0000 10.0000 - 3.000 | 25 damaged "
            "bytes",
            "damaged XML, line 5: not well-formed (invalid token)"},
           {Gpx(a + nested + b), "/ 20.0000 10.0000 - 1.000; / 21.0000 10.0000 - 2.000 | 14238 damaged bytes",
            "damaged XML, line 5: elements within elements without end"},
           {bomb + Gpx(a), "/ 20.0000 10.0000 - 1.000 | 136 damaged bytes",
            "damaged XML, line 1: it declares entities"},
       }) {
    Reading reading;
    EXPECT_EQ(ReadingText(row.file, {}, &reading), row.soundings) << row.file.substr(0, 500);
    EXPECT_EQ(reading.remarks, std::vector<std::string>{row.remark});
  }
  EXPECT_EQ(ReadingText("<gpx><wpt lat='1'"), "damaged XML, line 1: unclosed token");
  // A comment without an end is not held.
  EXPECT_EQ(ReadingText(Gpx(a + "<!--" + std::string(6'000'000, 'x') + "\n" + b)).substr(0, 62),
            "/ 20.0000 10.0000 - 1.000; / 21.0000 10.0000 - 2.000 | 6000006");
}

}  // namespace
}  // namespace sondrix

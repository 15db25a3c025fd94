#include "chart_call.h"
#include "core/files.h"
#include "temporary_folder.h"

#include <atomic>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

// A boat that goes north over an even bed, a sounding a second.
std::string TrackText(int soundings, int minute, double longitude = 37.2, int depth = 5) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(8) << "<gpx version=\"1.1\"><trk><trkseg>";
  for (int i = 0; i < soundings; ++i) {
    text << "<trkpt lat=\"" << 55.5 + 1e-5 * i << "\" lon=\"" << longitude << "\"><time>2021-05-15T"
         << std::setfill('0') << std::setw(2) << 7 + minute / 60 << ":" << std::setw(2)
         << (minute + i / 60) % 60 << ":" << std::setw(2) << i % 60 << "Z</time><extensions><depth>" << depth
         << "." << i % 3 << "</depth></extensions></trkpt>\n";
  }
  text << "</trkseg></trk></gpx>";
  return text.str();
}

// In a folder of its own, which is the current one.
class Chart : public testing::Test {
 protected:
  Chart() {
    fs::create_directories(folder_.Path("trips/2021"));
    fs::current_path(folder_.Path(""));
    folder_.Write("a.gpx", TrackText(40, 0));
    folder_.Write("copy.gpx", TrackText(40, 0));
    folder_.Write("trips/b.gpx", TrackText(30, 10, 37.3));
    folder_.Write("trips/2021/a.gpx", TrackText(20, 20, 37.4));
    folder_.Write("trips/.hidden.gpx", TrackText(20, 30));
    folder_.Write("trips/notes.bin", std::string("\0\1\2\3", 4));
    folder_.Write("empty.csv", "");
    fs::create_directory(folder_.Path("more"));
    folder_.Write("more/prices.csv", "bait,hook\n1,2\n3,4\n5,6\n");
    folder_.Write("more/t.gpx", TrackText(40, 0));
    fs::create_directory(folder_.Path("trips/d.csv"));
    fs::create_symlink("ring.gpx", folder_.Path("ring.gpx"));
    folder_.Write("bare.gpx", "<gpx version=\"1.1\"><wpt lat=\"1\" lon=\"1\"></wpt></gpx>");
  }
  ~Chart() override { fs::current_path(before_); }

  std::set<std::string> Names(const std::string& path) const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.Path(path))) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  fs::path before_ = fs::current_path();
  TemporaryFolder folder_;
};

TEST_F(Chart, LinesAndStatusOfACall) {
  const std::string a = "GPX, 40 soundings, 40 used, 2021-05-15 07:00:00 to 2021-05-15 07:00:39 UTC";
  const struct {
    std::string line;
    int status;
    std::string out, err = {};  // of both a part
  } cases[] = {
      {"a.gpx", 0, "a.gpx: " + a},
      {"a.gpx", 0, "\n40 soundings: 40 used\n"},
      {"-o x.csv a.gpx", 0, "\nx.csv: "},
      {"-o X.XYZ -o x.gpkg -o x.gpx a.gpx", 0, " bytes, EPSG:32637\nx.gpkg: "},
      {"--crs epsg:25837 -o y.xyz a.gpx", 0, " bytes, EPSG:25837\n"},
      {"trips", 0, "trips/2021/a.gpx: GPX, 20 soundings", "trips: 1 file left out that no reader knows\n"},
      {"trips a.gpx trips", 0, "\n90 soundings: 90 used\n", "trips: 1 file left out that no reader knows\n"},
      {"a.gpx ./a.gpx", 0, "\n40 soundings: 40 used\n", "./a.gpx: left out, it is given twice\n"},
      {"copy.gpx a.gpx", 0,
       "copy.gpx: GPX, 40 soundings, 40 used, 2021-05-15 07:00:00 to 2021-05-15 07:00:39 UTC"},
      {"a.gpx copy.gpx", 0,
       "copy.gpx: GPX, 40 soundings; left out: the same soundings as a.gpx\n40 soundings: 40 used\n"},
      {"-v trips", 0, "", "trips/notes.bin: neither a recording nor a log or a table of soundings\n"},
      // One that can't be read doesn't hold up the rest.
      // Another program's table is no fault in a folder, but one of its own.
      {"more", 0, "\n40 soundings: 40 used\n", "more/prices.csv: no columns are"},
      {"more/prices.csv a.gpx", 1, "\n40 soundings: 40 used\n", "more/prices.csv: no columns are"},
      {"a.gpx none.sl2 empty.csv bare.gpx trips/b.gpx", 1, "\n70 soundings: 70 used\n",
       "sondrix-chart: none.sl2: File not found\nsondrix-chart: empty.csv: it is empty\nsondrix-chart: "
       "bare.gpx: "},
      {"--clean off --offset 30,-100 --draft +20 -o c.csv a.gpx -j 3", 0, "40 used"},
      {"-o d.csv -o none/e.csv a.gpx", 1, "d.csv: ", "none/e.csv: not made: its folder is missing\n"},
      {"-o none/e.gpkg a.gpx", 1, "", "none/e.gpkg: not made: "},
      {"-o trips/d.csv a.gpx", 1, "", "trips/d.csv: not made: a folder stands there\n"},
      {"a.gpx ring.gpx", 1, "", "ring.gpx: it is no file\n"},
      {"-o f.csv empty.csv", 1, "0 soundings", "f.csv: not made: there are no soundings\n"},
      // Wrong usage: nothing is read.
      {"", 2, "", "no source is given"},
      {"a.gpx \"\"", 2, "", "a source is empty"},
      {"-o x.foo a.gpx", 2, "",
       "\"x.foo\": this version makes .csv, .gpx, .xyz, .gpkg, .tif, .geojson, .shp "},
      {"-o x.kmz a.gpx", 2, "", "\"x.kmz\""},
      {"-o .csv a.gpx", 2, "", "\".csv\""},
      {"--project lake.prj a.gpx", 2, "",
       "--project (sources, options and edits kept together): this version doesn't make that\n"},
      {"-o lake.geojson --shore ./lake.geojson a.gpx", 2, "", "./lake.geojson: is the shore and an output\n"},
      {"--level auto a.gpx", 2, "", "--level auto"},
      {"--method best a.gpx", 2, "", "best"},
      {"--units yd a.gpx", 2, "", "yd"},
      {"--wrong a.gpx", 2, "", "--wrong"},
      {"--offset 30 a.gpx", 2, "", "--offset takes two numbers"},
      {"--draft deep a.gpx", 2, "", "not \"deep\""},
      {"--source-units yd a.gpx", 2, "", "yd"},
      {"--source-crs 4326 a.gpx", 2, "", "--source-crs takes EPSG:n, not \"4326\""},
      {"--source-crs EPSG:1 a.gpx", 2, "", "EPSG:1 is no coordinate system that is known\n"},
      {"--source-crs EPSG:5773 a.gpx", 2, "", "only heights\n"},
      {"--crs EPSG:4326 a.gpx", 2, "", "EPSG:4326 is no projection in metres\n"},
      {"--columns lat,lon,fish a.gpx", 2, "", "--columns: \"fish\" is no name of a column\n"},
      {"--zone Atlantis a.gpx", 2, "", "--zone takes a name"},
      {"-j 0 a.gpx", 2, "", "0"},
      {"--zone \"\" a.gpx", 2, "", "--zone: nothing is given\n"},
      {"--report \"\" a.gpx", 2, "", "--report: nothing is given\n"},
      {"-o a.gpx a.gpx", 2, "", "a.gpx: is a source and an output\n"},
      {"-o b.csv -o ./b.csv a.gpx", 2, "", "./b.csv: two outputs would take the same place\n"},
      {"-o b.csv --report b.csv.part a.gpx", 2, "", "two outputs"},
  };
  for (const auto& [line, status, out, err] : cases) {
    const Called called = Call(line);
    EXPECT_EQ(called.status, status) << line << "\n" << called.err;
    EXPECT_NE(called.out.find(out), std::string::npos) << line << "\n" << called.out;
    EXPECT_NE(called.err.find(err), std::string::npos) << line << "\n" << called.err;
    EXPECT_EQ(err.empty(), called.err.empty()) << line << "\n" << called.err;
  }
  // Moved a metre to the south, some to the east, and deeper.
  EXPECT_EQ(folder_.Read("c.csv").substr(49, 51), "55.49999102,37.20000475,5.2,1621062000,a.gpx,5,used");
  EXPECT_EQ(Names(""),
            (std::set<std::string>{"X.XYZ", "a.gpx", "bare.gpx", "c.csv", "copy.gpx", "d.csv", "empty.csv",
                                   "more", "ring.gpx", "trips", "x.csv", "x.gpkg", "x.gpx", "y.xyz"}));
}

TEST_F(Chart, NumbersOfTheModel) {
  const struct {
    std::string option;
    std::vector<std::string> bad, good;
  } cases[] = {
      {"--tension", {"-0.1", "1.1", "nan", "x", "0,5"}, {"0", "0.35", "1"}},
      {"--cell", {"0", "-1", "nan", "inf", "1e9", "1e999", "5m", "+-5"}, {"0.5", "+1e1"}},
      {"--reach", {"0", "-0", "-5", "x"}, {"25"}},
      {"--contours",
       {"0", "-1", "nan", "x", "1,1", "2,1", "0,1", "1,,2", "1,2,", "1;2", "1e99"},
       {"0.5", "1,2.5,10"}},
  };
  for (const auto& [option, bad, good] : cases) {
    for (const std::string& value : bad) {
      const Called called = Call(option + " \"" + value + "\" a.gpx");
      EXPECT_EQ(called.status, 2) << option << " " << value;
      EXPECT_EQ(called.err.find("sondrix-chart: " + option + " takes "), 0u) << called.err;
      EXPECT_NE(called.err.find("not \"" + value + "\"\n"), std::string::npos) << called.err;
    }
    for (const std::string& value : good) EXPECT_EQ(Call(option + " " + value + " a.gpx").status, 0) << value;
  }
}

TEST_F(Chart, TextsThatAreAskedFor) {
  for (const auto& [option, part] : {std::pair("--help", "-o,--output"), {"--version", "sondrix-chart "}}) {
    const Called called = Call(option);
    EXPECT_EQ(called.status, 0);
    EXPECT_TRUE(called.out.find(part) != std::string::npos && called.err.empty()) << called.out;
  }
}

TEST_F(Chart, ThreadsDontShow) {
  for (int i = 0; i < 8; ++i) {
    folder_.Write("trips/t" + std::to_string(i) + ".gpx", TrackText(3000 - 350 * i, i, 37.2 + 1e-4 * i));
  }
  const auto run = [&](const std::string& threads) {
    const Called called = Call("-v -j " + threads + " -o x.csv -o x.xyz --report x.json trips a.gpx");
    EXPECT_EQ(Call("-j " + threads + " -o x.gpkg -o x.tif -o x.shp trips/t7.gpx").status, 0);
    EXPECT_EQ(called.status, 0);
    std::string left = called.out + called.err;
    for (const char* name : {"x.csv", "x.xyz", "x.gpkg", "x.tif", "x.shp", "x.dbf", "x.json"})
      left += folder_.Read(name);
    return left;
  };
  const std::string alone = run("1");
  EXPECT_GT(alone.size(), 1'000'000u);
  EXPECT_TRUE(run("4") == alone);
}

TEST_F(Chart, ItsOwnTableIsReadBack) {
  ASSERT_EQ(Call("-o x.csv a.gpx trips").status, 0);
  const Called called = Call("x.csv -o y.csv --report r.json");
  EXPECT_NE(called.out.find("90 soundings of 3 trips, 90 used"), std::string::npos) << called.out;
  EXPECT_TRUE(folder_.Read("y.csv") == folder_.Read("x.csv"));
  EXPECT_EQ(nlohmann::json::parse(folder_.Read("r.json"))["trips"].size(), 3u);
  // Beside what it was made of it is one too many.
  const Called both = Call("x.csv trips a.gpx");
  EXPECT_NE(both.out.find("\n90 soundings: 90 used\n"), std::string::npos) << both.out;
  // What is left out leaves no trace in the names of the others.
  Call("a.gpx trips x.csv -o z.csv");
  EXPECT_TRUE(folder_.Read("z.csv") == folder_.Read("x.csv"));
}

TEST_F(Chart, CoordinatesAndTimesAsTheUserSays) {
  folder_.Write(
      "t.csv",
      "x,y,z,time\n500000,5000000,-4.5,2021-05-15 09:00:00\n500010,5000000,-4.6,2021-05-15 09:00:01\n");
  const Called called = Call("--source-crs EPSG:32637 --z-up --zone Europe/Berlin -o x.xyz t.csv");
  EXPECT_EQ(called.status, 0) << called.err;
  EXPECT_NE(called.out.find("2021-05-15 07:00:00 to 2021-05-15 07:00:01 UTC"), std::string::npos)
      << called.out;
  EXPECT_EQ(folder_.Read("x.xyz"), "500000.00 5000000.00 4.500\n500010.00 5000000.00 4.600\n");
}

TEST_F(Chart, TheOtherSourcesTellTheOrderOfATable) {
  std::string rows;
  for (int i = 0; i < 9; ++i)
    rows += "55.501" + std::to_string(i) + "\t37.2100\t-4." + std::to_string(i) + "\n";
  folder_.Write("bare.txt", rows);
  for (const auto& [sources, first] : {std::pair("bare.txt", "37.21000000,55.50100000,4,"),
                                       {"bare.txt a.gpx", "55.50100000,37.21000000,4,"}}) {
    const Called called = Call("-o x.csv " + std::string(sources));
    EXPECT_EQ(called.status, 0) << called.err;
    EXPECT_EQ(folder_.Read("x.csv").substr(49, 26), first) << called.out;
    EXPECT_EQ(called.out.find("the other way round: so it lies beside") != std::string::npos,
              first[0] == '5');
  }
}

TEST_F(Chart, AnOutputIsNoSource) {
  folder_.Write("trips/old.csv", "earlier");
  fs::create_symlink(folder_.Path("a.gpx"), folder_.Path("link.csv"));
  EXPECT_EQ(Call("-o link.csv a.gpx").status, 2);
  EXPECT_TRUE(fs::is_symlink("link.csv"));
  const Called called = Call("-o trips/old.csv trips");
  EXPECT_EQ(called.status, 0);
  EXPECT_NE(called.err.find("trips/old.csv: left out, it is an output\n"), std::string::npos);
  EXPECT_EQ(folder_.Read("trips/old.csv").substr(0, 8), "latitude");
}

TEST_F(Chart, TheReportAddsUp) {
  ASSERT_EQ(Call("-o x.csv --report r.json a.gpx trips none.sl2").status, 1);
  const auto report = nlohmann::json::parse(folder_.Read("r.json"));
  std::uint64_t ofSources = 0, ofTrips = 0, ofFates = 0;
  for (const auto& source : report["sources"]) ofSources += source["soundings"].get<std::uint64_t>();
  for (const auto& trip : report["trips"]) ofTrips += trip["soundings"].get<std::uint64_t>();
  for (const auto& fate : report["total"]["fates"]) ofFates += fate.get<std::uint64_t>();
  EXPECT_EQ(ofSources, 90u);
  EXPECT_EQ(ofTrips, 90u);
  EXPECT_EQ(ofFates, 90u);
  EXPECT_EQ(report["total"]["read"], 90);
  EXPECT_EQ(report["sources"].size(), 4u);
  EXPECT_EQ(report["sources"][3]["problem"], "File not found");
  EXPECT_EQ(report["unknown_files"], nlohmann::json({"trips/notes.bin"}));
  // Two sources of one name stay two trips.
  EXPECT_EQ(report["trips"][1]["name"], "2021/a.gpx");
  EXPECT_EQ(report["outputs"][0]["bytes"], folder_.Read("x.csv").size());
}

TEST_F(Chart, PartsAreOneTripInTheReport) {
  // Each begins where and when the one before ended.
  const std::string whole = TrackText(180, 0);
  const std::string head = whole.substr(0, whole.find("<trkpt")), end = "</trkseg></trk></gpx>";
  std::vector<std::string> parts(3, head);
  std::size_t at = head.size();
  for (int i = 0; i < 180; ++i) {
    const std::size_t next = whole.find('\n', at) + 1;
    parts[static_cast<std::size_t>(i / 60)] += whole.substr(at, next - at);
    at = next;
  }
  for (int i = 0; i < 3; ++i) {
    folder_.Write("p" + std::to_string(i) + ".gpx", parts[static_cast<std::size_t>(i)] + end);
  }
  const Called called = Call("--report r.json p2.gpx p1.gpx trips/b.gpx p0.gpx p0.gpx");
  EXPECT_NE(called.out.find("p2.gpx: GPX, 60 soundings, 60 used, 2021-05-15 07:02:00 to 2021-05-15 07:02:59 "
                            "UTC; goes on from p0.gpx\n"),
            std::string::npos)
      << called.out;
  const auto report = nlohmann::json::parse(folder_.Read("r.json"));
  const auto& trips = report["trips"];
  ASSERT_EQ(trips.size(), 2u);
  EXPECT_EQ(trips[0]["name"], "p0.gpx");
  EXPECT_EQ(trips[0]["soundings"], 180);
  EXPECT_EQ(trips[0]["fates"]["used"], 180);
  EXPECT_EQ(trips[0]["to"].get<double>() - trips[0]["from"].get<double>(), 179);
  ASSERT_EQ(trips[0]["parts"].size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(trips[0]["parts"][i]["source"], "p" + std::to_string(i) + ".gpx");
  }
  EXPECT_EQ(trips[1]["parts"].size(), 1u);
  EXPECT_EQ(report["ignored_files"][0]["reason"], "it is given twice");
}

std::atomic<int> signals = 0;

TEST_F(Chart, ASignalLeavesEarlierFiles) {
  folder_.Write("long.gpx", TrackText(30'000, 0));
  for (const char* name : {"x.csv", "x.gpkg", "r.json"}) folder_.Write(name, "earlier");
  const std::set<std::string> before = Names("");
  const auto previous = std::signal(SIGTERM, [](int) { ++signals; });
  std::atomic<bool> isDone = false;
  std::jthread sender([&] {
    for (; !isDone; std::this_thread::sleep_for(std::chrono::microseconds(200))) std::raise(SIGTERM);
  });
  const Called called = Call("-o x.csv -o x.gpkg --report r.json long.gpx");
  isDone = true;
  sender.join();
  std::signal(SIGTERM, previous);
  EXPECT_EQ(called.status, 1);
  EXPECT_EQ(called.err, "sondrix-chart: interrupted: no file was made\n");
  EXPECT_EQ(Names(""), before);
  for (const char* name : {"x.csv", "x.gpkg", "r.json"}) EXPECT_EQ(folder_.Read(name), "earlier");
}

}  // namespace
}  // namespace sondrix

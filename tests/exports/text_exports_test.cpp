#include "core/files.h"
#include "exports/csv.h"
#include "exports/gpx.h"
#include "exports/made_survey.h"
#include "exports/row_text.h"
#include "exports/xyz.h"
#include "sounders/sounder_formats.h"
#include "temporary_folder.h"

#include <functional>
#include <gtest/gtest.h>

namespace sondrix {
namespace {

std::string Written(const TemporaryFolder& folder, const std::function<void(OutputFile&)>& write) {
  OutputFile file(folder.Path("out"));
  write(file);
  file.Close();
  return folder.Read("out");
}

TEST(RowText, NumbersAreRoundedAndTrimmed) {
  const auto text = [](const std::function<char*(char*)>& put) {
    char bytes[NumberRoom];
    return std::string(bytes, put(bytes));
  };
  const struct {
    double value;
    int decimals;
    bool isTrimmed;
    const char* text;
  } cases[] = {
      {0, 8, false, "0.00000000"},
      {-0.0, 3, true, "0"},
      {-179.99999999, 8, false, "-179.99999999"},
      {5.25, 3, true, "5.25"},
      {100, 3, true, "100"},
      {-0.001, 3, true, "-0.001"},
      {0.0004, 3, true, "0"},
      {1621063740.999, 3, true, "1621063740.999"},
      {7, 0, false, "7"},
      {99.995001, 2, false, "100.00"},
      {Unknown, 3, true, ""},
      {1e300, 3, true, ""},
      {-HUGE_VAL, 8, false, ""},
      {8999999999999, 3, true, "8999999999999"},
  };
  for (const auto& [value, decimals, isTrimmed, expected] : cases) {
    EXPECT_EQ(text([&](char* to) { return PutNumber(to, value, decimals, isTrimmed); }), expected);
  }
}

TEST(Csv, EachSoundingHasARow) {
  const TemporaryFolder folder;
  const Survey survey = SmallSurvey();
  EXPECT_EQ(Written(folder, [&](OutputFile& file) { WriteCsv(survey, {}, file); }),
            "latitude,longitude,depth,time,trip,recorded,fate\n"
            "55.50000001,37.20000000,12.3,1621063740.25,\"lake & sea, \"\"<1>\"\".sl2\",12.3,used\n"
            "55.50000000,37.25000000,0.5,1621063741,\"lake & sea, \"\"<1>\"\".sl2\",0.5,lost\n"
            "55.60000000,37.30000000,7.25,1621063742,\"lake & sea, \"\"<1>\"\".sl2\",7.25,used\n"
            ",,,,empty.csv,,blind\n"
            "-0.00000001,-180.00000000,3.473,-0.001,south,3.123,used\n"
            "-33.00000000,179.99999999,0,,south,0,used\n");
}

TEST(Csv, ThreadsDontShowAndAnEndIsHeeded) {
  const TemporaryFolder folder;
  Survey survey;
  for (int t = 0; t < 40; ++t) {
    Trip trip = TripOf("trip" + std::to_string(t), {});
    for (int i = 0; i < t * t * 50; ++i) {
      Sounding sounding;
      sounding.latitude = KeptDegrees(i * 1e-5);
      sounding.recorded = static_cast<float>(i % 100);
      trip.soundings.Add(sounding);
    }
    survey.trips.push_back(std::move(trip));
  }
  const auto write = [&](int threads) {
    return Written(folder, [&](OutputFile& file) { WriteCsv(survey, {.threads = threads}, file); });
  };
  const std::string alone = write(1);
  EXPECT_EQ(std::count(alone.begin(), alone.end(), '\n'), 1 + static_cast<int>(survey.SoundingCount()));
  EXPECT_TRUE(write(4) == alone);
  EXPECT_TRUE(write(61) == alone);
  std::atomic<int> asked = 0;
  ExportRun ended = {.threads = 3};
  ended.isToEnd = [&asked] { return ++asked == 20; };
  OutputFile file(folder.Path("ended"));
  EXPECT_THROW(WriteCsv(survey, ended, file), EndAsked);
}

TEST(Gpx, TracksHoldWhatIsUsed) {
  const TemporaryFolder folder;
  const Survey survey = SmallSurvey();
  const std::string text = Written(folder, [&](OutputFile& file) { WriteGpx(survey, {}, file); });
  const auto point = [](const char* place, const std::string& time, const std::string& depth) {
    return "<trkpt " + std::string(place) + ">" + (time.empty() ? "" : "<time>" + time + "</time>") +
           "<extensions><tpx:TrackPointExtension><tpx:depth>" + depth +
           "</tpx:depth></tpx:TrackPointExtension></extensions></trkpt>\n";
  };
  EXPECT_EQ(text.substr(text.find("<trk>")),
            "<trk><name>lake &amp; sea, \"&lt;1&gt;\".sl2</name>\n<trkseg>\n" +
                point("lat=\"55.50000001\" lon=\"37.20000000\"", "2021-05-15T07:29:00.25Z", "12.3") +
                "</trkseg>\n<trkseg>\n" +
                point("lat=\"55.60000000\" lon=\"37.30000000\"", "2021-05-15T07:29:02Z", "7.25") +
                "</trkseg></trk>\n<trk><name>south</name>\n<trkseg>\n" +
                point("lat=\"-0.00000001\" lon=\"-180.00000000\"", "1969-12-31T23:59:59.999Z", "3.473") +
                point("lat=\"-33.00000000\" lon=\"179.99999999\"", "", "0") + "</trkseg></trk>\n</gpx>\n");
  // A reader of its own takes it for what it is.
  const SounderFormat* const format = Recognise(folder.Path("out"));
  ASSERT_NE(format, nullptr);
  Reading reading;
  format->read(folder.Path("out"), {}, {}, reading);
  std::size_t soundings = 0;
  for (const TripReading& trip : reading.trips) soundings += trip.soundings.size();
  EXPECT_EQ(soundings, 4u);
}

TEST(Xyz, OnlyWhatIsUsedAndHasAPlace) {
  const TemporaryFolder folder;
  const Survey survey = SmallSurvey();
  const auto makeToPlane = [] {
    return [](double longitude, double latitude, double& easting, double& northing) {
      easting = longitude * 1000;
      northing = latitude * 1000;
      return latitude > -1;
    };
  };
  std::uint64_t leftOut = 0;
  EXPECT_EQ(Written(folder, [&](OutputFile& file) { leftOut = WriteXyz(survey, {}, makeToPlane, file); }),
            "37200.00 55500.00 12.300\n37300.00 55600.00 7.250\n-180000.00 0.00 3.473\n");
  EXPECT_EQ(leftOut, 1u);
}

}  // namespace
}  // namespace sondrix

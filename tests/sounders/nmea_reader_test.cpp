#include "sounders/nmea/nmea_reader.h"

#include "core/files.h"
#include "reading_text.h"
#include "recordings.h"
#include "samples/nmea_log.h"
#include "sounders/nmea/nmea_depth.h"
#include "sounders/nmea/nmea_fix.h"
#include "sounders/nmea/nmea_prefix.h"

namespace sondrix {
namespace {

// Fixes a second apart, each 0.6 minutes further east, at 20 degrees and on.
std::string Gga(int second) {
  char text[100];
  std::snprintf(text, sizeof text, "$GPGGA,0000%02d,1000.0000,N,%09.4f,E,1,08,,,,,,,\n", second,
                2000 + second * 0.6);
  return text;
}
std::string Dbt(const std::string& metres) { return "$SDDBT,,f," + metres + ",M,,F\n"; }
// A date for the fixes: 1 January 2020, 1577836800.
const std::string Date = "$GPZDA,000000,01,01,2020,00,00\n";

struct Row {
  std::string log, soundings;
};

TEST(NmeaReader, DepthsBetweenFixes) {
  const std::string gap = Gga(0) + Dbt("1") + Gga(6) + Dbt("2") + Gga(11);
  for (const Row& row : std::vector<Row>{
           // By order, spread evenly; nothing before the first fix and behind the last.
           {Dbt("1") + Date + Gga(0) + Dbt("2") + Dbt("3.00") + Gga(3) + Dbt("4"),
            "- - - 1.000; 20.0100 10.0000 1577836801.00 2.000; 20.0200 10.0000 1577836802.00 3.000; - - - "
            "4.000"},
           // Not across a gap of more than five seconds.
           {gap, "- - - 1.000; 20.0850 10.0000 - 2.000"},
           // A fix that is lost in between leaves its time.
           {Date + Gga(0) + Dbt("1") + "$GPGGA,000001,,,,,0,00,,,M,,M,,\n" + Dbt("2") + Gga(4),
            "20.0050 10.0000 1577836800.50 1.000; 20.0250 10.0000 1577836802.50 2.000"},
           {Date + Gga(0) + Dbt("1") + "$GPGGA,000003,,,,,0,00,,,M,,M,,\n" + Dbt("2") +
                "$GPGGA,000006,,,,,0,,,,,,,,\n" + Gga(7),
            "- - 1577836801.50 1.000; - - 1577836804.50 2.000"},
           // An instrument that tells that it has no depth.
           {Gga(0) + Dbt("") + Dbt("0.0") + Dbt("5") + Gga(4),
            "20.0100 10.0000 - -; 20.0200 10.0000 - 0.000; 20.0300 10.0000 - 5.000"},
           // A logger's clock with decimals tells single lines apart, one in whole seconds doesn't.
           {"1577836800100;N;" + Gga(0) + "1577836800850;N;" + Dbt("1") + "1577836801100;N;" + Gga(1),
            "20.0075 10.0000 1577836800.75 1.000"},
           {"1577836800;" + Gga(0) + "1577836800;" + Dbt("1") + "1577836801;" + Gga(1),
            "20.0050 10.0000 1577836800.50 1.000"},
           // Fixes without times, and across the meridian of 180 degrees.
           {"$GPGLL,1000.0,N,17959.94,E\n" + Dbt("1") + Dbt("2") + "$GPGLL,1000.0,N,17959.88,W\n",
            "180.0000 10.0000 - 1.000; -179.9990 10.0000 - 2.000"},
           // Torn into one line, small letters with their capitals' checksum, quotes, without leading zeros.
           {"$GPGGA,000000,1000.0,N,2000.0,E,1,08*7F$SDDBT,,f,7,M,,F\n", "- - - 7.000 | 1 wrong checksums"},
           {"x,\"$gpgll,0.5,n,1.2,w,000000,a*0E\"\n$sddbt,,f,7,m,,f*1F\n$GPGLL,0.5,N,1.2,W,000001,A\n",
            "-0.0200 0.0083 - 7.000"},
       })
    EXPECT_EQ(ReadingText(row.log), row.soundings) << row.log;
}

TEST(NmeaReader, DatesAndMidnights) {
  const auto rmc = [](const char* time, const char* date) {
    return "$GPRMC," + std::string(time) + ",A,1000.0,N,02000.0,E,,," + date + ",,\n";
  };
  const auto gga = [](const char* time) {
    return "$GPGGA," + std::string(time) + ",1000.00,N,02000.00,E,1,\n";
  };
  for (const Row& row : std::vector<Row>{
           // What comes before the date gets it, also over midnight.
           {gga("235959") + Dbt("1") + gga("000000") + rmc("000001", "020120") + gga("000001"),
            "20.0000 10.0000 1577923199.50 1.000"},
           {rmc("235959", "010120") + gga("235959") + gga("000000") + Dbt("1") + gga("000001"),
            "20.0000 10.0000 1577923200.50 1.000"},
           // Two days' logs in one: the fix before the new date is of the new day too.
           {gga("000000") + rmc("000000", "010120") + Dbt("1") + gga("000001") + gga("000000") +
                rmc("000000", "050120") + Dbt("2") + gga("000001"),
            "20.0000 10.0000 1577836800.50 1.000; 20.0000 10.0000 1578182400.50 2.000"},
           // A date without a fix, an empty one, one of no day, one that turned over with the counter of
           // weeks.
           {"$GPRMC,000000,V,,,,,,,010120,,\n$GPZDA,000000,,,,00,\n$GPZDA,000000,31,02,2020,,\n" +
                gga("000000") + Dbt("1") + gga("000001"),
            "20.0000 10.0000 - 1.000"},
           {"2019-12-31T23:59:59Z " + rmc("235959", "160500") + Dbt("1") + "2020-01-01T00:00:00Z " +
                rmc("000000", "170500"),
            "20.0000 10.0000 1577836799.50 1.000"},
           // Dates of clocks that were not set.
           {rmc("000000", "311289") + Dbt("1") + rmc("000001", "311289"), "20.0000 10.0000 - 1.000"},
           // The logger's date where the receiver has none.
           {"03/15/2010,00:00:00.500," + gga("000000") + "03/15/2010,00:00:01.000," + Dbt("1") +
                "03/15/2010,00:00:01.500," + gga("000001"),
            "20.0000 10.0000 1268611200.50 1.000"},
       })
    EXPECT_EQ(ReadingText(row.log), row.soundings) << row.log;
  Reading turned;
  ReadingText("2020-01-01T00:00:00Z " + rmc("000000", "170500") + Dbt("1") + rmc("000001", "311289"), {},
              &turned);
  ASSERT_EQ(turned.remarks.size(), 2U);
  EXPECT_EQ(turned.remarks[0], "its dates are 1024 weeks early by the logger's clock, and put right");
  EXPECT_EQ(turned.remarks[1], "1 times before 1990 are of a clock that was not set");
  ReadOptions east;
  east.toUtc = [](double seconds) { return seconds - 3600; };
  east.zoneName = "UTC+1";
  Reading reading;
  EXPECT_EQ(ReadingText("2020-01-01 01:00:00.0 " + Dbt("1"), east, &reading), "- - 1577836800.00 1.000");
  EXPECT_EQ(reading.takenFor, (std::vector<std::string>{"depths: SDDBT", "times of the logger: UTC+1"}));
}

TEST(NmeaReader, OneOfThoseThatTellTheSame) {
  const std::string fixes = Gga(0), later = Gga(4);
  std::string joined;
  for (int i = 0; i < 40; ++i) joined += i < 20 ? "$SDDPT,1.0,0.5\n" : Dbt("2");
  for (const Row& row : std::vector<Row>{
           {fixes + "$SDDBT,,f,3,M,,F\n$SDDPT,3.1,0.4\n$SDDBS,,f,4,M,,F\n" + later,
            "20.0200 10.0000 - 3.500"},
           {fixes + "$SDDPT,3.1,\n$SDDBS,,f,4,M,,F\n" + later, "20.0200 10.0000 - 4.000"},
           {fixes + "$SDDBK,,f,2,M,,F\n$IIDBT,,f,3,M,,F\n$SDDBT,,f,3,M,,F\n$SDDBT,,f,4,M,,F\n" + later,
            "20.0133 10.0000 - 3.000; 20.0267 10.0000 - 4.000"},
           // The talker of the first fix, and there the sentence with most decimals, once an epoch.
           {"$GPGLL,1000.0,N,02000.0,E,000000,A\n" + Gga(0) +
                "$IIGGA,000000,1000.0000000,N,04000.0000,E,1,\n" + Dbt("1") +
                "$GPGLL,1000.0,N,02003.0,E,000001,A\n" + Gga(1) + Gga(1),
            "20.0050 10.0000 - 1.000"},
           {"$GPRMC,000000,A,1000.0000,N,02000.0000,E,,,,,,N\n$GPGGA,000000,1000.00,N,02000.00,E,8,\n"
            "$GNGNS,000000,1000.00,N,02000.60,E,NN,,,,,,\n$GNGNS,000000,1000.00,N,02000.60,E,AN,,,,,,\n" +
                Dbt("1") + "$GNGNS,000001,1000.00,S,02000.60,W,NA,,,,,,\n",
            "0.0000 0.0000 - 1.000"},
       })
    EXPECT_EQ(ReadingText(row.log), row.soundings) << row.log;
  Reading reading;
  ReadingText(joined, {}, &reading);
  ASSERT_EQ(reading.trips[0].soundings.size(), 24U) << "a later source counts once the first is silent";
  EXPECT_FLOAT_EQ(reading.trips[0].soundings[19].recorded, 1.5F);
  EXPECT_FLOAT_EQ(reading.trips[0].soundings[20].recorded, 2.0F);
  EXPECT_EQ(reading.remarks[0], "16 depths told by other sentences too");
}

TEST(NmeaReader, WhatASentenceTellsOfADepth) {
  struct Row {
    std::string_view text, metres;
  };
  for (const auto& [text, metres] :
       {// Feet are finer, or metres have more decimals; each unit alone.
        Row{"$SDDBT,1.8,f,0.5,M,0.3,F", "0.549"}, Row{"$05DBT,01.6,f,0.50,M,00.3,F", "0.500"},
        Row{"$SDDBT,,f,12.3,M,,F", "12.300"}, Row{"$SDDBT,12.3,f,,M,,F", "3.749"},
        Row{"$SDDBT,,f,,M,2.0,F", "3.658"},
        // Feet and metres swapped, also with their letters; one number for all.
        Row{"$SDDBT,12.3,f,40.4,M,6.7,F", "12.314"}, Row{"$SDDBT,12.3,M,40.4,f,6.7,F", "12.314"},
        Row{"$sddbt,40.4,f,12.3,m,6.7,f", "12.314"}, Row{"$SDDBT,12.3,f,12.3,M,12.3,F", "12.300"},
        Row{"$SDDBT,3277,f,999,M,546,F", "-"}, Row{"$SDDBT,,f,-1,M,,F", "-"},
        // Cut within the metres, or before any.
        Row{"$SDDBT,12.3,f,3", "3.749"}, Row{"$SDDBT,12", "bad"}, Row{"$SDDBT,abc,f,,M,,F", "bad"},
        Row{"$SDDPT,2.4,0.6,100*4A", "3.000"}, Row{"$SDDPT,2.4,-0.6", "2.400"},
        Row{"$SDDPT,2.4,999", "2.400"}, Row{"$SDDPT,,0.6", "-"}, Row{"$SDDPT,0.0,0.6", "0.000"},
        Row{"$SDDPT,2", "bad"}, Row{"$PSKPDPT,0002.5,+00.5,0010,10,03,*72", "3.000"},
        Row{"$SDODC,12:00:00,16\xB0 07.5000' N,091\xB0 30.0000' W,A,25.40,M,A", "25.400 -91.5000 16.1250"},
        Row{"$SDODC,12:00:00,16\xC2\xB0 07.5000' S,091\xC2\xB0 30.0000' E,V,0.40,M,V", "- - -"},
        Row{"$SDODC,12:00:00,16\xB0 67.5000' N,091\xB0 30.0000' W,A,25.40,M,A", "bad"}}) {
    const std::optional<NmeaSentence> sentence = SentenceScan(text).Next();
    ASSERT_TRUE(sentence) << text;
    EXPECT_NE(sentence->checksum, Checksum::Wrong) << text;
    const std::optional<ToldDepth> depth = DepthOf(sentence->kind, NmeaFields(sentence->fields));
    std::string told = depth ? NumberText(depth->metres, 3) : "bad";
    if (depth && sentence->kind == SentenceKind::Odc)
      told += " " + NumberText(depth->longitude, 4) + " " + NumberText(depth->latitude, 4);
    EXPECT_EQ(told, metres) << text;
  }
}

TEST(NmeaReader, TimesThatLoggersPutBefore) {
  using Clock = LoggerTime::Clock;
  struct Prefix {
    std::string_view text;
    Clock clock;
    double seconds;
    bool isFine;
  };
  for (const Prefix& row : std::vector<Prefix>{
           {"1522258800123;N;", Clock::Absolute, 1522258800.123, true},
           {"1522258800.25 ", Clock::Absolute, 1522258800.25, true},
           {"2018-03-28T17:40:00Z\t", Clock::Absolute, 1522258800, false},
           {"NAV 2018/03/28 17:40:00.5 GPS ", Clock::Absolute, 1522258800.5, true},
           {"2018-03-28T19:40:00.0+02:00,NMEA0183,RMC,usb,\"", Clock::Absolute, 1522258800, true},
           {"03/28/2018,17:40:00.5,", Clock::Absolute, 1522258800.5, true},
           {"28/03/2018 17:40:00 ", Clock::Absolute, 1522258800, false},
           {"28.3.2018;17:40:00;", Clock::Absolute, 1522258800, false},
           {"cnav 2018:087:17:40:00.5 ", Clock::Absolute, 1522258800.5, true},
           {"\\s:r3,c:1522258800*4A\\", Clock::Absolute, 1522258800, false},
           {"10:00:00.0 \\g:1-2-3,c:1522258800250*4A\\", Clock::Absolute, 1522258800.25, true},
           {"00:01:02.500;A;", Clock::OfDay, 62.5, true},
           {"00:01:02.500: ", Clock::OfDay, 62.5, true},
           {"1970-01-01T00:01:02.500Z ", Clock::OfDay, 62.5, true},
           {"0102500. ", Clock::None, 0, false},
           {"2018-02-30 99:00:00 boat7 ", Clock::None, 0, false},
       }) {
    const LoggerTime time = LoggerTimeOf(row.text, false);
    EXPECT_EQ(time.clock, row.clock) << row.text;
    EXPECT_NEAR(time.seconds, row.seconds, 1e-6) << row.text;
    EXPECT_EQ(time.isFine, row.isFine) << row.text;
  }
  EXPECT_EQ(
      LoggerTimeOf("03/04/2018 00:00:00", true).seconds - LoggerTimeOf("04/03/2018 00:00:00", false).seconds,
      0);
}

TEST(NmeaReader, JsonLines) {
  const auto delta = [](const std::string& context, const std::string& time, const std::string& path,
                        const std::string& value) {
    return "1577836800000;I;{\"context\":\"" + context +
           "\",\"updates\":[{\"$source\":\"x\",\"timestamp\":\"" + time + "\",\"values\":[{\"path\":\"" +
           path + "\",\"value\":" + value + "}]}]}\n";
  };
  const std::string place = "navigation.position", depth = "environment.depth.belowTransducer";
  EXPECT_EQ(
      ReadingText(
          delta("vessels.a", "2020-01-01T00:00:00.000Z", place, "{\"longitude\":20,\"latitude\":10}") +
          delta("vessels.b", "2020-01-01T00:00:00.100Z", place, "{\"longitude\":70,\"latitude\":10}") +
          delta("vessels.a", "2020-01-01T00:00:00.250Z", depth, "4.5") +
          delta("vessels.a", "2020-01-01T00:00:00.500Z", depth, "null") +
          delta("vessels.a", "2020-01-01T00:00:00.600Z", depth, "\"deep\"") + "1577836800000;I;{\"upd\n" +
          delta("vessels.self", "2020-01-01T00:00:01.000Z", place, "{\"longitude\":21,\"latitude\":10}")),
      "20.2500 10.0000 1577836800.25 4.500; 20.5000 10.0000 1577836800.50 - | 2 bad rows");
}

TEST(NmeaReader, SentencesInJsonLines) {
  const std::string first = "$GPGLL,1000.0,N,02000.0,E,,A,A*44", last = "$GPGLL,1000.0,N,02000.6,E,,A,A*42";
  const auto log = [&](const std::string& before, const std::string& behind, const std::string& depth) {
    std::string text;
    const std::string sentences[] = {first, depth, last};
    for (int i = 0; i < 3; ++i)
      text += before + std::to_string(i) + behind + sentences[static_cast<std::size_t>(i)] + "\\r\\n\"}\n";
    return text;
  };
  const std::string checked = "$SDDBT,,f,2.0,M,,F*04", placed = "20.0050 10.0000 1714557601.00 2.000";
  for (const Row& row : std::vector<Row>{
           {log("{\"time\":\"2024-05-01T10:00:0", "Z\",\"nmea\":\"", checked), placed},
           {log("{\"v\": {\"t\": 171455760", "}, \"raw_data\": \"", "\\u0024SDDBT,,f,2.0,M,,F"), placed},
           {log("2024-05-01T10:00:0", "Z {\"n\":-1.5,\"s\":\"a {\",\"raw\":\"", checked), placed},
           {"[{\"x\":\"" + first + "\\n" + checked + "\\n\",\"time\":\"10:00:00\"},\n", "- - - 2.000"},
           {"{\"price\":\"$5,00\"}\n{\"name\":\"Hi!, you\"}\n", "not recognised"},
       })
    EXPECT_EQ(ReadingText(row.log), row.soundings) << row.log;
}

TEST(NmeaReader, WhatCantBeUnderstoodIsCounted) {
  const std::string fixed = Gga(0) + Dbt("1") + Gga(1), placed = "20.0050 10.0000 - 1.000";
  for (const Row& row : std::vector<Row>{
           {"received_at,raw\n# a comment\n\n" + fixed + "$SDMTW,12.6,C*01\n!AIVDM,1,1,,A,15,0\n$$\n",
            placed},
           {fixed + "what is "
                    "this\n$???\n$GPGGA,006000,1000.0,N,02000.0,E,1,\n$GPGLL,9100.0,N,02000.0,E,000000,A\n",
            placed + " | 4 bad rows"},
           {fixed + "$SDMTW,12.6,C*02\n$SDDBT,1,f,2,M,3,F*0",
            placed + " | 1 wrong checksums | 1 cut at the end"},
           {fixed + "$SDDBT,1", placed + " | 1 cut at the end"},
           {fixed + std::string(5'000'000, '$') + "\n", placed + " | 1 lines too long"},
           {Gga(0) + Dbt("0.0") + Gga(1), "no depth in its sentences"},
           {Gga(0) + std::string(5'000'000, 'x'), "its lines are longer than those of any log"},
           {"lat,lon\nnorth,$GPGGA\n", "not recognised"},
           {"price,$5\nname,$GP\n", "not recognised"},
           {"{\"type\":\"FeatureCollection\"}", "not recognised"},
       })
    EXPECT_EQ(ReadingText(row.log), row.soundings) << row.log.substr(0, 300);
}

// How many soundings, how many of them with a place, and the first.
std::string CountsOf(const std::string& log) {
  Reading reading;
  const std::string text = ReadingText(log, {}, &reading);
  const SoundingList& soundings = reading.trips.at(0).soundings;
  std::size_t placed = 0;
  for (std::size_t i = 0; i < soundings.size(); ++i) placed += soundings[i].HasPosition();
  return std::to_string(soundings.size()) + " " + std::to_string(placed) + ": " +
         text.substr(0, text.find(';'));
}

TEST(NmeaReader, LongLogs) {
  // Without a date, and with no fix for long, what is known of the times is left as it is.
  std::string log = Gga(0);
  for (int i = 0; i < 10'000; ++i) log += Dbt("1");
  EXPECT_EQ(CountsOf(log + Gga(1)).substr(0, 6), "10000 ");
  // Without a place: four at the cold start, one at the end, five at the gaps' ends.
  EXPECT_EQ(CountsOf(NmeaLog()).substr(0, 8), "900 891:");
  const std::string folder = RecordingsFolder().string();
  if (folder.empty()) GTEST_SKIP() << "the real recordings are not there";
  EXPECT_EQ(CountsOf(ReadWhole(folder + "/logs/moored-boat.log")),
            "73 73: 5.4284 53.1802 1397678239.50 1.000");
  EXPECT_EQ(CountsOf(ReadWhole(folder + "/recordings/nmea/plaka-first-400kB.log")), "946 944: - - - 10.439");
  EXPECT_EQ(CountsOf(ReadWhole(folder + "/recordings/nmea/n2kd-183-merrimac.log")), "13 0: - - - 0.580");
}

}  // namespace
}  // namespace sondrix

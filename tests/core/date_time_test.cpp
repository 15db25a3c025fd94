#include "core/date_time.h"

#include "digest.h"

#include <cstdlib>
#include <ctime>

namespace sondrix {
namespace {

std::string Stamp(DateSeconds date) {
  std::string text;
  AppendStamp(text, date);
  return text;
}

TEST(DateTime, WritesTheFourPatternsOfDaysFrom1899) {
  const auto all = [](std::int64_t unixSeconds) {
    const DateSeconds date = DateOfUnix(unixSeconds);
    return Stamp(date) + " " + TrackDate(date) + " " + ClockTime(date) + " " + LogDate(date);
  };
  EXPECT_EQ(all(951868799), "2000-02-29T23:59:59 29-Feb-00 23:59:59 00.02.29");
  EXPECT_EQ(all(-1), "1969-12-31T23:59:59 31-Dec-69 23:59:59 69.12.31");
  EXPECT_EQ(all(-2209248000), "1899-12-29T00:00:00 29-Dec-99 00:00:00 99.12.29");
  EXPECT_EQ(all(1893456000), "2030-01-01T00:00:00 01-Jan-30 00:00:00 30.01.01");
  EXPECT_EQ(all(1893455999), "2029-12-31T23:59:59 31-Dec-29 23:59:59 29.12.31");
  EXPECT_EQ(all(-62135596801), "0000-12-31T23:59:59 31-Dec-00 23:59:59 00.12.31");
  EXPECT_EQ(all(-62167219201), "-1-12-31T23:59:59 31-Dec-99 23:59:59 99.12.31");
  std::string text;
  for (std::int64_t date = -62'300'000'000; date < 5'000'000'000; date += 31'556'952 + date % 99'991)
    text += all(date) + '\n';
  EXPECT_TRUE(HasDigest(text, 0xB861AC18FCA1DBCF));
  EXPECT_EQ(DayCount(DateOfUnix(43200)), 25569.5);
}

TEST(DateTime, ClockIsLocal) {
  for (const std::time_t now : {std::time(nullptr), std::time_t{951868799}}) {
    // cppcheck-suppress localtimeCalled ; the portable one, in a test of one thread
    const std::tm local = *std::localtime(&now);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local);
    EXPECT_EQ(Stamp(LocalDate(now)), text);
  }
  EXPECT_LE(std::abs(ClockNow() - LocalDate(std::time(nullptr))), 2);
}

TEST(Ms2Hms, HoursRunOn) {
  std::string text;
  for (const std::int64_t milliseconds :
       {3661999, 359999999, 360000000, 2147483647, -1, -1000, -1001, -3600000, -360000001})
    text += Ms2Hms(milliseconds) + " ";
  EXPECT_EQ(text,
            "01:01:01 99:59:59 100:00:00 596:31:23 -01:59:59 -01:59:59 -01:59:58 -01:00:00 -101:59:59 ");
}

}  // namespace
}  // namespace sondrix

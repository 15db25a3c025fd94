#include "core/number_text.h"
#include "recordings.h"
#include "samples/echogram.h"
#include "samples/xorshift.h"
#include "test_run.h"

#include <cmath>

namespace sondrix {
namespace {

// Forty scans of four channels; hardly a frame is like the one before. The boat goes in circles at another
// speed from scan to scan, some depths and angles are absent, and two scales are shown.
std::vector<SampleFrame> Trip() {
  XorShift chance(5);
  std::vector<SampleFrame> frames;
  for (int scan = 0; scan < 40; ++scan) {
    const float turn = 0.15F * static_cast<float>(scan);
    const int x = 4'105'000 + static_cast<int>(20 * std::sin(turn)), y = 7'533'000 + scan * scan / 16;
    const float depth = scan % 13 == 5 ? 0 : 20 + 5 * std::sin(3 * turn);
    const auto side = [&](std::size_t count) {
      std::vector<SampleSounding> list(count);
      for (std::size_t i = 0; i < count; ++i)
        list[i] = {static_cast<float>(chance.Below(70)), 1.5F + 2.5F * static_cast<float>(i)};
      return list;
    };
    for (const int channel : {0, 2, 5, 9}) {
      SampleFrame frame = Frame(channel, depth, x, y, 1920);
      for (std::size_t row = 150; channel != 9 && row < 1900; row += 7)
        frame.Samples[row] = static_cast<std::uint8_t>(chance.Below(190));
      const auto left = side(chance.Below(90)), right = side(chance.Below(90));
      if (channel == 9) frame = Frame3D(left, right, depth, x, y);
      if (channel == 9 && scan == 20) frame.Samples.resize(256);  // is passed over
      frame.FrameIndex = 1190 + scan;
      frame.TimeOffset = 930 * scan;
      frame.LowerLimit = scan < 30 ? 66 : 520;
      frame.Speed = 0.3F * static_cast<float>(scan);
      frame.Course = scan % 4 == 3 ? 0 : turn + 0.1F;
      frame.Heading = scan % 6 == 3 ? 0 : turn;
      frame.Aux28 = 0x11223344;
      frame.Aux32 = 0x77;
      frame.Aux68 = 0x01020304;
      frame.Aux7C = 0x0A0B0C0D;
      frames.push_back(frame);
    }
  }
  return frames;
}

// Notes the calls of the live track and makes a mark at some pumps.
std::string RecordOf(TestRun& test, int channel) {
  std::string calls;
  const auto note = [&](std::string_view name, auto... numbers) {
    calls.append(name);
    ((calls += ' ' + LocText(static_cast<double>(numbers))), ...);
    calls += '\n';
  };
  test.link.ShowAllTracks = [&] { note("all"); };
  test.link.ShowTrack = [&](int track) { note("track", track); };
  test.link.CreateTrackPoint = [&](auto... all) { note("point", all...); };
  test.link.CenterMapAtPositionWithMark = [&](double lat, double lon) { note("centre", lat, lon); };
  test.link.IsPositionOnMap = [&](double lat, double lon) { return note("on map?", lat, lon), 0; };
  test.link.FindMapAtPosition = [&](double lat, double lon) { note("find", lat, lon); };
  test.link.CreateWp = [&](const OziWaypoint& at) {
    note(at.name + at.description, at.symbol, at.latitude, at.longitude, at.altitude, at.date, at.direction,
         at.colour);
    return 5;
  };
  test.window.onPump = [&](int pump) {
    if (pump % 50 == 7) MarkClick(test.run, pump % 100 == 7 ? MarkFish : MarkRelief);
  };
  test.Click(channel);
  return test.Record() + calls;
}

// What a run writes, says and shows, as it did when an independent model gave the same.
TEST(WholeRun, LeavesWhatItLeft) {
  const struct {
    int word, channel;
    const char* fields;
    std::uint64_t digest;
  } rows[] = {
      {2, 0, "", 0xDE1008627BD93E9B},
      {2, 2, "MakeGraf=1 EhoSens=20 DistDiff=2 UseHead=1 DucerX=120 DucerY=-300 DefLvl=20 UseBeep=1",
       0x158E622BC45198C9},
      {2, 2, "ViewOzi=1 UseHead=1 MaxGrad=3 UseDcm=1 DepthSm=-30 boxLang=DEU", 0x8878F0E35955192B},
      {2, 0, "ViewOzi=1 MakeGraf=1 SaveGraf=1 ScanSkip=1200 ScanCut=1204", 0xD992478BB42DD7F1},
      {2, 2, "MakeCut=1 UseRad=1 ScanSkip=1210", 0x72B659B1E77C457F},
      {2, 5, "MakeGraf=1 ScanCut=1215 UseUTM=1 DucerY=100", 0xF42F46B3AB49B020},
      {1, 0, "MakeCut=1 MakeGraf=1", 0x8229FB73683F3A4B},
      {3, 0, "MakeCut=1 UseRad=1 HideCut=1 ScanSkip=1200 ScanCut=1203", 0x1A63F4BDA6141A08},
      {3, 2, "MakeCut=1 DistDiff=1 DucerX=0 DucerY=200", 0xA915C6135339746E},
      {3, 9, "MakeGraf=1 DefSlp=300 DistDiff=1 MaxProc=70 MaxSide=9 DepthSm=25 MaxGrad=5 UseHead=1",
       0xA33ACA16FE288961},
      {3, 9, "DistDiff=0 MaxProc= MaxSide=12 UseRev=1 UseUTM=1 DucerX=100 DucerY=50", 0x82C7B29DED42863D},
      {3, 9, "MakeGraf=1 SaveGraf=1 MaxProc=50 EhoSens=-40 ScanCut=1193", 0xE34589840BB4E899},
      {255, 9, "MakeGraf=1 MaxProc= MaxGrad=0 UseHead=1", 0x1F105EE98E8012F7},
      {2, 0, "ScanSkip=1201 ScanCut=1201", 0x5FE02CA80E146AB7},
      {2, 0, "ScanSkip=x", 0x378D0B632763326E},
      {3, 9, "MakeCut=1", 0xCF8C8FA0B54FC9B9},
      {2, 0, "ScanSkip=9999", 0xA84367A47CCF776B},
      {3, 9, "MakeGraf=1 MaxGrad=8 UseRev=1 ScanCut=1220", 0xBA8BBDD1FE825162},
  };
  for (const auto& [word, channel, fields, digest] : rows) {
    TestRun test;
    test.Source("trip.sl2", EchogramBytes(word, Trip())).Set(fields);
    EXPECT_TRUE(HasDigest(RecordOf(test, channel), digest)) << word << " " << channel << " " << fields;
  }
}

TEST(WholeRun, OfRealRecordings) {
  if (RecordingsFolder().empty()) GTEST_SKIP() << "the folder of real recordings isn't here";
  for (const auto& [file, channel, digest] :
       {std::tuple("river-elite.sl2", 2, std::uint64_t{0x6E58BB7808950A84}),
        {"tank-hds.sl3", 0, 0xF03E90FA95C7D5F3}}) {
    TestRun test;
    test.Set("MakeGraf=1 UseHead=1 TargetName=real").settings.Source =
        (RecordingsFolder() / "echograms" / file).string();
    EXPECT_TRUE(HasDigest(RecordOf(test, channel), digest)) << file;
  }
}

}  // namespace
}  // namespace sondrix

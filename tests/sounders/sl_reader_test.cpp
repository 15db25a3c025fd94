#include "sounders/sl/sl_reader.h"

#include "recordings.h"
#include "samples/damage.h"
#include "samples/echogram.h"
#include "sounders/sl/sl_channel.h"
#include "sounders/sounder_formats.h"
#include "temporary_folder.h"

#include <numbers>

namespace sondrix {
namespace {

using Bytes = std::vector<std::uint8_t>;

class SlReader : public testing::Test {
 protected:
  // As the program reads it; the kind and what can't be read are told in words.
  std::string Read(const Bytes& bytes, std::optional<std::uint8_t> channel = {}) {
    EXPECT_TRUE(WriteBytes(folder_.Path("recording"), bytes));
    ReadOptions options;
    options.channel = channel;
    return Read(folder_.Path("recording"), options);
  }
  std::string Read(const std::string& path, const ReadOptions& options = {}) {
    reading = {};
    const SounderFormat* format = Recognise(path);
    if (format == nullptr) return "none";
    try {
      format->read(path, options, {}, reading);
    } catch (const CantRead& reason) {
      return reason.what();
    }
    return std::string(format->name);
  }
  const SoundingList& Soundings() const { return reading.trips.at(0).soundings; }
  std::uint64_t Passed(PassedOver what) const { return reading.passedOver[static_cast<std::size_t>(what)]; }
  // The recorded depths in feet: "12 12.1 ".
  std::string Feet() const {
    std::string text;
    for (std::size_t i = 0; i < Soundings().size(); ++i) {
      text += std::to_string(std::lround(Soundings()[i].recorded / 0.3048)) + " ";
    }
    return text;
  }

  Reading reading;

 private:
  TemporaryFolder folder_;
};

// Replaces the flags of the n-th frame.
// cppcheck-suppress constParameter ; its bytes are written
void SetFlags(Bytes& bytes, std::size_t frame, std::uint16_t flags) {
  PutU16(bytes, FrameStarts(bytes)[frame] + (bytes[0] == 2 ? 0x84U : 0x74U), flags);
}

TEST_F(SlReader, RealRecordings) {
  const std::filesystem::path folder = RecordingsFolder() / "echograms";
  if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "the real recordings aren't here";
  EXPECT_EQ(Read((folder / "river-elite.sl2").string()), "SL2");
  EXPECT_EQ(Soundings().size(), 653U);
  EXPECT_EQ(reading.takenFor[0].find("channel 2 (Downscan): 653 of 653 frames with a depth; 0 "), 0U);
  EXPECT_EQ(reading.takenFor[1], "positions reckoned between fixes 1.0 s apart");
  EXPECT_FALSE(Soundings()[100].HasTime());
  EXPECT_NEAR(Soundings()[0].latitude, 53.235148, 3e-6);
  EXPECT_NEAR(Soundings()[0].longitude, 39.959049, 5e-6);
  EXPECT_FLOAT_EQ(Soundings()[0].recorded, 0.799F);

  EXPECT_EQ(Read((folder / "tank-hds.sl3").string()), "SL3");
  EXPECT_EQ(Soundings().size(), 113U);
  EXPECT_EQ(reading.takenFor[0].find("channel 0 (Primary): 113 of 113 frames with a depth; 2 "), 0U);
  EXPECT_EQ(Soundings()[0].channel, 0);
  EXPECT_EQ(Soundings()[0].time, 1722828005.546);
  EXPECT_FLOAT_EQ(Soundings()[0].recorded, 10.848F);
  EXPECT_NEAR(Soundings()[0].latitude, -42.885927, 5e-6);
  EXPECT_EQ(reading.passedOver, PassedOverCounts{});
}

TEST_F(SlReader, TheChannelWithMostDepths) {
  struct Row {
    std::vector<std::pair<int, float>> frames;  // channel and depth
    std::optional<std::uint8_t> asked;
    std::string_view kind, taken, feet;
  };
  const Row rows[] = {
      {{{2, 7}, {0, 5}, {2, 8}, {0, 6}}, {}, "SL3", "channel 0 (Primary): 2 of 2 frames with", "5 6 "},
      {{{2, 7}, {1, 5}, {2, 8}, {1, 6}}, {}, "SL3", "channel 2 (Downscan): 2 of 2 frames with", "7 8 "},
      {{{5, 7}, {1, 5}, {5, 8}, {1, 6}}, {}, "SL3", "channel 1: 2 of 2 frames with", "5 6 "},
      {{{0, 0}, {2, 5}, {0, 8}, {2, 6}}, {}, "SL3", "channel 2 (Downscan): 2 of 2 frames with", "5 6 "},
      {{{0, 0}, {2, 5}, {0, 8}, {2, 6}}, 0, "SL3", "channel 0 (Primary): 1 of 2 frames with", "0 8 "},
      {{{0, 0}, {2, 0}}, {}, "SL3", "channel 0 (Primary): 0 of 1 frame with", "0 "},
      {{{0, 3}, {2, 3}}, 5, "no frame of channel 5 (Sidescan); it has 0, 2", "", ""},
  };
  for (const Row& row : rows) {
    std::vector<SampleFrame> frames;
    for (const auto& [channel, depth] : row.frames) frames.push_back(Frame(channel, depth));
    ASSERT_EQ(Read(EchogramBytes(3, frames), row.asked), row.kind) << row.taken;
    if (row.taken.empty()) continue;
    EXPECT_TRUE(reading.takenFor[0].starts_with(row.taken)) << reading.takenFor[0];
    EXPECT_EQ(Feet(), row.feet) << row.taken;
  }
  // A depth that the flags don't tell of is none, where they tell of any.
  for (const int word : {2, 3}) {
    Bytes bytes = EchogramBytes(word, {Frame(0, 5), Frame(2, 6), Frame(0, 5), Frame(2, 6)});
    SetFlags(bytes, 0, 0x0010);
    EXPECT_EQ(Read(bytes), word == 2 ? "SL2" : "SL3");
    EXPECT_EQ(Feet(), "6 6 ");
    Read(bytes, 0);
    EXPECT_TRUE(std::isnan(Soundings()[0].recorded));
    for (const std::size_t frame : {1U, 2U, 3U}) SetFlags(bytes, frame, 0x0010);
    Read(bytes);
    EXPECT_EQ(Feet(), "5 5 ");
  }
}

TEST_F(SlReader, DamageIsSteppedOver) {
  // Of the 40 Downscan frames; what isn't damaged comes as it stands.
  struct Row {
    std::string_view damage;
    std::size_t soundings;
    std::uint64_t damagedBytes, cutEnd;
  };
  for (const Row& row :
       {Row{"cut-in-lead", 39, 0, 1}, Row{"cut-in-header", 39, 0, 1}, Row{"cut-in-samples", 39, 0, 1},
        Row{"frame-size-zero", 39, 2064, 0}, Row{"frame-size-negative", 39, 2064, 0},
        Row{"sample-count-zero", 39, 2064, 0}, Row{"noise", 38, 8256, 0}, Row{"noise-to-end", 20, 80496, 0},
        Row{"sl3-bad-frame", 39, 2088, 0}, Row{"sl3-frame-size-zero", 39, 2088, 0},
        Row{"sl3-noise", 38, 8352, 0}}) {
    SCOPED_TRACE(row.damage);
    const Damage* damage = DamageOf(row.damage);
    const Bytes clean = CleanEchogram(damage->FormatWord);
    Read(clean, 2);
    const std::string feet = Feet();
    ASSERT_EQ(Read(damage->Apply(clean), 2), damage->FormatWord == 2 ? "SL2" : "SL3");
    EXPECT_EQ(Soundings().size(), row.soundings);
    EXPECT_EQ(Passed(PassedOver::DamagedBytes), row.damagedBytes);
    EXPECT_EQ(Passed(PassedOver::CutEnd), row.cutEnd);
    EXPECT_TRUE(Feet().starts_with(feet.substr(0, 30)));
    EXPECT_TRUE(row.soundings < 38 || row.cutEnd > 0 || Feet().ends_with(feet.substr(feet.size() - 30)));
  }
  for (const char* nothing : {"empty", "3-bytes", "format-word"})
    EXPECT_EQ(Read(DamageOf(nothing)->Apply(CleanEchogram(2))), "none") << nothing;
  EXPECT_EQ(Read(DamageOf("9-bytes")->Apply(CleanEchogram(2))), "no sound frame in it");
}

TEST_F(SlReader, BytesThatAreMissingOrTooMany) {
  // In an SL2 the fields that count stand behind the byte 20, and so the frame's size tells where it begins.
  struct Row {
    std::size_t frame, at;  // behind its start
    int bytes;              // put in there, or taken out
    std::size_t soundings;  // of the 40
  };
  for (const int word : {2, 3}) {
    const Bytes clean = CleanEchogram(word);
    const std::vector<std::size_t> starts = FrameStarts(clean);
    for (const Row& row : {Row{21, 1000, -1, 40}, Row{21, 1000, 1, 40}, Row{21, 20, -1, 39U + (word == 2)},
                           Row{21, 20, 3, 39U + (word == 2)}, Row{0, 0, 70'000, 40}, Row{0, 0, -100, 40},
                           Row{20, 0, 1000, 40}, Row{21, 0, -2000, 39}}) {
      Bytes bytes = clean;
      const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(starts[row.frame] + row.at);
      if (row.bytes > 0) bytes.insert(place, static_cast<std::size_t>(row.bytes), 0x55);
      if (row.bytes < 0) bytes.erase(place, place - row.bytes);
      // A head that no recorder writes is recognised by its first frames alone.
      if (row.bytes == 70'000) bytes[4] = 0xB2, bytes[5] = 0x07;
      ASSERT_EQ(Read(bytes, 2), word == 2 ? "SL2" : "SL3") << row.bytes;
      EXPECT_EQ(Soundings().size(), row.soundings) << word << " " << row.bytes;
      EXPECT_GT(Passed(PassedOver::DamagedBytes), 0U) << word << " " << row.bytes;
    }
  }
}

TEST_F(SlReader, TimesFromTheFirstClock) {
  struct Row {
    std::uint32_t clock;
    std::int32_t offset;
    double time;  // 0: unknown
  };
  for (const Row& row :
       {Row{1'464'184'800, -479, 1'464'184'799.521}, Row{1'464'184'800, 66, 1'464'184'800.066},
        Row{631'151'999, 5, 0}, Row{631'152'000, 5, 631'152'000.005}, Row{0xFFFFFFFF, 48, 0},
        Row{4'200'000'000, 48, 0}, Row{1'317'703, 1'317'703, 0}, Row{700'000'000, 700'000'000, 0}}) {
    std::vector<SampleFrame> frames;
    for (int i = 0; i < 3; ++i) {
      frames.push_back(Frame(0, 5));
      frames.back().TimeOffset = row.offset + 100 * i;
      frames.back().TimeBase = i == 0 ? static_cast<std::int32_t>(row.clock) : *frames.back().TimeOffset;
    }
    Read(EchogramBytes(2, frames));
    for (std::size_t i = 0; i < 3; ++i) {
      const double time = Soundings()[i].time;
      const double expected = KeptSeconds(row.time + 0.1 * static_cast<double>(i));
      EXPECT_EQ(std::isnan(time) ? 0 : time, row.time == 0 ? 0 : expected) << row.clock;
    }
    EXPECT_EQ(reading.remarks.empty(), row.time != 0);
  }
}

TEST_F(SlReader, TimesFromItsNameInAZone) {
  struct Row {
    std::string_view name;
    double time;  // of the second frame, 0: unknown
  };
  const TemporaryFolder folder;
  std::vector<SampleFrame> frames(2, Frame(0, 5));
  for (SampleFrame& frame : frames) frame.TimeBase = -1;
  frames[0].TimeOffset = 5000;
  frames[1].TimeOffset = 5250;
  ReadOptions zone;
  zone.toUtc = [](double seconds) { return seconds - 7200; };
  for (const Row& row : {Row{"Sonar_2021-06-05_10.11.12.sl2", 1'622'887'872.25 - 7200},
                         Row{"a2021-06-05 23-59-59", 1'622'937'599.25 - 7200}, Row{"2021-06-31_10.11.12", 0},
                         Row{"2021-06-05_24.11.12", 0}, Row{"Chart 05_06_2021 [1].sl2", 0}}) {
    EXPECT_TRUE(WriteBytes(folder.Path(row.name), EchogramBytes(2, frames)));
    for (const bool hasZone : {false, true}) {
      EXPECT_EQ(Read(folder.Path(row.name), hasZone ? zone : ReadOptions()), "SL2");
      const double time = Soundings()[1].time;
      EXPECT_EQ(std::isnan(time) ? 0 : time, hasZone ? row.time : 0) << row.name;
    }
  }
}

TEST_F(SlReader, PlacesOfAllTheSphere) {
  struct Row {
    std::int32_t x, y;
    bool isPlace;
  };
  constexpr double radius = 6356752.3142, degree = std::numbers::pi / 180;
  for (const Row& row :
       {Row{4'105'000, 7'533'000, true}, Row{0, 1, true}, Row{-19'970'000, -19'970'000, true},
        Row{0, 0, false}, Row{19'980'000, 0, false}, Row{0, -2'000'000'000, false}}) {
    Read(EchogramBytes(2, {Frame(0, 5, row.x, row.y), Frame(0, 5, row.x, row.y)}));
    const Sounding& sounding = Soundings()[0];
    EXPECT_EQ(sounding.HasPosition(), row.isPlace) << row.x;
    EXPECT_EQ(reading.remarks.size(), row.isPlace ? 0U : 1U);
    if (!row.isPlace) continue;
    EXPECT_NEAR(sounding.longitude, row.x / radius / degree, 5.1e-9) << row.x;
    EXPECT_NEAR(sounding.latitude, std::atan(std::sinh(row.y / radius)) / degree, 5.1e-9) << row.y;
  }
}

TEST_F(SlReader, FlagsTellWhichPositionsAreFixes) {
  // 60 pings, 10 a second, 2 m a second. Either the frames of the fixes are flagged, one a second, and wrong
  // numbers stand in others; or all are but for a second without a fix.
  for (const bool areFixesFlagged : {true, false}) {
    std::vector<SampleFrame> frames;
    std::vector<std::uint16_t> flags;
    for (int ping = 0; ping < 60; ++ping) {
      const bool isWrong = areFixesFlagged ? ping % 10 == 5 : ping / 10 == 3;
      const bool isFlagged = areFixesFlagged ? ping % 10 == 0 : !isWrong;
      frames.push_back(Frame(0, 5, isWrong ? 0 : 4'105'000 + ping / 10 * 2, isWrong ? 0 : 7'533'000, 16));
      frames.back().TimeOffset = 100 * ping;
      flags.push_back(isFlagged ? 0x021E : 0x000C);
    }
    Bytes bytes = EchogramBytes(2, frames);
    for (std::size_t frame = 0; frame < frames.size(); ++frame) SetFlags(bytes, frame, flags[frame]);
    Read(bytes);
    constexpr double metres = 6356752.3142 * std::numbers::pi / 180;
    for (std::size_t i = 0; i < 50; ++i) {
      const double off = Soundings()[i].longitude * metres - 4'105'000;
      EXPECT_NEAR(off, 0.2 * static_cast<double>(i), 0.3) << i << areFixesFlagged;
    }
  }
}

TEST(SlChannels, KeepTheBestAndForgetTheRest) {
  SlChannels channels(SlChannels::Every);
  SlFrame frame;
  frame.Flags = 0x021E;
  const int longest = 1'600'000;
  for (int ping = 0; ping < longest; ++ping) {
    frame.TimeOffset = ping;
    frame.MercX = ping;
    for (const int channel : {5, 1, 0, 2}) {
      frame.Channel = static_cast<std::uint8_t>(channel);
      frame.WaterDepth = channel == 2 && ping < longest / 2 ? 0.0F : 5.0F;
      channels.Add(frame);
    }
  }
  std::uint64_t bytes = 0;
  for (const SlChannel& channel : channels.All()) bytes += channel.Bytes();
  EXPECT_LE(bytes, 28ULL * longest + (33 << 20));
  EXPECT_EQ(channels.Best()->number, 0);
  EXPECT_TRUE(channels.Find(0)->isKept);
  EXPECT_EQ(channels.Find(0)->depths.size(), static_cast<std::size_t>(longest));
  EXPECT_FALSE(channels.Find(2)->isKept);
  EXPECT_EQ(channels.DepthsOf(*channels.Find(2)), static_cast<std::uint64_t>(longest / 2));
}

}  // namespace
}  // namespace sondrix

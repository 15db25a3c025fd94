#include "core/files.h"
#include "core/settings.h"
#include "fuzz/draw_length.h"
#include "samples/damage.h"
#include "samples/echogram.h"
#include "samples/nmea_log.h"
#include "samples/polish_map.h"
#include "samples/text_export.h"
#include "samples/three_column.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

// Writes what the fuzzers start from: make-seeds FOLDER, one folder in it for each fuzzer.

namespace {

using namespace sondrix;

constexpr std::size_t TextLength = 3000;

// Tables of soundings in forms of their own.
constexpr std::string_view TableSeeds[] = {
    "latitude,longitude,depth,time,trip,recorded,fate\n53.5,13.5,4.7,1569622543.114,\"a, "
    "\"\"b\"\"\",4.5,used\n",
    "0.0,0.0,4.5,20,1569622570000\n53.5,13.5,4.6,20,1569622571000\n0.0,0.0,4.7,20,1569622572000\n",
    "# lake\nBreite;L\xE4nge;Tiefe (ft);Datum;Uhrzeit\r\n53,1234;13,5678;4,5;01.03.2020;10:11:12\r\n",
    "channel\tlat\tlon\tdepth\ttime\n0\tN 53\xC2\xB0 30.5'\t13\xC2\xB0 30' 12\" W\t4.5 m\t1/17/2025 4:44:16 "
    "PM\n",
    "53.51234 13.51234 4.5 05012025 101112.50 0.4\n139.1 35.1 -9999 05012025 101113.50 0.4\n",
    "5330.1234,N,01330.1234,W,4.5\n5330.1235,N,01330.1235,W,-4.6\n",
    "363421.25|5801136.07|4.5|2025-08-06T22:00:00.000+02:00\n"};

class Seeds {
 public:
  explicit Seeds(std::string folder) : folder_(std::move(folder)) {}
  void Add(std::string_view fuzzer, std::string_view bytes) {
    const std::string path = folder_ + "/" + std::string(fuzzer) + "_fuzz/seed" + std::to_string(count_++);
    MakeFolders(path);
    OutputFile file(path);
    file.Write(bytes);
    file.Close();
  }
  // The source under a draw of that channel, counted as the draw does, and of those flags, one bit each.
  void AddRun(std::string_view fuzzer, std::string_view source, std::size_t channel, unsigned flags) {
    std::string draw(DrawLength, '\0');
    draw[15] = static_cast<char>(flags);
    draw[16] = static_cast<char>(flags >> 8U);
    draw[19] = static_cast<char>(channel);
    Add(fuzzer, draw + std::string(source));
  }

 private:
  std::string folder_;
  int count_ = 0;
};

std::string Text(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Logs of other forms than that of the boat's bus.
constexpr std::string_view Logs[] = {
    "$GPRMC,000000,A,1000.0,N,02000.0,E,,,010120,,\n$SDDPT,3.1,0.4,100\n$SDDBS,11.5,f,3.50,M,1.9,F*2A\n"
    "$GPGLL,1000.0,N,02000.3,E,000001,A,D\n$GPZDA,000001,01,01,2020,00,00\n$PSKPDPT,0002.5,+00.5,0010,10,03,"
    "\n",
    "received_at,protocol,msg_type,source,raw_data\n2024-05-01T10:00:00.123Z,NMEA0183,GNS,usb,"
    "\"$GNGNS,100000,1000.0,S,02000.0,W,AN,12,1,1,1,,\"\n1522258800000;N;$IIDBK,,f,3,M,,F\n",
    "\\s:r3,c:1522258800*4A\\$GPGGA,000000,1000.0,N,02000.0,E,1,08\n03/15/"
    "2010,14:08:45.876,$SDDPT,6.29,2.40\n"
    "cnav 2010:258:01:05:34.06 $GPGGA,000001,1000.0,N,02000.0,E,1,08\n",
    "$SDODC,12:00:00,16\xB0 07.5000' N,091\xB0 30.0000' W,A,25.40,M,A\n"
    "$SDODC,12:00:00,16\xB0 07.5000' N,091\xB0 30.0000' W,A,0.40,M,V\n",
    "{\"time\":\"2024-05-01T10:00:00Z\",\"nmea\":\"$GPGLL,1000.0,N,02000.0,E,,A,A*44\\r\\n\"}\n"
    "{\"raw\":{\"b\":\"\\u0024SDDBT,,f,2.0,M,,F\"},\"t\":1714557601000}\n",
    "1577836800000;I;{\"context\":\"vessels.self\",\"updates\":[{\"timestamp\":\"2020-01-01T00:00:00.250Z\","
    "\"values\":[{\"path\":\"environment.depth.belowTransducer\",\"value\":4.5},{\"path\":\"navigation."
    "position\","
    "\"value\":{\"latitude\":10,\"longitude\":20}}]}]}\n",
};

constexpr std::string_view Tracks[] = {
    "<?xml version=\"1.0\"?>\n<gpx xmlns:a=\"x\"><trk><trkseg><trkpt lat=\"10\" "
    "lon=\"20\"><time>2020-01-01T00:00:00Z"
    "</time><extensions><a:depth>3.25</a:depth></extensions></trkpt><trkpt lat=\"10\" "
    "lon=\"20.1\"/></trkseg></trk></gpx>",
    "<g:gpx><g:wpt lon='1' lat='2'><Depth>4</Depth></g:wpt><!-- --><g:rte><g:rtept lat='1' "
    "lon='1'><depth/></g:rtept>"
    "</g:rte></g:gpx>",
    "<!DOCTYPE gpx [<!ENTITY a \"b\">]><gpx><trkpt lat='1' lon='2'><depth>3</depth></trkpt></x><trkpt "
    "lat='1' "
    "lon='2'><depth>-4</depth></trkpt>",
};

// A few pings of every channel with samples that show something.
std::string SmallEchogram(int formatWord) {
  const SampleSounding left[] = {{10, 2}, {11, 5}}, right[] = {{10, 3}, {9, 6}, {8, 9}};
  std::vector<SampleFrame> frames;
  for (std::int32_t i = 0; i < 4; ++i) {
    const float depth = 10.0F + static_cast<float>(i);
    for (const int channel : {0, 2, 5})
      frames.push_back(Frame(channel, depth, 4'105'000 + 9 * i, 7'533'000, 96));
    frames.push_back(Frame3D(left, right, depth, 4'105'000 + 9 * i));
  }
  return Text(EchogramBytes(formatWord, frames));
}

// Pings of two channels along a way with a fix a second, flagged by one frame of each second or by all.
std::string SmallTrack(int formatWord, bool isEachFlagged) {
  std::vector<SampleFrame> frames;
  for (std::int32_t ping = 0; ping < 24; ++ping) {
    const std::int32_t fix = ping / 4;
    for (const int channel : {0, 2}) {
      frames.push_back(Frame(channel, 10, 4'105'000 + 3 * fix, 7'533'000 - fix * fix, 16));
      frames.back().TimeOffset = 250 * ping + channel;
    }
  }
  std::vector<std::uint8_t> bytes = EchogramBytes(formatWord, frames);
  const std::size_t flags = formatWord == 2 ? 0x84 : 0x74;
  const std::vector<std::size_t> starts = FrameStarts(bytes);
  for (std::size_t i = 0; i < starts.size(); ++i) {
    PutU16(bytes, starts[i] + flags, isEachFlagged || i % 8 == 0 ? 0x021E : 0x000C);
  }
  return Text(bytes);
}

// Of the chart program's readers.
void AddChartSeeds(Seeds& seeds) {
  for (const Damage& damage : Damages()) {
    const auto small = EchogramBytes(damage.FormatWord, std::vector<SampleFrame>(16, Frame(2, 10, 1, 1, 96)));
    seeds.Add("sl_sounder", std::string(1, '\0') + Text(damage.Apply(small)));
  }
  for (const int formatWord : {2, 3}) {
    for (const char channel : {'\0', '\1', '\2'}) {
      seeds.Add("sl_sounder", std::string(1, channel) + SmallEchogram(formatWord));
      for (const bool isEachFlagged : {false, true})
        seeds.Add("sl_sounder", std::string(1, channel) + SmallTrack(formatWord, isEachFlagged));
    }
  }
  for (const std::string_view table : TableSeeds) {
    std::string wide(1, '\0');
    for (const char c : table) (wide += c) += '\0';
    seeds.Add("table", wide);
    for (const int options : {0, 1, 2, 8, 24, 63})
      seeds.Add("table", std::string(1, static_cast<char>(options)).append(table));
  }
  for (const char separator : {',', ';', '\t'})
    seeds.Add("table", "\4" + TextExport({true, separator, true}).substr(0, TextLength));
  const std::string log = NmeaLog();
  for (std::size_t at = 0; at < 4; ++at) seeds.Add("nmea_log", log.substr(log.size() / 5 * at, TextLength));
  for (const std::string_view text : Logs) seeds.Add("nmea_log", text);
  for (const std::string_view text : Tracks) seeds.Add("gpx", text);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("make-seeds: takes one folder\n", stderr);
    return 2;
  }
  Seeds seeds(arguments[1]);
  for (const int formatWord : {1, 2, 3}) {
    const std::string echogram = SmallEchogram(formatWord);
    for (std::size_t channel = 0; channel < 4; ++channel) {
      for (const unsigned flags : {0x0000U, 0x0400U, 0x0003U, 0x0604U})
        seeds.AddRun("job_sl", echogram, channel, flags);
    }
  }
  const auto clean = EchogramBytes(2, std::vector<SampleFrame>(16, Frame(2, 10, 4'105'000, 7'533'000, 96)));
  for (const Damage& damage : Damages()) {
    seeds.AddRun("job_sl", Text(damage.Apply(clean)), 0, 0);
  }
  for (const char separator : {',', ';', '\t'}) {
    for (const bool crLf : {false, true}) {
      const TableForm form = {crLf, separator, crLf};
      seeds.AddRun("job_csv", TextExport(form).substr(0, TextLength), 0, 0);
      seeds.AddRun("job_csv", ThreeColumn(form).substr(0, TextLength), 0, 0x0200);
    }
  }
  const std::string log = NmeaLog();
  for (std::size_t at = 0; at < 4; ++at)
    seeds.AddRun("job_log", log.substr(log.size() / 5 * at, TextLength), 0, 0);
  if (HAS_CHART != 0) AddChartSeeds(seeds);
  const std::string map = PolishMap();
  for (std::size_t at = 0; at < 4; ++at)
    seeds.AddRun("job_mp", map.substr(map.size() / 5 * at, TextLength), 0, 0);

  std::string ini = "[Other]\r\na=b\r\n[Main]\r\n";
  for (const Field& field : Fields())
    ini.append(field.key).append("=").append(field.defaultText).append("\r\n");
  seeds.Add("ini", ini);
  seeds.Add("ini", "\xEF\xBB\xBF[Main]\nSource=\"\xD0\x9E\"\nUseDcm=2");
  for (const char* text : {"0", " 1 234,5", "-.5e-3x", "1E+308", "&HFF", "\302\2407"})
    seeds.Add("numbers", text);
  for (const char* text : {"5545.1234", "03737.5678", "5545,1234", "1e30.1234"}) seeds.Add("nmea", text);
  for (const char* text : {"-o\nout\n--set\nUseTyp=9\nlake.sl2", "--answer\nno\n-v\na\nb", "--list-fields",
                           "--help", "--ini=a.ini\n--\n-x", "-sUseDcm=1\n--version"})
    seeds.Add("options", text);
  return 0;
}

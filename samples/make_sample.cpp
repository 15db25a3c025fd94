#include "platform/platform.h"
#include "samples/bulk.h"
#include "samples/chart_lake.h"
#include "samples/damage.h"
#include "samples/echogram.h"
#include "samples/lake.h"
#include "samples/made_waters.h"
#include "samples/nmea_log.h"
#include "samples/polish_map.h"
#include "samples/text_export.h"
#include "samples/three_column.h"
#include "samples/trip_files.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

// Writes sample files. Exit status: 0 written, 1 the file can't be written, 2 wrong usage.

namespace {

using Arguments = std::vector<std::string>;

constexpr int Done = 0;
constexpr int CantWrite = 1;
constexpr int WrongUsage = 2;

int Wrong(const std::string& what) {
  sondrix::PutText(stderr, "make-sample: " + what + "\n");
  return WrongUsage;
}

int Written(bool written, const std::string& path) {
  if (written) return Done;
  sondrix::PutText(stderr, "make-sample: can't write " + path + "\n");
  return CantWrite;
}

int Write(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  return Written(sondrix::WriteBytes(path, bytes), path);
}

int Demo(const Arguments& arguments) {
  if (arguments.size() != 1) return Wrong("demo takes one file");
  return Write(arguments[0], sondrix::LakeEchogram());
}

// What stands behind a kind: one file, a length, and flags.
struct Options {
  std::string Path;
  std::int64_t Bytes = 0;  // 0 when not given
  std::int32_t Days = 0;
  bool Sparse = false, CrLf = false, Semicolon = false, Mixed = false;
};

struct FlagName {
  std::string_view Name;
  bool Options::*Flag;
};
constexpr FlagName Sparse = {"--sparse", &Options::Sparse};
constexpr FlagName CrLf = {"--crlf", &Options::CrLf};
constexpr FlagName Semicolon = {"--semicolon", &Options::Semicolon};
constexpr FlagName Mixed = {"--mixed", &Options::Mixed};

bool ReadLength(const std::string& number, std::int64_t& bytes) {
  const char* end = number.data() + number.size();
  const auto [stop, error] = std::from_chars(number.data(), end, bytes);
  return error == std::errc() && stop == end && bytes >= 8;
}

// What is wrong with the arguments; empty when they are read.
std::string Read(const Arguments& arguments, std::initializer_list<FlagName> flags, bool takesBytes,
                 Options& options, bool takesDays = false) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const auto* flag =
        std::find_if(flags.begin(), flags.end(), [&](const FlagName& f) { return f.Name == argument; });
    if (flag != flags.end()) {
      options.*flag->Flag = true;
    } else if (takesBytes && argument == "--bytes") {
      const std::string number = ++i < arguments.size() ? arguments[i] : "";
      if (!ReadLength(number, options.Bytes)) return "--bytes takes a number of at least 8, not " + number;
    } else if (takesDays && argument == "--days") {
      options.Days = ++i < arguments.size() ? std::atoi(arguments[i].c_str()) : 0;
    } else if (argument.starts_with("-") || !options.Path.empty()) {
      return "this kind doesn't take " + argument;
    } else {
      options.Path = argument;
    }
  }
  return options.Path.empty() ? "no file is named" : "";
}

int Bulk(const Arguments& arguments) {
  Options options;
  if (const std::string wrong = Read(arguments, {Sparse}, true, options, true); !wrong.empty())
    return Wrong(wrong);
  if (options.Bytes == 0) return Wrong("bulk takes --bytes");
  return Written(sondrix::WriteBulk(options.Path, options.Bytes, options.Sparse, options.Days) >= 0,
                 options.Path);
}

int WriteText(const std::string& path, const std::string& text) {
  return Write(path, std::vector<std::uint8_t>(text.begin(), text.end()));
}

sondrix::TableForm FormOf(const Options& options) {
  return {options.CrLf, options.Semicolon ? ';' : ',', options.Mixed};
}

int Export(const Arguments& arguments) {
  Options options;
  if (const std::string wrong = Read(arguments, {CrLf, Semicolon, Mixed}, true, options); !wrong.empty())
    return Wrong(wrong);
  const sondrix::TableForm form = FormOf(options);
  if (options.Bytes == 0) return WriteText(options.Path, sondrix::TextExport(form));
  return Written(sondrix::WriteTextExport(options.Path, form, options.Bytes), options.Path);
}

int Three(const Arguments& arguments) {
  Options options;
  if (const std::string wrong = Read(arguments, {CrLf, Semicolon}, false, options); !wrong.empty())
    return Wrong(wrong);
  return WriteText(options.Path, sondrix::ThreeColumn(FormOf(options)));
}

int Log(const Arguments& arguments) {
  Options options;
  if (const std::string wrong = Read(arguments, {}, true, options); !wrong.empty()) return Wrong(wrong);
  if (options.Bytes == 0) return WriteText(options.Path, sondrix::NmeaLog());
  return Written(sondrix::WriteNmeaLog(options.Path, options.Bytes), options.Path);
}

int Map(const Arguments& arguments) {
  Options options;
  if (const std::string wrong = Read(arguments, {}, true, options); !wrong.empty()) return Wrong(wrong);
  if (options.Bytes == 0) return WriteText(options.Path, sondrix::PolishMap());
  return Written(sondrix::WritePolishMap(options.Path, options.Bytes), options.Path);
}

int Damaged(const Arguments& arguments) {
  if (arguments.size() != 2) return Wrong("damage takes a name and a file");
  const sondrix::Damage* damage = sondrix::DamageOf(arguments[0]);
  if (damage == nullptr) return Wrong("no damage of that name: " + arguments[0]);
  return Write(arguments[1], damage->Apply(sondrix::CleanEchogram(damage->FormatWord)));
}

int List(const Arguments& arguments) {
  if (!arguments.empty()) return Wrong("list takes nothing");
  for (const sondrix::Damage& damage : sondrix::Damages()) {
    std::printf("%-20.*s %.*s\n", static_cast<int>(damage.Name.size()), damage.Name.data(),
                static_cast<int>(damage.What.size()), damage.What.data());
  }
  return Done;
}

// A file or folder, and a whole number behind an option.
int WithNumber(const Arguments& arguments, std::string_view option, std::uint32_t number,
               const std::function<bool(const std::string& path, std::uint32_t number)>& write) {
  std::string path;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == option) {
      const std::string text = ++i < arguments.size() ? arguments[i] : "";
      const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
      if (error != std::errc() || *stop != 0 || number == 0) return Wrong(argument + " takes a whole number");
    } else if (argument.starts_with("-") || !path.empty()) {
      return Wrong("this kind doesn't take " + argument);
    } else {
      path = argument;
    }
  }
  return path.empty() ? Wrong("no file is named") : Written(write(path, number), path);
}

int Lake(const Arguments& arguments) { return WithNumber(arguments, "--seed", 1, sondrix::WriteChartTrips); }

int LakeBed(const Arguments& arguments) {
  return WithNumber(arguments, "--cell", 2, [](const std::string& path, std::uint32_t cell) {
    return sondrix::WriteChartLakeBed(path, cell);
  });
}

int LakeShore(const Arguments& arguments) {
  if (arguments.size() != 1) return Wrong("lake-shore takes one file");
  return WriteText(arguments[0], sondrix::ChartLakeShoreJson());
}

int Water(const Arguments& arguments) {
  if (arguments.empty()) return Wrong("water takes a name and a folder");
  const sondrix::MadeWater* water = sondrix::MadeWaterOf(arguments[0]);
  if (water == nullptr) return Wrong("no water of that name: " + arguments[0]);
  return WithNumber({arguments.begin() + 1, arguments.end()}, "--seed", 1,
                    [water](const std::string& folder, std::uint32_t seed) {
                      return sondrix::WriteMadeWater(*water, folder, seed);
                    });
}

int Waters(const Arguments& arguments) {
  if (!arguments.empty()) return Wrong("waters takes nothing");
  sondrix::PutText(stdout, sondrix::MadeWaterLines());
  return Done;
}

struct Kind {
  std::string_view Name;
  int (*Make)(const Arguments& arguments);
  const char* Usage;
};

constexpr Kind Kinds[] = {
    {"demo", Demo, "demo FILE                         the demonstration's lake, an SL3"},
    {"bulk", Bulk,
     "bulk FILE --bytes N [--sparse] [--days N]    a large SL2 of four channels, later by days"},
    {"export", Export, "export FILE [--bytes N] [--crlf] [--semicolon] [--mixed]    a table of soundings"},
    {"three", Three, "three FILE [--crlf] [--semicolon] a table of latitude, longitude, depth"},
    {"log", Log, "log FILE [--bytes N]              an NMEA log"},
    {"map", Map, "map FILE [--bytes N]              a polish MP map with depth contours"},
    {"lake", Lake, "lake FOLDER [--seed N]            trips of several boats over the lake that is charted"},
    {"lake-bed", LakeBed, "lake-bed FILE [--cell METRES]     its true bed, a text grid in EPSG:32637"},
    {"lake-shore", LakeShore, "lake-shore FILE                   its shore as GeoJSON"},
    {"water", Water, "water NAME FOLDER [--seed N]      soundings of a water and its true bed"},
    {"waters", Waters, "waters                            the names of the waters, their line spacings"},
    {"damage", Damaged, "damage NAME FILE                  a bad echogram"},
    {"list", List, "list                              the names of the damages"},
};

}  // namespace

int main(int count, char** texts) {
  Arguments arguments = sondrix::ProgramArguments(count, texts);
  const std::string name = arguments.empty() ? "" : arguments[0];
  if (!arguments.empty()) arguments.erase(arguments.begin());
  for (const Kind& kind : Kinds) {
    if (kind.Name == name) return kind.Make(arguments);
  }
  std::fprintf(stderr, "usage:\n");
  for (const Kind& kind : Kinds) std::fprintf(stderr, "  make-sample %s\n", kind.Usage);
  return WrongUsage;
}

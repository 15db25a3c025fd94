#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "samples/bulk.h"
#include "samples/damage.h"
#include "samples/echogram.h"
#include "samples/lake.h"

// Writes sample files. Exit status: 0 written, 1 the file can't be written, 2 wrong usage.

namespace {

using Arguments = std::vector<std::string>;

constexpr int Done = 0;
constexpr int CantWrite = 1;
constexpr int WrongUsage = 2;

int Wrong(const std::string& what) {
  std::fprintf(stderr, "make-sample: %s\n", what.c_str());
  return WrongUsage;
}

int Write(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  if (sondrix::WriteBytes(path, bytes)) return Done;
  std::fprintf(stderr, "make-sample: can't write %s\n", path.c_str());
  return CantWrite;
}

int Demo(const Arguments& arguments) {
  if (arguments.size() != 1) return Wrong("demo takes one file");
  return Write(arguments[0], sondrix::LakeEchogram());
}

int Bulk(const Arguments& arguments) {
  std::string path;
  std::int64_t bytes = 0;
  bool sparse = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--sparse") {
      sparse = true;
    } else if (argument == "--bytes") {
      if (++i == arguments.size()) return Wrong("--bytes takes a number");
      const std::string& number = arguments[i];
      const char* end = number.data() + number.size();
      const auto [stop, error] = std::from_chars(number.data(), end, bytes);
      if (error != std::errc() || stop != end || bytes < 8) return Wrong("no length in bytes: " + number);
    } else if (argument.starts_with("-") || !path.empty()) {
      return Wrong("bulk doesn't take " + argument);
    } else {
      path = argument;
    }
  }
  if (path.empty() || bytes == 0) return Wrong("bulk takes a file and --bytes");
  if (sondrix::WriteBulk(path, bytes, sparse) >= 0) return Done;
  std::fprintf(stderr, "make-sample: can't write %s\n", path.c_str());
  return CantWrite;
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

struct Kind {
  std::string_view Name;
  int (*Make)(const Arguments& arguments);
  const char* Usage;
};

constexpr Kind Kinds[] = {
    {"demo", Demo, "demo FILE                         the demonstration's lake, an SL3"},
    {"bulk", Bulk, "bulk FILE --bytes N [--sparse]    a large SL2 of four channels"},
    {"damage", Damaged, "damage NAME FILE                  a bad echogram"},
    {"list", List, "list                              the names of the damages"},
};

}  // namespace

int main(int count, char** texts) {
  const std::string_view name = count > 1 ? texts[1] : "";
  for (const Kind& kind : Kinds) {
    if (kind.Name == name) return kind.Make(Arguments(texts + 2, texts + count));
  }
  std::fprintf(stderr, "usage:\n");
  for (const Kind& kind : Kinds) std::fprintf(stderr, "  make-sample %s\n", kind.Usage);
  return WrongUsage;
}

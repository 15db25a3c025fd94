#include "app/settings_store.h"
#include "faults/fault_layer.h"
#include "jobs/text_run.h"
#include "samples/echogram.h"
#include "samples/nmea_log.h"
#include "samples/polish_map.h"
#include "samples/text_export.h"

#include <cerrno>
#include <ostream>
#include <set>

namespace sondrix {
namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;  // bytes by path

struct FaultKind {
  int error;
  bool shortened;
};
constexpr FaultKind Kinds[] = {{EACCES, false}, {ENOSPC, false}, {EIO, false}, {ENOSPC, true}};

// What may fail and not be told, since nothing is lost by it.
const std::set<std::string> SilentCalls = {
    "fclose of a source",  // its bytes are all read
    "stat",    // only asks whether a folder is there, whose opening tells, or for the mode of an older file
    "lstat",   // only asks whether a folder is in the way of a removal, which tells
    "fchmod",  // the new settings have the mode of any new file
    "fread",   // a short read inside a file is followed by another
};

Files FilesIn(const fs::path& folder) {
  Files files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file())
      files[entry.path().string().substr(folder.string().size())] = ReadWhole(entry.path().string());
  return files;
}

std::string SmallEchogram(int formatWord, int pings, std::size_t samples) {
  std::vector<SampleFrame> frames;
  frames.reserve(static_cast<std::size_t>(pings));
  for (int i = 0; i < pings; ++i)
    frames.push_back(Frame(2, 10.0F + static_cast<float>(i % 7), 4'105'000 + 9 * i, 7'533'000, samples));
  const std::vector<std::uint8_t> bytes = EchogramBytes(formatWord, frames);
  return {bytes.begin(), bytes.end()};
}

struct Job {
  const char *name, *source;
  std::string bytes;
  bool hasPictures;
  std::size_t files;           // of a sound run
  std::string_view keepsPart;  // the end of the name of the output that a failed writing leaves in part
};

const Job Jobs[] = {{"PicturesAndMarks", "lake.sl2", SmallEchogram(2, 6, 320), true, 14, ".csv"},
                    {"LongTable", "lake.sl3", SmallEchogram(3, 900, 300), false, 4, ".csv"},
                    {"Export", "lake.csv", TextExport({}), false, 6, ""},
                    {"Log", "lake.log", NmeaLog(), false, 7, ""},
                    {"Map", "lake.mp", PolishMap(), false, 3, "lake.txt"}};

void PrintTo(const Job& job, std::ostream* out) { *out << job.name; }

void Prepare(const Job& job, TestRun& run) {
  OutputFile(run.OutPath("other.txt")).Write("stays");
  run.Source(job.source, BytesOf(job.bytes)).settings.MakeCut = true;
  if (!job.hasPictures) return;
  run.settings.MakeGraf = run.settings.SaveGraf = true;
  run.settings.DefLvl = "1";
  run.window.onPump = [&run](int pump) {
    if (pump % 9 == 0) MarkClick(run.run, MarkFish);
  };
}

bool IsError(std::string_view line, const Messages& messages) {
  return line.starts_with(" ! ") || line.starts_with("ошибка WriteF: ") || line == messages.MsgNeedPolish;
}

// Lets each call of an action fail in turn and in each way; gives those that did. The action says in which
// folder and when.
std::set<std::string> FailEachCall(const std::function<void(FaultLayer&)>& action) {
  FaultLayer& layer = TheFaultLayer();
  std::set<std::string> failed;
  for (const auto& [error, shortened] : Kinds) {
    for (int failAt = 1; failAt == 1 || !layer.call.empty(); ++failAt) {
      layer = {"", failAt, error, shortened, 0, "", ""};
      action(layer);
      failed.insert(layer.call);
      if (!testing::Test::HasFailure()) continue;
      ADD_FAILURE() << "call " << failAt << ", errno " << error << " " << layer.call << " " << layer.path;
      return failed;
    }
  }
  return failed;
}

// A file after a run that failed: as of a sound run, or as it was before, or the first part of it where the
// run keeps what it has, in its place or, where it couldn't get there, under the name that it grew with.
void CheckLeft(const Job& job, std::string name, const std::string& bytes, const Files& sound) {
  constexpr std::string_view growing = ".csv.part";
  if (name.ends_with(growing)) name.resize(name.size() - growing.size() + std::string_view(".csv").size());
  const auto whole = sound.find(name);
  ASSERT_NE(whole, sound.end()) << name;
  if (bytes == whole->second) return;
  std::string_view part = bytes;
  if (part.ends_with("\r\n")) part.remove_suffix(2);
  const bool ownWriteFailed = TheFaultLayer().path.ends_with(name);
  const bool isKept = !job.keepsPart.empty() &&
                      (name.ends_with(job.keepsPart) || (!ownWriteFailed && !name.ends_with(".bmp")));
  EXPECT_TRUE(isKept && whole->second.starts_with(part)) << name << ": " << bytes.size() << " bytes";
}

class FaultsOfARun : public testing::TestWithParam<Job> {};

TEST_P(FaultsOfARun, IsOneErrorLineAndNoFileIsWrong) {
  const Job& job = GetParam();
  TestRun soundRun;
  Prepare(job, soundRun);
  const std::string soundEnd = soundRun.Click();
  const Files sound = FilesIn(soundRun.folder);
  ASSERT_FALSE(IsError(soundEnd, soundRun.messages)) << soundEnd;
  EXPECT_EQ(sound.size(), job.files);
  const std::set<std::string> failed = FailEachCall([&](FaultLayer& layer) {
    TestRun run;
    Prepare(job, run);
    layer.folder = run.folder.string();
    const std::string end = run.Click();
    layer.folder.clear();
    const auto errors = std::ranges::count_if(
        run.window.lines, [&](const std::string& line) { return IsError(line, run.messages); });
    const Files left = FilesIn(run.folder);
    if (errors == 0) {
      EXPECT_TRUE(layer.call.empty() || SilentCalls.contains(layer.call));
      EXPECT_EQ(end, soundEnd);
      EXPECT_TRUE(left == sound);
    } else {
      // A run goes on without its folder for the pictures, until it is to save one there.
      EXPECT_TRUE(errors == 1 || (errors == 2 && run.window.CountLines(run.messages.MsgEchoFolder) == 1));
    }
    for (const auto& [name, bytes] : left) CheckLeft(job, name, bytes, sound);
    EXPECT_TRUE(run.window.IsEnabled("btnGO") && run.window.IsEnabled("Source") && !run.window.busy) << end;
    run.window.pumps = run.state.MarkRequest = 0;  // a click that the run hasn't served
    EXPECT_EQ(run.Click(), soundEnd);
    EXPECT_TRUE(FilesIn(run.folder) == sound);
  });
  EXPECT_TRUE(std::ranges::includes(
      failed, std::set<std::string>{"stat", "fstat", "open", "open to read", "fdopen", "fread", "fwrite",
                                    "fclose", "fclose of a source"}));
}

INSTANTIATE_TEST_SUITE_P(Jobs, FaultsOfARun, testing::ValuesIn(Jobs),
                         [](const auto& job) { return std::string(job.param.name); });

TEST(FaultsOfTheClosing, LeaveTheSettingsOldOrNew) {
  TestRun place;
  const fs::path folder = place.folder / "closing";
  const std::string file = (folder / "conf" / "sondrix.ini").string();
  bool isThere = true;
  const auto check = [&](FaultLayer& layer) {
    fs::remove_all(folder);
    fs::create_directories(isThere ? folder / "conf" : folder);
    if (isThere) OutputFile(file).Write("; mine\r\n[Main]\r\nSource=old\r\n[Other]\r\nkey=1\r\n");
    const Files before = FilesIn(folder);
    TestWindow window;
    Session session(window);
    layer.folder = folder.string();
    const bool saved = SaveSettings(session, file);
    layer.folder.clear();
    const Files after = FilesIn(folder);
    EXPECT_TRUE(SaveSettings(session, file));
    const Files sound = FilesIn(folder);
    EXPECT_EQ(sound.size(), 1u);
    EXPECT_TRUE(after == (saved ? sound : before));
    EXPECT_TRUE(window.lines.empty());
    EXPECT_TRUE(!saved || layer.call.empty() || SilentCalls.contains(layer.call));
  };
  std::set<std::string> failed = FailEachCall(check);
  isThere = false;
  failed.merge(FailEachCall(check));
  EXPECT_TRUE(
      std::ranges::includes(failed, std::set<std::string>{"open", "fdopen", "fread", "fwrite", "fflush",
                                                          "fsync", "fclose", "fchmod", "rename", "mkdir"}));
}

}  // namespace
}  // namespace sondrix

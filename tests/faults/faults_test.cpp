#include "app/settings_store.h"
#include "faults/fault_layer.h"
#include "samples/echogram.h"
#include "samples/nmea_log.h"
#include "samples/polish_map.h"
#include "samples/text_export.h"
#include "test_run.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <map>
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
struct Silent {
  std::string_view call, why;
};
constexpr Silent SilentCalls[] = {
    {"fclose of a source", "its bytes are all read"},
    {"stat", "only asks whether a folder is there, whose opening tells, or for the mode of an older file"},
    {"lstat", "only asks whether a folder is in the way of a removal, which tells"},
    {"fchmodat", "the new settings have the mode of any new file"},
    {"fread", "a short read inside a file is followed by another"},
};

Files FilesIn(const fs::path& folder) {
  Files files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file())
      files[entry.path().string().substr(folder.string().size())] = ReadWhole(entry.path().string());
  }
  return files;
}

std::span<const std::uint8_t> BytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::vector<std::uint8_t> SmallEchogram(int formatWord, int pings, std::size_t samples) {
  std::vector<SampleFrame> frames;
  frames.reserve(static_cast<std::size_t>(pings));
  for (int i = 0; i < pings; ++i) {
    frames.push_back(Frame(2, 10.0F + static_cast<float>(i % 7), 4'105'000 + 9 * i, 7'533'000, samples));
  }
  return EchogramBytes(formatWord, frames);
}

struct Job {
  const char* name;
  void (*prepare)(TestRun&);
  int files;  // of a sound run
  std::string_view
      keepsPart;  // the end of the name of the output of which a failed writing leaves the first part
};

const Job Jobs[] = {
    {"PicturesAndMarks",
     [](TestRun& run) {
       static const auto bytes = SmallEchogram(2, 6, 320);
       run.Source("lake.sl2", bytes).settings.MakeGraf = true;
       run.settings.SaveGraf = run.settings.MakeCut = true;
       run.settings.DefLvl = "1";
       run.window.onPump = [&run](int pump) {
         if (pump % 9 == 0) MarkClick(run.run, MarkFish);
       };
     },
     14, ".csv"},
    {"LongTable",
     [](TestRun& run) {
       static const auto bytes = SmallEchogram(3, 900, 300);
       run.Source("lake.sl3", bytes).settings.MakeCut = true;
     },
     4, ".csv"},
    {"Export",
     [](TestRun& run) {
       static const std::string text = TextExport({});
       run.Source("lake.csv", BytesOf(text));
     },
     6, ""},
    {"Log",
     [](TestRun& run) {
       static const std::string text = NmeaLog();
       run.Source("lake.log", BytesOf(text));
     },
     7, ""},
    {"Map",
     [](TestRun& run) {
       static const std::string text = PolishMap();
       run.Source("lake.mp", BytesOf(text));
     },
     3, "lake.txt"},
};

void PrintTo(const Job& job, std::ostream* out) { *out << job.name; }

bool IsError(std::string_view line, const Messages& messages) {
  return line.starts_with(" ! ") || line.starts_with("ошибка WriteF: ") || line == messages.MsgNeedPolish;
}

// Sets the layer up for one failing call, and takes it away again.
struct OneFault {
  OneFault(const fs::path& folder, const FaultKind& kind, int failAt) {
    TheFaultLayer() = {folder.string(), failAt, kind.error, kind.shortened, 0, "", ""};
  }
  ~OneFault() { TheFaultLayer().failAt = 0; }
};

std::string WhatFailed(const FaultKind& kind, int failAt) {
  const FaultLayer& layer = TheFaultLayer();
  return "call " + std::to_string(failAt) + ", errno " + std::to_string(kind.error) +
         (kind.shortened ? " short " : " ") + layer.call + " " + layer.path;
}

void ExpectSilent(const std::string& call) {
  EXPECT_TRUE(std::ranges::any_of(SilentCalls, [&](const Silent& row) { return row.call == call; }));
}

// A file after a run that failed: as of a sound run, or as it was before, or the first part of it where the
// run keeps what it has.
void CheckLeft(const Job& job, const std::string& name, const std::string& bytes, const Files& sound) {
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
  const auto prepare = [&job](TestRun& run) {
    OutputFile(run.OutPath("other.txt")).Write("stays");
    job.prepare(run);
  };
  TestRun soundRun;
  prepare(soundRun);
  const std::string soundEnd = soundRun.Click();
  const Files sound = FilesIn(soundRun.folder);
  ASSERT_FALSE(IsError(soundEnd, soundRun.messages)) << soundEnd;
  EXPECT_EQ(static_cast<int>(sound.size()), job.files);
  std::set<std::string> failed;
  for (const FaultKind& kind : Kinds) {
    for (int failAt = 1;; ++failAt) {
      TestRun run;
      prepare(run);
      std::string end;
      {
        const OneFault fault(run.folder, kind, failAt);
        end = run.Click();
      }
      if (TheFaultLayer().call.empty()) break;
      failed.insert(TheFaultLayer().call);
      SCOPED_TRACE(WhatFailed(kind, failAt) + " gave " + end);
      const auto errors = std::ranges::count_if(
          run.window.lines, [&](const std::string& line) { return IsError(line, run.messages); });
      const Files left = FilesIn(run.folder);
      if (errors == 0) {
        ExpectSilent(TheFaultLayer().call);
        EXPECT_EQ(end, soundEnd);
        EXPECT_TRUE(left == sound);
      } else {
        // A run goes on without its folder for the pictures, until it is to save one there.
        EXPECT_TRUE(errors == 1 || (errors == 2 && run.window.CountLines(run.messages.MsgEchoFolder) == 1));
      }
      for (const auto& [name, bytes] : left) CheckLeft(job, name, bytes, sound);
      EXPECT_TRUE(run.window.IsEnabled("btnGO") && run.window.IsEnabled("Source") && !run.window.busy);
      run.window.pumps = run.state.MarkRequest = 0;  // a click that the run hasn't served
      EXPECT_EQ(run.Click(), soundEnd);
      EXPECT_TRUE(FilesIn(run.folder) == sound);
      if (HasFailure()) return;
    }
  }
  for (const char* call : {"stat", "fopen", "fopen to read", "fseeko", "ftello", "fread", "fwrite", "fclose",
                           "fclose of a source"})
    EXPECT_TRUE(failed.contains(call)) << call;
}

INSTANTIATE_TEST_SUITE_P(Jobs, FaultsOfARun, testing::ValuesIn(Jobs),
                         [](const auto& job) { return std::string(job.param.name); });

TEST(FaultsOfTheClosing, LeaveTheSettingsOldOrNew) {
  const fs::path folder = fs::path(testing::TempDir()) / "sondrix_faults_of_the_closing";
  const std::string file = (folder / "conf" / "sondrix.ini").string();
  const std::string old = "; mine\r\n[Main]\r\nSource=old\r\n[Other]\r\nkey=1\r\n";
  std::set<std::string> failed;
  for (const bool isThere : {true, false}) {
    for (const FaultKind& kind : Kinds) {
      for (int failAt = 1;; ++failAt) {
        fs::remove_all(folder);
        fs::create_directories(isThere ? folder / "conf" : folder);
        if (isThere) OutputFile(file).Write(old);
        const Files before = FilesIn(folder);
        TestWindow window;
        Session session(window);
        bool saved;
        {
          const OneFault fault(folder, kind, failAt);
          saved = SaveSettings(session, file);
        }
        if (TheFaultLayer().call.empty()) break;
        failed.insert(TheFaultLayer().call);
        SCOPED_TRACE(WhatFailed(kind, failAt));
        const Files after = FilesIn(folder);
        EXPECT_TRUE(SaveSettings(session, file));
        const Files sound = FilesIn(folder);
        EXPECT_EQ(sound.size(), 1u);
        EXPECT_TRUE(after == (saved ? sound : before));
        EXPECT_TRUE(window.lines.empty());
        if (saved) ExpectSilent(TheFaultLayer().call);
      }
    }
  }
  for (const char* call :
       {"fopen", "fread", "fwrite", "fflush", "fsync", "fclose", "fchmodat", "rename", "mkdir", "realpath"})
    EXPECT_TRUE(failed.contains(call)) << call;
  fs::remove_all(folder);
}

}  // namespace
}  // namespace sondrix

#include "app/settings_store.h"

#include "app/ini_file.h"
#include "core/code_page.h"
#include "core/files.h"
#include "platform/platform.h"
#include "test_window.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#endif

namespace sondrix {
namespace {

namespace fs = std::filesystem;

class StoreTest : public testing::Test {
 protected:
  StoreTest() {
    fs::remove_all(PathOf(folder));
    fs::create_directories(PathOf(folder));
  }
  ~StoreTest() override { fs::remove_all(PathOf(folder)); }
  void Write(std::string_view bytes) { OutputFile(file).Write(bytes); }
  std::size_t FilesInFolder() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(PathOf(folder)), {}));
  }

  std::string folder =
      testing::TempDir() + "sondrix_" + testing::UnitTest::GetInstance()->current_test_info()->name();
  std::string file = folder + PathSeparator + "sondrix.ini";
  TestWindow window;
  Session session{window};
};

TEST_F(StoreTest, AFirstClosingWritesAllKeysInOrder) {
  session.settings.TargetName = "Озеро";
  session.settings.EhoSens = -7;
  session.state.SelectedChannel = 9;
  ASSERT_TRUE(SaveSettings(session, file));
  EXPECT_EQ(
      FromCodePage(ReadWhole(file)),
      "[Main]\r\nSource=\r\nTargetPath=\r\nTargetName=Озеро\r\nDepthMP=\r\nMaxDiff=300\r\nDistDiff=1\r\n"
      "MaxGrad=5\r\nDepthDiff=10\r\nDepthSm=\r\nDefLvl=1000\r\nDefSlp=100\r\nScanSkip=\r\nScanCut=\r\n"
      "DucerX=\r\nDucerY=\r\nMaxSide=\r\nMaxProc=80\r\nEhoSens=-7\r\nMakeCut=0\r\nHideCut=0\r\n"
      "SaveGraf=0\r\nUseBeep=0\r\nUseDcm=1\r\nUseMet=0\r\nUseRev=0\r\nUseHead=1\r\nUseXYZ=0\r\nUseUTM=0\r\n"
      "MakeGraf=1\r\nUseEho=9\r\nDefLang=\r\n");
  EXPECT_EQ(FilesInFolder(), 1u);
  std::set<std::string_view> keys(SavedKeys.begin(), SavedKeys.end());
  for (const Field& field : Fields()) {
    EXPECT_TRUE(field.key.empty() || keys.contains(field.key)) << field.key;
  }
}

// Every stored field away from its default, with texts that a reader of such files would trim or unquote.
TEST_F(StoreTest, WhatWasSavedIsLoaded) {
  const char* texts[] = {"1,5", " a ",          "\"q\"",         "'", "a=b;c",
                         "[x]", "ä Übung 東京", "Путь\\к файлу", ";", "\"\""};
  std::size_t next = 0;
  Settings& saved = session.settings;
  for (const Field& field : Fields()) {
    if (field.kind == FieldKind::Text) saved.*field.text = texts[next++ % std::size(texts)];
    if (field.kind == FieldKind::Flag && !field.key.empty()) saved.*field.flag = !(saved.*field.flag);
  }
  saved.MakeGraf = saved.SaveGraf = true;
  saved.EhoSens = MinEhoSens;
  saved.boxLang = "DEU";
  ASSERT_TRUE(SaveSettings(session, file));
  Session other(window);
  ASSERT_FALSE(LoadSettings(other, file));
  for (const Field& field : Fields()) {
    EXPECT_EQ(FieldText(other.settings, field), FieldText(saved, field)) << field.name;
  }
  // Without such letters the file is 8-bit again.
  for (const Field& field : Fields()) {
    if (field.kind == FieldKind::Text) saved.*field.text = "Путь";
  }
  EXPECT_TRUE(ReadWhole(file).starts_with("\xEF\xBB\xBF[Main]"));
  ASSERT_TRUE(SaveSettings(session, file));
  EXPECT_TRUE(ReadWhole(file).starts_with("[Main]\r\nSource=\xCF\xF3\xF2\xFC\r\n"));
}

TEST_F(StoreTest, WritingKeepsAllElse) {
  const struct {
    std::string before, key, value, after;
  } cases[] = {
      {"", "A", "1", "[Main]\r\nA=1\r\n"},
      {"[Main]\nB=2", "A", "1", "[Main]\nB=2\r\nA=1\r\n"},
      {"[main]\r\n a = 0 \r\nA=5\r\n", "A", "1", "[main]\r\n a =1\r\nA=5\r\n"},
      {"; top\r\n[X]\r\nA=0\r\n\r\n", "A", "1", "; top\r\n[X]\r\nA=0\r\n\r\n[Main]\r\nA=1\r\n"},
      {"[Main]\r\n;A=9\r\n\r\n[X]\r\nA=0\r\n", "A", "1", "[Main]\r\n;A=9\r\nA=1\r\n\r\n[X]\r\nA=0\r\n"},
      {"[Main]\r\n[X]\r\n", "A", "", "[Main]\r\nA=\r\n[X]\r\n"},
      {"[X]\r\nA=0", "A", "1\r\n[Y]", "[X]\r\nA=0\r\n[Main]\r\nA=1  [Y]\r\n"},
      {"[Main]\r\nU=\xE4\x98\r\n", "A", "\xD1\x8F", "[Main]\r\nU=\xE4\x98\r\nA=\xFF\r\n"},
  };
  for (const auto& oneCase : cases) {
    Write(oneCase.before);
    EXPECT_TRUE(IWrite(file, "Main", oneCase.key, oneCase.value));
    EXPECT_EQ(ReadWhole(file), oneCase.after) << oneCase.before;
  }
  session.settings.MaxDiff = "7";
  Write("; mine\r\n[Main]\r\nOwn=1\r\nMaxDiff=300\r\n[Other]\r\nMaxDiff=1\r\n");
  ASSERT_TRUE(SaveSettings(session, file));
  const std::string text = ReadWhole(file);
  EXPECT_TRUE(text.starts_with("; mine\r\n[Main]\r\nOwn=1\r\nMaxDiff=7\r\nSource=\r\n")) << text;
  EXPECT_TRUE(text.ends_with("DefLang=\r\n[Other]\r\nMaxDiff=1\r\n")) << text;
}

TEST_F(StoreTest, AFailedWritingLeavesTheOldFileWhole) {
  const std::string old = "[Main]\r\nMaxDiff=1\r\n";
  Write(old);
#ifndef _WIN32
  // A disk that fills up after some bytes.
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit full{100, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  const bool isSaved = SaveSettings(session, file);
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(isSaved);
  EXPECT_EQ(ReadWhole(file), old);
  EXPECT_EQ(FilesInFolder(), 1u);
#endif
  EXPECT_FALSE(SaveSettings(session, file + "/below/sondrix.ini"));
  const std::string busy = folder + PathSeparator + "busy";
  fs::create_directories(PathOf(busy + "/kept"));
  EXPECT_FALSE(SaveSettings(session, busy));
  EXPECT_EQ(ReadWhole(file), old);
  EXPECT_EQ(FilesInFolder(), 2u);
  EXPECT_EQ(window.lines.size(), 0u);
}

TEST_F(StoreTest, TheLinkIsClosedOnce) {
  int closed = 0;
  session.link.CloseApi = [&closed] { ++closed; };
  SaveSettings(session, file);
  EXPECT_EQ(closed, 0);
  session.link.IsOpen = true;
  SaveSettings(session, file);
  SaveSettings(session, file);
  EXPECT_EQ(closed, 1);
}

TEST_F(StoreTest, StoredBesideTheProgramOrInTheConfiguration) {
  const std::string beside = folder + PathSeparator;
  EXPECT_EQ(StorePath(folder, "/config", "sondrix", ".ini"), beside + "sondrix.ini");
  EXPECT_EQ(StorePath(beside, "/config", "other", ".txt"), beside + "other.txt");
  EXPECT_EQ(StorePath(beside + "none", folder, "sondrix", ".ini"), beside + "sondrix.ini");
  const std::string config = beside + "config" + PathSeparator + "sondrix";  // made by the first closing
  const std::string path = StorePath(beside + "none", config, "sondrix", ".ini");
  EXPECT_TRUE(SaveSettings(session, path));
  EXPECT_TRUE(IsListed(path));
}

}  // namespace
}  // namespace sondrix

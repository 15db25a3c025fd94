#include "app/settings_store.h"

#include "app/app_test.h"
#include "core/code_page.h"

namespace sondrix {
namespace {

TEST_F(AppTest, AFirstClosingWritesAllKeysInOrderAndClosesTheLink) {
  int closed = 0;
  session.link.CloseApi = [&closed] { ++closed; };
  session.link.IsOpen = true;
  session.settings.TargetName = "Озеро";
  session.settings.EhoSens = -7;
  session.state.SelectedChannel = Channel::Scan3D;
  ASSERT_TRUE(SaveSettings(session, file));
  EXPECT_EQ(
      FromCodePage(ReadWhole(file)),
      "[Main]\r\nSource=\r\nTargetPath=\r\nTargetName=Озеро\r\nDepthMP=\r\nMaxDiff=300\r\nDistDiff=1\r\n"
      "MaxGrad=5\r\nDepthDiff=10\r\nDepthSm=\r\nDefLvl=1000\r\nDefSlp=100\r\nScanSkip=\r\nScanCut=\r\n"
      "DucerX=\r\nDucerY=\r\nMaxSide=\r\nMaxProc=80\r\nEhoSens=-7\r\nMakeCut=0\r\nHideCut=0\r\n"
      "SaveGraf=0\r\nUseBeep=0\r\nUseDcm=1\r\nUseMet=0\r\nUseRev=0\r\nUseHead=1\r\nUseXYZ=0\r\nUseUTM=0\r\n"
      "MakeGraf=1\r\nUseEho=9\r\nDefLang=\r\n");
  SaveSettings(session, file);
  EXPECT_EQ(closed, 1);
}

// Every stored field away from its default, with texts that a reader of such files would trim or unquote.
TEST_F(AppTest, WhatWasSavedIsLoaded) {
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
  for (const Field& field : Fields())
    EXPECT_EQ(FieldText(other.settings, field), FieldText(saved, field)) << field.name;
  EXPECT_TRUE(ReadWhole(file).starts_with("\xEF\xBB\xBF[Main]"));
}

TEST_F(AppTest, WritingKeepsAllElse) {
  const struct {
    std::string before, value, after;
  } cases[] = {
      {"[Main]\nB=2", "1", "[Main]\nB=2\r\nA=1\r\n"},
      {"[main]\r\n a = 0 \r\nA=5\r\n", "1", "[main]\r\n a =1\r\nA=5\r\n"},
      {"; top\r\n[X]\r\nA=0\r\n\r\n", "1", "; top\r\n[X]\r\nA=0\r\n\r\n[Main]\r\nA=1\r\n"},
      {"[Main]\r\n;A=9\r\n\r\n[X]\r\nA=0\r\n", "1", "[Main]\r\n;A=9\r\nA=1\r\n\r\n[X]\r\nA=0\r\n"},
      {"[X]\r\nA=0", "1\r\n[Y]", "[X]\r\nA=0\r\n[Main]\r\nA=1  [Y]\r\n"},
      {"[Main]\r\nU=\xE4\x98\r\n", "я", "[Main]\r\nU=\xE4\x98\r\nA=\xFF\r\n"},
  };
  for (const auto& oneCase : cases) {
    OutputFile(file).Write(oneCase.before);
    EXPECT_TRUE(IWrite(file, "Main", "A", oneCase.value));
    EXPECT_EQ(ReadWhole(file), oneCase.after) << oneCase.before;
  }
}

// What stands where the new file grows is from a crash or from somebody else; the ini itself may be a link.
TEST_F(AppTest, TheNewFileGoesThroughNoLinkAndALinkStaysOne) {
  namespace fs = std::filesystem;
  const std::string other = file + ".other", grows = file + ".new";
  OutputFile(other).Write("mine");
  OutputFile(grows).Write("from a crash");
  EXPECT_TRUE(IWrite(file, "Main", "A", "1"));
  fs::create_hard_link(other, grows);
  EXPECT_TRUE(IWrite(file, "Main", "A", "2"));
  std::error_code error;
  fs::create_symlink(other, grows, error);
  EXPECT_TRUE(IWrite(file, "Main", "A", "3"));
  EXPECT_EQ(IRead(file, "Main", "A"), "3");
  EXPECT_EQ(ReadWhole(other), "mine");
  EXPECT_FALSE(fs::exists(fs::symlink_status(grows)));
  if (error) GTEST_SKIP() << "no links here";
  const std::string link = file + ".link";
  const auto mode = fs::perms::owner_read | fs::perms::owner_write;
  for (const fs::path& target : {fs::path(file), fs::path(file).filename(), fs::path(file + ".none")}) {
    fs::remove(link);
    fs::create_symlink(target, link);
    if (fs::exists(link)) fs::permissions(link, mode);
    EXPECT_TRUE(IWrite(link, "Main", "A", target.string()));
    EXPECT_TRUE(fs::is_symlink(link)) << target;
    EXPECT_EQ(IRead(link, "Main", "A"), target.string());
    EXPECT_TRUE(target.extension() == ".none" || fs::status(link).permissions() == mode) << target;
  }
}

TEST_F(AppTest, StoredBesideTheProgramOrInTheConfiguration) {
  EXPECT_EQ(StorePath(folder, "/config", "sondrix", ".ini"), file);
  const std::string config = WithSeparator(folder) + "config" + PathSeparator + "sondrix";
  const std::string path = StorePath(folder + "/none", config, "sondrix", ".ini");
  EXPECT_TRUE(SaveSettings(session, path));  // which makes the folders
  EXPECT_TRUE(std::filesystem::exists(PathOf(config + "/sondrix.ini")));
  EXPECT_FALSE(SaveSettings(session, path + "/below/sondrix.ini"));
}

}  // namespace
}  // namespace sondrix

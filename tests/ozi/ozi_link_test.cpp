#include "ozi/ozi_link.h"

#include "app/language.h"
#include "core/number_text.h"
#include "core/settings.h"
#include "test_window.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace sondrix {
namespace {

class OziLinkTest : public testing::Test {
 protected:
  OziLinkTest() {
    link.Load = [this](OziLink&) { return Note("load"), true; };
    link.GetApiVersion = [] { return std::string("1.08"); };
    link.GetVersion = [] { return std::string("3.95"); };
    link.FindOzi = [] { return 0; };
    link.ShowAllTracks = [this] { Note("tracks"); };
    link.ShowTrack = [this](std::int32_t track) { Note("track " + std::to_string(track)); };
    link.CreateTrackPoint = [this](std::int32_t track, std::int32_t code, double latitude, double longitude,
                                   double feet, double date) {
      Note("point " + std::to_string(track) + " " + std::to_string(code) + " " + NumText(latitude) + " " +
           NumText(longitude) + " " + NumText(feet) + " " + NumText(date));
    };
    link.CenterMapAtPosition = [this](double latitude, double longitude) {
      Note("center " + NumText(latitude) + " " + NumText(longitude));
    };
    link.IsPositionOnMap = [this](double, double) { return isOnMap ? 1 : 0; };
    link.FindMapAtPosition = [this](double, double) { Note("find map"); };
  }

  void Note(const std::string& call) { calls.push_back(call); }
  void Open() {
    settings.ViewOzi = true;
    OpenLink(link, settings, *MessagesOf(LangEnglish), window);
  }

  OziLink link;
  Settings settings;
  TestWindow window;
  std::vector<std::string> calls;
  bool isOnMap = true;
};

TEST_F(OziLinkTest, OpeningReportsTheVersionsAndLoadsOnce) {
  Open();
  EXPECT_TRUE(settings.ViewOzi);
  EXPECT_TRUE(link.IsOpen);
  EXPECT_EQ(window.att, " запущен OziExplorer v3.95 API v1.08");
  Open();
  EXPECT_EQ(calls, std::vector<std::string>{"load"});
  EXPECT_EQ(window.beeps, 0);
}

TEST_F(OziLinkTest, WhatCantBeOpenedClearsTheBox) {
  link.FindOzi = [] { return 1; };
  Open();
  EXPECT_EQ(window.att, " ! run OziExplorer and load appropriate target map");
  EXPECT_FALSE(settings.ViewOzi);
  EXPECT_TRUE(link.IsOpen);
  EXPECT_EQ(window.beeps, 1);

  link.GetVersion = []() -> std::string { throw std::runtime_error("call"); };
  Open();
  EXPECT_EQ(window.att, " ! copy oziapi.dll in the program folder or system directory");
  EXPECT_FALSE(settings.ViewOzi);

  link = OziLink();
  Open();
  EXPECT_EQ(window.att, " ! copy oziapi.dll in the program folder or system directory");
  EXPECT_FALSE(settings.ViewOzi);
  EXPECT_FALSE(link.IsOpen);
  EXPECT_EQ(window.beeps, 3);
  EXPECT_EQ(window.shown, std::vector<std::string>(3, "ViewOzi"));
}

// Only the first point of a segment asks for a map.
TEST_F(OziLinkTest, APointOffTheMapAsksForOne) {
  OziTrackOpen(link);
  OziLivePoint(link, window, 0, 55.5, -37.25, -3, 41569.5);
  EXPECT_EQ(calls, (std::vector<std::string>{"tracks", "track 1", "point 1 0 55.5 -37.25 -3 41569.5",
                                             "center 55.5 -37.25"}));
  for (const auto& [code, onMap, asked] : {std::tuple(1, true, 0u), {0, false, 0u}, {1, false, 1u}}) {
    calls.clear();
    isOnMap = onMap;
    OziLivePoint(link, window, code, 55, 37, 0, 0);
    EXPECT_EQ(window.informed.size(), asked);
    EXPECT_EQ(calls.back() == "find map", asked == 1);
  }
  EXPECT_EQ(window.informed.at(0), "Загрузите подходящую карту в Ози");
}

}  // namespace
}  // namespace sondrix

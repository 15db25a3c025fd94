#include "core/settings.h"

#include <algorithm>
#include <array>

namespace sondrix {
namespace {

constexpr bool Locked = true, Free = false;

constexpr Field TextField(std::string_view name, std::string Settings::*member, std::string_view defaultText,
                          std::string_view meaning, bool mayMiss = false) {
  return {name, name, FieldKind::Text, defaultText, meaning, member, nullptr, nullptr, Locked, mayMiss};
}

constexpr Field FlagField(std::string_view name, bool Settings::*member, std::string_view defaultText,
                          std::string_view meaning, bool isLocked, bool mayMiss = false) {
  return {name, name, FieldKind::Flag, defaultText, meaning, nullptr, member, nullptr, isLocked, mayMiss};
}

using S = Settings;

constexpr std::array FieldTable = {
    TextField("Source", &S::Source, "", "path of the file to process"),
    TextField("TargetPath", &S::TargetPath, "", "folder for all outputs"),
    TextField("TargetName", &S::TargetName, "", "stem of the output files; empty: that of the source"),
    TextField("DepthMP", &S::DepthMP, "", "POI type written to MP files; a run puts 0x1000 if empty"),
    TextField("MaxDiff", &S::MaxDiff, "300", "metres: a longer way between points is a gap; 0: no test"),
    TextField("DistDiff", &S::DistDiff, "1", "metres: smallest distance between two points"),
    TextField("MaxGrad", &S::MaxGrad, "5", "degrees: largest turn of the boat for 3D points"),
    TextField("DepthDiff", &S::DepthDiff, "10", "centimetres: smallest depth difference between two points"),
    TextField("DepthSm", &S::DepthSm, "", "centimetres added to every depth; may be negative"),
    TextField("DefLvl", &S::DefLvl, "1000", "centimetres: limit of the difference from the own depth"),
    TextField("DefSlp", &S::DefSlp, "100", "milliseconds: pace of the 3D view, at least 100"),
    TextField("ScanSkip", &S::ScanSkip, "", "first scan to process"),
    TextField("ScanCut", &S::ScanCut, "", "last scan to process"),
    TextField("DucerX", &S::DucerX, "", "centimetres: transducer right of the antenna; left is negative"),
    TextField("DucerY", &S::DucerY, "", "centimetres: transducer ahead of the antenna; behind is negative"),
    TextField("MaxSide", &S::MaxSide, "", "metres: sidescan reach kept for 3D points"),
    TextField("MaxProc", &S::MaxProc, "80", "percent: the same reach as a share of the scan width"),
    FlagField("MakeCut", &S::MakeCut, "0",
              "crop the echogram to the chosen scans; setting it clears MakeGraf", Locked),
    FlagField("HideCut", &S::HideCut, "0", "remove the coordinates from the cropped echogram", Locked),
    FlagField("SaveGraf", &S::SaveGraf, "0",
              "save a picture of every frame into the folder echo; needs MakeGraf", Free),
    FlagField("UseBeep", &S::UseBeep, "0", "beep when a fish is suspected", Free),
    FlagField("UseDcm", &S::UseDcm, "1", "round depths to decimetres", Locked),
    FlagField("UseMet", &S::UseMet, "0", "kept with the settings, without effect on a run", Free),
    FlagField("UseRev", &S::UseRev, "0", "the transducer is mounted back to front", Locked),
    FlagField("UseHead", &S::UseHead, "1", "angles come from the heading, not from the track", Locked),
    FlagField("UseXYZ", &S::UseXYZ, "0", "kept with the settings, without effect on a run", Locked),
    FlagField("UseUTM", &S::UseUTM, "0", "positions are output as UTM", Locked),
    FlagField("MakeGraf", &S::MakeGraf, "1", "show the echogram during a run; clearing it clears SaveGraf",
              Free),
    Field{"EhoSens", "EhoSens", FieldKind::Contrast, "0", "contrast of the echogram, -100 to 50", nullptr,
          nullptr, &S::EhoSens},
    Field{"boxLang", "DefLang", FieldKind::Language, "", "language: RUS, ENG or DEU", &S::boxLang, nullptr,
          nullptr},
    Field{"UseTyp", "UseEho", FieldKind::Channel, "2", "channel: 0 Primary, 2 Downscan, 5 Sidescan, 9 3D",
          nullptr, nullptr, &S::UseTyp, Locked},
    Field{"ViewOzi", "", FieldKind::Flag, "0", "show the track live in OziExplorer", nullptr, &S::ViewOzi,
          nullptr},
    Field{"UseRad", "", FieldKind::Flag, "0", "the cropped echogram takes the heading as its course", nullptr,
          &S::UseRad, nullptr},
};

int DigitsValue(std::string_view digits) {
  int value = 0;
  for (const char digit : digits) value = value * 10 + (digit - '0');
  return value;
}

}  // namespace

Settings::Settings() {
  for (const Field& field : FieldTable) {
    if (field.text) this->*field.text = field.defaultText;
    if (field.flag) this->*field.flag = field.defaultText == "1";
    if (field.number) this->*field.number = DigitsValue(field.defaultText);
  }
}

std::span<const Field> Fields() { return FieldTable; }

const Field* FindField(std::string_view name) {
  const auto found = std::find_if(FieldTable.begin(), FieldTable.end(),
                                  [name](const Field& field) { return field.name == name; });
  return found == FieldTable.end() ? nullptr : &*found;
}

std::string FieldText(const Settings& settings, const Field& field) {
  if (field.text) return settings.*field.text;
  if (field.flag) return settings.*field.flag ? "1" : "0";
  return std::to_string(settings.*field.number);
}

}  // namespace sondrix

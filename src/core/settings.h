#pragma once

#include <span>
#include <string>
#include <string_view>

namespace sondrix {

// What the fields of the window hold at any moment. Logic reads them at the moment of use.
struct Settings {
  std::string Source, TargetPath, TargetName, DepthMP;
  std::string MaxDiff, DistDiff, MaxGrad, DepthDiff, DepthSm;
  std::string DefLvl, DefSlp, ScanSkip, ScanCut, DucerX, DucerY, MaxSide, MaxProc;
  bool MakeCut = false, HideCut = false, SaveGraf = false, UseBeep = false, UseDcm = false, UseMet = false;
  bool UseRev = false, UseHead = false, UseXYZ = false, UseUTM = false, MakeGraf = false;
  bool ViewOzi = false, UseRad = false;
  int EhoSens = 0;
  int UseTyp = 2;  // the chosen channel
  std::string boxLang;

  // All fields at the defaults of the table below.
  Settings();
};

enum class FieldKind { Text, Flag, Contrast, Channel, Language };

// One row per field; the only list of them. Adding a field is a member above and a row in settings.cpp.
struct Field {
  std::string_view name;
  std::string_view key;  // in the ini file; empty for a field that isn't stored
  FieldKind kind;
  std::string_view defaultText;
  std::string_view meaning;               // English, with the unit
  std::string Settings::*text = nullptr;  // Text, Language
  bool Settings::*flag = nullptr;         // Flag
  int Settings::*number = nullptr;        // Contrast, Channel
  bool isLocked = false;                  // not to be changed during an echogram's run
  bool mayMiss = false;                   // an ini file without the key gives the default: in every new row
};

// In the order in which the ini file is read. A channel is stored but never read.
std::span<const Field> Fields();

// Null if there is no field of that name.
const Field* FindField(std::string_view name);

// What the field holds, as text: flags and numbers as digits.
std::string FieldText(const Settings& settings, const Field& field);

// Smallest and largest contrast.
inline constexpr int MinEhoSens = -100;
inline constexpr int MaxEhoSens = 50;

}  // namespace sondrix

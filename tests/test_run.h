#pragma once

#include "app/language.h"
#include "core/files.h"
#include "core/messages.h"
#include "core/outputs.h"
#include "core/run.h"
#include "core/run_limits.h"
#include "core/run_result.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "digest.h"
#include "echo/views.h"
#include "jobs/clicks.h"
#include "ozi/ozi_link.h"
#include "temporary_folder.h"
#include "test_window.h"

#include <algorithm>

namespace sondrix {

// A whole run in a folder of its own: put a source there, set the fields, click.
class TestRun {
 public:
  TestRun() {
    std::filesystem::create_directory(folder / "out");
    settings.TargetPath = (folder / "out").string() + PathSeparator;
    settings.UseDcm = false;
    settings.DistDiff = "0";
    settings.MakeGraf = false;
    settings.UseHead = false;
    messages = *MessagesOf(LangEnglish);
  }
  // Writes a source of that name and chooses it.
  TestRun& Source(const std::string& name, std::span<const std::uint8_t> bytes) {
    settings.Source = (folder / name).string();
    OutputFile(settings.Source).Write(bytes);
    return *this;
  }
  // Chooses the channel, clicks the start button, and gives the last text of the log line.
  std::string Click(int channel = 2) {
    ChannelClick(run, ChannelOf(channel).value());
    result = GoClick(run);
    EXPECT_EQ(result.fault.has_value(), result.end == RunEnd::Failed);
    EXPECT_EQ(window.att.starts_with(" ! error "), result.end == RunEnd::Failed && !result.message)
        << window.att;
    return window.att;
  }
  // Sets fields by their names: "DistDiff=2 UseHead=1 ScanCut=".
  TestRun& Set(const std::string& fields) {
    std::istringstream all(fields);
    for (std::string one; all >> one;) {
      const std::size_t end = one.find('=');
      const Field* field = FindField(one.substr(0, end));
      const std::string value = one.substr(end + 1);
      EXPECT_TRUE(field) << one;
      if (field && field->text) settings.*field->text = value;
      if (field && field->flag) settings.*field->flag = value == "1";
      if (field && field->number) settings.*field->number = std::stoi(value);
    }
    return *this;
  }
  // The result of the last click: end, frames, soundings, those with a depth, points; each channel's frames
  // and depths; the outputs with a "-" at what isn't whole.
  std::string Summary() const {
    std::string text(NameOf(result.end));
    for (const std::int64_t count : {result.frames, result.soundings, result.withDepth, result.points})
      text += " " + std::to_string(count);
    for (const auto& [channel, frames, withDepth] : result.channels)
      text += " " + std::to_string(channel) + ":" + std::to_string(frames) + "/" + std::to_string(withDepth);
    for (const RunOutput& output : result.outputs)
      text += " " + std::string(FileNameOf(output.path)) + (output.isWhole ? "" : "-");
    return text;
  }
  // All that the clicks left, for a digest: results, lines, what was shown and asked, outputs and pictures.
  std::string Record() {
    std::ostringstream all;
    const auto add = [&](std::string_view name, const std::vector<std::string>& lines) {
      for (const std::string& line : lines) all << name << ": " << line << '\n';
    };
    all << Summary() << '\n' << settings.TargetName << ' ' << settings.DepthMP << ' ' << window.spd << '\n';
    for (const auto index : {result.firstIndex, result.lastIndex}) all << index.value_or(-1) << ' ';
    all << window.pumps << ' ' << window.waited << ' ' << window.beeps << ' ' << state.DefectPause << '\n';
    add("line", window.lines);
    add("shown", window.shown);
    add("asked", window.questions);
    add("told", window.informed);
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "out"))
      if (entry.is_regular_file())
        names.push_back(entry.path().lexically_relative(folder / "out").generic_string());
    std::ranges::sort(names);
    for (const std::string& name : names) {
      const std::string bytes = Out(name);
      all << name << ' ' << bytes.size() << '\n';
      if (bytes.find('\0') == std::string::npos)
        all << bytes;
      else
        all << DigestOf(bytes) << '\n';
    }
    ComposeGraph(pictures);
    for (const Picture* picture :
         {&pictures.ECHO, &pictures.SMPL, &pictures.METR, &pictures.BMP, &pictures.CRS, &pictures.HED}) {
      std::string pixels;
      for (int y = 0; y < picture->Height(); ++y)
        pixels.append(reinterpret_cast<const char*>(picture->Row(y)),
                      sizeof(*picture->Row(y)) * static_cast<std::size_t>(picture->Width()));
      all << picture->Width() << " by " << picture->Height() << ": " << DigestOf(pixels) << '\n';
      for (const PictureText& text : picture->Texts())
        all << text.x << ' ' << text.y << ' ' << text.colour << text.text << '\n';
    }
    return all.str();
  }
  std::string OutPath(const std::string& name) const { return settings.TargetPath + name; }
  bool HasOut(const std::string& name) const { return std::filesystem::exists(OutPath(name)); }
  std::string Out(const std::string& name) const { return ReadWhole(OutPath(name)); }
  // The lines of a text output, without their line ends; the empty one at the end of every file is left out.
  std::vector<std::string> OutLines(const std::string& name) const {
    std::vector<std::string> lines;
    const std::string text = Out(name);
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = text.find("\r\n", at);
      lines.push_back(text.substr(at, end - at));
      if (end == std::string::npos) break;
      at = end + 2;
    }
    if (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
  }

  TemporaryFolder place;
  std::filesystem::path folder = place.Root();
  Settings settings;
  RunLimits limits;
  RunState state;
  Messages messages;
  Pictures pictures;
  OziLink link;
  Outputs outputs;
  RunResult result;  // of the last click
  TestWindow window;
  Run run{settings, limits, state, messages, pictures, link, outputs, window};
};

}  // namespace sondrix

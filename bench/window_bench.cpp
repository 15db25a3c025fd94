// What the window costs, in figures: its runs of an echogram and of texts against those of the batch
// program's window, the way from the start to a painted window, and from a click on the stop button to the
// end of a run. Shown offscreen unless QT_QPA_PLATFORM says otherwise.

#include "app/batch/batch_window.h"
#include "app/batch/transcript.h"
#include "app/desktop/desktop_window.h"
#include "app/language.h"
#include "core/files.h"
#include "jobs/clicks.h"
#include "samples/lake.h"
#include "samples/nmea_log.h"
#include "samples/text_export.h"

#include <QApplication>
#include <QProcess>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace sondrix;
using Clock = std::chrono::steady_clock;

constexpr int Rounds = 5;
constexpr int Repeats = 19;  // of the demonstration: some 200 MB
constexpr std::int64_t TextBytes = 60'000'000;
constexpr int ZeroRows = 10'000;
constexpr int StopAfterMs = 30;
constexpr const char* StartOnly = "--start-only";

double SecondsSince(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

std::filesystem::path Folder() { return std::filesystem::temp_directory_path() / "sondrix_window_bench"; }

std::string MakeSource() {
  const std::vector<std::uint8_t> lake = LakeEchogram();
  const std::span frames = std::span(lake).subspan(8);
  std::string path = (Folder() / "lake.sl3").string();
  OutputFile file(path);
  file.Write(std::span(lake).first(8));
  for (int i = 0; i < Repeats; ++i) file.Write(frames);
  file.Close();
  return path;
}

struct TextSample {
  const char* name;
  std::string path;
};

std::vector<TextSample> MakeTexts() {
  const auto at = [](const char* name) { return (Folder() / name).string(); };
  std::vector<TextSample> samples = {
      {"a table", at("t.csv")}, {"a log", at("l.log")}, {"10,000 rows of zero depth", at("z.csv")}};
  WriteTextExport(samples[0].path, TableForm(), TextBytes);
  WriteNmeaLog(samples[1].path, TextBytes);
  std::string rows = "Channel,Frequency,,,,Depth,,,,,,PositionX,PositionY,TimeOffset\n";
  for (int i = 0; i < ZeroRows; ++i) {
    rows += "Downscan,800,0,50,0,0.000000,0,0,0,0,0," + std::to_string(4'100'000 + i) + ",7500000,0\n";
  }
  OutputFile(samples[2].path).Write(rows);
  return samples;
}

void Prepare(Session& session, const std::string& source, const char* name) {
  session.settings.Source = source;
  session.settings.TargetPath = Folder().string() + PathSeparator;
  session.settings.TargetName = name;
  session.settings.MakeGraf = true;
}

double BatchRun(const std::string& source) {
  Transcript transcript(true);
  BatchWindow window({}, transcript);
  Session session(window);
  ApplyLanguage(session, LangEnglish);
  Prepare(session, source, "batch");
  const Clock::time_point begin = Clock::now();
  GoClick(session.run);
  return SecondsSince(begin);
}

void OpenWindow(DesktopWindow& window) {
  window.Start({"", LangEnglish, [] { return std::string(); }});
  window.show();
  QApplication::processEvents();
}

double WindowRun(const std::string& source) {
  DesktopWindow window(Folder().string(), (Folder() / "help.txt").string());
  OpenWindow(window);
  Prepare(window.TheSession(), source, "window");
  const Clock::time_point begin = Clock::now();
  window.findChild<QPushButton*>(QLatin1String("btnGO"))->click();
  return SecondsSince(begin);
}

double StopRun(const std::string& source) {
  DesktopWindow window(Folder().string(), (Folder() / "help.txt").string());
  OpenWindow(window);
  Prepare(window.TheSession(), source, "window");
  Clock::time_point clicked;
  QTimer::singleShot(StopAfterMs, &window, [&] {
    clicked = Clock::now();
    window.findChild<QPushButton*>(QLatin1String("RunEnd"))->click();
  });
  window.findChild<QPushButton*>(QLatin1String("btnGO"))->click();
  return window.Att() == " * processing aborted by user" ? SecondsSince(clicked) : -1;
}

double StartAndPaint(const QString& program) {
  const Clock::time_point begin = Clock::now();
  QProcess process;
  process.start(program, {QLatin1String(StartOnly)});
  process.waitForFinished();
  return process.exitCode() == 0 ? SecondsSince(begin) : -1;
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  if (argc > 1 && std::string_view(argv[1]) == StartOnly) {
    DesktopWindow window(Folder().string(), "");
    OpenWindow(window);
    return window.grab().isNull() ? 1 : 0;
  }
  std::filesystem::create_directories(Folder());
  const std::string source = MakeSource();
  std::vector<double> batch, window, ratios, stops, starts;
  for (int round = 0; round < Rounds; ++round) {
    batch.push_back(BatchRun(source));
    window.push_back(WindowRun(source));
    ratios.push_back(window.back() / batch.back());
    stops.push_back(StopRun(source));
    starts.push_back(StartAndPaint(QApplication::applicationFilePath()));
  }
  std::printf("run of %d MB, pictures on: window %.3f s, batch %.3f s, median of the ratios %.2f\n",
              static_cast<int>(std::filesystem::file_size(source) / 1'000'000), Median(window), Median(batch),
              Median(ratios));
  for (const TextSample& sample : MakeTexts()) {
    std::vector<double> batches, windows, quotients;
    for (int round = 0; round < Rounds; ++round) {
      batches.push_back(BatchRun(sample.path));
      windows.push_back(WindowRun(sample.path));
      quotients.push_back(windows.back() / batches.back());
    }
    std::printf("run of %s: window %.3f s, batch %.3f s, median of the ratios %.2f\n", sample.name,
                Median(windows), Median(batches), Median(quotients));
  }
  std::printf("from the start of the program to a painted window and its end: %.3f s\n", Median(starts));
  std::printf("from a click on the stop button to the end of the run: %.4f s\n", Median(stops));
  std::filesystem::remove_all(Folder());
  const bool failed = std::min(*std::ranges::min_element(stops), *std::ranges::min_element(starts)) < 0;
  return failed ? 1 : 0;
}

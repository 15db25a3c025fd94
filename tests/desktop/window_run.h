#pragma once

#include "app/desktop/desktop_window.h"
#include "app/desktop/qt_text.h"
#include "core/files.h"
#include "samples/echogram.h"
#include "temporary_folder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <algorithm>

namespace sondrix {

// A shown window over a folder of its own, with dialogs that answer at once and keep what they were asked.
class WindowTest : public testing::Test {
 protected:
  WindowTest() { Open(); }

  // A new start of the program.
  void Open() {
    window = std::make_unique<DesktopWindow>(folder.string(), Path("help.txt"));
    window->services.beep = [this] { ++beeps; };
    window->services.files.askFile = [this](auto&, auto&, auto&) { return chosenFile; };
    window->services.files.askFolder = [](auto&, auto&) { return std::optional<std::string>(); };
    window->services.files.shellOpen = [this](const std::string& path) {
      opened = path;
      return 0;
    };
    window->Start({Path("sondrix.ini"), LangEnglish, [this] { return Path("out/"); }});
    window->show();
    window->activateWindow();
    QApplication::processEvents();
  }

  std::string Path(const std::string& name) const { return (folder / name).string(); }

  // An echogram over a falling bottom, long enough that a run shows it many times.
  std::string WriteEchogram() const {
    std::vector<SampleFrame> frames;
    for (int i = 0; i < 1500; ++i) {
      frames.push_back(Frame(2, 5.0F + static_cast<float>(i % 400) * 0.05F, 4'105'000 + 3 * i));
      frames.back().LowerLimit = 50;
      std::fill_n(frames.back().Samples.begin() + 1500, 12, std::uint8_t{200});
    }
    EXPECT_TRUE(WriteBytes(Path("trip.sl2"), EchogramBytes(2, frames)));
    return Path("trip.sl2");
  }

  template <class T = QWidget>
  T* Find(const char* name) {
    return window->findChild<T*>(QLatin1String(name));
  }
  void Click(const char* name) {
    auto* widget = Find(name);
    // On the indicator of a box or an option, which isn't in the middle of it.
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(7, widget->height() / 2));
  }
  void Type(const char* name, const char* keys) { QTest::keyClicks(Find(name), QLatin1String(keys)); }
  // With the arrow keys in the list.
  void ChooseLanguage(int index) {
    for (int i = 0; i < 3; ++i) QTest::keyClick(Find("boxLang"), Qt::Key_Up);
    for (int i = 0; i < index; ++i) QTest::keyClick(Find("boxLang"), Qt::Key_Down);
  }
  std::string Text(const char* name) { return Utf8Of(Find<QLineEdit>(name)->text()); }
  bool Checked(const char* name) { return Find<QAbstractButton>(name)->isChecked(); }
  Settings& Fields() { return window->TheSession().settings; }

  // Starts a run of an echogram, and does the steps one by one at the run's pumps and waits. All must come to
  // their turn.
  void RunWith(const std::vector<std::function<void()>>& steps) {
    window->SetSource(WriteEchogram());
    RunChosen(steps, [this] { Click("btnGO"); });
  }

  // The same with the chosen source, started in some way.
  void RunChosen(const std::vector<std::function<void()>>& steps, const std::function<void()>& start) {
    std::size_t done = 0;
    QTimer timer;
    timer.setInterval(0);
    QObject::connect(&timer, &QTimer::timeout, [&] {
      if (Find("RunSet")->isEnabled() && done < steps.size()) steps[done++]();
    });
    timer.start();
    start();
    EXPECT_EQ(done, steps.size());
  }

  TemporaryFolder place;
  std::filesystem::path folder = place.Root();
  std::unique_ptr<DesktopWindow> window;
  std::string chosenFile, opened;
  int beeps = 0;
};

}  // namespace sondrix

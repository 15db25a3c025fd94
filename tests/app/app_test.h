#pragma once

#include "app/ini_file.h"
#include "app/session.h"
#include "app/settings_store.h"
#include "core/files.h"
#include "temporary_folder.h"
#include "test_window.h"

namespace sondrix {

using Texts = std::vector<std::pair<std::string, std::string>>;  // by the name of a field or a key

// A session with a folder of its own for the settings file.
class AppTest : public testing::Test {
 protected:
  // A whole file as a closing writes it, with some other values.
  void Store(const Texts& values) const {
    TestWindow otherWindow;
    Session other(otherWindow);
    ASSERT_TRUE(SaveSettings(other, file));
    for (const auto& [key, value] : values) ASSERT_TRUE(IWrite(file, IniSection, key, value));
  }

  TemporaryFolder place;
  std::string folder = place.Root().string();
  std::string file = place.Path("sondrix.ini");
  TestWindow window;
  Session session{window};
};

}  // namespace sondrix

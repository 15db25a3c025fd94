#pragma once

#include "app/session.h"

#include <functional>
#include <string>

namespace sondrix {

// What a start has to know of the machine.
struct StartFacts {
  std::string iniFile;
  LangId systemLanguage = 0;
  std::function<std::string()> openPath;  // asked only if there is no ini file
  std::string packagedIni = {};           // read where iniFile isn't listed, never written
};

// The start behind the building of the window: loads the settings, sets the channel, settles the language,
// applies its messages and puts its hint into the log line. True if captions and tips of session.langId are
// to be shown now. False after a fault in the ini file: the log line tells it, no language is applied.
bool StartSession(Session& session, const StartFacts& facts);

}  // namespace sondrix

#include "app/start.h"

#include "app/captions.h"
#include "app/choose_language.h"
#include "app/settings_store.h"
#include "core/fault.h"
#include "jobs/clicks.h"

namespace sondrix {

bool StartSession(Session& session, const StartFacts& facts) {
  session.langId = facts.systemLanguage;
  const std::string& iniFile = IsListed(facts.iniFile) ? facts.iniFile : facts.packagedIni;
  if (const auto fault = LoadAtStart(session, iniFile, facts.openPath)) {
    session.state.SelectedChannel = Channel::Primary;
    session.window.Beep();
    session.window.SetAtt(FaultLine("Load", fault->fault), LineKind::Fault);
    return false;
  }
  ChannelClick(session.run, ChannelOf(session.settings.UseTyp).value_or(Channel::Downscan));

  const LanguageChoice choice = ChooseLanguage(session.settings.boxLang, facts.systemLanguage);
  session.settings.boxLang = choice.item;
  session.window.ShowField("boxLang");
  ApplyLanguage(session, choice.id);
  const std::string_view hint = HintHelpOf(choice.id);
  if (!hint.empty()) session.window.SetAtt(hint, LineKind::Notice);
  return true;
}

}  // namespace sondrix

#include "app/session.h"

#include "ozi/ozi_library.h"

namespace sondrix {

Session::Session(Window& itsWindow)
    : window(itsWindow), run{settings, limits, state, messages, pictures, link, outputs, window} {
  link.Load = [](OziLink& itself) { return LoadOziLibrary(itself, OziLibraryFolders()); };
}

void TakeOver(Session& session, const Session& other) {
  session.settings = other.settings;
  session.limits = other.limits;
  session.state = other.state;
  session.messages = other.messages;
  session.langId = other.langId;
  session.link = other.link;
}

void ApplyLanguage(Session& session, LangId langId) {
  session.langId = langId;
  if (const Messages* messages = MessagesOf(langId)) session.messages = *messages;
}

}  // namespace sondrix

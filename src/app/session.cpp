#include "app/session.h"

#include "ozi/ozi_library.h"

namespace sondrix {

Session::Session(Window& itsWindow)
    : window(itsWindow), run{settings, limits, state, messages, pictures, link, outputs, window} {
  link.Load = [](OziLink& itself) { return LoadOziLibrary(itself, OziLibraryFolders()); };
}

void ApplyLanguage(Session& session, LangId langId) {
  session.langId = langId;
  if (const Messages* messages = MessagesOf(langId)) session.messages = *messages;
}

}  // namespace sondrix

#include "app/session.h"

namespace sondrix {

Session::Session(Window& itsWindow)
    : window(itsWindow), run{settings, limits, state, messages, pictures, link, window} {}

void ApplyLanguage(Session& session, LangId langId) {
  session.langId = langId;
  if (const Messages* messages = MessagesOf(langId)) session.messages = *messages;
}

}  // namespace sondrix

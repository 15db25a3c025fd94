#pragma once

#include "app/language.h"
#include "core/messages.h"
#include "core/outputs.h"
#include "core/run.h"
#include "core/run_limits.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "core/window.h"
#include "echo/views.h"
#include "ozi/ozi_link.h"

namespace sondrix {

// What a program owns from its start to its end around one window, and the record of references that its
// clicks get. No language is applied yet.
struct Session {
  explicit Session(Window& itsWindow);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  Settings settings;
  RunLimits limits;
  RunState state;
  Messages messages;
  LangId langId = 0;
  Pictures pictures;
  OziLink link;
  Outputs outputs;
  Window& window;
  Run run;
};

// Gives a session the settings, the state, the language and the link of another.
void TakeOver(Session& session, const Session& other);

// Makes langId the language of all messages, also in the middle of a run. A number without a table is
// recorded, and the messages stay as they are.
void ApplyLanguage(Session& session, LangId langId);

}  // namespace sondrix

#pragma once

#include "framework/Form.h"

/// The end of the session (the session manager's request) and a termination signal (SIGTERM, SIGINT, SIGHUP), as the
/// open forms learn of them.
namespace framework::Termination {

/// While one lives, both are heard and close the open forms from the topmost down, with unload modes 2 and 3; a form
/// that the user keeps open stops that. Message boxes over a form are dismissed first. The next form is asked when the
/// handler that showed the one above it has ended. The session manager waits for its answer meanwhile, so an end of the
/// session that finds nested forms is refused, and all of them are closed for the next one. Watches nest; only the
/// outermost counts. Where a signal closed every form, the outermost watch raises it again at its end, for the handler
/// that was there before (the process ends where there was none).
class Watch {
 public:
  Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
  ~Watch();
};

/// Closes the topmost form or box at once and those below it afterwards, as a watch does; nothing without one. True
/// when none is open any more.
bool CloseForms(Form::UnloadMode mode);

}  // namespace framework::Termination

#pragma once

// What every part of the main form uses, and how its commands and handlers run: through the gate, with their
// errors trapped under the form's name and their own.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"
#include "desktop/FormWindow.h"
#include "query/Engines.h"
#include "support/Trap.h"
#include "views/CommandGate.h"
#include "views/MainControls.h"

#include <utility>

namespace quarn {

// The name under which every part of the main form logs its errors.
inline constexpr const char* MainFormName = "frmMain";

struct MainFormContext {
    ProgramState& program;
    Desktop& desktop;
    FormWindow& window;
    MainControls& controls;
    CommandGate& gate;
    EngineTable engines;

    // Runs the body of a routine. True if it ran to its end.
    template<class Body>
    bool Trapped(const char* routine, OnError onError, Body&& body) const noexcept {
        return quarn::Trapped(*program.AppLog, MainFormName, routine, onError, std::forward<Body>(body));
    }

    // Runs the body of a command, now or when the gate allows it. The parts that the body refers to live as
    // long as the form.
    template<class Body>
    void Command(CommandKind kind, const char* routine, OnError onError, Body body) const {
        gate.Run(kind, [log = program.AppLog.get(), routine, onError, body = std::move(body)]() mutable {
            quarn::Trapped(*log, MainFormName, routine, onError, body);
        });
    }
};

} // namespace quarn

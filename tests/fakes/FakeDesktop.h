#pragma once

// A whole desktop in memory: what the program uses, and what a test sets and inspects.

#include "desktop/Desktop.h"
#include "tests/fakes/ClassicLocale.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/FakeEvents.h"
#include "tests/fakes/FakeHelpViewer.h"
#include "tests/fakes/FakeHostNames.h"
#include "tests/fakes/FakeNotificationArea.h"
#include "tests/fakes/FakePeers.h"
#include "tests/fakes/FakePrompts.h"
#include "tests/fakes/FakeShell.h"
#include "tests/fakes/FakeSystem.h"
#include "tests/fakes/MemoryFiles.h"
#include "tests/fakes/MemoryProfiles.h"
#include "tests/fakes/MemoryRegistry.h"

namespace quarn {

struct FakeDesktop {
    FakeDesktop() = default;
    FakeDesktop(const FakeDesktop&) = delete;
    FakeDesktop& operator=(const FakeDesktop&) = delete;

    FakeClock clock;
    FakeEvents events{clock};
    MemoryFiles files;
    FakeHelpViewer help;
    FakeHostNames hosts{events};
    ClassicLocale locale;
    FakeNotificationArea notifications;
    FakePeers peers;
    MemoryProfiles profiles{files};
    FakePrompts prompts;
    MemoryRegistry registry;
    FakeShell shell;
    FakeSystem system;

    Desktop desktop{.clock = clock,
                    .events = events,
                    .files = files,
                    .help = help,
                    .hosts = hosts,
                    .locale = locale,
                    .notifications = notifications,
                    .peers = peers,
                    .profiles = profiles,
                    .prompts = prompts,
                    .registry = registry,
                    .shell = shell,
                    .system = system};
};

} // namespace quarn

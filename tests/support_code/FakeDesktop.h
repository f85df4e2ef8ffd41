#pragma once

// A whole desktop in memory: what the program asks for, and what a test arranges and looks at.

#include "desktop/Desktop.h"
#include "tests/support_code/ClassicLocale.h"
#include "tests/support_code/FakeClock.h"
#include "tests/support_code/FakeEvents.h"
#include "tests/support_code/FakeHelpViewer.h"
#include "tests/support_code/FakeHostNames.h"
#include "tests/support_code/FakeNotificationArea.h"
#include "tests/support_code/FakePeers.h"
#include "tests/support_code/FakePrompts.h"
#include "tests/support_code/FakeShell.h"
#include "tests/support_code/FakeSystem.h"
#include "tests/support_code/MemoryFiles.h"
#include "tests/support_code/MemoryProfiles.h"
#include "tests/support_code/MemoryRegistry.h"

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

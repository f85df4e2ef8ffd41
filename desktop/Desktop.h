#pragma once

// Everything the program asks of the system, one interface for each concern. win32/ contains the real
// implementations, tests/fakes the fakes in memory. The owner of a Desktop keeps its parts alive.

#include "desktop/Clock.h"
#include "desktop/EventPump.h"
#include "desktop/Files.h"
#include "desktop/HelpViewer.h"
#include "desktop/HostNames.h"
#include "desktop/LocaleText.h"
#include "desktop/NotificationArea.h"
#include "desktop/PeerPrograms.h"
#include "desktop/ProfileFiles.h"
#include "desktop/Prompts.h"
#include "desktop/Registry.h"
#include "desktop/Shell.h"
#include "desktop/SystemInformation.h"

namespace quarn {

struct Desktop {
    Clock& clock;
    EventPump& events;
    Files& files;
    HelpViewer& help;
    HostNames& hosts;
    LocaleText& locale;
    NotificationArea& notifications;
    PeerPrograms& peers;
    ProfileFiles& profiles;
    Prompts& prompts;
    Registry& registry;
    Shell& shell;
    SystemInformation& system;
};

} // namespace quarn

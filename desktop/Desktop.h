#pragma once

// Everything the program asks of the system it runs on, one interface for each concern. win32/ holds the
// real ones, tests/support_code the twins in memory. Whoever makes a Desktop keeps its parts alive.

#include "desktop/Clock.h"
#include "desktop/EventPump.h"
#include "desktop/Files.h"
#include "desktop/HostNames.h"
#include "desktop/LocaleText.h"
#include "desktop/PeerPrograms.h"
#include "desktop/ProfileFiles.h"
#include "desktop/Prompts.h"
#include "desktop/Shell.h"
#include "desktop/SystemInformation.h"

namespace quarn {

struct Desktop {
    Clock& clock;
    EventPump& events;
    Files& files;
    HostNames& hosts;
    LocaleText& locale;
    PeerPrograms& peers;
    ProfileFiles& profiles;
    Prompts& prompts;
    Shell& shell;
    SystemInformation& system;
};

} // namespace quarn

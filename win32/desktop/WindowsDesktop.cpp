#include "win32/desktop/WindowsDesktop.h"

namespace quarn {

WindowsDesktop::WindowsDesktop()
    : peers_(owner_), prompts_(owner_), shell_(owner_), interfaces_{clock_,         events_,   files_,
                                                                    help_,          hosts_,    locale_,
                                                                    notifications_, peers_,    profiles_,
                                                                    prompts_,       registry_, shell_,
                                                                    system_} {}

} // namespace quarn

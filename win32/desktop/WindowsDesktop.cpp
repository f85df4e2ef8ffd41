#include "win32/desktop/WindowsDesktop.h"

namespace quarn {

WindowsDesktop::WindowsDesktop()
    : peers_(owner_), prompts_(owner_), shell_(owner_), interfaces_{clock_,  events_, files_,    hosts_,
                                                                    locale_, peers_,  profiles_, prompts_,
                                                                    shell_,  system_} {}

} // namespace quarn

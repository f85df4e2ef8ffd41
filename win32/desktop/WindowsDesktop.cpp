#include "win32/desktop/WindowsDesktop.h"

namespace quarn {

WindowsDesktop::WindowsDesktop()
    : peers_(owner_),
      prompts_(owner_),
      shell_(owner_),
      interfaces_{.clock = clock_,
                  .events = events_,
                  .files = files_,
                  .help = help_,
                  .hosts = hosts_,
                  .locale = locale_,
                  .notifications = notifications_,
                  .peers = peers_,
                  .profiles = profiles_,
                  .prompts = prompts_,
                  .registry = registry_,
                  .shell = shell_,
                  .system = system_} {}

} // namespace quarn

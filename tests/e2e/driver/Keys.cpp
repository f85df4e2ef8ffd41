#include "tests/e2e/driver/Keys.h"

#include "tests/e2e/driver/Command.h"
#include "tests/e2e/driver/Words.h"

#include <map>

namespace quarn::uidrive {

WORD VirtualKey(const std::string& name) {
    static const std::map<std::string, WORD> Named = {
        {"up", VK_UP},         {"down", VK_DOWN},     {"left", VK_LEFT},    {"right", VK_RIGHT},
        {"home", VK_HOME},     {"end", VK_END},       {"pageup", VK_PRIOR}, {"pagedown", VK_NEXT},
        {"enter", VK_RETURN},  {"escape", VK_ESCAPE}, {"tab", VK_TAB},      {"space", VK_SPACE},
        {"delete", VK_DELETE}, {"f1", VK_F1},         {"f2", VK_F2},        {"f5", VK_F5},
        {"apps", VK_APPS},     {"alt", VK_MENU},      {"shift", VK_SHIFT},  {"ctrl", VK_CONTROL},
    };
    const auto found = Named.find(Caption(name));
    if (found != Named.end())
        return found->second;
    if (name.size() == 1)
        return static_cast<WORD>(LOBYTE(VkKeyScanA(name[0])));
    throw Failure("there is no key \"" + name + "\"");
}

} // namespace quarn::uidrive

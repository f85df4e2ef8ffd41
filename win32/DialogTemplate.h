#pragma once

#include <vector>

namespace quarn {

// The dialog template of this name from the resources, with the font that the user has chosen for messages:
// the main window's. The dialog's size and all places in it follow that font. Empty where there is no such
// template; it has to be one of the extended form, with a font.
std::vector<unsigned char> DialogTemplate(const char* name);

} // namespace quarn

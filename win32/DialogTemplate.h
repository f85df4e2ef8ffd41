#pragma once

#include <vector>

namespace quarn {

// The dialog template of this name from the resources, with the font that the user has chosen for messages,
// which is also the main window's. The dialog's size and all its positions are relative to that font. Empty
// if there is no such template; it must have the extended form and a font.
std::vector<unsigned char> DialogTemplate(const char* name);

} // namespace quarn

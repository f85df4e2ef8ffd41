#pragma once

// A field for one line of text, which the window can hide.

#include <string>

namespace quarn {

struct TextBox {
    std::string text;
    std::string name; // for assistive technology
    std::string cue;  // shown while the field is empty
    bool visible = true;
};

} // namespace quarn

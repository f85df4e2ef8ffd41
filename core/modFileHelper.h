#pragma once

#include "desktop/Files.h"
#include "desktop/LocaleText.h"

#include <string>
#include <string_view>

namespace quarn {

// With "?" or "*" in the path: whether at least one file matches. Otherwise whether a file, not a folder, of
// exactly this path exists.
bool FileExists(const Files& files, const std::string& path);

// Whether the last character is a backslash, and not one of two bytes whose second has its code.
bool EndsInBackslash(const LocaleText& locale, std::string_view path);

// Appends the backslash that a folder's path lacks; an empty path gets one too.
std::string WithTrailingBackslash(const LocaleText& locale, std::string folder);

} // namespace quarn

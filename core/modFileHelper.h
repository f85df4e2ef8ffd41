#pragma once

#include "desktop/Files.h"
#include "desktop/LocaleText.h"

#include <string>
#include <string_view>

namespace quarn {

// With "?" or "*" in the path: whether at least one file matches. Otherwise whether a file, not a folder, of
// exactly this path exists.
bool FileExists(const Files& files, const std::string& path);

// Whether the last character is a backslash, and not a two-byte character whose second byte has the same
// code.
bool EndsInBackslash(const LocaleText& locale, std::string_view path);

// Appends a backslash to a folder's path if it has none; to an empty path, too.
std::string WithTrailingBackslash(const LocaleText& locale, std::string folder);

} // namespace quarn

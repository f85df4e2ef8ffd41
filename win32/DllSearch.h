#pragma once

namespace quarn {

// From here on libraries that are loaded by name come from the system's folder alone, never from the
// program's folder or the current one, where a download may have left anything. To be called before all else.
// Systems too old to know the call go on as they were.
void RestrictDllSearch() noexcept;

} // namespace quarn

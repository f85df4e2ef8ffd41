#include "win32/Resources.h"

namespace quarn {

std::string_view ResourceBytes(const char* type, const char* name) noexcept {
    const HRSRC found = FindResourceA(nullptr, name, type);
    const HGLOBAL loaded = found != nullptr ? LoadResource(nullptr, found) : nullptr;
    const void* const bytes = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (bytes == nullptr)
        return {};
    return {static_cast<const char*>(bytes), SizeofResource(nullptr, found)};
}

IconHandle LoadIconOfSize(const char* name, int size) noexcept {
    return IconHandle(static_cast<HICON>(
        LoadImageA(GetModuleHandleA(nullptr), name, IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

} // namespace quarn

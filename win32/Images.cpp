#include "win32/Images.h"

#include "win32/Pixels.h"
#include "win32/SystemError.h"

#include <utility>
#include <vector>

namespace quarn {

namespace {

constexpr char FlagsResource[] = "flags";

// The codes of the flags, in the order of their strip, each ended by a line feed.
std::string_view FlagCodes() {
    const HRSRC found = FindResourceA(nullptr, FlagsResource, MAKEINTRESOURCEA(10)); // RT_RCDATA, in ANSI
    const HGLOBAL loaded = found != nullptr ? LoadResource(nullptr, found) : nullptr;
    const void* const text = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (text == nullptr)
        return {};
    return {static_cast<const char*>(text), SizeofResource(nullptr, found)};
}

} // namespace

IconHandle LoadIconOfSize(const char* key, int size) noexcept {
    return IconHandle(static_cast<HICON>(
        LoadImageA(GetModuleHandleA(nullptr), key, IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

Images::Images(int size, std::initializer_list<const char*> keys, Look look)
    : size_(size),
      list_(ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, static_cast<int>(keys.size()), 16)) {
    if (list_ == nullptr)
        ThrowLastError();
    for (const char* key : keys) {
        const IconHandle icon = LoadIconOfSize(key, size);
        if (icon && look == Look::Available)
            indexes_[key] = ImageList_ReplaceIcon(list_, -1, icon.Get());
        else if (icon)
            Add(key, Pixels::OfIcon(icon.Get(), size).Disabled());
    }
}

Images::Images(Images&& other) noexcept
    : size_(other.size_), list_(std::exchange(other.list_, nullptr)), indexes_(std::move(other.indexes_)) {}

Images& Images::operator=(Images&& other) noexcept {
    std::swap(size_, other.size_);
    std::swap(list_, other.list_);
    std::swap(indexes_, other.indexes_);
    return *this;
}

Images::~Images() {
    if (list_ != nullptr)
        ImageList_Destroy(list_);
}

void Images::Add(const std::string& key, const Pixels& picture) {
    const IconHandle icon(picture.MakeIcon());
    indexes_[key] = ImageList_ReplaceIcon(list_, -1, icon.Get());
}

void Images::AddFlags() {
    const auto strip = static_cast<HBITMAP>(
        LoadImageA(GetModuleHandleA(nullptr), FlagsResource, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    if (strip == nullptr)
        return;
    const std::vector<Pixels> flags = Pixels::OfStrip(strip);
    DeleteObject(strip);

    std::string_view codes = FlagCodes();
    for (const Pixels& flag : flags) {
        const std::size_t end = codes.find('\n');
        if (end == std::string_view::npos)
            return;
        Add(std::string(codes.substr(0, end)), flag.Resized(size_));
        codes.remove_prefix(end + 1);
    }
}

int Images::IndexOf(std::string_view key) const noexcept {
    const auto found = indexes_.find(key);
    return found == indexes_.end() ? I_IMAGENONE : found->second;
}

} // namespace quarn

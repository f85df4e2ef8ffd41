#include "win32/Images.h"

#include "win32/Pixels.h"
#include "win32/SystemError.h"

#include <utility>
#include <vector>

namespace quarn {

namespace {

constexpr char FlagsResource[] = "flags";

struct BitmapKind {
    using Type = HBITMAP;
    static Type Empty() noexcept { return nullptr; }
    static void Free(Type handle) noexcept { DeleteObject(handle); }
};
using BitmapHandle = UniqueHandle<BitmapKind>;

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

// All at once: one by one, hundreds of pictures take the time of a start-up.
void Images::AddFlags() {
    const BitmapHandle original(static_cast<HBITMAP>(
        LoadImageA(GetModuleHandleA(nullptr), FlagsResource, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    std::vector<Pixels> flags = Pixels::OfStrip(original.Get());
    if (flags.empty())
        return;
    for (Pixels& flag : flags)
        flag = flag.Resized(size_);
    const BitmapHandle strip(Pixels::MakeStrip(flags));
    int index = ImageList_Add(list_, strip.Get(), nullptr);
    if (index < 0)
        ThrowLastError();

    std::string_view codes = FlagCodes();
    for (std::size_t end = codes.find('\n'); end != std::string_view::npos; end = codes.find('\n')) {
        indexes_[std::string(codes.substr(0, end))] = index++;
        codes.remove_prefix(end + 1);
    }
}

std::vector<std::string> Images::Keys() const {
    std::vector<std::string> keys;
    for (const auto& [key, index] : indexes_)
        keys.push_back(key);
    return keys;
}

int Images::IndexOf(std::string_view key) const noexcept {
    const auto found = indexes_.find(key);
    return found == indexes_.end() ? I_IMAGENONE : found->second;
}

} // namespace quarn

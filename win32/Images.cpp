#include "win32/Images.h"

#include "win32/Pixels.h"
#include "win32/Resources.h"
#include "win32/SystemError.h"

#include <optional>
#include <vector>

namespace quarn {

namespace {

constexpr char FlagsResource[] = "flags";

} // namespace

Images::Images(int size, const std::vector<std::string>& keys, Look look)
    : size_(size),
      list_(ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, static_cast<int>(keys.size()), 16)) {
    if (!list_)
        ThrowLastError();
    std::vector<Pixels> pictures;
    for (const std::string& key : keys)
        if (const std::optional<Pixels> picture = Pixels::OfIcon(key.c_str(), size)) {
            indexes_[key] = static_cast<int>(pictures.size());
            pictures.push_back(look == Look::Available ? *picture : picture->Disabled());
        }
    if (!pictures.empty())
        Add(pictures);
}

Images Images::Spacer(int height) {
    Images spacer;
    spacer.list_.Reset(ImageList_Create(1, height, ILC_COLOR32, 0, 1));
    return spacer;
}

// All in one call: one by one, hundreds of images would take as long as the rest of the start.
int Images::Add(const std::vector<Pixels>& pictures) {
    const BitmapHandle strip(Pixels::MakeStrip(pictures));
    const int index = ImageList_Add(list_.Get(), strip.Get(), nullptr);
    if (index < 0)
        ThrowLastError();
    return index;
}

// Without a mask, an image whose pixels all have the alpha 0 counts as one without alpha, and is black.
void Images::AddTransparent(const std::string& key) {
    const BitmapHandle colors(Pixels::MakeStrip({Pixels(size_)}));
    const std::vector<BYTE> bits(static_cast<std::size_t>(size_) * static_cast<std::size_t>(size_), 0xFF);
    const BitmapHandle mask(CreateBitmap(size_, size_, 1, 1, bits.data()));
    const int index = ImageList_Add(list_.Get(), colors.Get(), mask.Get());
    if (index < 0)
        ThrowLastError();
    indexes_[key] = index;
}

void Images::AddFlags() {
    const BitmapHandle original(static_cast<HBITMAP>(
        LoadImageA(GetModuleHandleA(nullptr), FlagsResource, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    std::vector<Pixels> flags = Pixels::OfStrip(original.Get());
    if (flags.empty())
        return;
    for (Pixels& flag : flags)
        flag = flag.Resized(size_);
    int index = Add(flags);

    // The codes of the flags, in the order of their strip, each followed by a line feed.
    std::string_view codes = ResourceBytes(DataType, FlagsResource);
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

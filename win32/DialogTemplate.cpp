// Source of the format: "DLGTEMPLATEEX structure" in the documentation of the Windows API.

#include "win32/DialogTemplate.h"

#include "win32/Dpi.h"
#include "win32/Fonts.h"
#include "win32/Resources.h"

#include <cstdint>
#include <cstring>
#include <cwchar>
#include <string_view>

namespace quarn {

namespace {

// Version, signature, help number, styles, number of controls and position.
constexpr std::size_t FixedPart = 26;

constexpr std::uint16_t NumberFollows = 0xFFFF;
constexpr std::size_t ItemAlignment = 4;
constexpr int PointsPerInch = 72;

std::uint16_t WordAt(std::string_view bytes, std::size_t offset) {
    std::uint16_t word = 0;
    std::memcpy(&word, bytes.substr(offset, sizeof word).data(), sizeof word);
    return word;
}

// The end of a wide text, after its NUL.
std::size_t EndOfText(std::string_view bytes, std::size_t offset) {
    while (WordAt(bytes, offset) != 0)
        offset += sizeof(wchar_t);
    return offset + sizeof(wchar_t);
}

// The same for a menu or class, which is a text or a number.
std::size_t EndOfName(std::string_view bytes, std::size_t offset) {
    return WordAt(bytes, offset) == NumberFollows ? offset + 2 * sizeof(std::uint16_t)
                                                  : EndOfText(bytes, offset);
}

// The template's font: size in points, weight, italic, character set, name.
std::vector<unsigned char> FontPart() {
    const LOGFONTW font = MessageFontDescription();
    std::vector<unsigned char> part;
    const auto append = [&](const void* from, std::size_t size) {
        const auto* const bytes = static_cast<const unsigned char*>(from);
        part.insert(part.end(), bytes, bytes + size);
    };
    const auto points =
        static_cast<std::uint16_t>(MulDiv(std::abs(font.lfHeight), PointsPerInch, Dpi::OfSystem().Value()));
    const auto weight = static_cast<std::uint16_t>(font.lfWeight);
    append(&points, sizeof points);
    append(&weight, sizeof weight);
    append(&font.lfItalic, sizeof font.lfItalic);
    append(&font.lfCharSet, sizeof font.lfCharSet);
    append(font.lfFaceName, (std::wcslen(font.lfFaceName) + 1) * sizeof(wchar_t));
    return part;
}

std::size_t Aligned(std::size_t offset) {
    return (offset + ItemAlignment - 1) / ItemAlignment * ItemAlignment;
}

} // namespace

std::vector<unsigned char> DialogTemplate(const char* name) {
    const std::string_view bytes = ResourceBytes(DialogType, name);
    if (bytes.empty())
        return {};
    const std::size_t title = EndOfName(bytes, EndOfName(bytes, FixedPart));
    const std::size_t font = EndOfText(bytes, title);
    const std::size_t typeface = font + 2 * sizeof(std::uint16_t) + 2;
    const std::size_t items = Aligned(EndOfText(bytes, typeface));

    std::vector<unsigned char> changed(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(font));
    const std::vector<unsigned char> newFont = FontPart();
    changed.insert(changed.end(), newFont.begin(), newFont.end());
    changed.resize(Aligned(changed.size()));
    changed.insert(changed.end(), bytes.begin() + static_cast<std::ptrdiff_t>(items), bytes.end());
    return changed;
}

} // namespace quarn

#include "win32/AnsiText.h"

#include "base/RunTimeError.h"
#include "win32/WindowsHeaders.h"

namespace quarn {

namespace {

std::string Encoded(std::wstring_view text, UINT codePage) {
    const auto encode = [&](char* bytes, int size) {
        return WideCharToMultiByte(codePage, 0, text.data(), static_cast<int>(text.size()), bytes, size,
                                   nullptr, nullptr);
    };
    std::string encoded(static_cast<std::size_t>(encode(nullptr, 0)), '\0');
    encode(encoded.data(), static_cast<int>(encoded.size()));
    return encoded;
}

} // namespace

std::wstring Widened(std::string_view text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0'); // a byte is never more than one character
    wide.resize(MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length));
    return wide;
}

std::string Narrowed(std::wstring_view text) {
    return Encoded(text, CP_ACP);
}

std::string Utf8Of(std::string_view text) {
    return Encoded(Widened(text), CP_UTF8);
}

std::optional<std::string> NarrowedExactly(std::wstring_view text) {
    std::string narrow = Narrowed(text);
    if (Widened(narrow) != text)
        return std::nullopt;
    return narrow;
}

std::string ExpressiblePath(const std::wstring& path) {
    if (const std::optional<std::string> narrow = NarrowedExactly(path))
        return *narrow;
    std::wstring shortPath(GetShortPathNameW(path.c_str(), nullptr, 0), L'\0');
    shortPath.resize(GetShortPathNameW(path.c_str(), shortPath.data(), static_cast<DWORD>(shortPath.size())));
    const std::optional<std::string> narrow = NarrowedExactly(shortPath);
    if (shortPath.empty() || !narrow)
        throw RunTimeError(ErrorNumber::BadFileName);
    return *narrow;
}

} // namespace quarn

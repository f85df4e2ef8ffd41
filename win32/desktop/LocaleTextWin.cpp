#include "win32/desktop/LocaleTextWin.h"

#include "base/RunTimeError.h"
#include "win32/AnsiText.h"
#include "win32/Handles.h"
#include "win32/SystemError.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

namespace quarn {

namespace {

constexpr std::int64_t SecondsPerDay = 86400;

void Require(HRESULT result) {
    if (SUCCEEDED(result))
        return;
    if (result == DISP_E_OVERFLOW)
        throw RunTimeError(ErrorNumber::Overflow);
    if (result == E_OUTOFMEMORY)
        throw RunTimeError(ErrorNumber::OutOfMemory);
    throw RunTimeError(ErrorNumber::TypeMismatch);
}

// An automation date counts days; its fraction is the time of day, counted forwards on the days before the
// zero date, too: -1.25 is six o'clock on 1899-12-29.
double ToAutomation(DateTime date) noexcept {
    std::int64_t days = date.seconds / SecondsPerDay;
    std::int64_t time = date.seconds % SecondsPerDay;
    if (time < 0) {
        --days;
        time += SecondsPerDay;
    }
    const double fraction = static_cast<double>(time) / static_cast<double>(SecondsPerDay);
    return static_cast<double>(days) + (days < 0 ? -fraction : fraction);
}

std::wstring TextOfDate(double date, DWORD flags) {
    AutomationText text;
    Require(VarBstrFromDate(date, LOCALE_USER_DEFAULT, flags, text.Receive()));
    return {text.Get(), SysStringLen(text.Get())};
}

// For a locale with texts that are not in the code page: its AM/PM markers would become question marks, which
// could not be read back. Numbers in the order of ISO 8601 can.
std::string PlainTextOfDate(double date, DateTime exact) {
    const CalendarTime c = exact.Calendar();
    std::array<char, 80> iso{};
    std::snprintf(iso.data(), iso.size(), "%04d-%02d-%02d", c.year, c.month, c.day);
    std::array<char, 80> time{};
    std::snprintf(time.data(), time.size(), "%02d:%02d:%02d", c.hour, c.minute, c.second);
    const bool onZeroDay = std::trunc(date) == 0;
    const bool midnight = date == std::trunc(date);
    if (onZeroDay)
        return time.data();
    const std::string day =
        NarrowedExactly(TextOfDate(std::trunc(date), VAR_DATEVALUEONLY)).value_or(iso.data());
    return midnight ? day : day + " " + time.data();
}

DateTime FromAutomation(double date) noexcept {
    const double days = std::trunc(date);
    const double time = std::abs(date - days) * static_cast<double>(SecondsPerDay);
    return {std::llround(days) * SecondsPerDay + std::llround(time)};
}

} // namespace

bool LocaleTextWin::IsNumeric(const std::string& text) const {
    double ignored;
    return SUCCEEDED(VarR8FromStr(Widened(text).data(), LOCALE_USER_DEFAULT, 0, &ignored));
}

double LocaleTextWin::ToDouble(const std::string& text) const {
    double number = 0;
    Require(VarR8FromStr(Widened(text).data(), LOCALE_USER_DEFAULT, 0, &number));
    return number;
}

std::int32_t LocaleTextWin::ToLong(const std::string& text) const {
    LONG number = 0;
    Require(VarI4FromStr(Widened(text).data(), LOCALE_USER_DEFAULT, 0, &number));
    return number;
}

std::string LocaleTextWin::FromDate(DateTime date) const {
    const double automation = ToAutomation(date);
    const std::optional<std::string> text = NarrowedExactly(TextOfDate(automation, 0));
    return text ? *text : PlainTextOfDate(automation, date);
}

DateTime LocaleTextWin::ToDate(const std::string& text) const {
    DATE date = 0;
    Require(VarDateFromStr(Widened(text).data(), LOCALE_USER_DEFAULT, 0, &date));
    return FromAutomation(date);
}

// The text is in the system's code page, which may differ from that of the user's locale.
std::string LocaleTextWin::SortKey(const std::string& text) const {
    const std::wstring wide = Widened(text);
    if (wide.empty())
        return {}; // the call rejects an empty text; an empty key sorts before all others
    constexpr DWORD Flags = LCMAP_SORTKEY | NORM_IGNORECASE;
    const int length = static_cast<int>(wide.size());
    const auto map = [&](char* key, int size) { // for a sort key, the size is in bytes
        return LCMapStringW(LOCALE_USER_DEFAULT, Flags, wide.data(), length, reinterpret_cast<wchar_t*>(key),
                            size);
    };
    alignas(wchar_t) std::array<char, 1024> buffer;
    const int made = map(buffer.data(), static_cast<int>(buffer.size()));
    if (made != 0)
        return {buffer.data(), static_cast<std::size_t>(made)};
    const int needed = map(nullptr, 0);
    std::string key(static_cast<std::size_t>(needed), '\0');
    if (needed == 0 || map(key.data(), needed) == 0)
        ThrowLastError();
    return key;
}

std::string LocaleTextWin::ToUtf8(const std::string& text) const {
    return Utf8Of(text);
}

// In UTF-8, which a user can choose as the system's code page, every byte above 127 is a part of a character.
char LocaleTextWin::LowerCase(char character) const {
    const bool isAscii = static_cast<unsigned char>(character) < 0x80;
    if (isAscii || (GetACP() != CP_UTF8 && !IsLeadByte(character)))
        CharLowerBuffA(&character, 1);
    return character;
}

bool LocaleTextWin::IsLeadByte(char byte) const {
    return IsDBCSLeadByte(static_cast<BYTE>(byte)) != FALSE;
}

} // namespace quarn

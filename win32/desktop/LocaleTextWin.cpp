#include "win32/desktop/LocaleTextWin.h"

#include "base/RunTimeError.h"
#include "win32/AnsiText.h"
#include "win32/Handles.h"
#include "win32/SystemError.h"

#include <array>
#include <cmath>

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

// An automation date counts days; its fraction is the time of day, counted forwards also on the days before
// the zero date: -1.25 is six o'clock on 1899-12-29.
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
    AutomationText text;
    Require(VarBstrFromDate(ToAutomation(date), LOCALE_USER_DEFAULT, 0, text.Receive()));
    return Narrowed({text.Get(), SysStringLen(text.Get())});
}

DateTime LocaleTextWin::ToDate(const std::string& text) const {
    DATE date = 0;
    Require(VarDateFromStr(Widened(text).data(), LOCALE_USER_DEFAULT, 0, &date));
    return FromAutomation(date);
}

std::string LocaleTextWin::SortKey(const std::string& text) const {
    if (text.empty())
        return {}; // the call takes no empty text; an empty key sorts before all others
    constexpr DWORD Flags = LCMAP_SORTKEY | NORM_IGNORECASE;
    const int length = static_cast<int>(text.size());
    std::array<char, 1024> buffer;
    const auto room = static_cast<int>(buffer.size());
    const int made = LCMapStringA(LOCALE_USER_DEFAULT, Flags, text.data(), length, buffer.data(), room);
    if (made != 0)
        return {buffer.data(), static_cast<std::size_t>(made)};
    const int needed = LCMapStringA(LOCALE_USER_DEFAULT, Flags, text.data(), length, nullptr, 0);
    std::string key(needed, '\0');
    if (needed == 0 || LCMapStringA(LOCALE_USER_DEFAULT, Flags, text.data(), length, key.data(), needed) == 0)
        ThrowLastError();
    return key;
}

} // namespace quarn

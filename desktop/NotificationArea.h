#pragma once

// The taskbar's notification area, which shows the icon of a program that has no window open.

#include "desktop/SystemReferences.h"

#include <array>
#include <cstdint>
#include <functional>

namespace quarn {

// What the system is told about the icon; numbers and sizes are the platform's own.
struct NotifyIconRecord {
    static constexpr std::uint32_t FirstVersionSize = 88;
    static constexpr std::size_t TipSize = 64;

    std::uint32_t size = FirstVersionSize; // names the record's version; the platform's side knows its bytes
    WindowReference owner = 0;             // receives the callback message
    std::uint32_t identifier = 0;
    std::uint32_t flags = 0;
    std::uint32_t callbackMessage = 0;
    IconReference icon = 0;
    std::array<char, TipSize> tip{}; // ends in a NUL
};

enum class NotifyCommand : std::uint32_t { Add = 0, Modify = 1, Delete = 2 };

class NotificationArea {
  public:
    virtual ~NotificationArea() = default;

    // False when the system did not do it: there is no notification area, or no such icon in it.
    virtual bool Notify(NotifyCommand command, const NotifyIconRecord& record) = 0;

    // Makes an invisible picture box on the parent window; it goes with its parent. Its handler gets each
    // callback message as the horizontal position of a mouse move, in twips: the number of the message that
    // is meant, taken for pixels.
    using MouseMove = std::function<void(double X)>;
    virtual WindowReference AddPictureBox(WindowReference parent, MouseMove handler) = 0;

    // Of the screen; not a whole number at every resolution.
    virtual double TwipsPerPixelX() const = 0;
};

} // namespace quarn

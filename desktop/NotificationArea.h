#pragma once

// The taskbar's notification area, which shows the icon of a program without an open window.

#include "desktop/SystemReferences.h"

#include <array>
#include <cstdint>
#include <functional>

namespace quarn {

// The icon's data for the system; numbers and sizes are the platform's.
struct NotifyIconRecord {
    static constexpr std::uint32_t FirstVersionSize = 88;
    static constexpr std::size_t TipSize = 64;

    std::uint32_t size =
        FirstVersionSize;      // identifies the record's version, whose size the platform's side knows
    WindowReference owner = 0; // receives the callback message
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

    // False if the system refused: there is no notification area, or no such icon in it.
    virtual bool Notify(NotifyCommand command, const NotifyIconRecord& record) = 0;

    // Creates an invisible picture box on the parent window, which is destroyed with its parent. Its handler
    // receives each callback message as the horizontal position of a mouse move, in twips: the message
    // number, taken as pixels.
    using MouseMove = std::function<void(double X)>;
    virtual WindowReference AddPictureBox(WindowReference parent, MouseMove handler) = 0;

    // Of the screen; not a whole number at every resolution.
    virtual double TwipsPerPixelX() const = 0;
};

} // namespace quarn

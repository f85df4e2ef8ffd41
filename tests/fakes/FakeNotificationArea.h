#pragma once

// A notification area that knows the icons it holds and refuses what the system would refuse.

#include "desktop/NotificationArea.h"

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quarn {

class FakeNotificationArea : public NotificationArea {
  public:
    static constexpr WindowReference PictureBox = 0x900;

    struct Call {
        NotifyCommand command;
        NotifyIconRecord record;
        bool done;
        std::string Tip() const { return record.tip.data(); }
    };
    std::vector<Call> calls;

    bool absent = false; // there is no notification area: every call fails
    double twipsPerPixelX = 15;

    WindowReference pictureBoxParent = 0;
    MouseMove pictureBoxMouseMove;

    // Runs when an icon has been taken away.
    std::function<void()> whenDeleted;

    using Icon = std::pair<WindowReference, std::uint32_t>;
    std::set<Icon> icons;

    bool Notify(NotifyCommand command, const NotifyIconRecord& record) override {
        const bool done = !absent && Apply(command, {record.owner, record.identifier});
        calls.push_back({command, record, done});
        if (done && command == NotifyCommand::Delete && whenDeleted)
            whenDeleted();
        return done;
    }
    WindowReference AddPictureBox(WindowReference parent, MouseMove handler) override {
        pictureBoxParent = parent;
        pictureBoxMouseMove = std::move(handler);
        return PictureBox;
    }
    double TwipsPerPixelX() const override { return twipsPerPixelX; }

    // The mouse does this to the icon.
    void Mouse(int message) { pictureBoxMouseMove(message * twipsPerPixelX); }

  private:
    bool Apply(NotifyCommand command, const Icon& icon) {
        if (command == NotifyCommand::Add)
            return icons.insert(icon).second;
        if (command == NotifyCommand::Delete)
            return icons.erase(icon) != 0;
        return icons.contains(icon);
    }
};

} // namespace quarn

#pragma once

#include "base/RunTimeError.h"
#include "desktop/HelpViewer.h"

#include <optional>
#include <string>
#include <vector>

namespace quarn {

class FakeHelpViewer : public HelpViewer {
  public:
    struct Call {
        WindowReference caller = 0;
        std::string file;
        HelpCommand command = HelpCommand::DisplayTopic;
        std::optional<std::string> topic; // nothing: it was null
    };
    std::vector<Call> calls;

    bool windowComes = true;
    std::optional<ErrorNumber> fault;

    bool HtmlHelp(WindowReference caller, const std::string& file, HelpCommand command,
                  const char* topic) override {
        calls.push_back({caller, file, command, topic ? std::optional<std::string>(topic) : std::nullopt});
        if (fault)
            throw RunTimeError(*fault);
        return windowComes;
    }
};

} // namespace quarn

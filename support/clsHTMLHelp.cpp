#include "support/clsHTMLHelp.h"

#include "support/Trap.h"

namespace quarn {

void clsHTMLHelp::ShowTopic(WindowReference lnghWnd, const std::string& TopicURL) {
    Trapped(log_, "clsHTMLHelp", "ShowTopic", OnError::Log, [&] {
        window_ = lnghWnd;
        if (!viewer_.HtmlHelp(window_, FileAndWindow(), HelpCommand::DisplayTopic, TopicURL.c_str()))
            displayFailed_ = true;
    });
}

void clsHTMLHelp::CloseFile() {
    if (displayFailed_)
        viewer_.HtmlHelp(window_, FileAndWindow(), HelpCommand::CloseAll, nullptr);
}

} // namespace quarn

#pragma once

// Message boxes and system dialogs that are recorded instead of shown, with answers set in advance. A
// question without an answer fails the test and counts as cancelled.

#include "desktop/Prompts.h"

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace quarn {

class FakePrompts : public Prompts {
  public:
    enum class Kind { Error, YesNo, Text, SaveFile, Folder };

    struct Prompt {
        Kind kind;
        std::string text; // of a folder dialog: the selected folder; of a file dialog: its filter
        std::string title;
        DefaultButton defaultButton = DefaultButton::Yes; // of a question
    };
    std::vector<Prompt> shown;

    std::deque<bool> yesNoAnswers;
    std::deque<std::string> textAnswers;
    std::deque<std::string> fileAnswers;
    std::deque<std::string> folderAnswers;

    // Called while one is open, as events run.
    std::function<void()> whileOpen;

  private:
    void RunErrorBox(const std::string& text, const std::string& title) override {
        Show({Kind::Error, text, title});
    }
    bool RunYesNoBox(const std::string& text, const std::string& title,
                     DefaultButton defaultButton) override {
        return Ask({Kind::YesNo, text, title, defaultButton}, yesNoAnswers);
    }
    std::string RunTextBox(const std::string& prompt, const std::string& title) override {
        return Ask({Kind::Text, prompt, title}, textAnswers);
    }
    std::string RunSaveFileBox(const std::string& title, const std::string& filter) override {
        return Ask({Kind::SaveFile, filter, title}, fileAnswers);
    }
    std::string RunFolderBox(const std::string& title, const std::string& preselected) override {
        return Ask({Kind::Folder, preselected, title}, folderAnswers);
    }

    void Show(Prompt prompt) {
        shown.push_back(std::move(prompt));
        if (whileOpen)
            whileOpen();
    }

    template<class Answer>
    Answer Ask(Prompt prompt, std::deque<Answer>& answers) {
        const std::string question = prompt.title + ": " + prompt.text;
        Show(std::move(prompt));
        if (answers.empty()) {
            ADD_FAILURE() << "No answer was given for the question \"" << question << '"';
            return {};
        }
        Answer answer = std::move(answers.front());
        answers.pop_front();
        return answer;
    }
};

} // namespace quarn

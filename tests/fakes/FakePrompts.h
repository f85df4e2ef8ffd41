#pragma once

// Boxes that are recorded instead of shown, with answers given beforehand. A question without an answer
// fails the test and counts as cancelled.

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

    struct Box {
        Kind kind;
        std::string text; // what a folder box has selected beforehand; a file box's filter
        std::string title;
    };
    std::vector<Box> shown;

    std::deque<bool> yesNoAnswers;
    std::deque<std::string> textAnswers;
    std::deque<std::string> fileAnswers;
    std::deque<std::string> folderAnswers;

    // Runs while a box is open, as events do.
    std::function<void()> whileOpen;

  private:
    void RunErrorBox(const std::string& text, const std::string& title) override {
        Show({Kind::Error, text, title});
    }
    bool RunYesNoBox(const std::string& text, const std::string& title) override {
        return Ask({Kind::YesNo, text, title}, yesNoAnswers);
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

    void Show(Box box) {
        shown.push_back(std::move(box));
        if (whileOpen)
            whileOpen();
    }

    template<class Answer>
    Answer Ask(Box box, std::deque<Answer>& answers) {
        const std::string question = box.title + ": " + box.text;
        Show(std::move(box));
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

#include "win32/dialogs/InputBox.h"

#include "win32/Dialog.h"
#include "win32/resources/ids.h"

namespace quarn {

namespace {

class InputBox final : public Dialog {
  public:
    InputBox(const std::string& prompt, const std::string& title)
        : Dialog("InputBox"), prompt_(prompt), title_(title) {}

    const std::string& Text() const noexcept { return text_; }

  private:
    void OnInit() override {
        SetWindowTextA(Handle(), title_.c_str());
        SetItemText(ID_lblInputPrompt, prompt_);
    }
    void OnOK() override {
        text_ = ItemText(ID_txtInput);
        Close(IDOK);
    }

    const std::string& prompt_;
    const std::string& title_;
    std::string text_;
};

} // namespace

std::string AskInInputBox(HWND owner, bool topMost, const std::string& prompt, const std::string& title) {
    InputBox box(prompt, title);
    box.ShowModal(owner, topMost);
    return box.Text();
}

} // namespace quarn

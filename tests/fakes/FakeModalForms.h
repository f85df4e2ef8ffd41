#pragma once

// Dialogs without a window. Each is noted; what the user does in one is a function that a test sets and that
// gets the loaded form. A dialog that nobody closed by then is closed by its close box.

#include "launch/frmGamSetup.h"
#include "launch/frmOptions.h"
#include "launch/frmSetPassword.h"
#include "query/frmAddServer.h"
#include "support/frmAbout.h"
#include "views/ModalForms.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quarn {

class FakeModalForms : public ModalForms {
  public:
    struct Shown {
        std::string form;
        bool topMost = false;
        bool operator==(const Shown&) const = default;
    };
    std::vector<Shown> shown;
    std::vector<std::string> open; // outermost first

    std::function<void(frmAbout&)> inAbout;
    std::function<void(frmAddServer&)> inAddServer;
    std::function<void(frmGamSetup&)> inGamSetup;
    std::function<void(frmOptions&)> inOptions;
    std::function<void(frmSetPassword&)> inSetPassword;

    void ShowModal(frmAbout& form, bool topMost) override {
        Show("frmAbout", topMost, [&] {
            form.Form_Load();
            Use(inAbout, form, [&] { form.cmdOK_Click(); });
        });
    }
    void ShowModal(frmAddServer& form, bool topMost) override {
        Show("frmAddServer", topMost, [&] { Use(inAddServer, form, [&] { form.cmdCancel_Click(); }); });
    }
    void ShowModal(frmGamSetup& form, bool topMost) override {
        Show("frmGamSetup", topMost, [&] {
            form.Form_Load();
            Use(inGamSetup, form, [&] { form.cmdCancel_Click(); });
            form.Form_Unload();
        });
    }
    void ShowModal(frmOptions& form, bool topMost) override {
        Show("frmOptions", topMost, [&] {
            form.Form_Load();
            Use(inOptions, form, [&] { form.cmdCancel_Click(); });
            form.Form_Unload();
        });
    }
    void ShowModal(frmSetPassword& form, bool topMost) override {
        Show("frmSetPassword", topMost, [&] {
            form.Form_Load();
            Use(inSetPassword, form, [&] { form.cmdCancel_Click(); });
        });
    }
    void Unload() override { closed_ = true; }

  private:
    template<class Session>
    void Show(const std::string& form, bool topMost, Session&& session) {
        shown.push_back({form, topMost});
        open.push_back(form);
        const bool outerClosed = std::exchange(closed_, false);
        session();
        closed_ = outerClosed;
        open.pop_back();
    }
    template<class Form, class CloseBox>
    void Use(const std::function<void(Form&)>& user, Form& form, CloseBox&& closeBox) {
        if (user)
            user(form);
        if (!closed_)
            closeBox();
    }

    bool closed_ = false;
};

} // namespace quarn

#pragma once
// The first welcome page: a picture and a greeting that go on by themselves after
// WelcomeTimeout seconds. Opened on its own (test flag) it shows a close button instead.
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlWelcome : public clsControlPage {
public:
    clsControlWelcome() : clsControlPage("frmWelcome") {}
    /// The close box of this page only unloads it: there is nothing to cancel yet.
    void FormQueryUnload() override { FormQueryUnload2(); }

protected:
    void OnLoad() override;
    void OnActivate() override;
    void OnClick(const std::string& control, int index) override;
};

} // namespace tovel

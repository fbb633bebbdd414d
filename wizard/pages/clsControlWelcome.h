#pragma once
// The first welcome page: a picture and a greeting that go on by themselves after
// WelcomeTimeout seconds. It is on view at once and its close box goes on at once. Opened
// on its own (test flag) it shows a close button instead.
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlWelcome : public clsControlPage {
public:
    /// The longest the page waits: a larger WelcomeTimeout (a typing error on the disc)
    /// must not hold the setup for hours.
    static constexpr int kMaxTimeoutSeconds = 3600;

    clsControlWelcome() : clsControlPage("frmWelcome") {}
    /// The close box of this page only unloads it: there is nothing to cancel yet, and the
    /// wizard goes on as when the wait ends.
    void FormQueryUnload() override { FormQueryUnload2(); }

protected:
    void OnLoad() override;
    void OnActivate() override;
    void OnClick(const std::string& control, int index) override;

private:
    /// WelcomeTimeout, at most kMaxTimeoutSeconds (logged when cut).
    [[nodiscard]] static int Timeout();
};

} // namespace tovel

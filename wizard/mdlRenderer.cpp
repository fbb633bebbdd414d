#include "wizard/clsRenderer.h"

namespace tovel {

namespace {

// Before a renderer is installed nothing can be shown: a form is loaded and activated, so
// its controller runs as it would, and is then left as if its page had been passed.
class clsNoRenderer final : public clsRenderer {
public:
    void ShowModal(clsForm& form) override {
        form.SetShown(true);
        form.RaiseLoad();
        form.RaiseActivate();
        form.SetShown(false);
    }
    void DoEvents() override {}
    void SetHourglass(bool) override {}
    void Refresh(const clsForm&) override {}
};

clsRenderer*& Installed() {
    static clsRenderer* renderer = nullptr;
    return renderer;
}

} // namespace

clsRenderer& Renderer() {
    static clsNoRenderer none;
    return Installed() != nullptr ? *Installed() : none;
}

void SetRenderer(clsRenderer* renderer) { Installed() = renderer; }

} // namespace tovel

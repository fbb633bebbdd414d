#include "wizard/pages/clsControlWelcome2.h"

#include "startup/Globals.h"

namespace tovel {

void clsControlWelcome2::OnLoad() {
    const std::string second = Text("WelcomeLabel2");
    SetText("WelcomeLabel2", "\r\n" + (gPlaceholder ? gPlaceholder->CheckForPlaceholder(second) : second));
}

} // namespace tovel

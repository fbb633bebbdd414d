#include "wizard/pages/clsControlBusSystem.h"

#include "catalogue/CatalogueGlobals.h"
#include "startup/Globals.h"
#include "wizard/clsRenderer.h"

namespace tovel {

namespace {
// The options in the order of the bus systems' numbers.
constexpr const char* kOptions[] = {"Profibus", "Ethernet", "Ethernet2", "KWT", "NoNetwork"};
} // namespace

void clsControlBusSystem::OnLoad() {
    const std::string names[] = {gSetupsIni->Profibus(), gSetupsIni->Ethernet(), gSetupsIni->Ethernet2(), gSetupsIni->KWT(),
                                 gSetupsIni->NoNetwork()};
    for (int i = 0; i < 5; ++i) {
        if (!names[i].empty()) SetText(kOptions[i], names[i]);
    }
    const int chosen = SelectedBusSystem.size() == 1 && SelectedBusSystem[0] >= '0' && SelectedBusSystem[0] <= '4' ? SelectedBusSystem[0] - '0' : 4;
    Form().ChooseOption(kOptions[chosen]);
}

void clsControlBusSystem::OnClick(const std::string& control, int) {
    for (int i = 0; i < 5; ++i) {
        if (control == kOptions[i]) SelectedBusSystem = std::to_string(i);
    }
}

bool clsControlBusSystem::OnContinue() {
    Renderer().DoEvents();
    gCommonSection.ApplyBusSystemSelection();
    return true;
}

} // namespace tovel

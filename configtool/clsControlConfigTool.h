#pragma once
// The configuration tool's main form (frmConfigTool), what /showconfig opens instead of the
// wizard: the disc it works on, and its three parts, each on a form of its own: the page
// tester, the disc check and the settings view. The program ends when it is closed.
#include <string>

#include "configtool/clsToolForm.h"

namespace tovel {

class clsControlConfigTool : public clsToolForm {
public:
    clsControlConfigTool() : clsToolForm("frmConfigTool") {}

protected:
    void OnLoad() override;
    void OnClick(const std::string& control, int index) override;
};

/// Shows the configuration tool and returns when it is closed.
void ShowConfigurationTool();

} // namespace tovel

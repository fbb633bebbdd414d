#pragma once
// The setup-type page: the visible packets of the disc in a list (SetupTypeList), the long
// description of the one under the cursor beside it (DescriptionLabel). Continue makes the
// chosen packet the only selected one, selects the products from it and sets the run flags.
//
// Preset: the first listed packet already selected (by its PreSelect or the registry, or by
// an earlier visit of this page), else the first listed.
// A list box's value is the index of its chosen line (-1: none).
#include <vector>

#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlSetupType : public clsControlPage {
public:
    clsControlSetupType() : clsControlPage("frmSetupType") {}

    /// UserPacketOnly and UpdatePacketsAllowed from the selected packets: "USERDEF" alone (it
    /// is the code of every selected packet, and one is selected) sets the first and lets
    /// UserPackUPAllowed of Setups.ini decide the second; anything else clears the first and
    /// sets the second.
    static void DecideRunFlags();

protected:
    void OnLoad() override;
    void OnClick(const std::string& control, int index) override;
    bool OnContinue() override;

private:
    /// The packet of a list line (1-based in gPackets); 0 for none.
    [[nodiscard]] int PacketOfLine(int line) const;
    void ShowDescription();

    std::vector<int> packets_;   ///< the packet of each list line
};

} // namespace tovel

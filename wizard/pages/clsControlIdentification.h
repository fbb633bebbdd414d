#pragma once
// The identification page: the user's name and company, handed to every product's setup.
// Continue is there only while both are filled in.
#include "wizard/pages/clsControlPage.h"

namespace tovel {

class clsControlIdentification : public clsControlPage {
public:
    clsControlIdentification() : clsControlPage("frmIdentification") {}

    /// A value of Windows' registration: "RegisteredOwner" or "RegisteredOrganization" under
    /// the Windows key of the local machine, else under the Windows NT key.
    [[nodiscard]] static std::string Registered(const std::string& value);

protected:
    void OnLoad() override;
    void OnActivate() override;
    bool OnContinue() override;
    void OnChange(const std::string& control, int index) override;

private:
    void UpdateContinue();
};

} // namespace tovel

#pragma once
// The alternative component page of the "frmMSI" set (frmMSICustomSetupGolden), chosen with
// GoldenComponentDialog: the tree across the whole page, the description under it, and the
// space and drive beside the description. Besides the long description it tells what the
// product under the cursor needs on its drive. Everything else is the component page's.
#include <string>

#include "wizard/pages/clsControlCustomSetup.h"

namespace tovel {

class clsControlCustomSetupGolden : public clsControlCustomSetup {
protected:
    /// Always the golden form: the disc chose it for the "frmMSI" set.
    [[nodiscard]] std::string FormName(bool oldForms) const override;
    /// The long description, then "Needs 120 MB on drive D:." when the product needs space.
    [[nodiscard]] std::string ProductDescription(const clsSIFApplicationItem& item) const override;
};

} // namespace tovel

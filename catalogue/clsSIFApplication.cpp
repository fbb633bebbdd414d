#include "catalogue/clsSIFApplication.h"

#include <utility>

#include "startup/mdlLog.h"

namespace tovel {

void clsSIFApplication::Add(clsSIFApplicationItem item) {
    LogIfEnabled("         Created new p_objSIFApplication Entry with ProductCode: " + item.ProductCode);
    LogIfEnabled("                                            and SetupFile: " + item.SetupFile);
    if (const clsSIFApplicationItem* first = item.ProductCode.empty() ? nullptr : Item(IndexOfProductCode(item.ProductCode))) {
        LogIfEnabled("Produktcode " + item.ProductCode + " doppelt: " + first->SIFFileName + " und " + item.SIFFileName + ", " +
                     first->SIFFileName + " gilt.");
    }
    items_.push_back(std::move(item));
}

int clsSIFApplication::IndexOfProductCode(const std::string& code) const {
    return FirstIndex([&](const clsSIFApplicationItem& item) { return item.ProductCode == code; });
}

void clsSIFApplication::SetSelectAllApp(bool selected) {
    for (auto& item : items_) item.Selected = selected;
}

} // namespace tovel

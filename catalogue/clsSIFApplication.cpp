#include "catalogue/clsSIFApplication.h"

#include "settings/clsIniFile.h"
#include "startup/mdlLog.h"

namespace tovel {

void clsSIFApplication::Add(const std::string& sifPath, const std::string& productFolder) {
    clsIniFile sif;
    sif.SetFullPath(sifPath);
    sif.SetReadOnce(true);
    Add(sif, productFolder);
}

void clsSIFApplication::Add(clsIniFile& sif, const std::string& productFolder) {
    clsSIFApplicationItem item;
    item.Read(sif, productFolder);
    LogIfEnabled("         Created new p_objSIFApplication Entry with ProductCode: " + item.ProductCode);
    LogIfEnabled("                                            and SetupFile: " + item.SetupFile);
    items_.push_back(std::move(item));
}

int clsSIFApplication::IndexOfProductCode(const std::string& code) const {
    return FirstIndex([&](const clsSIFApplicationItem& item) { return item.ProductCode == code; });
}

void clsSIFApplication::SetSelectAllApp(bool selected) {
    for (auto& item : items_) item.Selected = selected;
}

} // namespace tovel

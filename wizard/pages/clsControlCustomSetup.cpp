#include "wizard/pages/clsControlCustomSetup.h"

#include "catalogue/CatalogueGlobals.h"

namespace tovel {

namespace {

bool InTree(const clsSIFApplicationItem& item) { return item.Visible && !item.HideInstall; }

std::string LineOf(const clsSIFApplicationItem& item) {
    const std::string state(CheckBoxStateText(item.CheckBox));
    return std::string(CheckBoxIsChecked(item.CheckBox) ? "[x] " : "[ ] ") +
           (item.Description.empty() ? item.ProductCode : item.Description) + " (" + (state.empty() ? "?" : state) + ")";
}

} // namespace

std::vector<std::string> clsControlCustomSetup::ProductLines() {
    std::vector<std::string> lines;
    for (const auto& item : gApplications.Items()) {
        if (InTree(item)) lines.push_back(LineOf(item));
    }
    return lines;
}

void clsControlCustomSetup::OnLoad() {
    products_.clear();
    for (int i = 1; i <= gApplications.Count(); ++i) {
        if (InTree(*gApplications.Item(i))) products_.push_back(i);
    }
    if (clsFormControl* list = Form().Control("ProductList")) {
        list->items = ProductLines();
        list->value = -1;
    }
    SetText("DescriptionLabel", "");
}

void clsControlCustomSetup::OnClick(const std::string& control, int) {
    if (control != "ProductList") return;
    const clsFormControl* list = Form().Control("ProductList");
    if (list == nullptr || list->value < 0 || static_cast<size_t>(list->value) >= products_.size()) return;
    SetText("DescriptionLabel", gApplications.Item(products_[static_cast<size_t>(list->value)])->LongDescription);
}

} // namespace tovel

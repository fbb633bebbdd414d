#include "wizard/pages/clsControlIdentification.h"

#include "catalogue/CatalogueGlobals.h"
#include "common/clsString.h"
#include "settings/clsRegistry.h"

namespace tovel {

std::string clsControlIdentification::Registered(const std::string& value) {
    for (const char* key : {"Software\\Microsoft\\Windows\\CurrentVersion", "Software\\Microsoft\\Windows NT\\CurrentVersion"}) {
        const std::string found = clsRegistry(RegRoot::LocalMachine, key).QueryValue(value);
        if (!found.empty()) return found;
    }
    return {};
}

void clsControlIdentification::OnLoad() {
    std::string name;
    std::string company;
    for (const auto& item : gApplications.Items()) {
        if (name.empty()) name = item.UserName;
        if (company.empty()) company = item.CompanyName;
    }
    SetText("NameText", name.empty() ? Registered("RegisteredOwner") : name);
    SetText("CompanyText", company.empty() ? Registered("RegisteredOrganization") : company);
    UpdateContinue();
}

void clsControlIdentification::OnActivate() { UpdateContinue(); }

void clsControlIdentification::OnChange(const std::string&, int) { UpdateContinue(); }

void clsControlIdentification::UpdateContinue() {
    SetEnabled("ContinueBtn", !clsString::Trim(Text("NameText")).empty() && !clsString::Trim(Text("CompanyText")).empty());
}

bool clsControlIdentification::OnContinue() {
    const std::string name = clsString::Trim(Text("NameText"));
    const std::string company = clsString::Trim(Text("CompanyText"));
    if (name.empty() || company.empty()) return false;
    for (auto& item : gApplications.Items()) {
        item.UserName = name;
        item.CompanyName = company;
    }
    return true;
}

} // namespace tovel

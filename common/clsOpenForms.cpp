#include "common/clsOpenForms.h"

#include <algorithm>

namespace tovel {

void clsOpenForms::Add(const std::string& name, std::function<void()> unload) {
    Remove(name);
    forms_.emplace_back(name, std::move(unload));
}

void clsOpenForms::Remove(const std::string& name) {
    std::erase_if(forms_, [&](const auto& form) { return form.first == name; });
}

bool clsOpenForms::Unload(const std::string& name) {
    const auto it = std::find_if(forms_.begin(), forms_.end(), [&](const auto& form) { return form.first == name; });
    if (it == forms_.end()) return false;
    auto unload = std::move(it->second);
    forms_.erase(it);
    if (unload) unload();
    return true;
}

std::vector<std::string> clsOpenForms::Names() const {
    std::vector<std::string> names;
    for (const auto& form : forms_) names.push_back(form.first);
    return names;
}

} // namespace tovel

#include "install/clsDeinstallList.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "catalogue/clsSIFApplicationItem.h"
#include "common/clsString.h"
#include "settings/clsIniFile.h"
#include "settings/clsIniText.h"
#include "settings/clsRegistry.h"

namespace tovel {

namespace {

/// The list's key; a path without a root lies below HKEY_LOCAL_MACHINE.
clsRegistry ListKey(const std::string& keyPath) {
    clsRegistry key;
    if (!key.InitWithRegPath(keyPath)) key = clsRegistry(RegRoot::LocalMachine, keyPath);
    return key;
}

int CountOf(const clsRegistry& key) {
    return std::max(0, clsIniText::ProfileInt(key.QueryValue("Count")));
}

/// The deinstall key an entry's text names: what follows " DeinstallKey=".
std::string NamedKey(const std::string& entry) {
    static const std::string kMarker = " DeinstallKey=";
    const size_t at = entry.find(kMarker);
    return at == std::string::npos ? std::string() : entry.substr(at + kMarker.size());
}

} // namespace

clsDeinstallList::clsDeinstallList(std::string keyPath) : keyPath_(std::move(keyPath)) {}

std::string clsDeinstallList::EntryName(const char* word, int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%03d", number);
    return word + std::string(digits);
}

int clsDeinstallList::Find(const std::vector<std::string>& deinstallKeys) const {
    if (clsString::Trim(keyPath_).empty()) return 0;
    const clsRegistry key = ListKey(keyPath_);
    const int count = CountOf(key);
    for (const auto& wanted : deinstallKeys) {
        for (int n = 1; n <= count; ++n) {
            if (clsString::EqualNoCaseAscii(NamedKey(key.QueryValue(EntryName("Prod", n))), wanted)) return n;
        }
    }
    return 0;
}

int clsDeinstallList::Record(const std::string& setupKey, const std::vector<std::string>& deinstallKeys,
                             const std::string& deinstallParam) const {
    if (clsString::Trim(keyPath_).empty() || deinstallKeys.empty()) return 0;
    const clsRegistry key = ListKey(keyPath_);
    int number = Find(deinstallKeys);
    if (number == 0) {
        number = CountOf(key) + 1;
        if (!key.SetKeyValue("Count", std::to_string(number), RegType::Sz)) return 0;
    }
    (void)key.SetKeyValue(EntryName("Prod", number), "SKey=" + setupKey + " DeinstallKey=" + deinstallKeys.front(), RegType::Sz);
    (void)key.SetKeyValue(EntryName("Param", number), deinstallParam.empty() ? " " : deinstallParam, RegType::Sz);
    return number;
}

std::vector<std::string> clsDeinstallList::DeinstallKeysOf(const std::string& sifPath) {
    clsIniFile sif;
    sif.SetFullPath(sifPath);
    sif.SetSectionName("GENERAL");
    std::vector<std::string> keys;
    for (int n = 1;; ++n) {
        const std::string key = sif.GetString("DeinstallKey" + std::to_string(n), "");
        if (key.empty()) break;
        keys.push_back(key);
    }
    return keys;
}

int clsDeinstallList::RecordProduct(const clsSIFApplicationItem& item) const {
    std::vector<std::string> keys = DeinstallKeysOf(item.SIFFileName);
    if (keys.empty() && !clsString::Trim(item.DeinstallKey).empty()) keys.push_back(clsString::Trim(item.DeinstallKey));
    return Record(item.ProductCode, keys, item.DeinstallParam);
}

} // namespace tovel

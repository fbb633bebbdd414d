// libFuzzer target for condition terms: any bytes as a term, evaluated on an emulated machine
// made once for the run and holding a few values the dictionary names. Evaluating only
// reads, so every input meets the same registry. Besides not crashing, a term must keep
// what the catalogue relies on:
//   - a failing term has exactly one log entry, a holding one at most one;
//   - a holding term gives no state of its own, a failing one one of the four codes;
//   - every entry is framed by the error markers and quotes the whole term;
//   - a value that did not exist was not read, and the path names a known root;
//   - the same term gives the same outcome again.
// The input is also split in two and compared as versions, which must order consistently.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "catalogue/clsSetupTerm.h"
#include "common/clsVersion.h"
#include "fuzz/FuzzMachine.h"
#include "settings/clsRegistry.h"

using namespace tovel;
using namespace tovel::fuzz;

namespace {


bool SameOutcome(const TermOutcome& a, const TermOutcome& b) {
    return a.holds == b.holds && a.valueExisted == b.valueExisted && a.registryPath == b.registryPath &&
           a.valueRead == b.valueRead && a.stateWhenFalse == b.stateWhenFalse && a.errorEntries == b.errorEntries;
}

bool StartsWith(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }
bool EndsWith(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    (void)InstallFuzzMachine("term");

    const std::string key = "HKEY_CURRENT_USER\\Software\\Fuzz";
    SetValue(key, "Version", "2.5.1", RegType::Sz);
    SetValue(key, "Text", "Standard", RegType::Sz);
    SetValue(key, "Empty", "", RegType::Sz);
    SetValue(key, "", "7.1", RegType::Sz);
    SetValue(key, "Count", "10", RegType::Dword);
    SetValue(key, "Big", "4294967295", RegType::Dword);
    SetValue(key, "Blob", "1 2 255", RegType::Binary);
    SetValue(key + "\\Sub", "Version", "1.0.0.12", RegType::Sz);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string term(reinterpret_cast<const char*>(data), size);
    const TermOutcome outcome = clsSetupTerm::Evaluate(term);

    if (outcome.holds) {
        Require(outcome.errorEntries.size() <= 1);
        Require(outcome.stateWhenFalse == CheckBoxState::kUnchecked);
    } else {
        Require(outcome.errorEntries.size() == 1);
        const int32_t state = outcome.stateWhenFalse;
        Require(state == CheckBoxState::kChecked || state == CheckBoxState::kUnchecked ||
                state == CheckBoxState::kCheckedLocked || state == CheckBoxState::kUncheckedLocked);
    }
    for (const auto& entry : outcome.errorEntries) {
        Require(StartsWith(entry, "<Error Message> "));
        Require(EndsWith(entry, "\r\n</Error Message>"));
        Require(entry.find(term) != std::string::npos);
    }
    if (!outcome.valueExisted) Require(outcome.valueRead.empty());
    if (!outcome.registryPath.empty()) {
        Require(StartsWith(outcome.registryPath, "HKEY_LOCAL_MACHINE\\") ||
                StartsWith(outcome.registryPath, "HKEY_CURRENT_USER\\") ||
                StartsWith(outcome.registryPath, "HKEY_USERS\\"));
    } else {
        Require(!outcome.valueExisted);
    }
    Require(SameOutcome(outcome, clsSetupTerm::Evaluate(term)));

    const std::string_view a = std::string_view(term).substr(0, size / 2);
    const std::string_view b = std::string_view(term).substr(size / 2);
    const int order = clsVersion::Compare(a, b);
    Require(order >= -1 && order <= 1);
    Require(clsVersion::Compare(b, a) == -order);
    Require(clsVersion::Compare(a, a) == 0);
    return 0;
}

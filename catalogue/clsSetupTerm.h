#pragma once
// Condition terms of description files: a registry value compared with a text, deciding the
// check-box state of a product when the comparison fails. The grammar stands at the top of
// clsSetupTerm.cpp; docs/CATALOGUE.md explains it to disc authors.
#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/mdlCatalogueCodes.h"

namespace tovel {

/// What evaluating one term found; a term that was never evaluated holds.
struct TermOutcome {
    bool holds = true;
    bool valueExisted = false;
    std::string registryPath;   ///< "HKEY_...\key\value name" as read; "" when the term has none
    std::string valueRead;      ///< the value's text; "" when it does not exist
    /// The state the term gives when it fails (next-to-last field when the value exists,
    /// else the last); kUnchecked when the term holds.
    int32_t stateWhenFalse = CheckBoxState::kUnchecked;
    /// Complete setup-log entries: "<Error Message> " ... "</Error Message>", CR LF inside.
    std::vector<std::string> errorEntries;
};

class clsSetupTerm {
public:
    /// Evaluates a term against the registry (through clsRegistry). Writes nothing to the
    /// log itself: the caller writes errorEntries, in order. An empty term holds without an
    /// entry. Never throws.
    [[nodiscard]] static TermOutcome Evaluate(const std::string& term);
};

} // namespace tovel

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

/// What makes a term unreadable, found without the registry; None for a term that reads.
enum class TermProblem {
    None,
    Kind,       ///< field 2 is not "registry": the term is taken as holding
    Root,       ///< the path has no known root or no value name: the term fails
    Type,       ///< neither regsz nor regdword
    Operator,   ///< none of =, <>, =>, >, <=, EXIST, NOTEXIST
    Value,      ///< the comparison value is missing, or not a number for regdword
};

class clsSetupTerm {
public:
    /// What keeps a term from being read, as Evaluate would find it; None for an empty
    /// term. Reads no registry.
    [[nodiscard]] static TermProblem Check(const std::string& term);
    /// Evaluates a term against the registry (through clsRegistry). Writes nothing to the
    /// log itself: the caller writes errorEntries, in order. An empty term holds without an
    /// entry. Never throws.
    [[nodiscard]] static TermOutcome Evaluate(const std::string& term);
};

} // namespace tovel

// Condition terms. A term is one text of fields separated by ";":
//
//   label ; registry ; [\]root\key\...\value name ; type ; operator ; value [; ...] ; state if found ; state
//
//   label      anything; not looked at
//   registry   the word "registry" in any case; any other word is a term this evaluator does
//              not know: it is logged and holds
//   path       root (HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER or HKEY_USERS in any case), the
//              sub-keys, and last the value name ("" after a trailing "\" is the default
//              value); one leading "\" is dropped, as are blanks around the whole field
//   type       "regsz" or "regdword", any case
//   operator   "=", "<>", "=>", ">", "<=" or "EXIST", "NOTEXIST" (these two in any case)
//   value      what the registry value is compared with; needed by all but EXIST/NOTEXIST.
//              "=" and "<>" take alternatives separated by "OR" (upper case): always for
//              "<>" and for regdword, for "=" on regsz only when the value has a "." (a list
//              of versions; a text without "." is one text, "OR" and all)
//   ...        fields between the value and the two states are ignored
//   states     when the term fails, the check box gets the next-to-last field if the value
//              existed, else the last ("checkbox", "uncheckbox", "disabledcheckbox",
//              "disableduncheckbox", any case). Only fields from 6 on are states: a term of
//              7 fields has just the last, a shorter one none. A missing state and any other
//              word give "uncheckbox".
// Blanks around the key words (registry, type, operator, states) do not count.
//
// Comparison. regdword: the value must be a decimal number (each alternative of "=" and
// "<>"), else the term has a format error; numbers of any length compare exactly. regsz:
// "=>", ">", "<=" compare as versions (clsVersion), "=" and "<>" as versions when the value
// has a "." and otherwise as texts, exactly, case included. ">" wants a strictly higher
// version; "=>" and ">" both log the "older" message when they fail. A missing value makes
// "=", "=>", ">", "<=" and EXIST fail and "<>" and NOTEXIST hold.
//
// Every failure gives one setup-log entry, returned to the caller, and so does a term of an
// unknown kind although it holds. The entries keep the form the log has always had: format errors "<Error Message> " + text + term + CR LF + "</Error Message>",
// comparisons "<Error Message> " + text + value found + " " + CR LF + term + CR LF +
// "</Error Message>".
#include "catalogue/clsSetupTerm.h"

#include <array>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/clsString.h"
#include "common/clsVersion.h"
#include "settings/clsRegistry.h"

namespace tovel {

namespace {

constexpr std::string_view kTermKeyError = "Wrong termkey format in Setupdependence section.";
constexpr std::string_view kRootKeyError = "The Registrykey has a wrong format in Setupdependence section.";
constexpr std::string_view kFormatError = "The Registrykey has a wrong format: ";
constexpr std::string_view kNoValue = "No Value found in the Registry. ";
constexpr std::string_view kNoVersion = "No Version found in the Registry. ";
constexpr std::string_view kNotSame = "Version found in the Registry is not the same. Registryvalue=";
constexpr std::string_view kOlder = "Version found in the Registry is older. Registryvalue=";
constexpr std::string_view kNewer = "Version found in the Registry is newer. Registryvalue=";
// "<>" and NOTEXIST fail without a text of their own in the old log; these read alike.
constexpr std::string_view kSame = "Version found in the Registry is the same. Registryvalue=";
constexpr std::string_view kFound = "Value found in the Registry. Registryvalue=";

// Field numbers; the two state fields count from the end.
constexpr size_t kKindField = 1;
constexpr size_t kPathField = 2;
constexpr size_t kTypeField = 3;
constexpr size_t kOperatorField = 4;
constexpr size_t kValueField = 5;
constexpr size_t kFirstStateField = 6;

enum class Operator { Equal, NotEqual, AtLeast, Above, AtMost, Exist, NotExist };

struct RootName {
    std::string_view lower;
    std::string_view canonical;
};
constexpr std::array<RootName, 3> kRoots{{
    {"hkey_local_machine", "HKEY_LOCAL_MACHINE"},
    {"hkey_current_user", "HKEY_CURRENT_USER"},
    {"hkey_users", "HKEY_USERS"},
}};

struct TermPath {
    std::string key;        ///< "HKEY_...\sub\key" (just the root when there is no sub-key)
    std::string valueName;
};

std::string FormatEntry(std::string_view message, const std::string& term) {
    std::string entry = "<Error Message> ";
    entry.append(message).append(term).append("\r\n</Error Message>");
    return entry;
}

std::string ValueEntry(std::string_view message, const std::string& value, const std::string& term) {
    std::string entry = "<Error Message> ";
    entry.append(message).append(value).append(" \r\n").append(term).append("\r\n</Error Message>");
    return entry;
}

std::optional<Operator> OperatorOf(const std::string& word) {
    if (word == "=") return Operator::Equal;
    if (word == "<>") return Operator::NotEqual;
    if (word == "=>") return Operator::AtLeast;
    if (word == ">") return Operator::Above;
    if (word == "<=") return Operator::AtMost;
    if (clsString::EqualNoCaseAscii(word, "exist")) return Operator::Exist;
    if (clsString::EqualNoCaseAscii(word, "notexist")) return Operator::NotExist;
    return std::nullopt;
}

std::optional<TermPath> PathOf(const std::string& field) {
    std::string_view path = field;
    if (!path.empty() && path.front() == '\\') path.remove_prefix(1);
    const auto parts = clsString::Split(path, "\\");
    // A root alone names no value.
    if (parts.size() < 2) return std::nullopt;
    const std::string root = clsString::LowerAscii(parts.front());
    for (const auto& known : kRoots) {
        if (root != known.lower) continue;
        TermPath result{std::string(known.canonical), parts.back()};
        for (size_t i = 1; i + 1 < parts.size(); ++i) result.key += "\\" + parts[i];
        return result;
    }
    return std::nullopt;
}

// A number as regdword values are written: digits only, blanks around allowed, any length.
bool IsNumber(std::string_view text) {
    const std::string trimmed = clsString::Trim(text);
    if (trimmed.empty()) return false;
    for (char c : trimmed) {
        if (c < '0' || c > '9') return false;
    }
    return true;
}

// The alternatives of "=" and "<>"; empty ones from a stray "OR" are dropped.
std::vector<std::string> Alternatives(const std::string& value) {
    auto parts = clsString::Split(value, "OR");
    if (parts.size() == 1) return parts;
    std::vector<std::string> kept;
    for (auto& part : parts) {
        if (!clsString::Trim(part).empty()) kept.push_back(std::move(part));
    }
    return kept;
}

class Evaluation {
public:
    explicit Evaluation(const std::string& term) : term_(term) {}

    TermOutcome Run() {
        Evaluate();
        if (outcome_.holds) {
            outcome_.stateWhenFalse = CheckBoxState::kUnchecked;
        } else if (fields_.size() >= 2) {
            outcome_.stateWhenFalse = StateAt(fields_.size() - (outcome_.valueExisted ? 2 : 1));
        }
        return std::move(outcome_);
    }

    // The fields as far as they can be read without the registry.
    TermProblem Parse() {
        fields_ = clsString::Split(term_, ";");
        if (fields_.size() <= kKindField || clsString::LowerAscii(Word(kKindField)) != "registry") return TermProblem::Kind;
        path_ = fields_.size() > kPathField ? PathOf(Word(kPathField)) : std::nullopt;
        if (!path_) return TermProblem::Root;
        outcome_.registryPath = path_->key + "\\" + path_->valueName;
        const std::string type = clsString::LowerAscii(Word(kTypeField));
        dword_ = type == "regdword";
        if (!dword_ && type != "regsz") return TermProblem::Type;
        op_ = OperatorOf(Word(kOperatorField));
        if (!op_) return TermProblem::Operator;
        return ComparisonValueFits(*op_, dword_) ? TermProblem::None : TermProblem::Value;
    }

private:

    void Evaluate() {
        if (clsString::Trim(term_).empty()) return;
        switch (Parse()) {
        case TermProblem::None: break;
        case TermProblem::Kind:
            // Not a registry term: the product stays as it is.
            outcome_.errorEntries.push_back(FormatEntry(kTermKeyError, term_));
            return;
        case TermProblem::Root: Fail(FormatEntry(kRootKeyError, term_)); return;
        default: Fail(FormatEntry(kFormatError, term_)); return;
        }
        clsRegistry registry;
        if (!registry.InitWithRegPath(path_->key)) {
            Fail(FormatEntry(kRootKeyError, term_));
            return;
        }
        outcome_.valueExisted = registry.ValueExist(path_->valueName);
        if (outcome_.valueExisted) outcome_.valueRead = registry.QueryValue(path_->valueName);
        Compare(*op_, dword_);
    }

    // A comparison needs its value; a regdword one must be a number.
    bool ComparisonValueFits(Operator op, bool dword) const {
        if (op == Operator::Exist || op == Operator::NotExist) return true;
        if (fields_.size() <= kValueField) return false;
        if (!dword) return true;
        if (op == Operator::Equal || op == Operator::NotEqual) {
            const auto alternatives = Alternatives(Value());
            if (alternatives.empty()) return false;
            for (const auto& alternative : alternatives) {
                if (!IsNumber(alternative)) return false;
            }
            return true;
        }
        return IsNumber(Value());
    }

    void Compare(Operator op, bool dword) {
        const bool existed = outcome_.valueExisted;
        const std::string& found = outcome_.valueRead;
        switch (op) {
        case Operator::Exist:
            if (!existed) Fail(ValueEntry(kNoValue, found, term_));
            return;
        case Operator::NotExist:
            if (existed) Fail(ValueEntry(kFound, found, term_));
            return;
        case Operator::Equal:
            if (!existed) {
                Fail(ValueEntry(kNoValue, found, term_));
            } else if (!EqualsAny(dword, /*split=*/dword || HasDot())) {
                Fail(ValueEntry(kNotSame, found, term_));
            }
            return;
        case Operator::NotEqual:
            // A value that is not there is none of the alternatives.
            if (existed && EqualsAny(dword, /*split=*/true)) Fail(ValueEntry(kSame, found, term_));
            return;
        case Operator::AtLeast:
        case Operator::Above:
        case Operator::AtMost: {
            if (!existed) {
                Fail(ValueEntry(kNoVersion, found, term_));
                return;
            }
            const int order = clsVersion::Compare(found, Value());
            if (op == Operator::AtLeast && order < 0) Fail(ValueEntry(kOlder, found, term_));
            if (op == Operator::Above && order <= 0) Fail(ValueEntry(kOlder, found, term_));
            if (op == Operator::AtMost && order > 0) Fail(ValueEntry(kNewer, found, term_));
            return;
        }
        }
    }

    bool EqualsAny(bool dword, bool split) const {
        const std::string& found = outcome_.valueRead;
        const auto alternatives = split ? Alternatives(Value()) : std::vector<std::string>{Value()};
        const bool versions = HasDot();
        for (const auto& alternative : alternatives) {
            if (dword) {
                if (IsNumber(found) && clsVersion::Compare(clsString::Trim(found), clsString::Trim(alternative)) == 0) {
                    return true;
                }
            } else if (versions ? clsVersion::Equal(found, alternative) : found == alternative) {
                return true;
            }
        }
        return false;
    }

    void Fail(std::string entry) {
        outcome_.holds = false;
        outcome_.errorEntries.push_back(std::move(entry));
    }

    // A key word of the term: blanks around it do not count. "" for a missing field.
    std::string Word(size_t index) const {
        return index < fields_.size() ? clsString::Trim(fields_[index]) : std::string();
    }
    const std::string& Value() const { return fields_[kValueField]; }
    bool HasDot() const { return Value().find('.') != std::string::npos; }

    int32_t StateAt(size_t index) const {
        if (index < kFirstStateField || index >= fields_.size()) return CheckBoxState::kUnchecked;
        return CheckBoxStateCode(clsString::Trim(fields_[index]));
    }

    const std::string& term_;
    std::vector<std::string> fields_;
    std::optional<TermPath> path_;
    std::optional<Operator> op_;
    bool dword_ = false;
    TermOutcome outcome_;
};

// Out of memory or a fault of our own: the value could not be checked, so the term does
// not pass. Even the log entry may fail to be made; the result still stands.
TermOutcome Unevaluated(const std::string& term, const char* what) noexcept {
    TermOutcome outcome;
    outcome.holds = false;
    try {
        outcome.errorEntries.push_back(
            ValueEntry("Error in Modul clsSetupTerm Funktion Evaluate: ", what, term));
    } catch (...) {
        outcome.errorEntries.clear();
    }
    return outcome;
}

} // namespace

TermProblem clsSetupTerm::Check(const std::string& term) {
    try {
        return clsString::Trim(term).empty() ? TermProblem::None : Evaluation(term).Parse();
    } catch (...) {
        return TermProblem::Value;
    }
}

TermOutcome clsSetupTerm::Evaluate(const std::string& term) {
    try {
        return Evaluation(term).Run();
    } catch (const std::exception& e) {
        return Unevaluated(term, e.what());
    } catch (...) {
        return Unevaluated(term, "unknown error");
    }
}

} // namespace tovel

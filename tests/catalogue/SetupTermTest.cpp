// Condition terms against a real registry (the emulated machine, or Wine's): every operator
// both ways, alternatives, numbers, format errors with their exact log entries, and the
// check-box state a failing term gives.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/clsSetupTerm.h"
#include "tests/catalogue/CatalogueFixture.h"

namespace tovel {
namespace {

constexpr const char* kNoValue = "No Value found in the Registry. ";
constexpr const char* kNoVersion = "No Version found in the Registry. ";
constexpr const char* kNotSame = "Version found in the Registry is not the same. Registryvalue=";
constexpr const char* kSame = "Version found in the Registry is the same. Registryvalue=";
constexpr const char* kOlder = "Version found in the Registry is older. Registryvalue=";
constexpr const char* kNewer = "Version found in the Registry is newer. Registryvalue=";
constexpr const char* kFound = "Value found in the Registry. Registryvalue=";
constexpr const char* kWrongFormat = "The Registrykey has a wrong format: ";
constexpr const char* kWrongRoot = "The Registrykey has a wrong format in Setupdependence section.";
constexpr const char* kWrongTermKey = "Wrong termkey format in Setupdependence section.";

std::string ComparisonEntry(const std::string& message, const std::string& found, const std::string& term) {
    return "<Error Message> " + message + found + " \r\n" + term + "\r\n</Error Message>";
}
std::string FormatEntry(const std::string& message, const std::string& term) {
    return "<Error Message> " + message + term + "\r\n</Error Message>";
}

class SetupTerm : public test::CatalogueFixture {
protected:
    void SetUp() override {
        CatalogueFixture::SetUp();
        SetRegString("Product", "Version", "2.5.1");
        SetRegString("Product", "Two", "2.0");
        SetRegString("Product", "Edition", "Standard");
        SetRegDword("Product", "Count", 10);
        SetRegDword("Product", "Big", 4294967295u);
    }

    /// A term on a value below the test's "Product" key; failing it checks the box
    /// (disabled) when the value exists and leaves it unchecked (disabled) otherwise.
    std::string Term(const std::string& name, const std::string& type, const std::string& op,
                     const std::string& value) const {
        return "Term1;registry;" + RegPath("Product") + "\\" + name + ";" + type + ";" + op + ";" + value +
               ";disabledcheckbox;disableduncheckbox";
    }
};

TEST_F(SetupTerm, EveryOperatorHoldsAndFails) {
    struct Case {
        const char* name;
        const char* type;
        const char* op;
        const char* value;
        const char* failure;  // message of the entry when the term fails, nullptr when it holds
    };
    const Case cases[] = {
        // Versions in a string: Version is 2.5.1.
        {"Version", "regsz", "=", "2.5.1", nullptr},
        {"Version", "regsz", "=", "2.5.1.0", nullptr},
        {"Version", "regsz", "=", "2.5", kNotSame},
        {"Version", "regsz", "=", "1.0OR2.5.1", nullptr},
        {"Version", "regsz", "=", "1.0 OR 2.5.1 OR 3.0", nullptr},
        {"Version", "regsz", "=", "1.0OR2.6", kNotSame},
        {"Two", "regsz", "=", "1.0OR2.0", nullptr},
        {"Version", "regsz", "<>", "2.5.1", kSame},
        {"Version", "regsz", "<>", "1.0OR2.5.1.0", kSame},
        {"Version", "regsz", "<>", "1.0OR2.5", nullptr},
        {"Version", "regsz", "=>", "2.5.1", nullptr},
        {"Version", "regsz", "=>", "2.5", nullptr},
        {"Version", "regsz", "=>", "2.10", kOlder},
        {"Version", "regsz", ">", "2.5.0", nullptr},
        {"Version", "regsz", ">", "2.5.1", kOlder},  // strictly higher
        {"Version", "regsz", ">", "3", kOlder},
        {"Version", "regsz", "<=", "2.5.1", nullptr},
        {"Version", "regsz", "<=", "2.10", nullptr},
        {"Version", "regsz", "<=", "2.5", kNewer},
        {"Version", "regsz", "EXIST", "", nullptr},
        {"Version", "regsz", "exist", "", nullptr},
        {"Version", "regsz", "NOTEXIST", "", kFound},
        // Texts without a "." compare exactly, "OR" included, for "="; "<>" always splits.
        {"Edition", "regsz", "=", "Standard", nullptr},
        {"Edition", "regsz", "=", "standard", kNotSame},
        {"Edition", "regsz", "=", "ProORStandard", kNotSame},
        {"Edition", "regsz", "<>", "ProORStandard", kSame},
        {"Edition", "regsz", "<>", "Pro", nullptr},
        // Numbers: 10 is higher than 9, whatever the texts say.
        {"Count", "regdword", "=", "10", nullptr},
        {"Count", "RegDword", "=", " 010 ", nullptr},
        {"Count", "regdword", "=", "9OR10", nullptr},
        {"Count", "regdword", "=", "9", kNotSame},
        {"Count", "regdword", "<>", "10", kSame},
        {"Count", "regdword", "<>", "9OR11", nullptr},
        {"Count", "regdword", "=>", "9", nullptr},
        {"Count", "regdword", "=>", "11", kOlder},
        {"Count", "regdword", ">", "9", nullptr},
        {"Count", "regdword", ">", "10", kOlder},
        {"Count", "regdword", "<=", "10", nullptr},
        {"Count", "regdword", "<=", "9", kNewer},
        {"Big", "regdword", "=", "4294967295", nullptr},  // unsigned, not -1
        {"Big", "regdword", ">", "4294967294", nullptr},
        {"Big", "regdword", "<=", "99999999999999999999", nullptr},
    };
    for (const auto& c : cases) {
        const std::string term = Term(c.name, c.type, c.op, c.value);
        SCOPED_TRACE(term);
        const TermOutcome outcome = clsSetupTerm::Evaluate(term);
        EXPECT_TRUE(outcome.valueExisted);
        EXPECT_EQ(outcome.registryPath, RegPath("Product") + "\\" + c.name);
        EXPECT_EQ(outcome.holds, c.failure == nullptr);
        if (c.failure == nullptr) {
            EXPECT_TRUE(outcome.errorEntries.empty());
            EXPECT_EQ(outcome.stateWhenFalse, CheckBoxState::kUnchecked);
        } else {
            EXPECT_EQ(outcome.errorEntries, std::vector<std::string>{ComparisonEntry(c.failure, outcome.valueRead, term)});
            EXPECT_EQ(outcome.stateWhenFalse, CheckBoxState::kCheckedLocked);  // the next-to-last field
        }
    }
    EXPECT_EQ(clsSetupTerm::Evaluate(Term("Version", "regsz", "=", "2.5")).valueRead, "2.5.1");
    EXPECT_EQ(clsSetupTerm::Evaluate(Term("Big", "regdword", "=", "1")).valueRead, "4294967295");
    // Evaluating writes nothing: the caller logs the entries.
    EXPECT_EQ(LogText(), "");
}

TEST_F(SetupTerm, MissingValueFailsEveryComparisonButUnequal) {
    struct Case {
        const char* op;
        const char* failure;
    };
    const Case cases[] = {
        {"=", kNoValue}, {"=>", kNoVersion}, {">", kNoVersion}, {"<=", kNoVersion},
        {"EXIST", kNoValue}, {"<>", nullptr}, {"NOTEXIST", nullptr},
    };
    for (const char* type : {"regsz", "regdword"}) {
        for (const auto& c : cases) {
            const std::string term = Term("Absent", type, c.op, "0");
            SCOPED_TRACE(term);
            const TermOutcome outcome = clsSetupTerm::Evaluate(term);
            EXPECT_FALSE(outcome.valueExisted);
            EXPECT_EQ(outcome.valueRead, "");
            EXPECT_EQ(outcome.holds, c.failure == nullptr);
            if (c.failure != nullptr) {
                // The value found is empty, so the message's own blank and the entry's meet.
                EXPECT_EQ(outcome.errorEntries, std::vector<std::string>{ComparisonEntry(c.failure, "", term)});
                EXPECT_EQ(outcome.stateWhenFalse, CheckBoxState::kUncheckedLocked);  // the last field
            } else {
                EXPECT_TRUE(outcome.errorEntries.empty());
            }
        }
    }
    // A missing key is a missing value too.
    const std::string term = "T;registry;" + RegPath("Nowhere\\Deeper") + "\\Version;regsz;=>;1.0;checkbox;checkbox";
    const TermOutcome outcome = clsSetupTerm::Evaluate(term);
    EXPECT_FALSE(outcome.holds);
    EXPECT_EQ(outcome.errorEntries, std::vector<std::string>{
        "<Error Message> No Version found in the Registry.  \r\n" + term + "\r\n</Error Message>"});
    EXPECT_EQ(outcome.stateWhenFalse, CheckBoxState::kChecked);
}

TEST_F(SetupTerm, KindPathTypeAndOperatorAreChecked) {
    const std::string version = RegPath("Product") + "\\Version";
    const std::string below = version.substr(std::string("HKEY_CURRENT_USER").size());  // "\<key>\Product\Version"
    struct Case {
        std::string term;
        bool holds;
        const char* message;  // the one entry's message; nullptr for none
        std::string registryPath;
    };
    const Case cases[] = {
        // The kind is one word in any case; anything else is not ours and holds.
        {"T;Registry;" + version + ";regsz;=;2.5.1;checkbox;uncheckbox", true, nullptr, version},
        {"T; REGISTRY ;" + version + ";regsz;=;2.5.1;checkbox;uncheckbox", true, nullptr, version},
        {"T;file;C:\\x.dll;regsz;=;1.0;checkbox;uncheckbox", true, kWrongTermKey, ""},
        {"T;;" + version + ";regsz;=;2.5.1;checkbox;uncheckbox", true, kWrongTermKey, ""},
        {"Term1", true, kWrongTermKey, ""},
        // The root: one of three, in any case, first, after at most one backslash.
        {"T;registry;hkey_current_user" + below + ";regsz;=;2.5.1;x;y", true, nullptr, version},
        {"T;registry;\\HKEY_CURRENT_USER" + below + ";regsz;=;2.5.1;x;y", true, nullptr, version},
        {"T;registry;\\\\HKEY_CURRENT_USER" + below + ";regsz;=;2.5.1;x;y", false, kWrongRoot, ""},
        {"T;registry;HKEY_CLASSES_ROOT" + below + ";regsz;=;2.5.1;x;y", false, kWrongRoot, ""},
        {"T;registry;Computer\\" + version + ";regsz;=;2.5.1;x;y", false, kWrongRoot, ""},
        {"T;registry;SOFTWARE\\Product\\Version;regsz;=;2.5.1;x;y", false, kWrongRoot, ""},
        {"T;registry;HKEY_CURRENT_USER;regsz;EXIST;;x;y", false, kWrongRoot, ""},
        {"T;registry;;regsz;EXIST;;x;y", false, kWrongRoot, ""},
        {"T;registry", false, kWrongRoot, ""},
        // Type and operator.
        {"T;registry;" + version + ";regbinary;=;2.5.1;x;y", false, kWrongFormat, version},
        {"T;registry;" + version + ";;=;2.5.1;x;y", false, kWrongFormat, version},
        {"T;registry;" + version + ";regsz;>=;2.5.1;x;y", false, kWrongFormat, version},
        {"T;registry;" + version + ";regsz;==;2.5.1;x;y", false, kWrongFormat, version},
        {"T;registry;" + version + ";regsz;EXISTS;;x;y", false, kWrongFormat, version},
        {"T;registry;" + version + ";regsz", false, kWrongFormat, version},
        // A comparison needs a value, and a number one for a DWORD.
        {"T;registry;" + version + ";regsz;=>", false, kWrongFormat, version},
        {"T;registry;" + RegPath("Product") + "\\Count;regdword;=;ten;x;y", false, kWrongFormat,
         RegPath("Product") + "\\Count"},
        {"T;registry;" + RegPath("Product") + "\\Count;regdword;=;9ORten;x;y", false, kWrongFormat,
         RegPath("Product") + "\\Count"},
        {"T;registry;" + RegPath("Product") + "\\Big;regdword;=;-1;x;y", false, kWrongFormat,
         RegPath("Product") + "\\Big"},
        {"T;registry;" + RegPath("Product") + "\\Count;regdword;=>;1.0;x;y", false, kWrongFormat,
         RegPath("Product") + "\\Count"},
        // Nothing at all is no term: it holds without a word.
        {"", true, nullptr, ""},
        {"  \t ", true, nullptr, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.term);
        const TermOutcome outcome = clsSetupTerm::Evaluate(c.term);
        EXPECT_EQ(outcome.holds, c.holds);
        EXPECT_EQ(outcome.registryPath, c.registryPath);
        if (c.message == nullptr) {
            EXPECT_TRUE(outcome.errorEntries.empty());
        } else {
            EXPECT_EQ(outcome.errorEntries, std::vector<std::string>{FormatEntry(c.message, c.term)});
            EXPECT_FALSE(outcome.valueExisted);  // a term with a format error reads nothing
            EXPECT_EQ(outcome.valueRead, "");
        }
        EXPECT_EQ(outcome.stateWhenFalse, CheckBoxState::kUnchecked);  // "y" and holding terms alike
    }

    // The entries as they stand in the log, word for word.
    const std::string file = "Term2;file;HKEY_LOCAL_MACHINE\\SOFTWARE\\X\\V;regsz;=;1.0;checkbox;uncheckbox";
    EXPECT_EQ(clsSetupTerm::Evaluate(file).errorEntries,
              std::vector<std::string>{"<Error Message> Wrong termkey format in Setupdependence section." + file +
                                       "\r\n</Error Message>"});
    const std::string op = "Term3;registry;HKEY_LOCAL_MACHINE\\SOFTWARE\\X\\V;regsz;=<;1.0;checkbox;uncheckbox";
    EXPECT_EQ(clsSetupTerm::Evaluate(op).errorEntries,
              std::vector<std::string>{"<Error Message> The Registrykey has a wrong format: " + op +
                                       "\r\n</Error Message>"});
    const std::string older = Term("Version", "regsz", "=>", "3.0");
    EXPECT_EQ(clsSetupTerm::Evaluate(older).errorEntries,
              std::vector<std::string>{"<Error Message> Version found in the Registry is older. Registryvalue=2.5.1 \r\n" +
                                       older + "\r\n</Error Message>"});
}

TEST_F(SetupTerm, DefaultValueAndKeysWithoutSubKey) {
    SetRegString("Product", "", "7.1");
    // A trailing backslash names the key's default value.
    const std::string term = "T;registry;" + RegPath("Product") + "\\;regsz;=>;7.0;checkbox;uncheckbox";
    const TermOutcome outcome = clsSetupTerm::Evaluate(term);
    EXPECT_TRUE(outcome.holds);
    EXPECT_TRUE(outcome.valueExisted);
    EXPECT_EQ(outcome.valueRead, "7.1");
    EXPECT_EQ(outcome.registryPath, RegPath("Product") + "\\");
    // A value right below a root: the root is the key.
    const TermOutcome rootValue =
        clsSetupTerm::Evaluate("T;registry;HKEY_USERS\\NoSuchValueOfTovel;regsz;EXIST;;checkbox;disabledcheckbox");
    EXPECT_FALSE(rootValue.holds);
    EXPECT_EQ(rootValue.registryPath, "HKEY_USERS\\NoSuchValueOfTovel");
    EXPECT_EQ(rootValue.stateWhenFalse, CheckBoxState::kCheckedLocked);
}

TEST_F(SetupTerm, FailingTermTakesItsStateFromTheEnd) {
    const std::string head = "T;registry;" + RegPath("Product");
    struct Case {
        std::string tail;  // operator, value and what follows; the value Version exists
        int32_t whenExisted;
        int32_t whenMissing;
    };
    const Case cases[] = {
        {"=;9.9;disabledcheckbox;disableduncheckbox", CheckBoxState::kCheckedLocked, CheckBoxState::kUncheckedLocked},
        {"=;9.9;CheckBox;UNCHECKBOX", CheckBoxState::kChecked, CheckBoxState::kUnchecked},
        {"=;9.9; checkbox ;\tdisabledcheckbox ", CheckBoxState::kChecked, CheckBoxState::kCheckedLocked},
        // Unknown words and missing states leave the box unchecked.
        {"=;9.9;ticked;whatever", CheckBoxState::kUnchecked, CheckBoxState::kUnchecked},
        {"=;9.9;checkbox;", CheckBoxState::kChecked, CheckBoxState::kUnchecked},
        {"=;9.9;checkbox", CheckBoxState::kUnchecked, CheckBoxState::kChecked},  // the value is no state
        {"=;9.9", CheckBoxState::kUnchecked, CheckBoxState::kUnchecked},
        {"=;checkbox", CheckBoxState::kUnchecked, CheckBoxState::kUnchecked},
        // Fields between the value and the two states are ignored.
        {"=;9.9;checkbox;note;disabledcheckbox;disableduncheckbox", CheckBoxState::kCheckedLocked,
         CheckBoxState::kUncheckedLocked},
    };
    for (const auto& c : cases) {
        const std::string existing = head + "\\Version;regsz;" + c.tail;
        const std::string missing = head + "\\Absent;regsz;" + c.tail;
        SCOPED_TRACE(existing);
        const TermOutcome failedOnValue = clsSetupTerm::Evaluate(existing);
        EXPECT_FALSE(failedOnValue.holds);
        EXPECT_EQ(failedOnValue.stateWhenFalse, c.whenExisted);
        const TermOutcome failedOnMissing = clsSetupTerm::Evaluate(missing);
        EXPECT_FALSE(failedOnMissing.holds);
        EXPECT_EQ(failedOnMissing.stateWhenFalse, c.whenMissing);
    }
    // A term that holds gives no state of its own.
    EXPECT_EQ(clsSetupTerm::Evaluate(head + "\\Version;regsz;=;2.5.1;checkbox;disabledcheckbox").stateWhenFalse,
              CheckBoxState::kUnchecked);
}

} // namespace
} // namespace tovel

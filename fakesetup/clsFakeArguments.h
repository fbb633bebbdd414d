#pragma once
// What a stand-in product setup was told on its command line. Any argument it does not know
// (the product's own switches such as "/silent") is kept and ignored.
#include <string>
#include <vector>

namespace tovel {

class clsFakeArguments {
public:
    /// Reads the arguments; defaultOpFile is where the result file lies unless "OF:" or
    /// "OPFILE=" names another place.
    clsFakeArguments(const std::vector<std::string>& arguments, const std::string& defaultOpFile);

    /// The result file shared with the run.
    [[nodiscard]] const std::string& OpFile() const { return opFile_; }
    /// The behaviour file named by "/fakeini="; empty: FAKESETUP.INI beside the program.
    [[nodiscard]] const std::string& BehaviourFile() const { return behaviourFile_; }
    /// The behaviour section named by "/fake="; "Setup" by default.
    [[nodiscard]] const std::string& BehaviourSection() const { return section_; }
    /// The uninstall key named by "-f<key>": the program runs as the product's remover.
    [[nodiscard]] const std::string& RemoveKey() const { return removeKey_; }
    /// True when "-a" and "-y" came too: the remover asks nothing.
    [[nodiscard]] bool Unattended() const { return automatic_ && yes_; }
    /// True for the second process that the first one started ("/fakechild").
    [[nodiscard]] bool IsChild() const { return child_; }
    /// The arguments again as one Windows command line, as a second process gets them.
    [[nodiscard]] const std::string& CommandLine() const { return commandLine_; }

    /// The result file named in a parameter text: after "OF:" or "OPFILE=" (found without
    /// regard to case) up to and including the next "OPFILE.TXT"; empty when none is named.
    [[nodiscard]] static std::string NamedOpFile(const std::string& parameters);

private:
    void Read(const std::string& argument);

    std::string opFile_;
    std::string behaviourFile_;
    std::string section_ = "Setup";
    std::string removeKey_;
    bool automatic_ = false;
    bool yes_ = false;
    bool child_ = false;
    std::string commandLine_;
};

} // namespace tovel

#pragma once
// The page tester's form (frmPageTester): the form set, the language and the page; Show page
// opens it (clsPageTester) and tells afterwards which page was shown and in what language.
#include <string>

#include "configtool/clsPageTester.h"
#include "configtool/clsToolForm.h"

namespace tovel {

class clsControlPageTester : public clsToolForm {
public:
    clsControlPageTester() : clsToolForm("frmPageTester") {}

protected:
    void OnLoad() override;
    void OnClick(const std::string& control, int index) override;

private:
    [[nodiscard]] bool OldFormsChosen() const;
    void ListPages();
    void ShowPage();

    clsPageTester tester_;
};

} // namespace tovel

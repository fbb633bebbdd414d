#include "wizard/pages/clsControlReadMe.h"

#include "platform/clsPlatform.h"
#include "startup/Globals.h"
#include "startup/mdlLog.h"

namespace tovel {

clsControlReadMe::clsControlReadMe()
    : clsControlTextPage("frmReadme", "ReadmeText", [](int16_t language) { return gSetupsIni->GetReadmeFile(language); }) {}

void clsControlReadMe::OnClick(const std::string& control, int) {
    if (control == "ReadmeFormBtn") ReadmeFormBtnClick();
}

void clsControlReadMe::ReadmeFormBtnClick() {
    const std::string file = FilePath();
    const StartResult started = Platform().Processes().Open(file, "", "");
    if (!started.processId) {
        LogIfEnabled("The readme " + file + " could not be opened (error " + std::to_string(started.error) + ").");
        return;
    }
    Platform().Processes().Release(*started.processId);
}

} // namespace tovel

#include "wizard/pages/clsControlTextPage.h"

#include "startup/Globals.h"

namespace tovel {

std::string clsControlTextPage::FilePath() const {
    const std::string file = fileOf_(DefaultLanguage);
    if (file.empty() || file.find(":\\") != std::string::npos || file.rfind("\\\\", 0) == 0) return file;
    return HomePath + file;
}

void clsControlTextPage::OnLoad() { SetText(textBox_, ReadDiscText(FilePath())); }

} // namespace tovel

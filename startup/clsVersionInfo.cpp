#include "startup/clsVersionInfo.h"

#include "platform/clsPlatform.h"

namespace tovel {

bool clsVersionInfo::GetFileInfo(const std::string& path) {
    const auto info = Platform().Files().FileVersion(path);
    fileVersion_ = info && !info->fileVersion.empty() ? info->fileVersion : "0";
    originalFileName_ = info ? info->originalFileName : std::string();
    productName_ = info ? info->productName : std::string();
    translation_ = info ? info->translation : std::string();
    return info.has_value();
}

std::string clsVersionInfo::NumericVersion() const {
    if (fileVersion_ == "0") return "0.0.0.0";
    return fileVersion_.substr(0, fileVersion_.find(' '));
}

} // namespace tovel

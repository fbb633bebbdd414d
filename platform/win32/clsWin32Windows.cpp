#include "platform/win32/clsWin32Windows.h"

#include "platform/win32/Win32Headers.h"

#include "platform/clsWindowsPath.h"
#include "platform/win32/clsWin32Text.h"

namespace tovel {

namespace {

struct Search {
    const std::string* classPattern;
    const std::string* titlePattern;
    bool found = false;
};

bool Matches(const std::string& pattern, const std::string& text) {
    return pattern.empty() || clsWindowsPath::MatchWildcard(pattern, text);
}

BOOL CALLBACK VisitWindow(HWND window, LPARAM context) {
    auto& search = *reinterpret_cast<Search*>(context);
    wchar_t className[257] = {};
    const int classLength = GetClassNameW(window, className, 257);
    if (!Matches(*search.classPattern, clsWin32Text::ToUtf8(std::wstring_view(className, classLength > 0 ? static_cast<size_t>(classLength) : 0)))) {
        return TRUE;
    }
    std::wstring title;
    const int length = GetWindowTextLengthW(window);
    if (length > 0) {
        title.resize(static_cast<size_t>(length) + 1);
        const int got = GetWindowTextW(window, title.data(), length + 1);
        title.resize(got > 0 ? static_cast<size_t>(got) : 0);
    }
    if (!Matches(*search.titlePattern, clsWin32Text::ToUtf8(title))) return TRUE;
    search.found = true;
    return FALSE;
}

} // namespace

bool clsWin32Windows::FindTopLevelWindow(const std::string& classPattern, const std::string& titlePattern) {
    Search search{&classPattern, &titlePattern};
    // EnumWindows reports FALSE also when the callback stopped it; only the flag counts.
    EnumWindows(VisitWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace tovel

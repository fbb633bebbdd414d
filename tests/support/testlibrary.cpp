// A COM library for registration tests, as far as registering goes: DllRegisterServer sets the
// default value of HKEY_CURRENT_USER\Software\TovelSetupTest\Library to the library's own
// path, DllUnregisterServer deletes that key. Its version resource says 2.0.0.0.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

namespace {
constexpr const wchar_t* kKey = L"Software\\TovelSetupTest\\Library";
HMODULE self = nullptr;
} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) self = instance;
    return TRUE;
}

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE DllRegisterServer() {
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(self, path, MAX_PATH);
    if (length == 0 || length == MAX_PATH) return E_FAIL;
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
        return E_FAIL;
    }
    const LONG result = RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(path),
                                       static_cast<DWORD>((length + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
    return result == ERROR_SUCCESS ? S_OK : E_FAIL;
}

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE DllUnregisterServer() {
    return RegDeleteKeyW(HKEY_CURRENT_USER, kKey) == ERROR_SUCCESS ? S_OK : E_FAIL;
}

#include "platform/win32/clsWin32Registry.h"

#include "platform/win32/Win32Headers.h"

#include "platform/win32/clsWin32Text.h"

namespace tovel {

namespace {

HKEY RootKey(RegRoot root) {
    switch (root) {
    case RegRoot::LocalMachine: return HKEY_LOCAL_MACHINE;
    case RegRoot::CurrentUser: return HKEY_CURRENT_USER;
    case RegRoot::Users: return HKEY_USERS;
    }
    return nullptr;
}

// An open key that is closed when it goes out of scope.
class OpenKey {
public:
    OpenKey() = default;
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey() {
        if (handle_ != nullptr) RegCloseKey(handle_);
    }
    // Opens an existing key.
    bool Open(RegRoot root, const std::string& key, REGSAM access) {
        const HKEY base = RootKey(root);
        const auto wide = clsWin32Text::ToWide(key);
        if (base == nullptr || !wide) return false;
        return RegOpenKeyExW(base, wide->c_str(), 0, access, &handle_) == ERROR_SUCCESS;
    }
    // Opens a key, creating it and its missing parents.
    bool Create(RegRoot root, const std::string& key, REGSAM access) {
        const HKEY base = RootKey(root);
        const auto wide = clsWin32Text::ToWide(key);
        if (base == nullptr || !wide) return false;
        return RegCreateKeyExW(base, wide->c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, &handle_,
                               nullptr) == ERROR_SUCCESS;
    }
    [[nodiscard]] HKEY Handle() const { return handle_; }

private:
    HKEY handle_ = nullptr;
};

std::wstring WideChars(const std::string& bytes) {
    std::wstring text(bytes.size() / 2, L'\0');
    for (size_t i = 0; i < text.size(); ++i) {
        text[i] = static_cast<wchar_t>(static_cast<unsigned char>(bytes[2 * i]) |
                                       (static_cast<unsigned char>(bytes[2 * i + 1]) << 8));
    }
    return text;
}

// Data of REG_SZ as stored: the terminating NULs (there may be none, or several) are not
// part of the text; a NUL inside is kept.
std::string StringOf(const std::string& bytes) {
    std::wstring text = WideChars(bytes);
    while (!text.empty() && text.back() == L'\0') text.pop_back();
    return clsWin32Text::ToUtf8(text);
}

// "one\0two\0\0": an empty string ends the list; a last string without its NUL still counts.
std::vector<std::string> StringsOf(const std::string& bytes) {
    std::vector<std::string> strings;
    const std::wstring text = WideChars(bytes);
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find(L'\0', start);
        if (end == std::wstring::npos) end = text.size();
        if (end == start) break;
        strings.push_back(clsWin32Text::ToUtf8(std::wstring_view(text).substr(start, end - start)));
        start = end + 1;
    }
    return strings;
}

void AppendWide(std::string& out, const std::wstring& text) {
    for (wchar_t c : text) {
        out += static_cast<char>(c & 0xFF);
        out += static_cast<char>((c >> 8) & 0xFF);
    }
    out += '\0';
    out += '\0';
}

// The data RegSetValueEx takes for a value; nullopt for a value the registry cannot hold
// as given (text that is not UTF-8, an empty string inside a multi-string).
std::optional<std::string> DataOf(const clsRegValue& value) {
    std::string data;
    // A value made with clsRegValue::Raw keeps its bytes as they are, whatever its type: a
    // DWORD of another size or a string without its NUL read from the registry goes back
    // unchanged.
    const bool structured = !value.text.empty() || !value.strings.empty() || value.number != 0;
    if (!value.bytes.empty() && !structured) return value.bytes;
    switch (value.type) {
    case RegType::Sz:
    case RegType::ExpandSz: {
        const auto wide = clsWin32Text::ToWide(value.text);
        if (!wide) return std::nullopt;
        AppendWide(data, *wide);
        return data;
    }
    case RegType::MultiSz:
        for (const auto& text : value.strings) {
            const auto wide = clsWin32Text::ToWide(text);
            if (!wide || wide->empty() || wide->find(L'\0') != std::wstring::npos) return std::nullopt;
            AppendWide(data, *wide);
        }
        data += '\0';
        data += '\0';
        return data;
    case RegType::Dword:
        for (int shift = 0; shift < 32; shift += 8) data += static_cast<char>((value.number >> shift) & 0xFF);
        return data;
    default:
        return value.bytes;
    }
}

clsRegValue ValueOf(DWORD type, std::string bytes) {
    switch (type) {
    case REG_SZ: return clsRegValue::String(StringOf(bytes));
    case REG_EXPAND_SZ: return clsRegValue::ExpandString(StringOf(bytes));
    case REG_MULTI_SZ: return clsRegValue::MultiString(StringsOf(bytes));
    case REG_DWORD:
        if (bytes.size() == 4) {
            uint32_t number = 0;
            for (int i = 3; i >= 0; --i) number = (number << 8) | static_cast<unsigned char>(bytes[static_cast<size_t>(i)]);
            return clsRegValue::Dword(number);
        }
        break;  // a DWORD of another size is kept as it is
    default: break;
    }
    return clsRegValue::Raw(type, std::move(bytes));
}

} // namespace

bool clsWin32Registry::KeyExists(RegRoot root, const std::string& key) {
    OpenKey open;
    return open.Open(root, key, KEY_READ);
}

bool clsWin32Registry::CreateKey(RegRoot root, const std::string& key) {
    OpenKey open;
    return open.Create(root, key, KEY_READ);
}

std::optional<clsRegValue> clsWin32Registry::QueryValue(RegRoot root, const std::string& key, const std::string& name) {
    OpenKey open;
    const auto wideName = clsWin32Text::ToWide(name);
    if (!wideName || !open.Open(root, key, KEY_QUERY_VALUE)) return std::nullopt;
    std::string data(512, '\0');
    DWORD type = REG_NONE;
    // The value can grow between the calls; ask again with what the registry said it needs.
    for (int attempt = 0; attempt < 16; ++attempt) {
        auto size = static_cast<DWORD>(data.size());
        const LONG rc = RegQueryValueExW(open.Handle(), wideName->c_str(), nullptr, &type,
                                         reinterpret_cast<BYTE*>(data.data()), &size);
        if (rc == ERROR_MORE_DATA) {
            data.resize(size > data.size() ? size : data.size() * 2);
            continue;
        }
        if (rc != ERROR_SUCCESS) return std::nullopt;
        data.resize(size);
        return ValueOf(type, std::move(data));
    }
    return std::nullopt;
}

bool clsWin32Registry::SetValue(RegRoot root, const std::string& key, const std::string& name,
                                const clsRegValue& value) {
    const auto wideName = clsWin32Text::ToWide(name);
    const auto data = DataOf(value);
    if (!wideName || !data || data->size() > 0xFFFFFFFFu) return false;
    OpenKey open;
    if (!open.Create(root, key, KEY_SET_VALUE)) return false;
    return RegSetValueExW(open.Handle(), wideName->c_str(), 0, static_cast<DWORD>(value.type),
                          reinterpret_cast<const BYTE*>(data->data()), static_cast<DWORD>(data->size())) ==
           ERROR_SUCCESS;
}

namespace {
// The names a RegEnum...W function gives one by one; its buffer grows when a name is longer
// than the buffer (ERROR_MORE_DATA).
template <typename EnumAt>
std::vector<std::string> EnumNames(EnumAt enumAt) {
    std::vector<std::string> names;
    std::wstring buffer(256, L'\0');
    for (DWORD index = 0;;) {
        auto length = static_cast<DWORD>(buffer.size());
        const LONG rc = enumAt(index, buffer.data(), &length);
        if (rc == ERROR_MORE_DATA && buffer.size() < 65536) {
            buffer.resize(buffer.size() * 2);
            continue;
        }
        if (rc != ERROR_SUCCESS) break;
        names.push_back(clsWin32Text::ToUtf8(std::wstring_view(buffer.data(), length)));
        ++index;
    }
    return names;
}
} // namespace

std::optional<std::vector<std::string>> clsWin32Registry::EnumKeys(RegRoot root, const std::string& key) {
    OpenKey open;
    if (!open.Open(root, key, KEY_READ)) return std::nullopt;
    return EnumNames([&](DWORD index, wchar_t* name, DWORD* length) {
        return RegEnumKeyExW(open.Handle(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
}

std::optional<std::vector<std::string>> clsWin32Registry::EnumValues(RegRoot root, const std::string& key) {
    OpenKey open;
    if (!open.Open(root, key, KEY_QUERY_VALUE)) return std::nullopt;
    return EnumNames([&](DWORD index, wchar_t* name, DWORD* length) {
        return RegEnumValueW(open.Handle(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
}

bool clsWin32Registry::DeleteKey(RegRoot root, const std::string& key) {
    if (key.empty()) return false;
    const auto wide = clsWin32Text::ToWide(key);
    if (!wide) return false;
    {
        // Windows 9x would delete the whole tree; refuse a key with subkeys everywhere alike.
        OpenKey open;
        if (!open.Open(root, key, KEY_READ)) return false;
        DWORD subkeys = 0;
        if (RegQueryInfoKeyW(open.Handle(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, nullptr, nullptr,
                             nullptr, nullptr, nullptr) != ERROR_SUCCESS ||
            subkeys != 0) {
            return false;
        }
    }
    return RegDeleteKeyW(RootKey(root), wide->c_str()) == ERROR_SUCCESS;
}

bool clsWin32Registry::DeleteValue(RegRoot root, const std::string& key, const std::string& name) {
    const auto wideName = clsWin32Text::ToWide(name);
    OpenKey open;
    if (!wideName || !open.Open(root, key, KEY_SET_VALUE)) return false;
    return RegDeleteValueW(open.Handle(), wideName->c_str()) == ERROR_SUCCESS;
}

} // namespace tovel

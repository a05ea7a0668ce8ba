#include "platform/Registry_win.h"

#include <windows.h>

#include <algorithm>
#include <vector>

#include "platform/WinText_win.h"

namespace lumora {
namespace {

#ifndef HKEY_DYN_DATA
#define HKEY_DYN_DATA ((HKEY)(ULONG_PTR)((LONG)0x80000006))
#endif

HKEY RootHandle(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot: return HKEY_CLASSES_ROOT;
        case RegistryRoot::CurrentUser: return HKEY_CURRENT_USER;
        case RegistryRoot::LocalMachine: return HKEY_LOCAL_MACHINE;
        case RegistryRoot::Users: return HKEY_USERS;
        case RegistryRoot::PerformanceData: return HKEY_PERFORMANCE_DATA;
        case RegistryRoot::CurrentConfig: return HKEY_CURRENT_CONFIG;
        case RegistryRoot::DynData: return HKEY_DYN_DATA;
    }
    return nullptr;
}

class Key {
public:
    Key() = default;
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() {
        if (handle_) RegCloseKey(handle_);
    }
    long Open(RegistryRoot root, const std::string& subKey, REGSAM access) {
        return RegOpenKeyExW(RootHandle(root), Widen(subKey).c_str(), 0, access, &handle_);
    }
    HKEY get() const { return handle_; }
    HKEY* out() { return &handle_; }

private:
    HKEY handle_ = nullptr;
};

long DeleteTree(HKEY parent, const std::wstring& subKey) {
    {
        HKEY raw = nullptr;
        long rc = RegOpenKeyExW(parent, subKey.c_str(), 0, KEY_READ | KEY_WRITE, &raw);
        if (rc != ERROR_SUCCESS) return rc;
        // Children first: RegDeleteKey refuses a key that still has sub-keys.
        for (;;) {
            wchar_t name[256];
            DWORD len = 256;
            rc = RegEnumKeyExW(raw, 0, name, &len, nullptr, nullptr, nullptr, nullptr);
            if (rc == ERROR_NO_MORE_ITEMS) break;
            if (rc == ERROR_SUCCESS) rc = DeleteTree(raw, name);
            if (rc != ERROR_SUCCESS) {
                RegCloseKey(raw);
                return rc;
            }
        }
        RegCloseKey(raw);
    }
    return RegDeleteKeyW(parent, subKey.c_str());
}

}  // namespace

long WinRegistry::CreateKey(RegistryRoot root, const std::string& subKey) {
    Key key;
    return RegCreateKeyExW(RootHandle(root), Widen(subKey).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                           nullptr, key.out(), nullptr);
}

long WinRegistry::WriteBinary(RegistryRoot root, const std::string& subKey, const std::string& name,
                              std::string_view bytes) {
    Key key;
    if (long rc = key.Open(root, subKey, KEY_WRITE); rc != ERROR_SUCCESS) return rc;
    return RegSetValueExW(key.get(), Widen(name).c_str(), 0, REG_BINARY, reinterpret_cast<const BYTE*>(bytes.data()),
                          static_cast<DWORD>(bytes.size()));
}

long WinRegistry::WriteText(RegistryRoot root, const std::string& subKey, const std::string& name,
                            std::string_view utf8) {
    Key key;
    if (long rc = key.Open(root, subKey, KEY_WRITE); rc != ERROR_SUCCESS) return rc;
    const std::wstring text = Widen(utf8);
    return RegSetValueExW(key.get(), Widen(name).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

long WinRegistry::WriteNumber(RegistryRoot root, const std::string& subKey, const std::string& name,
                              std::uint32_t number) {
    Key key;
    if (long rc = key.Open(root, subKey, KEY_WRITE); rc != ERROR_SUCCESS) return rc;
    const DWORD n = number;
    return RegSetValueExW(key.get(), Widen(name).c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&n), sizeof n);
}

long WinRegistry::ListKey(RegistryRoot root, const std::string& subKey, KeyListing& listing) {
    Key key;
    if (long rc = key.Open(root, subKey, KEY_READ); rc != ERROR_SUCCESS) return rc;
    DWORD maxKey = 0, maxValue = 0;
    if (long rc = RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, nullptr, &maxKey, nullptr, nullptr, &maxValue,
                                   nullptr, nullptr, nullptr);
        rc != ERROR_SUCCESS)
        return rc;
    listing = {};
    std::wstring name(std::max(maxKey, maxValue) + 1, L'\0');
    for (DWORD i = 0;; ++i) {
        DWORD len = static_cast<DWORD>(name.size());
        const long rc = RegEnumKeyExW(key.get(), i, name.data(), &len, nullptr, nullptr, nullptr, nullptr);
        if (rc == ERROR_NO_MORE_ITEMS) break;
        if (rc != ERROR_SUCCESS) return rc;
        listing.subKeys.push_back(Narrow(std::wstring_view(name.data(), len)));
    }
    for (DWORD i = 0;; ++i) {
        DWORD len = static_cast<DWORD>(name.size());
        const long rc = RegEnumValueW(key.get(), i, name.data(), &len, nullptr, nullptr, nullptr, nullptr);
        if (rc == ERROR_NO_MORE_ITEMS) break;
        if (rc != ERROR_SUCCESS) return rc;
        listing.values.push_back(Narrow(std::wstring_view(name.data(), len)));
    }
    return ERROR_SUCCESS;
}

long WinRegistry::Read(RegistryRoot root, const std::string& subKey, const std::string& name, RegistryValue& value) {
    Key key;
    if (long rc = key.Open(root, subKey, KEY_READ); rc != ERROR_SUCCESS) return rc;
    const std::wstring wname = Widen(name);
    // Size first, then the data; the value may grow in between, so ask again when it did.
    for (int attempt = 0; attempt < 4; ++attempt) {
        DWORD type = 0;
        DWORD size = 0;
        long rc = RegQueryValueExW(key.get(), wname.c_str(), nullptr, &type, nullptr, &size);
        if (rc != ERROR_SUCCESS) return rc;
        std::vector<BYTE> data(size + 2, 0);
        DWORD got = size;
        rc = RegQueryValueExW(key.get(), wname.c_str(), nullptr, &type, data.data(), &got);
        if (rc == ERROR_MORE_DATA) continue;
        if (rc != ERROR_SUCCESS) return rc;
        data.resize(got);
        switch (type) {
            case REG_SZ:
            case REG_EXPAND_SZ: {
                std::wstring text(got / sizeof(wchar_t), L'\0');
                if (!text.empty()) memcpy(text.data(), data.data(), text.size() * sizeof(wchar_t));
                while (!text.empty() && text.back() == L'\0') text.pop_back();
                value = {RegistryValue::Kind::Text, Narrow(text)};
                break;
            }
            case REG_DWORD: {
                DWORD n = 0;
                memcpy(&n, data.data(), got < sizeof n ? got : sizeof n);
                value = {RegistryValue::Kind::Number, std::to_string(n)};
                break;
            }
            default:
                value = {type == REG_BINARY ? RegistryValue::Kind::Binary : RegistryValue::Kind::Other,
                         std::string(reinterpret_cast<const char*>(data.data()), got)};
        }
        return ERROR_SUCCESS;
    }
    return ERROR_MORE_DATA;
}

long WinRegistry::DeleteValue(RegistryRoot root, const std::string& subKey, const std::string& name) {
    Key key;
    if (long rc = key.Open(root, subKey, KEY_WRITE); rc != ERROR_SUCCESS) return rc;
    return RegDeleteValueW(key.get(), Widen(name).c_str());
}

long WinRegistry::DeleteKey(RegistryRoot root, const std::string& subKey) {
    return DeleteTree(RootHandle(root), Widen(subKey));
}

}  // namespace lumora

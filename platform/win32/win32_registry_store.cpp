#include "platform/win32/win32_registry_store.h"

#include <windows.h>

#include <iterator>

#include "platform/portable/reg_file_document.h"
#include "platform/win32/unique_handle.h"

namespace {

HKEY RootKey(RegHive hive) {
    // In the order of RegHive, whose numbers start at None.
    static_assert(static_cast<int>(RegHive::DynData) == 7, "one root for each hive");
    static const HKEY kRoots[] = {
        nullptr,    HKEY_CLASSES_ROOT,     HKEY_CURRENT_USER,   HKEY_LOCAL_MACHINE,
        HKEY_USERS, HKEY_PERFORMANCE_DATA, HKEY_CURRENT_CONFIG, HKEY_DYN_DATA};
    const auto index = static_cast<std::size_t>(hive);
    return index < std::size(kRoots) ? kRoots[index] : nullptr;
}

// The registry refuses a path with empty parts ("a\\\\b", a leading '\'); the port lets them be.
RegistryKey Open(RegHive hive, const std::wstring& path) {
    HKEY root = RootKey(hive);
    if (root == nullptr)
        return {};
    return OpenRegistryKey(root, NormalizeKeyPath(path).c_str(), reg::kAllAccess);
}

// Key and value names are at most this long, terminator included.
constexpr DWORD kNameCapacity = 16384;

// Each name that `next(index, buffer, length)` gives, until it says there are no more or fails
// (a key deleted meanwhile).
template <class Next>
std::vector<std::wstring> Enumerate(Next next) {
    std::vector<std::wstring> names;
    std::wstring buffer(kNameCapacity, L'\0');
    for (DWORD index = 0;; ++index) {
        DWORD length = kNameCapacity;
        if (next(index, buffer.data(), &length) != ERROR_SUCCESS)
            break;
        names.emplace_back(buffer.data(), length);
    }
    return names;
}

}  // namespace

bool Win32RegistryStore::KeyExists(RegHive hive, const std::wstring& path) {
    return static_cast<bool>(Open(hive, path));
}

bool Win32RegistryStore::CreateKey(RegHive hive, const std::wstring& path) {
    HKEY root = RootKey(hive);
    if (root == nullptr)
        return false;
    const std::wstring normalized = NormalizeKeyPath(path);
    HKEY key = nullptr;
    const LSTATUS status = ::RegCreateKeyExW(root, normalized.c_str(), 0, nullptr,
                                             REG_OPTION_NON_VOLATILE, reg::kAllAccess, nullptr,
                                             &key, nullptr);
    const RegistryKey created(status == ERROR_SUCCESS ? key : nullptr);
    return static_cast<bool>(created);
}

std::optional<RegValue> Win32RegistryStore::QueryValue(RegHive hive, const std::wstring& path,
                                                       const std::wstring& name) {
    RegistryKey key = Open(hive, path);
    if (!key)
        return std::nullopt;
    // Size first, then the bytes; a value that grows between the two calls is asked again.
    for (int attempt = 0; attempt < 4; ++attempt) {
        DWORD type = REG_NONE;
        DWORD size = 0;
        if (::RegQueryValueExW(key.Get(), name.c_str(), nullptr, &type, nullptr, &size) !=
            ERROR_SUCCESS)
            return std::nullopt;
        RegValue value{type, std::vector<std::uint8_t>(size)};
        const LSTATUS status =
            ::RegQueryValueExW(key.Get(), name.c_str(), nullptr, &type, value.data.data(), &size);
        if (status == ERROR_MORE_DATA)
            continue;
        if (status != ERROR_SUCCESS)
            return std::nullopt;
        value.type = type;
        value.data.resize(size);
        return value;
    }
    return std::nullopt;
}

bool Win32RegistryStore::SetValue(RegHive hive, const std::wstring& path, const std::wstring& name,
                                  const RegValue& value) {
    RegistryKey key = Open(hive, path);
    if (!key)
        return false;
    // For a string the registry looks at the character behind the data and, when that is a
    // terminator, stores it too. So the bytes go with a character behind them that is none:
    // what is stored is exactly what was given, and nothing past the buffer is read.
    std::vector<std::uint8_t> bytes = value.data;
    const bool text =
        value.type == REG_SZ || value.type == REG_EXPAND_SZ || value.type == REG_MULTI_SZ;
    if (text)
        bytes.insert(bytes.end(), 3, 0xFF);
    return ::RegSetValueExW(key.Get(), name.c_str(), 0, value.type,
                            bytes.empty() ? nullptr : bytes.data(),
                            static_cast<DWORD>(value.data.size())) == ERROR_SUCCESS;
}

bool Win32RegistryStore::DeleteValue(RegHive hive, const std::wstring& path,
                                     const std::wstring& name) {
    RegistryKey key = Open(hive, path);
    return key && ::RegDeleteValueW(key.Get(), name.c_str()) == ERROR_SUCCESS;
}

std::vector<std::wstring> Win32RegistryStore::ValueNames(RegHive hive, const std::wstring& path) {
    RegistryKey key = Open(hive, path);
    if (!key)
        return {};
    return Enumerate([&key](DWORD index, wchar_t* name, DWORD* length) {
        return ::RegEnumValueW(key.Get(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
}

std::vector<std::wstring> Win32RegistryStore::SubKeyNames(RegHive hive, const std::wstring& path) {
    RegistryKey key = Open(hive, path);
    if (!key)
        return {};
    return Enumerate([&key](DWORD index, wchar_t* name, DWORD* length) {
        return ::RegEnumKeyExW(key.Get(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
}

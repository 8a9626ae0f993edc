#include "settings/registry_key.h"

#include "ports/port.h"

namespace {

// Joins `tail` below `head`, dropping empty parts so that "a\\", "\\b" and "a\\\\b" all work.
std::wstring JoinKeyPath(const std::wstring& head, const std::wstring& tail) {
    std::wstring joined = head;
    std::size_t start = 0;
    while (start <= tail.size()) {
        std::size_t end = tail.find(L'\\', start);
        if (end == std::wstring::npos)
            end = tail.size();
        if (end > start) {
            if (!joined.empty())
                joined += L'\\';
            joined.append(tail, start, end - start);
        }
        start = end + 1;
    }
    return joined;
}

}  // namespace

CRegistryKey::CRegistryKey(RegHive parent, const std::wstring& subKey, bool create,
                           const std::wstring& keyClass, std::uint32_t /*access*/)
    : m_strClass(keyClass), m_strName(subKey) {
    if (parent != RegHive::None) {
        Open(parent, JoinKeyPath({}, subKey), create);
        return;
    }
    std::wstring path = JoinKeyPath({}, subKey);
    std::size_t cut = path.find(L'\\');
    RegHive hive = reg::HiveFromName(path.substr(0, cut));
    if (hive == RegHive::None)
        return;
    Open(hive, cut == std::wstring::npos ? std::wstring() : path.substr(cut + 1), create);
}

CRegistryKey::CRegistryKey(const CRegistryKey& parent, const std::wstring& subKey, bool create,
                           const std::wstring& keyClass, std::uint32_t /*access*/)
    : m_strClass(keyClass), m_strName(subKey) {
    if (parent.IsOpen())
        Open(parent.m_hKey.hive, JoinKeyPath(parent.m_hKey.path, subKey), create);
}

CRegistryKey::~CRegistryKey() = default;

void CRegistryKey::Open(RegHive hive, const std::wstring& path, bool create) {
    m_strPath = JoinKeyPath(std::wstring(reg::HiveName(hive)), path);
    if (!IsInstalled<KeyValueStore>())
        return;
    KeyValueStore& store = Use<KeyValueStore>();
    // Open first and create only when that failed, as the registry's callers do: an existing key
    // is never rewritten by being opened.
    bool exists = store.KeyExists(hive, path);
    if (!exists && create)
        exists = store.CreateKey(hive, path);
    if (exists)
        m_hKey = RegKeyHandle{hive, path};
}

std::optional<RegValue> CRegistryKey::QueryValue(const std::wstring& name) const {
    if (!IsOpen())
        return std::nullopt;
    return Use<KeyValueStore>().QueryValue(m_hKey.hive, m_hKey.path, name);
}

bool CRegistryKey::SetValue(const std::wstring& name, const RegValue& value) {
    return IsOpen() && Use<KeyValueStore>().SetValue(m_hKey.hive, m_hKey.path, name, value);
}

bool CRegistryKey::SetDword(const std::wstring& name, std::uint32_t value) {
    RegValue stored{reg::kDword, {}};
    for (int shift = 0; shift < 32; shift += 8) {
        stored.data.push_back(static_cast<std::uint8_t>((value >> shift) & 0xFF));
    }
    return SetValue(name, stored);
}

bool CRegistryKey::SetString(const std::wstring& name, const std::wstring& text) {
    return SetValue(name, RegValue{reg::kSz, reg::StringBytes(text)});
}

bool CRegistryKey::DeleteValue(const std::wstring& name) {
    return IsOpen() && Use<KeyValueStore>().DeleteValue(m_hKey.hive, m_hKey.path, name);
}

std::vector<std::wstring> CRegistryKey::ValueNames() const {
    if (!IsOpen())
        return {};
    return Use<KeyValueStore>().ValueNames(m_hKey.hive, m_hKey.path);
}

std::vector<std::wstring> CRegistryKey::SubKeyNames() const {
    if (!IsOpen())
        return {};
    return Use<KeyValueStore>().SubKeyNames(m_hKey.hive, m_hKey.path);
}

#pragma once
// One key of the key/value store, opened (and, when asked, created) on construction.
//
// The key keeps no handle in the store, only where it is: every access goes to the store on its
// own, so a key object may outlive a change made through another.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ports/key_value_store.h"

// Where an open key lives; `hive` is None while the key is not open.
struct RegKeyHandle {
    RegHive hive = RegHive::None;
    std::wstring path;  // below the hive, parts joined by '\', no empty parts
};

class CRegistryKey {
public:
    // A `parent` of RegHive::None means that `subKey` begins with a hive's full name, such as
    // HKEY_CURRENT_USER, compared ignoring case. With `create`, a missing key is created.
    CRegistryKey(RegHive parent, const std::wstring& subKey, bool create,
                 const std::wstring& keyClass = {}, std::uint32_t access = reg::kAllAccess);
    CRegistryKey(const CRegistryKey& parent, const std::wstring& subKey, bool create,
                 const std::wstring& keyClass = {}, std::uint32_t access = reg::kAllAccess);
    virtual ~CRegistryKey();

    CRegistryKey(const CRegistryKey&) = default;
    CRegistryKey& operator=(const CRegistryKey&) = default;

    bool IsOpen() const { return m_hKey.hive != RegHive::None; }

    std::optional<RegValue> QueryValue(const std::wstring& name) const;
    bool SetValue(const std::wstring& name, const RegValue& value);
    bool SetDword(const std::wstring& name, std::uint32_t value);
    bool SetString(const std::wstring& name, const std::wstring& text);
    bool DeleteValue(const std::wstring& name);
    std::vector<std::wstring> ValueNames() const;
    std::vector<std::wstring> SubKeyNames() const;

    std::wstring m_strPath;   // the whole path, beginning with the hive's name
    std::wstring m_strClass;  // the class string given for creation
    std::wstring m_strName;   // the sub-key path as given
    RegKeyHandle m_hKey;

private:
    void Open(RegHive hive, const std::wstring& path, bool create);
};

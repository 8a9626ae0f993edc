#pragma once
// The key/value store on the window system's registry. Every call opens its key with the
// access mask the system asks for, does its one read or write, and closes the key again.

#include "ports/key_value_store.h"

class Win32RegistryStore : public KeyValueStore {
public:
    bool KeyExists(RegHive hive, const std::wstring& path) override;
    bool CreateKey(RegHive hive, const std::wstring& path) override;
    std::optional<RegValue> QueryValue(RegHive hive, const std::wstring& path,
                                       const std::wstring& name) override;
    bool SetValue(RegHive hive, const std::wstring& path, const std::wstring& name,
                  const RegValue& value) override;
    bool DeleteValue(RegHive hive, const std::wstring& path, const std::wstring& name) override;
    // Names in the registry's own enumeration order.
    std::vector<std::wstring> ValueNames(RegHive hive, const std::wstring& path) override;
    std::vector<std::wstring> SubKeyNames(RegHive hive, const std::wstring& path) override;
};

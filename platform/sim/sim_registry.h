#pragma once
// The key/value store of the simulated machine, held in memory: keys below their hives, compared
// without regard to case, values in the order they were first set. A test can make every
// write fail to see that nothing is lost and nothing is reported past its result.

#include <map>
#include <string>
#include <vector>

#include "ports/key_value_store.h"

class SimRegistry : public KeyValueStore {
public:
    void SetReadOnly(bool readOnly) { m_readOnly = readOnly; }

    bool KeyExists(RegHive hive, const std::wstring& path) override;
    bool CreateKey(RegHive hive, const std::wstring& path) override;
    std::optional<RegValue> QueryValue(RegHive hive, const std::wstring& path,
                                       const std::wstring& name) override;
    bool SetValue(RegHive hive, const std::wstring& path, const std::wstring& name,
                  const RegValue& value) override;
    bool DeleteValue(RegHive hive, const std::wstring& path, const std::wstring& name) override;
    std::vector<std::wstring> ValueNames(RegHive hive, const std::wstring& path) override;
    std::vector<std::wstring> SubKeyNames(RegHive hive, const std::wstring& path) override;

private:
    struct Key {
        std::wstring name;  // as first created
        std::vector<std::pair<std::wstring, RegValue>> values;
    };
    // "hive|lowercased\parts" of a path with its empty parts dropped.
    static std::wstring Normal(RegHive hive, const std::wstring& path);
    Key* Find(RegHive hive, const std::wstring& path);

    std::map<std::wstring, Key> m_keys;
    bool m_readOnly = false;
};

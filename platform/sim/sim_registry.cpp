#include "platform/sim/sim_registry.h"

#include <cwctype>

namespace {

std::vector<std::wstring> Parts(const std::wstring& path) {
    std::vector<std::wstring> parts;
    std::wstring part;
    for (wchar_t c : path + L"\\") {
        if (c != L'\\') {
            part += c;
        } else if (!part.empty()) {
            parts.push_back(part);
            part.clear();
        }
    }
    return parts;
}

std::wstring Lower(std::wstring text) {
    for (wchar_t& c : text)
        c = static_cast<wchar_t>(std::towlower(c));
    return text;
}

}  // namespace

std::wstring SimRegistry::Normal(RegHive hive, const std::wstring& path) {
    std::wstring key = std::to_wstring(static_cast<unsigned>(hive)) + L"|";
    for (const std::wstring& part : Parts(path))
        key += Lower(part) + L"\\";
    return key;
}

SimRegistry::Key* SimRegistry::Find(RegHive hive, const std::wstring& path) {
    std::wstring normal = Normal(hive, path);
    // A hive's own key always exists and holds values like any other.
    if (hive != RegHive::None && Parts(path).empty())
        return &m_keys[normal];
    auto it = m_keys.find(normal);
    return it == m_keys.end() ? nullptr : &it->second;
}

bool SimRegistry::KeyExists(RegHive hive, const std::wstring& path) {
    return Find(hive, path) != nullptr;
}

bool SimRegistry::CreateKey(RegHive hive, const std::wstring& path) {
    if (hive == RegHive::None)
        return false;
    if (KeyExists(hive, path))
        return true;
    if (m_readOnly)
        return false;
    std::wstring partial;
    for (const std::wstring& part : Parts(path)) {
        partial += part + L"\\";
        std::wstring normal = Normal(hive, partial);
        if (m_keys.count(normal) == 0)
            m_keys[normal].name = part;
    }
    return true;
}

std::optional<RegValue> SimRegistry::QueryValue(RegHive hive, const std::wstring& path,
                                                const std::wstring& name) {
    Key* key = Find(hive, path);
    if (key == nullptr)
        return std::nullopt;
    for (const auto& [valueName, value] : key->values) {
        if (EqualNoCase(valueName, name))
            return value;
    }
    return std::nullopt;
}

bool SimRegistry::SetValue(RegHive hive, const std::wstring& path, const std::wstring& name,
                           const RegValue& value) {
    Key* key = Find(hive, path);
    if (key == nullptr || m_readOnly)
        return false;
    for (auto& [valueName, stored] : key->values) {
        if (EqualNoCase(valueName, name)) {
            stored = value;
            return true;
        }
    }
    key->values.emplace_back(name, value);
    return true;
}

bool SimRegistry::DeleteValue(RegHive hive, const std::wstring& path, const std::wstring& name) {
    Key* key = Find(hive, path);
    if (key == nullptr || m_readOnly)
        return false;
    return std::erase_if(key->values,
                         [&](const auto& entry) { return EqualNoCase(entry.first, name); }) > 0;
}

std::vector<std::wstring> SimRegistry::ValueNames(RegHive hive, const std::wstring& path) {
    std::vector<std::wstring> names;
    if (Key* key = Find(hive, path)) {
        for (const auto& entry : key->values)
            names.push_back(entry.first);
    }
    return names;
}

std::vector<std::wstring> SimRegistry::SubKeyNames(RegHive hive, const std::wstring& path) {
    std::vector<std::wstring> names;
    std::wstring prefix = Normal(hive, path);
    for (const auto& [normal, key] : m_keys) {
        if (normal.size() <= prefix.size() || normal.compare(0, prefix.size(), prefix) != 0) {
            continue;
        }
        // A direct child has exactly one more part.
        if (normal.find(L'\\', prefix.size()) == normal.size() - 1)
            names.push_back(key.name);
    }
    return names;
}

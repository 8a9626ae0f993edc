#pragma once
// A hierarchical key/value store with the registry's semantics: keys under a hive, paths
// separated by '\' and compared without regard to case, values named within a key (the empty
// name is the key's default value), each value a type tag and its bytes as stored.
//
// The store keeps bytes; what a value means (an integer, a double as text, a font) is decided
// above it. Every call stands alone: there are no open handles to share or leak.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/no_case.h"

// The predefined root keys. None (0) means a path that names its hive in its first part.
enum class RegHive : std::uint32_t {
    None = 0,
    ClassesRoot,
    CurrentUser,
    LocalMachine,
    Users,
    PerformanceData,
    CurrentConfig,
    DynData,
};

namespace reg {
// Value types with the registry's own numbers, so that a stored file says what the registry says.
constexpr std::uint32_t kNone = 0;
constexpr std::uint32_t kSz = 1;
constexpr std::uint32_t kExpandSz = 2;
constexpr std::uint32_t kBinary = 3;
constexpr std::uint32_t kDword = 4;
constexpr std::uint32_t kMultiSz = 7;
constexpr std::uint32_t kQword = 11;

// The access mask every key is opened with (KEY_ALL_ACCESS).
constexpr std::uint32_t kAllAccess = 0x2001F;

struct HiveEntry {
    RegHive hive;
    std::wstring_view name;
};
inline constexpr std::array<HiveEntry, 7> kHiveNames{{
    {RegHive::ClassesRoot, L"HKEY_CLASSES_ROOT"},
    {RegHive::CurrentUser, L"HKEY_CURRENT_USER"},
    {RegHive::LocalMachine, L"HKEY_LOCAL_MACHINE"},
    {RegHive::Users, L"HKEY_USERS"},
    {RegHive::PerformanceData, L"HKEY_PERFORMANCE_DATA"},
    {RegHive::CurrentConfig, L"HKEY_CURRENT_CONFIG"},
    {RegHive::DynData, L"HKEY_DYN_DATA"},
}};

// The hive a full name stands for, compared ignoring case; None when it is no hive's name.
inline RegHive HiveFromName(std::wstring_view name) {
    for (const HiveEntry& entry : kHiveNames) {
        if (EqualNoCase(entry.name, name))
            return entry.hive;
    }
    return RegHive::None;
}

inline std::wstring_view HiveName(RegHive hive) {
    for (const HiveEntry& entry : kHiveNames) {
        if (entry.hive == hive)
            return entry.name;
    }
    return {};
}
}  // namespace reg

struct RegValue {
    std::uint32_t type = reg::kNone;
    std::vector<std::uint8_t>
        data;  // as the registry stores it; strings are UTF-16LE with terminator
    friend bool operator==(const RegValue&, const RegValue&) = default;
};

namespace reg {
// A string value's bytes: UTF-16LE with its terminator, whatever the width of wchar_t.
inline std::vector<std::uint8_t> StringBytes(std::wstring_view text) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve((text.size() + 1) * 2);
    auto unit = [&bytes](std::uint32_t u) {
        bytes.push_back(static_cast<std::uint8_t>(u & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>((u >> 8) & 0xFF));
    };
    for (wchar_t c : text) {
        auto code = static_cast<std::uint32_t>(c);
        if (code > 0xFFFF && code <= 0x10FFFF) {
            code -= 0x10000;
            unit(0xD800 + (code >> 10));
            unit(0xDC00 + (code & 0x3FF));
        } else {
            unit(code > 0xFFFF ? 0xFFFD : code);
        }
    }
    unit(0);
    return bytes;
}

// The text of string bytes, up to the first terminator; an odd last byte is dropped, as the
// registry's own readers do.
inline std::wstring StringText(const std::vector<std::uint8_t>& bytes) {
    std::wstring text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        std::uint32_t u = bytes[i] | (static_cast<std::uint32_t>(bytes[i + 1]) << 8);
        if (u == 0)
            break;
        if (sizeof(wchar_t) == 4 && u >= 0xD800 && u < 0xDC00 && i + 3 < bytes.size()) {
            std::uint32_t low = bytes[i + 2] | (static_cast<std::uint32_t>(bytes[i + 3]) << 8);
            if (low >= 0xDC00 && low < 0xE000) {
                text.push_back(
                    static_cast<wchar_t>(0x10000 + ((u - 0xD800) << 10) + (low - 0xDC00)));
                i += 2;
                continue;
            }
        }
        text.push_back(static_cast<wchar_t>(u));
    }
    return text;
}
}  // namespace reg

class KeyValueStore {
public:
    virtual ~KeyValueStore() = default;

    // `path` is below `hive` (never RegHive::None here); empty parts ("a\\\\b", a trailing '\')
    // are ignored, as the registry accepts a path that ends in a backslash.
    virtual bool KeyExists(RegHive hive, const std::wstring& path) = 0;
    // Creates the key and any missing parents; true when the key exists afterwards.
    virtual bool CreateKey(RegHive hive, const std::wstring& path) = 0;

    // The value, or nullopt when the key or the value does not exist or cannot be read.
    virtual std::optional<RegValue> QueryValue(RegHive hive, const std::wstring& path,
                                               const std::wstring& name) = 0;
    // Sets a value of an existing key; false (and nothing changed) when that cannot be done.
    virtual bool SetValue(RegHive hive, const std::wstring& path, const std::wstring& name,
                          const RegValue& value) = 0;
    virtual bool DeleteValue(RegHive hive, const std::wstring& path, const std::wstring& name) = 0;

    // Names in the store's order; empty for a missing key.
    virtual std::vector<std::wstring> ValueNames(RegHive hive, const std::wstring& path) = 0;
    virtual std::vector<std::wstring> SubKeyNames(RegHive hive, const std::wstring& path) = 0;
};

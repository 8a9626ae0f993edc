#pragma once
// The text of a registry export file ("Windows Registry Editor Version 5.00"): keys in brackets
// with their full path, values as "name"=..., @ for the default value, dword:, hex: and hex(n):
// data and quoted strings.
//
// Reading takes what it understands and keeps every other line as it was, with the key it stood
// under, so that a file edited by hand loses nothing when it is written again. Writing gives the
// form the registry editor itself exports, UTF-16LE with a byte order mark and CRLF line ends,
// which that editor imports as it stands.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ports/key_value_store.h"

struct RegFileValue {
    std::wstring name;  // empty for the default value
    RegValue value;
};

struct RegFileKey {
    RegHive hive = RegHive::None;
    std::wstring path;  // below the hive, without empty parts
    std::vector<RegFileValue> values;
    // Lines under this key that were not understood, kept as they were (lines joined by a
    // trailing backslash stay together, separated by a line feed). A key whose own header
    // was not understood has hive None and its header here first.
    std::vector<std::wstring> keptLines;
};

class RegFileDocument {
public:
    // The document of a file's bytes (UTF-16LE with its mark, or UTF-8); an empty file is an
    // empty document. Nullopt when the bytes are not an export file at all (no header line).
    static std::optional<RegFileDocument> Parse(std::string_view bytes);
    std::string Serialize() const;

    RegFileKey* FindKey(RegHive hive, std::wstring_view path);
    const RegFileKey* FindKey(RegHive hive, std::wstring_view path) const;
    // The key, added at the end when missing. `path` must be normalised (NormalizeKeyPath).
    RegFileKey& AddKey(RegHive hive, const std::wstring& path);

    // True when the key or any key below it is in the document.
    bool HasKeyOrDescendant(RegHive hive, std::wstring_view path) const;
    // The names of the keys directly below `path`, in document order, each once.
    std::vector<std::wstring> ChildNames(RegHive hive, std::wstring_view path) const;

    std::vector<std::wstring> m_prologue;  // lines before the first key that were kept
    std::vector<RegFileKey> m_keys;
};

// "a\\\\b\\" -> "a\\b": the registry's reading of a path with empty parts.
std::wstring NormalizeKeyPath(std::wstring_view path);

RegFileValue* FindValue(RegFileKey& key, std::wstring_view name);

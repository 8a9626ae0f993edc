#pragma once
// Settings access below one root key of the current user's hive.
//
// Each call opens its section with creation asked for, does its one read or write, and lets the
// key go. There is no cache: reading a setting creates its section, and the section stays behind
// even when nothing is ever written to it. Reads never fail loudly; anything that cannot be read
// gives the caller's default.

#include <cstddef>
#include <string>

#include "foundation/win_types.h"

struct HostWindow;

class HvRegImpl {
public:
    // `baseKey` is the root key's path without the hive ("Software\\Maker\\App\\1.0");
    // `keyClass` is the class string given to every key created.
    explicit HvRegImpl(std::wstring baseKey = {}, std::wstring keyClass = {});
    virtual ~HvRegImpl();

    HvRegImpl(const HvRegImpl&) = default;
    HvRegImpl& operator=(const HvRegImpl&) = default;

    void SetRegistryRoot(const std::wstring& baseKey, const std::wstring& keyClass);

    // `section` is a path below the root key; empty means the root key itself.
    int GetInt(const std::wstring& section, const std::wstring& key, int nDefault) const;
    bool SetInt(const std::wstring& section, const std::wstring& key, int value);

    double GetDouble(const std::wstring& section, const std::wstring& key, double dDefault) const;
    bool SetDouble(const std::wstring& section, const std::wstring& key, double value);

    // An existing but empty value reads as the default.
    std::wstring GetString(const std::wstring& section, const std::wstring& key,
                           const std::wstring& strDefault) const;
    bool SetString(const std::wstring& section, const std::wstring& key, const std::wstring& value);

    // Succeeds only for a binary value of exactly `size` bytes; otherwise `buffer` is untouched.
    bool GetBinary(const std::wstring& section, const std::wstring& key, void* buffer,
                   std::size_t size) const;
    bool SetBinary(const std::wstring& section, const std::wstring& key, const void* data,
                   std::size_t size);

    bool GetFont(const std::wstring& section, const std::wstring& key, win::LOGFONTW& font) const;
    bool SetFont(const std::wstring& section, const std::wstring& key, const win::LOGFONTW& font);

    // The window's rectangle and zoom state as "left:top:right:bottom:MAXIMIZED|NORMAL".
    // Loading applies a stored placement and says whether it did.
    bool LoadWindowPlacement(const std::wstring& section, const std::wstring& key,
                             HostWindow* window) const;
    void SaveWindowPlacement(const std::wstring& section, const std::wstring& key,
                             HostWindow* window);

    // The section's key path below the hive.
    std::wstring SectionPath(const std::wstring& section) const;

    std::wstring m_strBaseKey;
    std::wstring m_strKeyClass;
};

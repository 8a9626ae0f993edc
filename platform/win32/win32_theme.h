#pragma once
// The theme port over the system's visual styles library, which is looked up at run time: a
// system without it, or with styles off, answers "no theme" and the painters draw classic.
// The library is loaded for each question and for the life of each opened theme data, not
// kept: styles can be switched while the program runs, and tabs are few.

#include <windows.h>

#include <memory>
#include <string>

#include "ports/theme.h"

class Win32Theme : public Theme {
public:
    // `library` is the file to load, the system's own unless a test names another.
    explicit Win32Theme(std::wstring library = L"UxTheme.dll");

    // Styles exist from system version 5.1 on; before that, and without the library, never.
    bool IsActive() override;
    // Theme data not tied to a window; null without the library or an active theme.
    std::unique_ptr<ThemeData> Open(const std::wstring& classList) override;

private:
    std::wstring m_strLibrary;
    bool m_bStylesExist;  // the system's version, read once
};

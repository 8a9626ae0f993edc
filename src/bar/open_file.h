#pragma once
// Whether a drawing is open in the host already, asked through the host's automation.

#include <string>

struct HostApplication;

// True when a document of that full name (in any letter case) is open; it is then activated
// and, with `bWarn`, the user told. Any failure on the way answers false, silently.
bool IsDrawingOpen(HostApplication* app, const std::wstring& path, bool bWarn);

#pragma once
// The system libraries this layer looks up at run time instead of linking against, so that a
// system without one still loads the plug-in and draws the plainer way.
//
// They are held by an object, not by function-local statics: the platform layer makes one when
// the plug-in loads and installs it (ScopedPort) until the plug-in unloads, and the libraries
// are freed with it. A static destructor would free them inside the loader's lock, where
// FreeLibrary must not be called.

#include <windows.h>

#include "platform/win32/unique_handle.h"

// The signature of AlphaBlend, as msimg32.dll exports it.
using AlphaBlendFunction = BOOL(WINAPI*)(HDC, int, int, int, int, HDC, int, int, int, int,
                                         BLENDFUNCTION);

class SystemLibraries {
public:
    SystemLibraries();
    SystemLibraries(const SystemLibraries&) = delete;
    SystemLibraries& operator=(const SystemLibraries&) = delete;

    // Null where msimg32.dll or the function is missing.
    AlphaBlendFunction AlphaBlend() const { return m_alphaBlend; }

private:
    ModuleHandle m_msimg32;
    AlphaBlendFunction m_alphaBlend = nullptr;
};

// The AlphaBlend of the installed libraries; null while none are installed or where the
// function is missing, and the callers blend in software.
AlphaBlendFunction SystemAlphaBlend();

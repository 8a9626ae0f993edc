#include "platform/win32/system_libraries.h"

#include "ports/port.h"

namespace {

// `name` of `library` as a pointer of type F; null where either is missing.
template <class F>
F FunctionOf(const ModuleHandle& library, const char* name) {
    if (!library)
        return nullptr;
    return reinterpret_cast<F>(reinterpret_cast<void*>(::GetProcAddress(library.Get(), name)));
}

}  // namespace

SystemLibraries::SystemLibraries()
    : m_msimg32(::LoadLibraryW(L"msimg32.dll")),
      m_alphaBlend(FunctionOf<AlphaBlendFunction>(m_msimg32, "AlphaBlend")) {}

AlphaBlendFunction SystemAlphaBlend() {
    return IsInstalled<SystemLibraries>() ? Use<SystemLibraries>().AlphaBlend() : nullptr;
}

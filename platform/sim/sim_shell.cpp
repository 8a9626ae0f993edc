#include "platform/sim/sim_shell.h"

#include <cwctype>

ShellFileInfo SimShell::DescribeFile(const std::wstring& path) {
    const std::size_t name = path.find_last_of(L"\\/");
    const std::size_t dot = path.find_last_of(L'.');
    ShellFileInfo info;
    info.typeName = L"File";
    if (dot == std::wstring::npos || (name != std::wstring::npos && dot < name))
        return info;
    std::wstring extension = path.substr(dot + 1);
    for (wchar_t& c : extension)
        c = static_cast<wchar_t>(std::towupper(c));
    info.typeName = extension + L" File";
    return info;
}

void SimShell::Open(const std::wstring& path, int showCommand) {
    m_opened.push_back(SimShellOpen{path, showCommand});
}

#pragma once
// The shell of the simulated machine: it knows no file types of its own, so every file is
// described as the system describes an unregistered type, and what it is asked to open is kept
// for a test to read.

#include <string>
#include <vector>

#include "ports/shell.h"

struct SimShellOpen {
    std::wstring path;
    int showCommand = 0;
    friend bool operator==(const SimShellOpen&, const SimShellOpen&) = default;
};

class SimShell : public Shell {
public:
    // "DWT File" for a ".dwt", "File" for a name without extension; no icon.
    ShellFileInfo DescribeFile(const std::wstring& path) override;
    void Open(const std::wstring& path, int showCommand) override;

    const std::vector<SimShellOpen>& Opened() const { return m_opened; }

private:
    std::vector<SimShellOpen> m_opened;
};

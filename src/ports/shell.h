#pragma once
// What the shell says about files: the icon and the type name that file lists show.

#include <string>

struct ShellFileInfo {
    int iconIndex = -1;     // in the shell's list of small icons; -1 when it has none
    std::wstring typeName;  // such as a file type's description
};

class Shell {
public:
    virtual ~Shell() = default;
    // The icon and type of `path`; the file need not exist (the name alone decides then).
    virtual ShellFileInfo DescribeFile(const std::wstring& path) = 0;
    // Opens `path` with the program the shell has for it (no verb, no parameters, no folder),
    // its window shown as `showCommand` says.
    virtual void Open(const std::wstring& path, int showCommand) = 0;
};

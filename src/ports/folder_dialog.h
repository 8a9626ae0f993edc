#pragma once
// The shell's folder chooser.

#include <optional>
#include <string>

namespace browse {
// Flags, with the window system's values, which adapters pass through unchanged.
constexpr unsigned kFileSystemFoldersOnly = 0x0001;
constexpr unsigned kNewDialogStyle = 0x0040;
constexpr unsigned kIncludeFiles = 0x4000;
}  // namespace browse

class FolderDialog {
public:
    virtual ~FolderDialog() = default;
    // Shows the chooser over `parent` (the platform's window, opaque here) with `title`, with
    // `start` selected. The chosen path, or nothing when the user cancels.
    virtual std::optional<std::wstring> Choose(void* parent, const std::wstring& title,
                                               const std::wstring& start, unsigned flags) = 0;
};

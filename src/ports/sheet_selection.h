#pragma once
// The sheet selection dialog as the window system runs it: the drawings of one sheet set offered
// with check boxes, the user ticking some and confirming or cancelling.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

struct HostWindow;

class SheetSelectionDialog {
public:
    virtual ~SheetSelectionDialog() = default;
    // The places in `offered` that the user ticked, in order, after OK; nothing after Cancel.
    virtual std::optional<std::vector<std::size_t>> Run(
        HostWindow* parent, const std::wstring& title,
        const std::vector<std::wstring>& offered) = 0;
};

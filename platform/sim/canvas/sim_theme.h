#pragma once
// A visual style drawn in software, for the simulated window system: the "TAB" class's tab item
// and pane as flat pictures whose colours tell every state apart, so that a picture shows which
// part and state was drawn, and which way up. It can be turned off and on while running, as a
// user turns the system's styles off; theme data opened before then stops drawing.

#include <memory>
#include <string>

#include "ports/theme.h"

class SimTheme : public Theme {
public:
    // The pictures: a tab has a one-pixel border on its left, top and right (the bottom stays
    // open towards the pane), a band of its state's accent under the top border, and its
    // state's fill below. The pane is its fill inside a one-pixel border.
    static constexpr win::COLORREF kBorder = 0x00806040;
    static constexpr win::COLORREF kNormalFill = 0x00E8E0D8;
    static constexpr win::COLORREF kNormalAccent = 0x00B0A090;
    static constexpr win::COLORREF kHotFill = 0x00D8F0FF;
    static constexpr win::COLORREF kHotAccent = 0x000090FF;
    static constexpr win::COLORREF kSelectedFill = 0x00FFFFFF;
    static constexpr win::COLORREF kSelectedAccent = 0x00D07020;
    static constexpr win::COLORREF kPaneFill = 0x00F8F4F0;
    static constexpr int kAccentRows = 3;

    bool IsActive() override { return *m_pActive; }
    std::unique_ptr<ThemeData> Open(const std::wstring& classList) override;

    void SetActive(bool bActive) { *m_pActive = bActive; }

private:
    // Shared with the theme data handed out, which may outlive a switch.
    std::shared_ptr<bool> m_pActive = std::make_shared<bool>(true);
};

#pragma once
// The simulated window system's colours and GUI font: those of a classic desktop at 96 dots
// per inch, so that a test can tell a default that came from here from one made up elsewhere.

#include "ports/system_look.h"

class SimSystemLook : public SystemLook {
public:
    static constexpr win::COLORREF kBtnFace = 0xF0F0F0;
    static constexpr win::COLORREF kBtnText = 0x000000;
    static constexpr win::COLORREF kActiveCaption = 0xD1B499;
    static constexpr win::COLORREF kBtnShadow = 0xA0A0A0;
    static constexpr win::COLORREF kBtnHighlight = 0xFFFFFF;
    static constexpr win::COLORREF kOther = 0xFFFFFF;  // every index not named above

    win::COLORREF SysColor(int index) override;
    win::LOGFONTW DefaultGuiFont() override;
};

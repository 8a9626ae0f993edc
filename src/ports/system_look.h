#pragma once
// How the window system dresses its own controls: the system colours and the stock GUI font.
// Settings take their defaults from here, so the bar looks native until the user says
// otherwise.

#include "foundation/win_types.h"

// GetSysColor indexes.
namespace syscolor {
constexpr int kActiveCaption = 2;
constexpr int kBtnFace = 15;
constexpr int kBtnShadow = 16;
constexpr int kBtnText = 18;
constexpr int kBtnHighlight = 20;
constexpr int k3dLight = 22;
}  // namespace syscolor

class SystemLook {
public:
    virtual ~SystemLook() = default;
    virtual win::COLORREF SysColor(int index) = 0;
    // The LOGFONTW of the stock object DEFAULT_GUI_FONT.
    virtual win::LOGFONTW DefaultGuiFont() = 0;
};

#pragma once
// The system colours and the stock GUI font as the window system itself answers them.

#include "ports/system_look.h"

class Win32SystemLook : public SystemLook {
public:
    win::COLORREF SysColor(int index) override;
    win::LOGFONTW DefaultGuiFont() override;
};

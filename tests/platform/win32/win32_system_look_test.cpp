// The window system's own look through the port: the colours it paints its buttons with and
// the font of its dialogs, byte for byte as the stock object holds it.

#include "platform/win32/win32_system_look.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

TEST(Win32SystemLook, AnswersTheSystemColoursAndTheStockGuiFont) {
    Win32SystemLook look;
    for (int index : {syscolor::kActiveCaption, syscolor::kBtnFace, syscolor::kBtnText})
        EXPECT_EQ(look.SysColor(index), ::GetSysColor(index)) << index;

    ::LOGFONTW native{};
    ASSERT_EQ(::GetObjectW(::GetStockObject(DEFAULT_GUI_FONT), sizeof native, &native),
              static_cast<int>(sizeof native));
    const win::LOGFONTW font = look.DefaultGuiFont();
    EXPECT_EQ(std::memcmp(&font, &native, sizeof font), 0);
    EXPECT_NE(font.lfHeight, 0);
    EXPECT_NE(font.lfFaceName[0], u'\0');
}

}  // namespace

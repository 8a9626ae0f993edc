#pragma once
// Comparison of names without regard to case, as the file system and the profile functions of
// the window system do it: simple one-to-one folding, independent of the C locale, so that the
// result is the same on every platform and in every test.

#include <string_view>

wchar_t FoldCase(wchar_t c);
bool EqualNoCase(std::wstring_view a, std::wstring_view b);
// Ordering of the folded texts; ties broken by the texts themselves so that the order is total.
bool LessNoCase(std::wstring_view a, std::wstring_view b);

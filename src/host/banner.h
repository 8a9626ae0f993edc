#pragma once
// The banners the application prints on the host's command line at load and unload.

#include <string>

constexpr int kBannerWidth = 78;

enum class PadAlign { Center = 0, Left = 1, Right = 2 };

// A line of exactly 78 `fill` characters with `text` laid over it; text beyond the last
// column is cut.
std::wstring PadLine(const std::wstring& text, wchar_t fill, PadAlign align);

// Prints `fill`, the line, `fill` and a newline; the first line of a banner starts with a newline.
void PrintBannerLine(const std::wstring& line, wchar_t fill, bool first = false);

// Four lines: all fill, the message centred, the credit line centred, all fill.
void PrintBanner(const std::wstring& message, wchar_t fill);

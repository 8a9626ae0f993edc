#include "host/banner.h"

#include <algorithm>

#include "ports/host_services.h"
#include "ports/port.h"

std::wstring PadLine(const std::wstring& text, wchar_t fill, PadAlign align) {
    std::wstring line(kBannerWidth, fill);
    int length = static_cast<int>(text.size());
    int start = 0;
    if (align == PadAlign::Center)
        start = (kBannerWidth - length) / 2;
    if (align == PadAlign::Right)
        start = kBannerWidth - length;
    start = std::max(start, 0);
    for (int i = 0; i < length && start + i < kBannerWidth; ++i)
        line[start + i] = text[i];
    return line;
}

void PrintBannerLine(const std::wstring& line, wchar_t fill, bool first) {
    std::wstring text = first ? L"\n" : L"";
    text += fill;
    text += line;
    text += fill;
    text += L'\n';
    Use<HostServices>().Print(text);
}

void PrintBanner(const std::wstring& message, wchar_t fill) {
    HostServices& host = Use<HostServices>();
    // The year is the host program's, not the module's: the credit follows the installation.
    std::wstring credit =
        L" Copyright (c) Harvane " + std::to_wstring(host.MainExecutableYear()) + L" ";
    PrintBannerLine(std::wstring(kBannerWidth, fill), fill, true);
    PrintBannerLine(PadLine(message, L' ', PadAlign::Center), fill);
    PrintBannerLine(PadLine(credit, L' ', PadAlign::Center), fill);
    PrintBannerLine(std::wstring(kBannerWidth, fill), fill);
}

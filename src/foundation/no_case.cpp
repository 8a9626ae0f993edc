#include "foundation/no_case.h"

wchar_t FoldCase(wchar_t c) {
    // Folds to lower case: ASCII, Latin-1, Latin Extended-A pairs, Greek and Cyrillic. These
    // cover the names found in drawings' paths; anything else compares exactly.
    const unsigned u = static_cast<unsigned>(c);
    if (u < 0x80)
        return (u >= 'A' && u <= 'Z') ? static_cast<wchar_t>(u + 0x20) : c;
    if (u >= 0xC0 && u <= 0xDE && u != 0xD7)
        return static_cast<wchar_t>(u + 0x20);
    if (u >= 0x100 && u <= 0x17F && u != 0x130 && u != 0x131 && u != 0x138 && u != 0x149) {
        // Pairs are upper at even code points, except in the two runs that start odd.
        const bool oddRun = (u >= 0x139 && u <= 0x148) || (u >= 0x179 && u <= 0x17E);
        const bool upper = oddRun ? (u % 2 == 1) : (u % 2 == 0);
        return upper ? static_cast<wchar_t>(u + 1) : c;
    }
    if (u >= 0x391 && u <= 0x3AB && u != 0x3A2)
        return static_cast<wchar_t>(u + 0x20);
    if (u >= 0x410 && u <= 0x42F)
        return static_cast<wchar_t>(u + 0x20);
    if (u >= 0x400 && u <= 0x40F)
        return static_cast<wchar_t>(u + 0x50);
    return c;
}

bool EqualNoCase(std::wstring_view a, std::wstring_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (FoldCase(a[i]) != FoldCase(b[i]))
            return false;
    }
    return true;
}

bool LessNoCase(std::wstring_view a, std::wstring_view b) {
    const std::size_t n = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < n; ++i) {
        const wchar_t fa = FoldCase(a[i]);
        const wchar_t fb = FoldCase(b[i]);
        if (fa != fb)
            return fa < fb;
    }
    if (a.size() != b.size())
        return a.size() < b.size();
    return a < b;
}

#include "foundation/file_entry.h"

#include <cwchar>

#include "foundation/split.h"

TrFileEntry ParseFileEntry(const std::wstring& text) {
    CSplit pieces(text, L",");
    if (pieces.m_pieces.size() < 2) {
        TrFileEntry entry(text);
        return entry;
    }
    // Compared whole, never cut down to an int: the platform's reader holds a number beyond the
    // range at its end, so no large number may wrap round to 1.
    const long number = std::wcstol(pieces.m_pieces.back().c_str(), nullptr, 10);
    const bool flag = number == 1;
    pieces.m_pieces.pop_back();
    TrFileEntry entry(pieces.Join(L","));
    entry.m_bReadOnly = flag;
    return entry;
}

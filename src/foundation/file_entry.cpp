#include "foundation/file_entry.h"

#include <cwchar>

#include "foundation/split.h"

TrFileEntry ParseFileEntry(const std::wstring& text) {
    CSplit pieces(text, L",");
    if (pieces.m_pieces.size() < 2) {
        TrFileEntry entry(text);
        return entry;
    }
    const int flag = static_cast<int>(std::wcstol(pieces.m_pieces.back().c_str(), nullptr, 10));
    pieces.m_pieces.pop_back();
    TrFileEntry entry(pieces.Join(L","));
    entry.m_bReadOnly = flag == 1;
    return entry;
}

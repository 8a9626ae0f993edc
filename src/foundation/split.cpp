#include "foundation/split.h"

CSplit::CSplit(const std::wstring& text, const std::wstring& delimiter, bool trim) {
    Split(text, delimiter);
    if (trim)
        Trim(L" ", true, true);
}

void CSplit::Split(const std::wstring& text, const std::wstring& delimiter) {
    if (text.empty())
        return;
    if (delimiter.empty()) {  // nothing to cut at: the whole text is the one piece
        m_pieces.push_back(text);
        return;
    }
    std::size_t position = 0;
    for (std::size_t hit = text.find(delimiter); hit != std::wstring::npos;
         hit = text.find(delimiter, position)) {
        m_pieces.push_back(text.substr(position, hit - position));
        position = hit + delimiter.size();
    }
    m_pieces.push_back(text.substr(position));
}

void CSplit::Trim(const std::wstring& characters, bool left, bool right) {
    for (std::wstring& piece : m_pieces) {
        if (right)
            piece.erase(piece.find_last_not_of(characters) + 1);
        if (left)
            piece.erase(0, piece.find_first_not_of(characters));
    }
}

std::wstring CSplit::Join(const std::wstring& separator) const {
    std::wstring joined;
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
        if (i > 0)
            joined += separator;
        joined += m_pieces[i];
    }
    return joined;
}

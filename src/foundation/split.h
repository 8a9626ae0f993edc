#pragma once
// A string cut at a delimiter, with its pieces: the parser of every "key=value" and "path,flag"
// text of the system.

#include <string>
#include <vector>

class CSplit {
public:
    CSplit() = default;
    // Split(), then with `trim` blanks taken off both sides of every piece.
    CSplit(const std::wstring& text, const std::wstring& delimiter, bool trim = false);
    virtual ~CSplit() = default;
    CSplit(const CSplit&) = default;
    CSplit& operator=(const CSplit&) = default;

    // Appends the pieces of `text`. An empty text adds nothing, not even one empty piece; the
    // text after the last delimiter is always a piece, even when empty.
    void Split(const std::wstring& text, const std::wstring& delimiter);
    void Trim(const std::wstring& characters, bool left, bool right);
    std::wstring Join(const std::wstring& separator) const;

    std::vector<std::wstring> m_pieces;
};

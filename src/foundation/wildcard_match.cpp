#include "foundation/wildcard_match.h"

#include "foundation/no_case.h"

namespace {

bool SameChar(wchar_t p, wchar_t t, bool matchCase) {
    return p == L'?' || p == t || (!matchCase && FoldCase(p) == FoldCase(t));
}

}  // namespace

bool WildcardMatch(std::wstring_view pattern, std::wstring_view text, bool matchCase) {
    std::size_t p = 0;
    std::size_t t = 0;
    // Up to the first star every character must match in place.
    while (t < text.size() && (p >= pattern.size() || pattern[p] != L'*')) {
        if (p >= pattern.size() || !SameChar(pattern[p], text[t], matchCase))
            return false;
        ++p;
        ++t;
    }
    // One remembered star: on a mismatch the star swallows one more character and matching
    // starts over behind it.
    std::size_t starNext = 0;
    std::size_t textRetry = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            if (++p == pattern.size())
                return true;
            starNext = p;
            textRetry = t + 1;
        } else if (p < pattern.size() && SameChar(pattern[p], text[t], matchCase)) {
            ++p;
            ++t;
        } else {
            p = starNext;
            t = textRetry++;
        }
    }
    while (p < pattern.size() && pattern[p] == L'*')
        ++p;
    return p == pattern.size();
}

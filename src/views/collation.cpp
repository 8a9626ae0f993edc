#include "views/collation.h"

#include <vector>

#include "foundation/no_case.h"

namespace {

// Base letters of Latin-1's letters from U+00C0 and of Latin Extended-A, digits standing for
// the two-letter ones, '*' for the two symbols among them.
constexpr std::wstring_view kLatin1Upper = L"aaaaaa1ceeeeiiiidnooooo*ouuuuy25";
constexpr std::wstring_view kLatin1Lower = L"aaaaaa1ceeeeiiiidnooooo*ouuuuy2y";
constexpr std::wstring_view kExtendedA =
    L"aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiii33jjkkkllllllllllnnnnnnnnnoooooo44"
    L"rrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs";
constexpr std::wstring_view kPairs[] = {L"ae", L"th", L"ij", L"oe", L"ss"};

enum Group : unsigned { kSymbol = 0, kDigit = 1, kLetter = 2 };

struct Weights {
    std::vector<unsigned> primary;    // group and base character
    std::vector<unsigned> secondary;  // the accent: 0 for a plain letter
    std::vector<unsigned> ignored;    // positions of the characters passed over
};

unsigned Primary(Group group, wchar_t c) {
    return (static_cast<unsigned>(group) << 24) | static_cast<unsigned>(c);
}

// The base letters of one character: empty when it isn't a Latin letter with a known base.
std::wstring_view BaseLetters(wchar_t c) {
    const unsigned u = static_cast<unsigned>(c);
    wchar_t code = 0;
    if (u >= 0xC0 && u <= 0xDF)
        code = kLatin1Upper[u - 0xC0];
    else if (u >= 0xE0 && u <= 0xFF)
        code = kLatin1Lower[u - 0xE0];
    else if (u >= 0x100 && u <= 0x17F)
        code = kExtendedA[u - 0x100];
    if (code == 0 || code == L'*')
        return {};
    if (code >= L'1' && code <= L'5')
        return kPairs[code - L'1'];
    constexpr std::wstring_view kLetters = L"abcdefghijklmnopqrstuvwxyz";
    return kLetters.substr(static_cast<std::size_t>(code - L'a'), 1);
}

// Greek, Cyrillic and the scripts after them, leaving out the punctuation and symbol blocks.
bool IsOtherLetter(wchar_t c) {
    const unsigned u = static_cast<unsigned>(c);
    return u >= 0x370 && !(u >= 0x2000 && u <= 0x2BFF) && !(u >= 0x3000 && u <= 0x303F);
}

Weights WeightsOf(std::wstring_view text) {
    Weights w;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c == L'-' || c == L'\'') {
            w.ignored.push_back(static_cast<unsigned>(i));
            continue;
        }
        const std::wstring_view base = BaseLetters(c);
        if (!base.empty()) {
            for (wchar_t b : base) {
                w.primary.push_back(Primary(kLetter, b));
                w.secondary.push_back(static_cast<unsigned>(FoldCase(c)));
            }
            continue;
        }
        const wchar_t folded = FoldCase(c);
        Group group = kSymbol;
        if (c >= L'0' && c <= L'9')
            group = kDigit;
        else if ((folded >= L'a' && folded <= L'z') || IsOtherLetter(folded))
            group = kLetter;
        w.primary.push_back(Primary(group, folded));
        w.secondary.push_back(0);
    }
    return w;
}

int Compare(const std::vector<unsigned>& a, const std::vector<unsigned>& b) {
    const std::size_t n = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < n; ++i) {
        if (a[i] != b[i])
            return a[i] < b[i] ? -1 : 1;
    }
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    return 0;
}

}  // namespace

int CompareNoCase(std::wstring_view a, std::wstring_view b) {
    const std::size_t n = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < n; ++i) {
        const wchar_t fa = FoldCase(a[i]);
        const wchar_t fb = FoldCase(b[i]);
        if (fa != fb)
            return fa < fb ? -1 : 1;
    }
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    return 0;
}

int CollateNoCase(std::wstring_view a, std::wstring_view b) {
    const Weights wa = WeightsOf(a);
    const Weights wb = WeightsOf(b);
    if (int order = Compare(wa.primary, wb.primary))
        return order;
    if (int order = Compare(wa.secondary, wb.secondary))
        return order;
    // Fewer characters passed over first; then the one whose first such character comes later.
    if (wa.ignored.size() != wb.ignored.size())
        return wa.ignored.size() < wb.ignored.size() ? -1 : 1;
    for (std::size_t i = 0; i < wa.ignored.size(); ++i) {
        if (wa.ignored[i] != wb.ignored[i])
            return wa.ignored[i] > wb.ignored[i] ? -1 : 1;
    }
    return 0;
}

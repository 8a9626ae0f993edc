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

bool IsPassedOver(wchar_t c) {
    return c == L'-' || c == L'\'';
}

// Greek, Cyrillic and the scripts after them, leaving out the punctuation and symbol blocks.
bool IsOtherLetter(wchar_t c) {
    const unsigned u = static_cast<unsigned>(c);
    return u >= 0x370 && !(u >= 0x2000 && u <= 0x2BFF) && !(u >= 0x3000 && u <= 0x303F);
}

// A character that is no accented Latin letter: its group and its folded self.
unsigned PlainWeight(wchar_t c) {
    const wchar_t folded = FoldCase(c);
    Group group = kSymbol;
    if (c >= L'0' && c <= L'9')
        group = kDigit;
    else if ((folded >= L'a' && folded <= L'z') || IsOtherLetter(folded))
        group = kLetter;
    return Primary(group, folded);
}

Weights WeightsOf(std::wstring_view text) {
    Weights w;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (IsPassedOver(c)) {
            w.ignored.push_back(static_cast<unsigned>(i));
            continue;
        }
        // One accent weight per base letter, so that the levels line up.
        const std::size_t letters = BaseLetters(c).size();
        if (letters == 0)
            w.secondary.push_back(0);
        else
            w.secondary.insert(w.secondary.end(), letters, static_cast<unsigned>(FoldCase(c)));
    }
    return w;
}

// The primary weights of a text one at a time, without building them all: most comparisons are
// decided within the first few letters.
class PrimaryWalk {
public:
    explicit PrimaryWalk(std::wstring_view text) : m_text(text) {}
    bool Next(unsigned& weight) {
        if (!m_pending.empty()) {
            weight = Primary(kLetter, m_pending.front());
            m_pending.remove_prefix(1);
            return true;
        }
        while (m_pos < m_text.size()) {
            const wchar_t c = m_text[m_pos++];
            if (IsPassedOver(c))
                continue;
            const std::wstring_view base = BaseLetters(c);
            if (!base.empty()) {
                weight = Primary(kLetter, base.front());
                m_pending = base.substr(1);
                return true;
            }
            weight = PlainWeight(c);
            return true;
        }
        return false;
    }

private:
    std::wstring_view m_text;
    std::size_t m_pos = 0;
    std::wstring_view m_pending;  // the second letter of a pair
};

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
    PrimaryWalk walkA(a);
    PrimaryWalk walkB(b);
    for (;;) {
        unsigned pa = 0;
        unsigned pb = 0;
        const bool moreA = walkA.Next(pa);
        const bool moreB = walkB.Next(pb);
        if (!moreA || !moreB) {
            if (moreA != moreB)
                return moreA ? 1 : -1;
            break;
        }
        if (pa != pb)
            return pa < pb ? -1 : 1;
    }
    // The same letters: accents, then the characters passed over, decide.
    const Weights wa = WeightsOf(a);
    const Weights wb = WeightsOf(b);
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

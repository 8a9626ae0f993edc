// CSplit over arbitrary text and delimiters: the pieces joined again give the text back, and
// trimming never leaves a blank at either end of a piece.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "foundation/split.h"
#include "foundation/text_encoding.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    // First byte: the delimiter's length; then the delimiter, then the text.
    const std::size_t delimiterLength = data[0] % 4;
    if (size < 1 + delimiterLength)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::wstring delimiter = FromUtf8(bytes.substr(1, delimiterLength));
    const std::wstring text = FromUtf8(bytes.substr(1 + delimiterLength));

    const CSplit plain(text, delimiter);
    if (!delimiter.empty() && plain.Join(delimiter) != text)
        std::abort();
    if (text.empty() != plain.m_pieces.empty())
        std::abort();

    const CSplit trimmed(text, delimiter, true);
    if (trimmed.m_pieces.size() != plain.m_pieces.size())
        std::abort();
    for (const std::wstring& piece : trimmed.m_pieces) {
        if (!piece.empty() && (piece.front() == L' ' || piece.back() == L' '))
            std::abort();
    }
    return 0;
}

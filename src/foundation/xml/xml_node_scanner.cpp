#include "foundation/xml/xml_node_scanner.h"

#include <cwchar>

namespace {

bool EndsElementName(wchar_t c) {
    return IsXmlSpace(c) || c == L'/' || c == L'>';
}

bool EndsTagToken(wchar_t c) {
    switch (c) {
        case L' ':
        case L'\t':
        case L'\n':
        case L'\r':
        case L'<':
        case L'>':
        case L'=':
        case L'\\':
        case L'/':
        case L'?':
        case L'!':
            return true;
        default:
            return false;
    }
}

// Codes above 96 include every character beyond the ASCII range, so a name may begin with any
// of them; this is the parser's rule, looser than the XML grammar on purpose.
bool StartsElementName(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || c == L'_' || c == L':' || static_cast<unsigned>(c) > 96;
}

int Find(std::wstring_view text, wchar_t c, int from) {
    if (from >= static_cast<int>(text.size()))
        return -1;
    const wchar_t* hit = std::wmemchr(text.data() + from, c, text.size() - from);
    return hit ? static_cast<int>(hit - text.data()) : -1;
}

}  // namespace

XmlNode XmlNodeScanner::Fail(const wchar_t* what, int offset) {
    m_error = L"Incorrect " + std::wstring(what) + L" at offset " + std::to_wstring(offset);
    XmlNode node;
    node.type = kXmlError;
    node.offset = offset;
    return node;
}

XmlNode XmlNodeScanner::Unterminated(const wchar_t* what, int offset) {
    m_error = std::wstring(what) + L" at offset " + std::to_wstring(offset) + L" unterminated";
    XmlNode node;
    node.type = kXmlError;
    node.offset = offset;
    return node;
}

XmlNode XmlNodeScanner::Next(int offset) {
    m_error.clear();
    XmlNode node;
    node.offset = offset;
    const int size = static_cast<int>(m_text.size());
    if (offset >= size)
        return node;
    if (m_text[offset] != L'<')
        return ReadCharacterData(offset);
    if (offset + 1 >= size)
        return Unterminated(L"tag", offset);
    const wchar_t next = m_text[offset + 1];
    if (next == L'/')
        return ReadUntil(kXmlEndTag, offset, offset + 2, L">", L"Element end tag");
    if (next == L'?')
        return ReadUntil(kXmlProcessingInstruction, offset, offset + 2, L"?>",
                         L"Processing instruction");
    if (next == L'!')
        return ReadMarkup(offset);
    if (StartsElementName(next))
        return ReadElement(offset);
    return Fail(L"tag name character", offset);
}

XmlNode XmlNodeScanner::ReadCharacterData(int offset) {
    const int size = static_cast<int>(m_text.size());
    const int lt = Find(m_text, L'<', offset);
    const int end = lt < 0 ? size : lt;
    XmlNode node;
    node.type = kXmlWhiteSpace;
    node.offset = offset;
    node.length = end - offset;
    for (int i = offset; i < end; ++i) {
        if (!IsXmlSpace(m_text[i])) {
            node.type = kXmlText;
            break;
        }
    }
    return node;
}

XmlNode XmlNodeScanner::ReadElement(int offset) {
    const int size = static_cast<int>(m_text.size());
    const wchar_t* text = m_text.data();
    int i = offset + 1;
    while (i < size && !EndsElementName(text[i]))
        ++i;
    XmlNode node;
    node.type = kXmlElement;
    node.offset = offset;
    node.nameOffset = offset + 1;
    node.nameLength = i - (offset + 1);
    for (; i < size; ++i) {
        const wchar_t c = text[i];
        if (c == L'>') {
            // After a quoted stretch text[i - 1] is its closing quote, so a '/' here is
            // always outside quotes.
            node.isEmpty = text[i - 1] == L'/';
            node.length = i + 1 - offset;
            return node;
        }
        if (c == L'"' || c == L'\'') {
            i = Find(m_text, c, i + 1);
            if (i < 0)
                break;
        }
    }
    return Unterminated(L"Element tag", offset);
}

XmlNode XmlNodeScanner::ReadMarkup(int offset) {
    const int size = static_cast<int>(m_text.size());
    if (offset + 2 >= size)
        return Unterminated(L"tag", offset);
    switch (m_text[offset + 2]) {
        case L'-':
            if (offset + 3 >= size)
                return Unterminated(L"Comment", offset);
            if (m_text[offset + 3] != L'-')
                return Fail(L"comment tag", offset);
            return ReadUntil(kXmlComment, offset, offset + 4, L"-->", L"Comment");
        case L'[':
            if (offset + 3 >= size)
                return Unterminated(L"tag", offset);
            if (m_text[offset + 3] != L'C')
                return Fail(L"tag", offset);
            return ReadUntil(kXmlCData, offset, offset + 4, L"]]>", L"CDATA Section");
        case L'D':
            return ReadDoctype(offset);
        case L'E':
        case L'A':
        case L'N': {
            // Declarations belong inside a document type declaration, which reads them as a
            // nested group; standing alone they fail without a message, as they always have.
            XmlNode node;
            node.type = kXmlError;
            node.offset = offset;
            return node;
        }
        default:
            return Fail(L"! tag", offset);
    }
}

XmlNode XmlNodeScanner::ReadDoctype(int offset) {
    const int size = static_cast<int>(m_text.size());
    int depth = 0;
    for (int i = offset + 2; i < size; ++i) {
        const wchar_t c = m_text[i];
        if (c == L'<') {
            ++depth;
        } else if (c == L'>') {
            if (depth == 0) {
                XmlNode node;
                node.type = kXmlDoctype;
                node.offset = offset;
                node.length = i + 1 - offset;
                return node;
            }
            --depth;
        }
    }
    return Unterminated(L"Doctype", offset);
}

XmlNode XmlNodeScanner::ReadUntil(int type, int offset, int from, std::wstring_view terminator,
                                  const wchar_t* what) {
    const std::size_t at = m_text.find(terminator, static_cast<std::size_t>(from));
    if (at == std::wstring_view::npos)
        return Unterminated(what, offset);
    XmlNode node;
    node.type = type;
    node.offset = offset;
    node.length = static_cast<int>(at + terminator.size()) - offset;
    return node;
}

bool ReadXmlTagToken(std::wstring_view text, int& offset, XmlTagToken& token) {
    const int size = static_cast<int>(text.size());
    int i = offset;
    while (i < size && IsXmlSpace(text[i]))
        ++i;
    if (i >= size) {
        offset = size;
        return false;
    }
    const wchar_t first = text[i];
    if (first == L'"' || first == L'\'') {
        int close = Find(text, first, i + 1);
        // An unclosed quote runs to the end of the text.
        token = {i + 1, (close < 0 ? size : close) - (i + 1), true};
        offset = close < 0 ? size : close + 1;
        return true;
    }
    int end = i;
    while (end < size && !EndsTagToken(text[end]))
        ++end;
    if (end == i)
        ++end;
    token = {i, end - i, false};
    offset = end;
    return true;
}

bool XmlNameMatches(std::wstring_view name, std::wstring_view token) {
    if (token.size() > name.size() || name.compare(0, token.size(), token) != 0)
        return false;
    if (token.size() == name.size())
        return true;
    const wchar_t next = name[token.size()];
    return next == L' ' || next == L'=' || next == L'/' || next == L'[';
}

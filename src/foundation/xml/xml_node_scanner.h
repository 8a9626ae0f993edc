#pragma once
// The two tokenizers of the XML document: one reads whole nodes (elements, end tags, text,
// comments and the rest) for the index builder, the other reads the tokens inside one tag for
// names and attributes.

#include <string>
#include <string_view>

// Node types, with the values the document reports in its node type.
enum XmlNodeType : int {
    kXmlEndOfText = -2,
    kXmlError = -1,
    kXmlEndTag = 0,
    kXmlElement = 1,
    kXmlText = 2,
    kXmlWhiteSpace = 4,
    kXmlCData = 8,
    kXmlProcessingInstruction = 16,
    kXmlComment = 32,
    kXmlDoctype = 64,
};

struct XmlNode {
    int type = kXmlEndOfText;
    int offset = 0;  // of the node's first character
    int length = 0;
    int nameOffset = 0;  // elements: the name as the start tag gives it
    int nameLength = 0;
    bool isEmpty = false;  // elements: the tag ends with "/>"
};

class XmlNodeScanner {
public:
    // `text` must outlive the scanner and be shorter than 2^31 characters.
    explicit XmlNodeScanner(std::wstring_view text) : m_text(text) {}

    // Reads the node that starts at `offset`. At the end of the text the type is
    // kXmlEndOfText; on a failure it is kXmlError and Error() says why (it can be empty).
    XmlNode Next(int offset);
    const std::wstring& Error() const { return m_error; }

private:
    XmlNode ReadCharacterData(int offset);
    XmlNode ReadElement(int offset);
    XmlNode ReadMarkup(int offset);
    XmlNode ReadDoctype(int offset);
    // A node of `type` that ends with `terminator`, searched from `from`.
    XmlNode ReadUntil(int type, int offset, int from, std::wstring_view terminator,
                      const wchar_t* what);
    XmlNode Fail(const wchar_t* what, int offset);
    XmlNode Unterminated(const wchar_t* what, int offset);

    std::wstring_view m_text;
    std::wstring m_error;
};

// One token inside a tag. A quoted token excludes its quotes.
struct XmlTagToken {
    int offset = 0;
    int length = 0;
    bool isQuoted = false;
};

// Reads the next token at or after `offset`, skipping white space, and moves `offset` past it.
// Returns false when the text ends first.
bool ReadXmlTagToken(std::wstring_view text, int& offset, XmlTagToken& token);

// Whether a name given by a caller matches a token of the text: the token equals the start of
// the name, and the name ends there or goes on with ' ', '=', '/' or '['. So "Tool[1]" matches
// the token "Tool".
bool XmlNameMatches(std::wstring_view name, std::wstring_view token);

inline bool IsXmlSpace(wchar_t c) {
    return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r';
}

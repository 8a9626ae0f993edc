#include "foundation/xml/xml_index_builder.h"

#include <vector>

#include "foundation/xml/xml_node_scanner.h"

namespace {

struct OpenElement {
    int record;
    int nameOffset;
    int nameLength;
};

class IndexBuilder {
public:
    IndexBuilder(std::wstring_view text, XmlElementIndex& index, std::wstring& error)
        : m_text(text), m_index(index), m_error(error), m_scanner(text) {}

    bool Run();

private:
    bool AddElement(const XmlNode& node);
    bool CloseElement(const XmlNode& node);
    bool Finish();
    std::wstring Quoted(int offset, int length) const {
        return L"'" + std::wstring(m_text.substr(offset, length)) + L"'";
    }

    std::wstring_view m_text;
    XmlElementIndex& m_index;
    std::wstring& m_error;
    XmlNodeScanner m_scanner;
    // Open elements live here rather than on the call stack, so any depth of nesting parses.
    std::vector<OpenElement> m_open;
};

bool IndexBuilder::Run() {
    // One record per 64 characters is enough for ordinary documents without a grow.
    m_index.Reset(static_cast<int>(m_text.size() / 64 + 8));
    m_index[0].length = static_cast<std::uint32_t>(m_text.size());
    if (m_text.empty()) {
        m_error = L"Empty document";
        return false;
    }
    int offset = 0;
    for (;;) {
        const XmlNode node = m_scanner.Next(offset);
        switch (node.type) {
            case kXmlEndOfText:
                return Finish();
            case kXmlError:
                m_error = m_scanner.Error();
                return false;
            case kXmlElement:
                if (!AddElement(node))
                    return false;
                break;
            case kXmlEndTag:
                if (!CloseElement(node))
                    return false;
                break;
            default:
                break;  // text, comments and the rest are not indexed
        }
        offset = node.offset + node.length;
    }
}

bool IndexBuilder::AddElement(const XmlNode& node) {
    const int parent = m_open.empty() ? 0 : m_open.back().record;
    if (parent == 0 && m_index[0].firstChild != 0) {
        m_error = L"Element " + Quoted(node.nameOffset, node.nameLength) + L" at offset " +
                  std::to_wstring(node.offset) + L" is sibling to root";
        return false;
    }
    const int index = m_index.Add();
    XmlElementRecord& record = m_index[index];
    record.start = static_cast<std::uint32_t>(node.offset);
    record.tagLengths = static_cast<std::uint32_t>(node.length) & kXmlStartTagMask;
    record.levelFlags = static_cast<std::uint32_t>(m_open.size()) & kXmlLevelMask;
    record.parent = parent;
    XmlElementRecord& parentRecord = m_index[parent];
    if (parentRecord.firstChild == 0) {
        parentRecord.firstChild = index;
        record.levelFlags |= kXmlFirstChild;
        record.previous = index;
    } else {
        XmlElementRecord& first = m_index[parentRecord.firstChild];
        const int last = first.previous;
        m_index[last].next = index;
        record.previous = last;
        first.previous = index;
    }
    if (node.isEmpty)
        record.length = static_cast<std::uint32_t>(node.length);
    else
        m_open.push_back({index, node.nameOffset, node.nameLength});
    return true;
}

bool IndexBuilder::CloseElement(const XmlNode& node) {
    int tokenOffset = node.offset + 2;
    XmlTagToken token;
    // The end tag ends with '>', so a token always stands before the node's end.
    ReadXmlTagToken(m_text.substr(0, node.offset + node.length), tokenOffset, token);
    const std::wstring_view endName = m_text.substr(token.offset, token.length);
    if (m_open.empty()) {
        m_error = L"No start tag for end tag " + Quoted(token.offset, token.length) +
                  L" at offset " + std::to_wstring(node.offset);
        return false;
    }
    const OpenElement open = m_open.back();
    m_open.pop_back();
    XmlElementRecord& record = m_index[open.record];
    record.length = static_cast<std::uint32_t>(node.offset + node.length) - record.start;
    record.tagLengths |= static_cast<std::uint32_t>(node.length) << kXmlEndTagShift;
    if (!XmlNameMatches(m_text.substr(open.nameOffset, open.nameLength), endName)) {
        m_error = L"End tag " + Quoted(token.offset, token.length) + L" at offset " +
                  std::to_wstring(node.offset) + L" does not match start tag " +
                  Quoted(open.nameOffset, open.nameLength) + L" at offset " +
                  std::to_wstring(record.start);
        return false;
    }
    return true;
}

bool IndexBuilder::Finish() {
    if (!m_open.empty()) {
        const OpenElement& open = m_open.back();
        m_error = L"Element " + Quoted(open.nameOffset, open.nameLength) + L" at offset " +
                  std::to_wstring(m_index[open.record].start) + L" not ended";
        return false;
    }
    if (m_index[0].firstChild == 0) {
        m_error = L"Root element not found";
        return false;
    }
    return true;
}

}  // namespace

bool BuildXmlIndex(std::wstring_view text, XmlElementIndex& index, std::wstring& error) {
    error.clear();
    if (IndexBuilder(text, index, error).Run())
        return true;
    const std::uint32_t length = index[0].length;
    index.Reset(1);
    index[0].length = length;
    return false;
}

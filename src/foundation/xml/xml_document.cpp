#include "foundation/xml/xml_document.h"

#include <climits>

#include "foundation/xml/xml_index_builder.h"
#include "foundation/xml/xml_value.h"

XmlDocument::XmlDocument(const XmlDocument& other)
    : m_strDoc(other.m_strDoc),
      m_strError(other.m_strError),
      m_iParent(other.m_iParent),
      m_iCurrent(other.m_iCurrent),
      m_iChild(other.m_iChild),
      m_nNodeType(other.m_nNodeType),
      m_pSavedPositions(other.m_pSavedPositions
                            ? std::make_unique<XmlSavedPositions>(*other.m_pSavedPositions)
                            : nullptr),
      m_index(other.m_index) {}

XmlDocument& XmlDocument::operator=(const XmlDocument& other) {
    if (this != &other)
        *this = XmlDocument(other);
    return *this;
}

bool XmlDocument::Parse(const wchar_t* text) {
    // Assigning keeps the buffer of an earlier text: large documents are not copied into
    // fresh memory on every parse.
    m_strDoc.assign(text ? text : L"");
    m_strError.clear();
    return Reindex();
}

bool XmlDocument::Parse(std::wstring text) {
    m_strDoc = std::move(text);
    m_strError.clear();
    return Reindex();
}

bool XmlDocument::Reindex() {
    std::wstring previous = std::move(m_strError);
    m_strError.clear();
    SetPosition({});
    // Names stored before refer to the old index.
    m_pSavedPositions.reset();
    std::wstring error;
    bool ok = false;
    if (m_strDoc.size() > static_cast<std::size_t>(INT_MAX)) {
        m_strDoc.clear();
        m_index.Reset(1);
        error = L"Document too large";
    } else {
        ok = BuildXmlIndex(m_strDoc, m_index, error);
    }
    if (previous.empty())
        m_strError = std::move(error);
    else if (error.empty())
        m_strError = std::move(previous);
    else
        m_strError = previous + L", " + error;
    return ok;
}

void XmlDocument::SetPosition(const XmlPosition& position) {
    m_iParent = position.parent;
    m_iCurrent = position.current;
    m_iChild = position.child;
    m_nNodeType = m_iCurrent != 0 ? kXmlElement : kXmlEndTag;
}

std::wstring_view XmlDocument::TagNameAt(int index) const {
    int offset = static_cast<int>(m_index[index].start) + 1;
    XmlTagToken token;
    if (!ReadXmlTagToken(m_strDoc, offset, token))
        return {};
    return std::wstring_view(m_strDoc).substr(token.offset, token.length);
}

int XmlDocument::NextMatching(int parent, int index, const wchar_t* name) const {
    int candidate = index != 0 ? m_index[index].next : m_index[parent].firstChild;
    if (name == nullptr || *name == L'\0')
        return candidate;
    const std::wstring_view wanted(name);
    while (candidate != 0 && !XmlNameMatches(wanted, TagNameAt(candidate)))
        candidate = m_index[candidate].next;
    return candidate;
}

bool XmlDocument::FindSibling(const wchar_t* name) {
    const int found = NextMatching(m_iParent, m_iCurrent, name);
    if (found == 0)
        return false;
    SetPosition({m_iParent, found, 0});
    return true;
}

bool XmlDocument::FindChild(const wchar_t* name) {
    if (m_iCurrent == 0 && !FindSibling())
        return false;
    const int found = NextMatching(m_iCurrent, m_iChild, name);
    if (found == 0)
        return false;
    m_iChild = found;
    return true;
}

bool XmlDocument::Descend() {
    if (m_iCurrent == 0 || m_nNodeType != kXmlElement)
        return false;
    SetPosition({m_iCurrent, m_iChild, 0});
    return true;
}

bool XmlDocument::Ascend() {
    if (m_iParent == 0)
        return false;
    SetPosition({m_index[m_iParent].parent, m_iParent, m_iCurrent});
    return true;
}

std::wstring XmlDocument::TagName() const {
    if (!IsElement(m_iCurrent))
        return {};
    return std::wstring(TagNameAt(m_iCurrent));
}

std::wstring XmlDocument::Attribute(int iPosition, const wchar_t* name) const {
    if (!IsElement(iPosition) || name == nullptr || *name == L'\0')
        return {};
    const XmlElementRecord& record = m_index[iPosition];
    const std::wstring_view text =
        std::wstring_view(m_strDoc).substr(0, record.start + record.length);
    const std::wstring_view wanted(name);
    int offset = static_cast<int>(record.start) + 1;
    XmlTagToken token;
    if (!ReadXmlTagToken(text, offset, token))  // the tag name
        return {};
    int place = 0;
    int matchedPlace = -1;
    while (ReadXmlTagToken(text, offset, token)) {
        ++place;
        const std::wstring_view value = text.substr(token.offset, token.length);
        if (token.isQuoted) {
            if (matchedPlace >= 0 && place == matchedPlace + 2)
                return DecodeXmlValue(value);
            continue;
        }
        if (value == L"/" || value == L">" || value == L"?")
            return {};
        // Only the first token of the name counts, so "a=1 a='2'" has no value for a.
        if (matchedPlace < 0 && value != L"=" && XmlNameMatches(wanted, value))
            matchedPlace = place;
    }
    return {};
}

std::wstring XmlDocument::AttributeName(int n) const {
    if (!IsElement(m_iCurrent) || n < 0)
        return {};
    const XmlElementRecord& record = m_index[m_iCurrent];
    const std::wstring_view text =
        std::wstring_view(m_strDoc).substr(0, record.start + record.length);
    int offset = static_cast<int>(record.start) + 1;
    XmlTagToken token;
    if (!ReadXmlTagToken(text, offset, token))
        return {};
    // An attribute is a name, '=' and a quoted value: the same that Attribute() finds.
    XmlTagToken window[3];
    int seen = 0;
    int found = 0;
    while (ReadXmlTagToken(text, offset, token)) {
        const std::wstring_view value = text.substr(token.offset, token.length);
        if (!token.isQuoted && (value == L"/" || value == L">" || value == L"?"))
            break;
        window[0] = window[1];
        window[1] = window[2];
        window[2] = token;
        if (++seen < 3)
            continue;
        const std::wstring_view equals = text.substr(window[1].offset, window[1].length);
        if (window[2].isQuoted && !window[0].isQuoted && !window[1].isQuoted && equals == L"=") {
            if (found++ == n)
                return std::wstring(text.substr(window[0].offset, window[0].length));
        }
    }
    return {};
}

bool XmlDocument::MarkPosition(const wchar_t* name) {
    if (name == nullptr)
        return false;
    if (!m_pSavedPositions)
        m_pSavedPositions = std::make_unique<XmlSavedPositions>();
    m_pSavedPositions->Mark(name, {m_iParent, m_iCurrent, m_iChild});
    return true;
}

bool XmlDocument::ReturnToPosition(const wchar_t* name) {
    XmlPosition position;
    if (name == nullptr || !m_pSavedPositions || !m_pSavedPositions->Find(name, position))
        return false;
    SetPosition(position);
    return true;
}

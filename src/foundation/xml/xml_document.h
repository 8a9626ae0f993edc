#pragma once
// A read-only XML document: the whole text in one wide string and, beside it, a flat index of
// its elements. Names, attributes and values are read from the text on demand.
//
// Navigation moves three indexes over the index: the parent whose children are walked, the
// current element, and the current child of the current element. 0 means "before the first".

#include <memory>
#include <string>

#include "foundation/xml/xml_element_index.h"
#include "foundation/xml/xml_node_scanner.h"
#include "foundation/xml/xml_saved_positions.h"

class XmlDocument {
public:
    XmlDocument() = default;
    XmlDocument(const XmlDocument& other);
    XmlDocument& operator=(const XmlDocument& other);
    XmlDocument(XmlDocument&&) = default;
    XmlDocument& operator=(XmlDocument&&) = default;

    // Replaces the text (null reads as empty), clears Error() and builds the index. Returns
    // true for a well-formed document; otherwise there is no root and Error() says why.
    bool Parse(const wchar_t* text);
    bool Parse(std::wstring text);

    // Reads a file (UTF-8, or UTF-16LE when it starts with that byte order mark) through the
    // file system port and parses it; Error() begins with the conversion's status text.
    bool Load(const std::wstring& path);
    // Writes the text as UTF-8 through the file system port; Error() gets the status text.
    bool Save(const std::wstring& path);

    bool HasRoot() const { return m_index[0].firstChild != 0; }

    // Moves the current element to its next sibling called `name`, or to the next sibling at
    // all when `name` is null or empty. From the start it finds the root.
    bool FindSibling(const wchar_t* name = nullptr);
    // The same for the child position under the current element; with no current element it
    // first moves to the root.
    bool FindChild(const wchar_t* name = nullptr);
    // The current element becomes the parent, the child position the current one.
    bool Descend();
    // The parent becomes the current element, the old current element the child position.
    bool Ascend();

    std::wstring TagName() const;  // of the current element, empty if none
    // The decoded value of a quoted attribute of the element at `iPosition`; empty if absent.
    std::wstring Attribute(int iPosition, const wchar_t* name) const;
    std::wstring Attribute(const wchar_t* name) const { return Attribute(m_iCurrent, name); }
    // The name of the attribute at place `n` (from 0) of the current element, empty if none.
    std::wstring AttributeName(int n) const;

    bool MarkPosition(const wchar_t* name);
    bool ReturnToPosition(const wchar_t* name);

    const std::wstring& Text() const { return m_strDoc; }
    const std::wstring& Error() const { return m_strError; }
    int ParentIndex() const { return m_iParent; }
    int CurrentIndex() const { return m_iCurrent; }
    int ChildIndex() const { return m_iChild; }
    int NodeType() const { return m_nNodeType; }
    const XmlElementIndex& Index() const { return m_index; }

private:
    // Builds the index of m_strDoc. A text that Error() holds (Load's status) is kept in front
    // of the parse's message.
    bool Reindex();
    // The element after `index` among its siblings (or the first child of `parent` when
    // `index` is 0) whose name matches; 0 when there is none.
    int NextMatching(int parent, int index, const wchar_t* name) const;
    std::wstring_view TagNameAt(int index) const;
    bool IsElement(int index) const { return index > 0 && index < m_index.Free(); }
    void SetPosition(const XmlPosition& position);

    std::wstring m_strDoc;
    std::wstring m_strError;
    int m_iParent = 0;
    int m_iCurrent = 0;
    int m_iChild = 0;
    int m_nNodeType = kXmlEndTag;
    // Created at the first MarkPosition.
    std::unique_ptr<XmlSavedPositions> m_pSavedPositions;
    XmlElementIndex m_index;
};

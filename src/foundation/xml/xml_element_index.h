#pragma once
// The flat index of an XML document's elements: one record of eight 32-bit words per element,
// in pages of 65536 records. Record 0 stands for the document itself.

#include <cstdint>
#include <memory>
#include <vector>

struct XmlElementRecord {
    std::uint32_t start;       // offset of the start tag's '<'
    std::uint32_t length;      // of the whole element, end tag included
    std::uint32_t tagLengths;  // start tag under kXmlStartTagMask, end tag from bit 22 on
    std::uint32_t levelFlags;  // nesting level in the low 16 bits, kXmlFirstChild
    std::int32_t parent;
    std::int32_t firstChild;  // 0 for none
    std::int32_t next;        // 0 for none
    // The first child's previous link holds the last sibling: the last child is one step away.
    std::int32_t previous;
};
static_assert(sizeof(XmlElementRecord) == 32);

// Bit 20 is outside the mask: a start tag of 2^20 characters or more loses that bit. Kept as
// it has always been; nothing on the reading side depends on the start tag's length.
constexpr std::uint32_t kXmlStartTagMask = 0x2FFFFF;
constexpr int kXmlEndTagShift = 22;
constexpr std::uint32_t kXmlFirstChild = 0x80000;
constexpr std::uint32_t kXmlLevelMask = 0xFFFF;

class XmlElementIndex {
public:
    static constexpr int kPageBits = 16;
    static constexpr int kPageSize = 1 << kPageBits;

    XmlElementIndex();  // just the document record
    // Copies hold the records in use, and room for at least 8.
    XmlElementIndex(const XmlElementIndex& other);
    XmlElementIndex& operator=(const XmlElementIndex& other);
    // A moved-from index is left holding a valid index (the other one's, or a fresh one).
    XmlElementIndex(XmlElementIndex&& other) : XmlElementIndex() { Swap(other); }
    XmlElementIndex& operator=(XmlElementIndex&& other) noexcept {
        Swap(other);
        return *this;
    }
    void Swap(XmlElementIndex& other) noexcept;

    // Drops every record and makes room for `capacity`; the document record is cleared.
    void Reset(int capacity);
    // Takes the next record, growing when full, and clears it. Returns its index.
    int Add();

    XmlElementRecord& operator[](int index) {
        return m_pages[index >> kPageBits][index & (kPageSize - 1)];
    }
    const XmlElementRecord& operator[](int index) const {
        return m_pages[index >> kPageBits][index & (kPageSize - 1)];
    }

    int Free() const { return m_iFree; }            // next unused index
    int Allocated() const { return m_nAllocated; }  // records the pages can hold
    int PageSlots() const { return m_nPageSlots; }  // length of the page pointer array

private:
    void Allocate(int capacity);
    void Grow();
    // Replaces the last page by one of `records` records, keeping what it holds.
    void ResizeLastPage(int records);
    void EnsurePageSlot(int page);

    std::vector<std::unique_ptr<XmlElementRecord[]>> m_pages;
    int m_iFree = 1;
    int m_nAllocated = 0;
    int m_nPageSlots = 0;
};

#include "foundation/xml/xml_element_index.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace {

constexpr int kMinimumCopy = 8;

}  // namespace

XmlElementIndex::XmlElementIndex() {
    Reset(1);
}

XmlElementIndex::XmlElementIndex(const XmlElementIndex& other) {
    *this = other;
}

XmlElementIndex& XmlElementIndex::operator=(const XmlElementIndex& other) {
    if (this == &other)
        return *this;
    Allocate(std::max(other.m_iFree, kMinimumCopy));
    for (int page = 0; page * kPageSize < other.m_iFree; ++page) {
        const int count = std::min(kPageSize, other.m_iFree - page * kPageSize);
        std::memcpy(m_pages[page].get(), other.m_pages[page].get(),
                    sizeof(XmlElementRecord) * count);
    }
    m_iFree = other.m_iFree;
    return *this;
}

void XmlElementIndex::Swap(XmlElementIndex& other) noexcept {
    m_pages.swap(other.m_pages);
    std::swap(m_iFree, other.m_iFree);
    std::swap(m_nAllocated, other.m_nAllocated);
    std::swap(m_nPageSlots, other.m_nPageSlots);
}

void XmlElementIndex::Reset(int capacity) {
    Allocate(std::max(capacity, 1));
    (*this)[0] = XmlElementRecord{};
    m_iFree = 1;
}

void XmlElementIndex::Allocate(int capacity) {
    const int lastPage = (capacity - 1) >> kPageBits;
    m_pages.clear();
    m_nPageSlots = 0;
    EnsurePageSlot(lastPage);
    for (int page = 0; page <= lastPage; ++page) {
        const int records = page < lastPage ? kPageSize : capacity - page * kPageSize;
        m_pages[page] = std::make_unique_for_overwrite<XmlElementRecord[]>(records);
    }
    m_nAllocated = capacity;
}

int XmlElementIndex::Add() {
    if (m_iFree >= m_nAllocated)
        Grow();
    const int index = m_iFree++;
    (*this)[index] = XmlElementRecord{};
    return index;
}

// Grows by half of what is in use, but never by more than one new page at a time: a page that
// is not full is first filled up to 65536 records.
void XmlElementIndex::Grow() {
    if (m_iFree == INT32_MAX)
        throw std::length_error("XML element index is full");
    const long long wanted = std::max<long long>(m_iFree + m_iFree / 2LL, m_iFree + 1LL);
    const int lastPage = (m_nAllocated - 1) >> kPageBits;
    const long long lastPageEnd = static_cast<long long>(lastPage + 1) * kPageSize;
    if (wanted <= lastPageEnd) {
        ResizeLastPage(static_cast<int>(wanted - static_cast<long long>(lastPage) * kPageSize));
        m_nAllocated = static_cast<int>(wanted);
        return;
    }
    if (m_nAllocated < lastPageEnd)
        ResizeLastPage(kPageSize);
    const int newPage = lastPage + 1;
    const long long records = std::min<long long>(wanted - lastPageEnd, kPageSize);
    EnsurePageSlot(newPage);
    m_pages[newPage] = std::make_unique_for_overwrite<XmlElementRecord[]>(records);
    m_nAllocated = static_cast<int>(std::min<long long>(lastPageEnd + records, INT32_MAX));
}

void XmlElementIndex::ResizeLastPage(int records) {
    const int lastPage = (m_nAllocated - 1) >> kPageBits;
    const int inUse = std::max(0, m_iFree - lastPage * kPageSize);
    auto page = std::make_unique_for_overwrite<XmlElementRecord[]>(records);
    std::memcpy(page.get(), m_pages[lastPage].get(),
                sizeof(XmlElementRecord) * std::min(inUse, records));
    m_pages[lastPage] = std::move(page);
}

void XmlElementIndex::EnsurePageSlot(int page) {
    if (page < m_nPageSlots)
        return;
    m_nPageSlots = page * 2 + 4;
    m_pages.resize(m_nPageSlots);
}

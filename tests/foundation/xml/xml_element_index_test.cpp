#include "foundation/xml/xml_element_index.h"

#include <gtest/gtest.h>

namespace {

// Fills records up to `count` with their own index as start, so any lost copy shows.
void FillTo(XmlElementIndex& index, int count) {
    while (index.Free() < count) {
        const int n = index.Add();
        index[n].start = static_cast<std::uint32_t>(n);
    }
}

bool HoldsOwnIndexes(const XmlElementIndex& index) {
    for (int n = 1; n < index.Free(); ++n) {
        if (index[n].start != static_cast<std::uint32_t>(n))
            return false;
    }
    return true;
}

}  // namespace

TEST(XmlElementIndex, GrowsByHalfWithinOnePage) {
    XmlElementIndex index;
    index.Reset(10);
    EXPECT_EQ(index.Allocated(), 10);
    FillTo(index, 11);  // the eleventh record needs a grow: 10 + 5
    EXPECT_EQ(index.Allocated(), 15);
    FillTo(index, 16);
    EXPECT_EQ(index.Allocated(), 22);
    EXPECT_TRUE(HoldsOwnIndexes(index));
}

TEST(XmlElementIndex, CrossingAPageFillsTheOldPageAndAddsOnlyOne) {
    XmlElementIndex index;
    index.Reset(50000);
    EXPECT_EQ(index.PageSlots(), 4);
    FillTo(index, 50001);
    // 50000 + 25000 crosses the first page: it becomes full and one more page is added.
    EXPECT_EQ(index.Allocated(), 75000);
    FillTo(index, 75001);
    EXPECT_EQ(index.Allocated(), 75000 + 37500);
    FillTo(index, 200000);  // pages 0..3: the slot array stays at 4
    EXPECT_EQ(index.PageSlots(), 4);
    FillTo(index, 4 * XmlElementIndex::kPageSize + 1);
    EXPECT_EQ(index.PageSlots(), 4 * 2 + 4);
    EXPECT_TRUE(HoldsOwnIndexes(index));
}

TEST(XmlElementIndex, LargeInitialSizeSpansPagesAndCopiesHoldWhatIsUsed) {
    XmlElementIndex index;
    index.Reset(3 * XmlElementIndex::kPageSize + 7);
    FillTo(index, 2 * XmlElementIndex::kPageSize + 3);
    const XmlElementIndex copy(index);
    EXPECT_EQ(copy.Allocated(), copy.Free());
    EXPECT_TRUE(HoldsOwnIndexes(copy));

    XmlElementIndex small;
    small = XmlElementIndex();
    const XmlElementIndex smallCopy(small);
    EXPECT_EQ(smallCopy.Allocated(), 8);
}

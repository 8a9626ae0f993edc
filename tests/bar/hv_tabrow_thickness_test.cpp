// The docked tab control's thickness on each side.

#include "bar/hv_tabrow_thickness.h"

#include <gtest/gtest.h>

#include "settings/tabrow_settings.h"

namespace {

TEST(TabBarThickness, ItemSideTimesRowsPlusTheSidesPadding) {
    const win::RECT item{0, 0, 80, 20};
    struct Case {
        int side;
        int thickness;
    };
    const Case cases[] = {
        {dock::kTop, 20 * 3 + 6},   {dock::kLeft, 80 * 3 + 8},
        {dock::kRight, 80 * 3 + 5}, {dock::kBottom, 20 * 3 + 4},
        {dock::kCmdWndLeft, 23 * 3},  // not a side of tabs: the caption stands for the item
    };
    for (const Case& c : cases) {
        EXPECT_EQ(TabBarThickness(TabBarMeasure{c.side, 23, 3, &item}), c.thickness) << c.side;
    }
}

TEST(TabBarThickness, WithoutTheSelectedItemsRectangleItIsOneCaption) {
    EXPECT_EQ(TabBarThickness(TabBarMeasure{dock::kLeft, 23, 3, nullptr}), 23);
}

}  // namespace

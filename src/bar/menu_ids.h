#pragma once
// The context menu's ids. Fixed commands keep their ids from one opening to the next; every row
// of a list gets an id from one counter that starts afresh at kFirstDynamic at each opening, the
// lists taking their ids in the order below, so that an id tells its list by the lowest ids of
// the lists alone.

#include <array>
#include <optional>

namespace cmd {
constexpr unsigned kAbout = 4016;
constexpr unsigned kChangeTemplatePath = 4028;
constexpr unsigned kEmptyDrawing = 4029;
constexpr unsigned kManageWorkSets = 4030;
constexpr unsigned kSheetSetSearchPath = 4031;
constexpr unsigned kOpenSheetSetsInManager = 4032;
constexpr unsigned kLockPreview = 4039;
constexpr unsigned kOpenFolder = 4047;
constexpr unsigned kSaveView = 4050;
constexpr unsigned kRefreshPreview = 4051;
constexpr unsigned kRefreshPreviews = 4053;
constexpr unsigned kOptions = 4055;
constexpr unsigned kFirstDynamic = 5000;
}  // namespace cmd

// The menu's lists in the order they take their ids.
enum class MenuList {
    Recent,
    WorkSet,
    RecentSheetSet,
    FoundSheetSet,
    Template,
    Layout,
    Xref,
    Image,
    OleLink,
    Hyperlink,
    LayerState,
    View,
};
inline constexpr std::size_t kMenuListCount = 12;

// The lowest id of each list after the recent drawings, in the order above; none for a list
// that holds no row.
using MenuListStarts = std::array<std::optional<unsigned>, kMenuListCount - 1>;

// The list whose range holds a dynamic id: the last list that starts at or below it, the recent
// drawings when none does. A list without rows has no range.
MenuList DecodeMenuId(unsigned id, const MenuListStarts& starts);

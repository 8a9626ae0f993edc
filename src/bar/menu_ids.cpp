#include "bar/menu_ids.h"

MenuList DecodeMenuId(unsigned id, const MenuListStarts& starts) {
    MenuList list = MenuList::Recent;
    for (std::size_t i = 0; i < starts.size(); ++i) {
        if (starts[i] && *starts[i] <= id)
            list = static_cast<MenuList>(i + 1);
    }
    return list;
}

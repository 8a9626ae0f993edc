// The owners of handles: each release made once, by the last owner, with the state its kind
// carries; and every real kind of handle gone from the system once its owner lets it go.

#include "platform/win32/unique_handle.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Handles whose releases are written into a log; a negative one fails to release.
struct LoggedTraits {
    using Handle = const int*;
    static Handle Invalid() { return nullptr; }
    std::vector<std::string>* log = nullptr;
    const char* owner = "";
    bool Close(Handle handle) const {
        log->push_back(owner + std::to_string(*handle));
        return *handle >= 0;
    }
};
using Logged = UniqueHandle<LoggedTraits>;

// Whether the system let go of the handle that `owner` held when the owner did.
template <class Owner, class Alive>
bool ReleasedWithItsOwner(Owner owner, Alive alive) {
    const auto handle = owner.Get();
    return owner && alive(handle) && owner.Reset() && !alive(handle);
}

}  // namespace

TEST(UniqueHandle, ReleasesEachHandleOnceThroughTheTraitsItCameWith) {
    const int one = 1, two = 2, broken = -3;
    std::vector<std::string> log;
    {
        Logged first(&one, {&log, "a"});
        Logged second(std::move(first));
        EXPECT_FALSE(first);
        Logged third(&two, {&log, "b"});
        third = std::move(second);  // b's handle goes now; a's travels with its traits
        EXPECT_EQ(log, std::vector<std::string>{"b2"});
        Logged& same = third;
        third = std::move(same);
        EXPECT_EQ(third.Get(), &one) << "moving onto itself keeps the handle";
        EXPECT_TRUE(third.Reset());
        EXPECT_TRUE(third.Reset()) << "nothing left to give back";
        EXPECT_FALSE(Logged(&broken, {&log, "c"}).Reset());
        Logged last(&two, {&log, "d"});
    }
    EXPECT_EQ(log, (std::vector<std::string>{"b2", "a1", "c-3", "d2"}));
}

TEST(UniqueHandle, EveryKindIsGoneFromTheSystemOnceItsOwnerLetsGo) {
    wchar_t program[MAX_PATH] = {};
    ASSERT_NE(::GetModuleFileNameW(nullptr, program, MAX_PATH), 0u);
    WIN32_FIND_DATAW found{};
    DWORD count = 0;
    int size = 0;
    // A library that nothing else here loads, so that its last reference is the owner's.
    ASSERT_EQ(::GetModuleHandleW(L"mpr.dll"), nullptr);

    EXPECT_TRUE(ReleasedWithItsOwner(BitmapHandle(::CreateBitmap(4, 4, 1, 1, nullptr)),
                                     [](HBITMAP b) { return ::GetObjectType(b) == OBJ_BITMAP; }));
    EXPECT_TRUE(ReleasedWithItsOwner(MemoryDc(::CreateCompatibleDC(nullptr)),
                                     [](HDC dc) { return ::GetObjectType(dc) == OBJ_MEMDC; }));
    EXPECT_TRUE(ReleasedWithItsOwner(
        FileHandle(::CreateFileW(program, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                                 nullptr)),
        [&](HANDLE file) { return ::GetHandleInformation(file, &count) != FALSE; }));
    // A failed open or search answers INVALID_HANDLE_VALUE, not null: the owner holds nothing.
    EXPECT_FALSE(FileHandle(
        ::CreateFileW(L"C:\\none\\missing", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)));
    EXPECT_FALSE(FindHandle(::FindFirstFileW(L"C:\\none\\*", &found)));
    EXPECT_TRUE(ReleasedWithItsOwner(FindHandle(::FindFirstFileW(program, &found)), [&](HANDLE s) {
        return ::FindNextFileW(s, &found) != FALSE || ::GetLastError() == ERROR_NO_MORE_FILES;
    }));
    EXPECT_TRUE(ReleasedWithItsOwner(
        OpenRegistryKey(HKEY_CURRENT_USER, L"Software", KEY_READ), [&](HKEY key) {
            return ::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &count, nullptr, nullptr,
                                      nullptr, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
        }));
    EXPECT_TRUE(ReleasedWithItsOwner(ModuleHandle(::LoadLibraryW(L"mpr.dll")), [](HMODULE) {
        return ::GetModuleHandleW(L"mpr.dll") != nullptr;
    }));
    EXPECT_TRUE(ReleasedWithItsOwner(
        ImageListHandle(::ImageList_Create(16, 16, ILC_COLOR24, 1, 1)),
        [&](HIMAGELIST list) { return ::ImageList_GetIconSize(list, &size, &size) != FALSE; }));
    EXPECT_TRUE(ReleasedWithItsOwner(MenuHandle(::CreatePopupMenu()),
                                     [](HMENU menu) { return ::IsMenu(menu) != FALSE; }));
}

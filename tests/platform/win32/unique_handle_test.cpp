// The owners of handles: each release call made once, by the owner that holds the handle at the
// end, with the state its kind carries (a window's context goes back to its window); and each
// real kind of handle gone from the system once its owner lets it go.

#include "platform/win32/unique_handle.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/test_files.h"

namespace {

// A kind of handle whose releases are written into a log; a negative handle fails to release.
struct LoggedTraits {
    using Handle = const int*;
    static Handle Invalid() { return nullptr; }
    std::vector<std::string>* log = nullptr;
    const char* owner = "";
    bool Close(Handle handle) const {
        log->push_back(owner + std::string(":") + std::to_string(*handle));
        return *handle >= 0;
    }
};
using Logged = UniqueHandle<LoggedTraits>;
static_assert(kMoveOnly<Logged>);

}  // namespace

TEST(UniqueHandle, ReleasesEachHandleOnceThroughTheTraitsItCameWith) {
    const int one = 1;
    const int two = 2;
    const int broken = -3;
    std::vector<std::string> log;
    {
        Logged first(&one, {&log, "a"});
        Logged second(std::move(first));
        EXPECT_FALSE(first);
        EXPECT_EQ(second.Get(), &one);
        Logged third(&two, {&log, "b"});
        third = std::move(second);  // b's handle goes now; a's travels with its traits
        EXPECT_EQ(log, std::vector<std::string>{"b:2"});
        Logged& same = third;
        third = std::move(same);
        EXPECT_EQ(third.Get(), &one) << "moving onto itself keeps the handle";
        EXPECT_TRUE(third.Reset());
        EXPECT_TRUE(third.Reset()) << "nothing left to give back";
        Logged failing(&broken, {&log, "c"});
        EXPECT_FALSE(failing.Reset());
        Logged last(&two, {&log, "d"});
    }
    EXPECT_EQ(log, (std::vector<std::string>{"b:2", "a:1", "c:-3", "d:2"}));
}

namespace {

// A real kind of handle: how to make one, and whether the system still knows it.
struct Kind {
    const char* name;
    std::function<bool(const ScratchFolder&)> check;
};

// Makes an owner, sees the handle alive, lets it go, and sees it gone.
template <class Owner, class Alive>
bool MadeLiveAndReleased(Owner owner, Alive alive) {
    const auto handle = owner.Get();
    const bool wasAlive = owner && alive(handle);
    return wasAlive && owner.Reset() && !alive(handle);
}

const Kind kKinds[] = {
    {"bitmap",
     [](const ScratchFolder&) {
         return MadeLiveAndReleased(BitmapHandle(::CreateBitmap(4, 4, 1, 1, nullptr)),
                                    [](HBITMAP b) { return ::GetObjectType(b) == OBJ_BITMAP; });
     }},
    {"memory context",
     [](const ScratchFolder&) {
         return MadeLiveAndReleased(MemoryDc(::CreateCompatibleDC(nullptr)),
                                    [](HDC dc) { return ::GetObjectType(dc) == OBJ_MEMDC; });
     }},
    {"file",
     [](const ScratchFolder& scratch) {
         const std::wstring path = scratch.Write(L"f.txt", "x");
         return MadeLiveAndReleased(
             FileHandle(::CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0,
                                      nullptr)),
             [](HANDLE file) {
                 DWORD flags = 0;
                 return ::GetHandleInformation(file, &flags) != FALSE;
             });
     }},
    {"search",
     [](const ScratchFolder& scratch) {
         WIN32_FIND_DATAW data{};
         return MadeLiveAndReleased(
             FindHandle(::FindFirstFileW(scratch.File(L"*").c_str(), &data)), [](HANDLE search) {
                 WIN32_FIND_DATAW next{};
                 return ::FindNextFileW(search, &next) != FALSE ||
                        ::GetLastError() == ERROR_NO_MORE_FILES;
             });
     }},
    {"registry key",
     [](const ScratchFolder&) {
         return MadeLiveAndReleased(
             OpenRegistryKey(HKEY_CURRENT_USER, L"Software", KEY_READ), [](HKEY key) {
                 DWORD subKeys = 0;
                 return ::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &subKeys, nullptr,
                                           nullptr, nullptr, nullptr, nullptr, nullptr,
                                           nullptr) == ERROR_SUCCESS;
             });
     }},
    {"library",
     [](const ScratchFolder&) {
         // One that nothing else here loads, so that its last reference is the owner's.
         return ::GetModuleHandleW(L"mpr.dll") == nullptr &&
                MadeLiveAndReleased(ModuleHandle(::LoadLibraryW(L"mpr.dll")), [](HMODULE) {
                    return ::GetModuleHandleW(L"mpr.dll") != nullptr;
                });
     }},
    {"image list",
     [](const ScratchFolder&) {
         return MadeLiveAndReleased(ImageListHandle(::ImageList_Create(16, 16, ILC_COLOR24, 1, 1)),
                                    [](HIMAGELIST list) {
                                        int width = 0;
                                        int height = 0;
                                        return ::ImageList_GetIconSize(list, &width, &height) !=
                                               FALSE;
                                    });
     }},
    {"menu",
     [](const ScratchFolder&) {
         return MadeLiveAndReleased(MenuHandle(::CreatePopupMenu()),
                                    [](HMENU menu) { return ::IsMenu(menu) != FALSE; });
     }},
};

}  // namespace

TEST(UniqueHandle, EveryKindIsGoneFromTheSystemOnceItsOwnerLetsGo) {
    for (const Kind& kind : kKinds) {
        const ScratchFolder scratch;
        EXPECT_TRUE(kind.check(scratch)) << kind.name;
    }
}

// What the bar's hook costs the host's real MDI client. Batches of WM_WINDOWPOSCHANGING and of
// WM_MOUSEMOVE go to the hooked MDI client of a frame with the module loaded and, as the
// baseline in the same run, to an MDI client of the same frame without the hook; the ratios are
// printed. A mouse move is a message the hook only passes on; a position change it cuts, and
// moves the bar into the gap, which is its work.

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "host/tabrow_app.h"
#include "host_session.h"
#include "settings/settings_keys.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kMessages = 100'000;
constexpr int kRounds = 3;

double SendBatch(HWND window, UINT message, const RECT& room) {
    const auto start = Clock::now();
    for (int i = 0; i < kMessages; ++i) {
        // Anew each time: the hook changes what it is given.
        WINDOWPOS pos{window,
                      nullptr,
                      room.left,
                      room.top,
                      room.right - room.left,
                      room.bottom - room.top,
                      SWP_NOZORDER};
        const LPARAM lParam = message == WM_WINDOWPOSCHANGING ? reinterpret_cast<LPARAM>(&pos)
                                                              : MAKELPARAM(i % 500, i % 300);
        ::SendMessageW(window, message, 0, lParam);
    }
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

}  // namespace

int main() {
    HostSession session(1024, 720);
    session.StoreSetting(keys::kDockSide, 59420);
    session.Host().OpenDrawing(L"C:\\jobs\\site.dwg");
    session.Host().OpenDrawing(L"C:\\jobs\\plan.dwg");
    if (!session.Load()) {
        std::printf("the module did not load\n");
        return 1;
    }
    const RECT room = session.Frame().MdiClientRoom();
    CLIENTCREATESTRUCT client{nullptr, 0xFF00};
    HWND plain =
        ::CreateWindowExW(0, L"MDIClient", L"", WS_CHILD, room.left, room.top,
                          room.right - room.left, room.bottom - room.top, session.Frame().Frame(),
                          nullptr, ::GetModuleHandleW(nullptr), &client);
    HWND hooked = reinterpret_cast<HWND>(g_hwndMdiClient);
    std::printf("%-28s %12s %12s %8s\n", "100,000 messages", "plain ms", "hooked ms", "ratio");
    for (UINT message :
         {static_cast<UINT>(WM_WINDOWPOSCHANGING), static_cast<UINT>(WM_MOUSEMOVE)}) {
        double plainMs = 1e300;
        double hookedMs = 1e300;
        for (int round = 0; round < kRounds; ++round) {
            plainMs = std::min(plainMs, SendBatch(plain, message, room));
            hookedMs = std::min(hookedMs, SendBatch(hooked, message, room));
        }
        std::printf("%-28s %12.1f %12.1f %8.2f\n",
                    message == WM_WINDOWPOSCHANGING ? "WM_WINDOWPOSCHANGING" : "WM_MOUSEMOVE",
                    plainMs, hookedMs, hookedMs / plainMs);
    }
    ::DestroyWindow(plain);
    session.Unload();
    return 0;
}

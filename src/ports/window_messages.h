#pragma once
// The window system's message numbers that the core sends, receives or watches, and the record
// of one message as the host's main loop hands it to a watcher.

#include <cstdint>

struct HostWindow;

namespace wm {
constexpr unsigned kCreate = 0x0001;
constexpr unsigned kDestroy = 0x0002;
constexpr unsigned kSize = 0x0005;
constexpr unsigned kPaint = 0x000F;
constexpr unsigned kClose = 0x0010;
constexpr unsigned kEraseBkgnd = 0x0014;
constexpr unsigned kSetCursor = 0x0020;
constexpr unsigned kWindowPosChanging = 0x0046;
constexpr unsigned kNotify = 0x004E;
constexpr unsigned kContextMenu = 0x007B;
constexpr unsigned kNcDestroy = 0x0082;
constexpr unsigned kNcActivate = 0x0086;
constexpr unsigned kNcHitTest = 0x0084;
constexpr unsigned kCommand = 0x0111;
constexpr unsigned kTimer = 0x0113;
constexpr unsigned kHScroll = 0x0114;
constexpr unsigned kVScroll = 0x0115;
constexpr unsigned kMenuSelect = 0x011F;
constexpr unsigned kMouseMove = 0x0200;
constexpr unsigned kLButtonDown = 0x0201;
constexpr unsigned kLButtonUp = 0x0202;
constexpr unsigned kLButtonDblClk = 0x0203;
constexpr unsigned kRButtonDown = 0x0204;
constexpr unsigned kRButtonUp = 0x0205;
constexpr unsigned kMButtonUp = 0x0208;
constexpr unsigned kMouseWheel = 0x020A;
constexpr unsigned kSizing = 0x0214;
constexpr unsigned kExitSizeMove = 0x0232;
constexpr unsigned kUser = 0x0400;
// The host asks a modeless window whether it wants to keep the keyboard focus.
constexpr unsigned kAcadKeepFocus = 0x7101;
}  // namespace wm

// The tab control's notifications (TCN_...).
namespace tcn {
constexpr std::uint32_t kSelChange = static_cast<std::uint32_t>(-551);
constexpr std::uint32_t kSelChanging = static_cast<std::uint32_t>(-552);
}  // namespace tcn

struct HostMessage {
    HostWindow* window = nullptr;
    unsigned message = 0;
    std::uintptr_t wParam = 0;
    std::intptr_t lParam = 0;
};

#pragma once
// A window handler that writes each named call it gets, with the arguments as decoded, and the
// table of packed messages that every window system must decode the same way.

#include <cstdint>
#include <string>
#include <vector>

#include "ports/window_handler.h"
#include "ports/window_messages.h"

class RecordingHandler : public WindowHandler {
public:
    // What the handler was called with, one line per call. Each call is answered as handled with
    // the number of calls so far, so that an answer tells which call gave it.
    std::vector<std::string> calls;

    MsgResult OnClose() override { return Note("close"); }
    MsgResult OnSize(unsigned type, win::SIZE client) override {
        return Note("size " + N(type) + " " + N(client.cx) + "x" + N(client.cy));
    }
    MsgResult OnMouseMove(win::POINT p, unsigned keys) override { return Mouse("move", p, keys); }
    MsgResult OnLButtonDown(win::POINT p, unsigned keys) override { return Mouse("down", p, keys); }
    MsgResult OnLButtonUp(win::POINT p, unsigned keys) override { return Mouse("up", p, keys); }
    MsgResult OnLButtonDblClk(win::POINT p, unsigned keys) override {
        return Mouse("double", p, keys);
    }
    MsgResult OnTimer(unsigned id) override { return Note("timer " + N(id)); }
    MsgResult OnWindowPosChanging(win::WINDOWPOS& pos) override {
        return Note("pos " + N(pos.x) + "," + N(pos.y) + " " + N(pos.cx) + "x" + N(pos.cy));
    }
    MsgResult OnContextMenu(HostWindow*, win::POINT screen) override {
        return Note("menu " + N(screen.x) + "," + N(screen.y));
    }
    MsgResult OnMenuSelect(unsigned item, unsigned flags) override {
        return Note("select " + N(item) + " " + N(flags));
    }
    MsgResult OnCommand(unsigned id, unsigned code, HostWindow* control) override {
        return Note("command " + N(id) + " " + N(code) + (control ? " control" : ""));
    }
    MsgResult OnNotify(const win::NMHDR& header) override {
        return Note("notify " + N(static_cast<std::int32_t>(header.code)) + " from " +
                    N(static_cast<long long>(header.idFrom)));
    }
    MsgResult OnHScroll(unsigned code, int position, HostWindow*) override {
        return Note("hscroll " + N(code) + " " + N(position));
    }
    MsgResult OnVScroll(unsigned code, int position, HostWindow*) override {
        return Note("vscroll " + N(code) + " " + N(position));
    }
    MsgResult OnKeepFocus() override { return Note("keep focus"); }
    MsgResult OnUserMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
        return Note("user " + N(message - wm::kUser) + " " + N(wParam) + " " + N(lParam));
    }

private:
    template <class Number>
    static std::string N(Number n) {
        return std::to_string(n);
    }
    MsgResult Note(std::string call) {
        calls.push_back(std::move(call));
        return MsgResult::Handled(static_cast<std::intptr_t>(calls.size()));
    }
    MsgResult Mouse(const char* what, win::POINT p, unsigned keys) {
        return Note(std::string(what) + " " + N(p.x) + "," + N(p.y) + " keys " + N(keys));
    }
};

// Messages packed as the window system packs them, and the call each must become.
struct PackedMessage {
    unsigned message;
    std::uintptr_t wParam;
    std::intptr_t lParam;
    const char* call;
};

inline std::intptr_t PackPoint(int x, int y) {
    return static_cast<std::intptr_t>((static_cast<std::uint32_t>(y & 0xFFFF) << 16) |
                                      static_cast<std::uint32_t>(x & 0xFFFF));
}

// The records point into `pos` and `header`, which the caller keeps while it sends.
inline std::vector<PackedMessage> DecodingCases(win::WINDOWPOS& pos, win::NMHDR& header) {
    pos = win::WINDOWPOS{nullptr, nullptr, 10, -20, 300, 200, 0};
    header = win::NMHDR{nullptr, 7, static_cast<std::uint32_t>(-551)};
    return {
        {wm::kClose, 0, 0, "close"},
        {wm::kSize, 2, PackPoint(640, 480), "size 2 640x480"},
        {wm::kMouseMove, 0x0009, PackPoint(-5, 70), "move -5,70 keys 9"},
        {wm::kLButtonDown, 0x0001, PackPoint(12, 34), "down 12,34 keys 1"},
        {wm::kLButtonUp, 0, PackPoint(12, -34), "up 12,-34 keys 0"},
        {wm::kLButtonDblClk, 0x0008, PackPoint(1, 2), "double 1,2 keys 8"},
        {wm::kTimer, 101, 0, "timer 101"},
        {wm::kWindowPosChanging, 0, reinterpret_cast<std::intptr_t>(&pos), "pos 10,-20 300x200"},
        {wm::kContextMenu, 0, PackPoint(-1, -1), "menu -1,-1"},
        {wm::kMenuSelect, (0x0080u << 16) | 40001u, 0, "select 40001 128"},
        {wm::kCommand, (1u << 16) | 40002u, 0, "command 40002 1"},
        {wm::kNotify, 7, reinterpret_cast<std::intptr_t>(&header), "notify -551 from 7"},
        {wm::kHScroll, (0xFFF6u << 16) | 5u, 0, "hscroll 5 -10"},
        {wm::kVScroll, (300u << 16) | 4u, 0, "vscroll 4 300"},
        {wm::kAcadKeepFocus, 0, 0, "keep focus"},
        {wm::kUser + 3, 4, -5, "user 3 4 -5"},
    };
}

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
    // One line per call. Each call is answered as handled with the number of calls so far, so
    // that an answer tells which call gave it.
    std::vector<std::string> calls;

    MsgResult OnSize(unsigned type, win::SIZE s) override { return Note("size", type, s.cx, s.cy); }
    MsgResult OnMouseMove(win::POINT p, unsigned keys) override {
        return Note("move", p.x, p.y, keys);
    }
    MsgResult OnLButtonDown(win::POINT p, unsigned keys) override {
        return Note("down", p.x, p.y, keys);
    }
    MsgResult OnTimer(unsigned id) override { return Note("timer", id); }
    MsgResult OnWindowPosChanging(win::WINDOWPOS& pos) override {
        return Note("pos", pos.x, pos.y, pos.cx, pos.cy);
    }
    MsgResult OnContextMenu(HostWindow*, win::POINT p) override { return Note("menu", p.x, p.y); }
    MsgResult OnCommand(unsigned id, unsigned code, HostWindow*) override {
        return Note("command", id, code);
    }
    MsgResult OnNotify(const win::NMHDR& header) override {
        return Note("notify", static_cast<std::int32_t>(header.code), header.idFrom);
    }
    MsgResult OnHScroll(unsigned code, int position, HostWindow*) override {
        return Note("hscroll", code, position);
    }
    MsgResult OnKeepFocus() override { return Note("keep focus"); }
    MsgResult OnUserMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override {
        return Note("user", message - wm::kUser, wParam, lParam);
    }

private:
    template <class... Numbers>
    MsgResult Note(const char* name, Numbers... numbers) {
        std::string line = name;
        ((line += ' ', line += std::to_string(numbers)), ...);
        calls.push_back(line);
        return MsgResult::Handled(static_cast<std::intptr_t>(calls.size()));
    }
};

// A message packed as the window system packs it, and the call it must become.
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
        {wm::kSize, 2, PackPoint(640, 480), "size 2 640 480"},
        {wm::kMouseMove, 0x0009, PackPoint(-5, 70), "move -5 70 9"},
        {wm::kLButtonDown, 0x0001, PackPoint(12, -34), "down 12 -34 1"},
        {wm::kTimer, 101, 0, "timer 101"},
        {wm::kWindowPosChanging, 0, reinterpret_cast<std::intptr_t>(&pos), "pos 10 -20 300 200"},
        {wm::kContextMenu, 0, PackPoint(-1, -1), "menu -1 -1"},
        {wm::kCommand, (1u << 16) | 40002u, 0, "command 40002 1"},
        {wm::kNotify, 7, reinterpret_cast<std::intptr_t>(&header), "notify -551 7"},
        {wm::kHScroll, (0xFFF6u << 16) | 5u, 0, "hscroll 5 -10"},
        {wm::kAcadKeepFocus, 0, 0, "keep focus"},
        {wm::kUser + 3, 4, -5, "user 3 4 -5"},
    };
}

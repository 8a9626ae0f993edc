#pragma once
// The simulated popup menus. A test says beforehand what the user will do with the next menu:
// choose a row by the path of texts that leads to it through the popups, choose an id, or
// close the menu. Tracking highlights each row of the path in turn (WM_MENUSELECT to the
// owner, with the popups opened on the way), then closes the menu. The last tree tracked stays
// for the test to read.
//
// It is strict where a real menu cannot be made to do a thing: a text that is not in the
// popup, a grayed row, a separator or a popup chosen as a command, an id that no row carries,
// and a menu tracked while another is open all fail with std::logic_error, and are listed in
// Failures() (a window procedure's caller may swallow what it throws).

#include <deque>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "ports/popup_menu.h"

class SimWindowSystem;

class SimPopupMenus : public PopupMenus {
public:
    explicit SimPopupMenus(SimWindowSystem& windows) : m_windows(windows) {}

    // What the user does with the next menus, in order; nothing queued closes the menu.
    // `whileOpen` runs when the path's last row is highlighted, before it is chosen: what the
    // user sees at that moment.
    void QueueChoice(std::vector<std::wstring> path, std::function<void()> whileOpen = {}) {
        m_choices.push_back({std::move(path), std::move(whileOpen)});
    }
    void QueueChoice(unsigned id) { m_choices.push_back({id, {}}); }
    void QueueClose() { m_choices.push_back({std::monostate{}, {}}); }

    const MenuRows& LastMenu() const { return m_last; }
    win::POINT LastPoint() const { return m_lastPoint; }
    int Tracked() const { return m_tracked; }
    const std::vector<std::string>& Failures() const { return m_failures; }
    bool IsTracking() const { return m_rows != nullptr; }
    // The row at the end of a path of texts in the menu being tracked, else the last one;
    // throws when there is none.
    const MenuRow& Row(const std::vector<std::wstring>& path) const;

    unsigned Track(const MenuRows& rows, win::POINT screen, HostWindow* owner) override;
    win::RECT ItemRect(const MenuRow& popup, std::size_t item) override;

    // Each row is this high and each popup this wide; a popup opens beside its row.
    static constexpr int kRowHeight = 20;
    static constexpr int kWidth = 200;

private:
    using Choice = std::variant<std::monostate, std::vector<std::wstring>, unsigned>;
    struct Queued {
        Choice choice;
        std::function<void()> whileOpen;
    };
    [[noreturn]] void Fail(const std::string& why);
    unsigned ChoosePath(const Queued& queued, HostWindow* owner);
    unsigned ChooseId(unsigned id);
    void Select(HostWindow* owner, unsigned item, unsigned flags);

    SimWindowSystem& m_windows;
    std::deque<Queued> m_choices;
    const MenuRows* m_rows = nullptr;  // the tree being tracked; the caller's
    // The popups open now, outermost first, with each one's top left on the screen.
    std::vector<std::pair<const MenuRow*, win::POINT>> m_open;
    win::POINT m_origin;
    MenuRows m_last;
    win::POINT m_lastPoint{-1, -1};
    int m_tracked = 0;
    std::vector<std::string> m_failures;
};

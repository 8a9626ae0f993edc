#include "platform/sim/sim_popup_menus.h"

#include <stdexcept>

#include "foundation/text_encoding.h"
#include "platform/sim/sim_window_system.h"
#include "ports/window_messages.h"

namespace {

const MenuRow* FindId(const MenuRows& rows, unsigned id) {
    for (const MenuRow& row : rows) {
        if (row.IsPopup()) {
            if (const MenuRow* found = FindId(row.rows, id))
                return found;
        } else if ((row.flags & mf::kSeparator) == 0 && row.id == id) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace

const MenuRow& SimPopupMenus::Row(const std::vector<std::wstring>& path) const {
    const MenuRows* rows = m_rows != nullptr ? m_rows : &m_last;
    const MenuRow* row = nullptr;
    for (const std::wstring& text : path) {
        row = nullptr;
        for (const MenuRow& candidate : *rows) {
            if (candidate.text == text && (candidate.flags & mf::kSeparator) == 0) {
                row = &candidate;
                break;
            }
        }
        if (row == nullptr)
            throw std::logic_error("no menu row \"" + ToUtf8(text) + "\"");
        rows = &row->rows;
    }
    if (row == nullptr)
        throw std::logic_error("an empty menu path");
    return *row;
}

unsigned SimPopupMenus::Track(const MenuRows& rows, win::POINT screen, HostWindow* owner) {
    if (m_rows != nullptr)
        Fail("a menu tracked while another is open");
    m_rows = &rows;
    m_origin = screen;
    m_open.clear();
    ++m_tracked;
    m_last = rows;
    m_lastPoint = screen;
    Queued queued;
    if (!m_choices.empty()) {
        queued = std::move(m_choices.front());
        m_choices.pop_front();
    }
    unsigned chosen = 0;
    try {
        if (std::holds_alternative<std::vector<std::wstring>>(queued.choice))
            chosen = ChoosePath(queued, owner);
        else if (const auto* id = std::get_if<unsigned>(&queued.choice))
            chosen = ChooseId(*id);
    } catch (const std::logic_error& e) {
        m_rows = nullptr;
        Fail(e.what());
    }
    Select(owner, 0, mf::kClosed);
    m_rows = nullptr;
    m_open.clear();
    return chosen;
}

unsigned SimPopupMenus::ChoosePath(const Queued& queued, HostWindow* owner) {
    const auto& path = std::get<std::vector<std::wstring>>(queued.choice);
    const MenuRows* rows = m_rows;
    win::POINT corner = m_origin;
    for (std::size_t step = 0; step < path.size(); ++step) {
        std::size_t position = 0;
        while (position < rows->size() && ((*rows)[position].text != path[step] ||
                                           ((*rows)[position].flags & mf::kSeparator) != 0))
            ++position;
        if (position == rows->size())
            throw std::logic_error("no menu row \"" + ToUtf8(path[step]) + "\"");
        const MenuRow& row = (*rows)[position];
        const bool last = step + 1 == path.size();
        if ((row.flags & mf::kGrayed) != 0 && (last || row.IsPopup()))
            throw std::logic_error("menu row \"" + ToUtf8(row.text) + "\" is grayed");
        if (last && row.IsPopup())
            throw std::logic_error("menu row \"" + ToUtf8(row.text) + "\" is a popup");
        // A popup is announced by its position, a command by its id.
        Select(owner, row.IsPopup() ? static_cast<unsigned>(position) : row.id, row.flags);
        if (last) {
            if (queued.whileOpen)
                queued.whileOpen();
            return row.id;
        }
        corner = win::POINT{corner.x + kWidth, corner.y + static_cast<int>(position) * kRowHeight};
        m_open.emplace_back(&row, corner);
        rows = &row.rows;
    }
    throw std::logic_error("an empty menu path");
}

unsigned SimPopupMenus::ChooseId(unsigned id) {
    const MenuRow* row = FindId(*m_rows, id);
    if (row == nullptr)
        throw std::logic_error("no menu row carries id " + std::to_string(id));
    if ((row->flags & mf::kGrayed) != 0)
        throw std::logic_error("menu row \"" + ToUtf8(row->text) + "\" is grayed");
    return id;
}

void SimPopupMenus::Select(HostWindow* owner, unsigned item, unsigned flags) {
    const std::uintptr_t wParam = (item & 0xFFFFu) | ((flags & 0xFFFFu) << 16);
    m_windows.Send(owner, wm::kMenuSelect, wParam, 0);
}

void SimPopupMenus::Fail(const std::string& why) {
    m_failures.push_back(why);
    throw std::logic_error(why);
}

win::RECT SimPopupMenus::ItemRect(const MenuRow& popup, std::size_t item) {
    for (const auto& [open, corner] : m_open) {
        if (open == &popup && item < popup.rows.size()) {
            const int top = corner.y + static_cast<int>(item) * kRowHeight;
            return win::RECT{corner.x, top, corner.x + kWidth, top + kRowHeight};
        }
    }
    return {};
}

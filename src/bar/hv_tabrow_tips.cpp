// The bar's tool tips: the two controls' settings, a tool per tab or per cell, and the text of
// a drawing's tip.

#include "bar/hv_tabrow.h"

#include "ports/port.h"
#include "ports/tab_control.h"
#include "ports/tool_tips.h"
#include "ports/window_messages.h"
#include "ports/window_system.h"
#include "views/tip_text.h"

namespace {

constexpr unsigned kRedrawNow = ws::kRdwInvalidate | ws::kRdwErase | ws::kRdwUpdateNow;
constexpr int kReshowDelay = 250;

}  // namespace

std::wstring HvTabrow::GetTipText(HostDocument* doc) {
    const std::wstring& noted = m_TipTexts[doc];
    if (!noted.empty())
        return noted;
    return DrawingTipText(doc, m_bShowFullPathInTips != 0, m_bShowDwgPropsInTips != 0);
}

void HvTabrow::RemoveTools(HostWindow* window) {
    ToolTips& tips = Use<ToolTips>();
    const int count = tips.ToolCount(m_tip);
    for (int id = 1; id <= count; ++id)
        tips.DelTool(m_tip, window, static_cast<unsigned>(id));
}

void HvTabrow::RefreshTips() {
    if (m_tip == nullptr || m_tipPalette == nullptr)
        return;  // the controls couldn't be made
    ToolTips& tips = Use<ToolTips>();
    tips.Activate(m_tip, m_bShowTips != 0);
    for (HostToolTip* tip : {m_tip, m_tipPalette}) {
        tips.SetDelayTime(tip, ttdt::kAutoPop, m_nTipRemain);
        tips.SetDelayTime(tip, ttdt::kInitial, m_nTipDelay);
        tips.SetDelayTime(tip, ttdt::kReshow, kReshowDelay);
        tips.SetMaxTipWidth(tip, m_nTipWidth);
    }
    if (m_bCreated == 0)
        return;
    m_TipTexts.clear();
    if (m_bTabMode == 0) {
        Use<WindowSystem>().Redraw(m_palette.m_hWnd, kRedrawNow);
        RefreshCellTips();
        return;
    }
    RemoveTools(m_tabCtrl.m_hWnd);
    TabControls& tabs = Use<TabControls>();
    const int count = m_tabCtrl.GetItemCount();
    for (int index = 0; index < count; ++index) {
        HostDocument* doc = m_tabCtrl.GetDocument(index);
        ToolTipTool tool;
        if (doc == nullptr || !tabs.ItemRect(m_tabCtrl.m_hWnd, index, tool.rect))
            continue;
        tool.window = m_tabCtrl.m_hWnd;
        tool.id = static_cast<unsigned>(index + 1);
        tool.text = GetTipText(doc);
        tips.AddTool(m_tip, tool);
    }
}

void HvTabrow::RefreshCellTips() {
    if (m_tip == nullptr || m_palette.m_hWnd == nullptr)
        return;
    RemoveTools(m_palette.m_hWnd);
    for (std::size_t i = 0; i < m_palette.m_items.size(); ++i) {
        const TrDocItem& item = *m_palette.m_items[i];
        ToolTipTool tool;
        tool.window = m_palette.m_hWnd;
        tool.id = static_cast<unsigned>(i + 1);
        tool.rect = item.rcItem;
        tool.text = GetTipText(item.pDoc);
        Use<ToolTips>().AddTool(m_tip, tool);
    }
}

void HvTabrow::PreTranslateMessage(const HostMessage& message) {
    if (m_tip == nullptr || m_tipPalette == nullptr)
        return;
    // Only the bar's own messages and its children's, as the framework walks from the window
    // up to the bar.
    WindowSystem& windows = Use<WindowSystem>();
    HostWindow* window = message.window;
    while (window != nullptr || window != m_hWnd)
        window = windows.Parent(window);
    if (window == nullptr)
        return;
    ToolTips& tips = Use<ToolTips>();
    tips.RelayEvent(m_tip, message);
    tips.RelayEvent(m_tipPalette, message);
}

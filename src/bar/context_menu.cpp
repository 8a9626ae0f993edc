// The bar's right-click menu: built afresh at each opening from the drawing under the mouse and
// the lists of recent drawings, work sets, sheet sets and templates. The lists stay in the bar
// after the menu is gone, because the chosen row's command arrives after tracking has ended and
// is decoded against them.

#include <algorithm>
#include <cstdint>
#include <map>

#include "bar/auto_ref.h"
#include "bar/batch_commands.h"
#include "bar/command_edge.h"
#include "bar/hv_tabrow.h"
#include "bar/menu_ids.h"
#include "bar/plot_all.h"
#include "bar/view_layout.h"
#include "foundation/ini_file.h"
#include "ports/com_error.h"
#include "ports/host_automation.h"
#include "ports/host_database.h"
#include "ports/host_documents.h"
#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/popup_menu.h"
#include "ports/port.h"
#include "ports/shell.h"
#include "ports/tool_tips.h"
#include "ports/window_messages.h"
#include "ports/window_procedures.h"
#include "ports/window_system.h"
#include "settings/tabrow_settings.h"

namespace {

// Process-wide, as the window system's menus are: the row whose tip shows (0 for none), and
// each work set's popup by the id of its "All" row, for one opening of the menu.
unsigned s_nMenuTipId = 0;
std::map<unsigned, const MenuRow*> s_WorkSetMenus;

// A failure of the menu's own, shown in a message box as it stands.
struct MenuFailure {
    std::wstring text;
};

template <class Rows>
std::optional<unsigned> LowestId(const Rows& rows) {
    if (rows.empty())
        return std::nullopt;
    return rows.begin()->first;
}

// One command row per entry of a list of path objects, the text read from each.
template <class Text>
MenuRows PathRows(const TrPathRows& rows, Text text, std::size_t limit = SIZE_MAX) {
    MenuRows menu;
    for (const auto& [id, path] : rows) {
        if (menu.size() == limit)
            break;
        menu.push_back(MenuRow::Command(id, text(path)));
    }
    return menu;
}

MenuRows TextRows(const TrTextRows& rows) {
    MenuRows menu;
    for (const auto& [id, text] : rows)
        menu.push_back(MenuRow::Command(id, text));
    return menu;
}

std::wstring Title(const CFilePath& path) {
    return path.GetFileTitle();
}

// The layout rows' check: the active layout's name must be one character whose code is the
// row's id cut to 16 bits. No id reaches a character that short names, so in practice nothing
// is checked; the test is kept as the system has always had it.
unsigned LayoutCheck(const std::wstring& activeName, unsigned id) {
    return activeName.size() == 1 && static_cast<unsigned>(activeName[0]) == (id & 0xFFFFu)
               ? mf::kChecked
               : 0u;
}

}  // namespace

HostDocument* HvTabrow::HitTestDocument(win::POINT ptClient) {
    WindowSystem& windows = Use<WindowSystem>();
    auto inChild = [&](HostWindow* child) {
        const win::RECT rect = windows.RectInParent(child);
        return win::POINT{ptClient.x - rect.left, ptClient.y - rect.top};
    };
    if (m_bTabMode != 0)
        return m_tabCtrl.m_hWnd != nullptr ? m_tabCtrl.DocumentAt(inChild(m_tabCtrl.m_hWnd))
                                           : nullptr;
    return m_palette.m_hWnd != nullptr ? m_palette.DocumentAt(inChild(m_palette.m_hWnd))
                                       : nullptr;
}

MsgResult HvTabrow::OnContextMenu(HostWindow* /*window*/, win::POINT screen) {
    // The point is taken as it comes: a menu asked for by the keyboard gets no place of its own.
    int documents = 0;
    try {
        documents = GetOpenDocumentCount();
    } catch (...) {
    }
    m_pMenuDoc = HitTestDocument(Use<WindowSystem>().ScreenToClient(m_hWnd, screen));

    unsigned nextId = cmd::kFirstDynamic;
    MenuRows recent = BuildRecentRows(&nextId);
    MenuRows workSets = BuildWorkSetMenu(&nextId);
    std::optional<MenuRows> sheetSets = BuildSheetSetMenu(&nextId);
    MenuRows newMenu{MenuRow::Command(cmd::kChangeTemplatePath, L"Change Template Path..."),
                     MenuRow::Command(cmd::kEmptyDrawing, L"Empty Drawing")};
    LoadTemplates(&nextId);
    for (MenuRow& row : PathRows(m_TemplateItems, Title))
        newMenu.push_back(std::move(row));

    MenuRows menu;
    if (m_pMenuDoc == nullptr) {
        if (m_bTabMode == 0 && m_bAutoUpdatePreviews == 0)
            menu.push_back(MenuRow::Command(cmd::kRefreshPreviews, L"Refresh Previews"));
        // The drawing's lists each hold their "None Found" row, so that every range of ids
        // stays in place for the decoding.
        ListLayouts(&nextId, &m_LayoutItems, nullptr, true);
        ListReferences(&nextId, &m_XrefItems, &m_ImageItems, &m_OleLinkItems, &m_HyperlinkItems,
                       nullptr, true);
        ListLayerStates(&nextId, &m_LayerStateItems, nullptr, true);
        ListViews(&nextId, &m_ViewItems, nullptr, true);
    } else {
        AppendDrawingRows(menu, &nextId);
    }

    menu.push_back(MenuRow::Popup(L"Recent Drawings", std::move(recent)));
    menu.push_back(MenuRow::Popup(L"Work Sets", std::move(workSets)));
    menu.push_back(sheetSets ? MenuRow::Popup(L"Sheet Sets", std::move(*sheetSets))
                             : MenuRow::Command(0, L"Sheet Sets", mf::kGrayed));
    if (LoadDisableNewMenu(m_store) == 0)
        menu.push_back(MenuRow::Popup(L"New", std::move(newMenu)));
    menu.push_back(MenuRow::Separator());
    if (documents > 0) {
        for (auto [id, text] : {std::pair{cmd::kQuickPlotAll, L"Quick Plot All"},
                                {cmd::kSaveAll, L"Save All"},
                                {cmd::kCloseAll, L"Close All"},
                                {cmd::kSaveAndCloseAll, L"Save and Close All"},
                                {cmd::kCloseAllNoSave, L"Close All, No Save"},
                                {cmd::kExitSaveAll, L"Exit, Save All"},
                                {cmd::kExitNoSave, L"Exit, No Save"}})
            menu.push_back(MenuRow::Command(id, text));
        menu.push_back(MenuRow::Separator());
    }
    menu.push_back(MenuRow::Command(cmd::kOptions, L"Options..."));
    menu.push_back(MenuRow::Command(cmd::kAbout, L"About Tabrow..."));

    // Each work set's popup, for the tip of its "All" row.
    for (const MenuRow& row : menu) {
        if (row.IsPopup() && row.text == L"Work Sets") {
            for (const MenuRow& set : row.rows) {
                if (set.IsPopup())
                    s_WorkSetMenus[set.rows.front().id] = &set;
            }
        }
    }
    const unsigned chosen = Use<PopupMenus>().Track(menu, screen, m_hWnd);
    s_WorkSetMenus.clear();
    // Tracking ran the message loop: the bar may be gone. The command comes as the window
    // system's own would, after the menu.
    WindowSystem& windows = Use<WindowSystem>();
    if (chosen != 0 && m_hWnd != nullptr && windows.IsWindow(m_hWnd))
        Use<WindowProcedures>().Send(m_hWnd, wm::kCommand, chosen, 0);
    return MsgResult::Handled();
}

MenuRows HvTabrow::BuildRecentRows(unsigned* pNextId) {
    LoadRecentFiles();
    MenuRows rows;
    for (const std::wstring& path : m_RecentFiles)
        rows.push_back(MenuRow::Command((*pNextId)++, path));
    // The counter does not move: "Empty" shares its id with the first work set row, and a
    // click on it acts as that row does. This is intended.
    if (rows.empty())
        rows.push_back(MenuRow::Command(*pNextId, L"Empty"));
    return rows;
}

std::optional<MenuRows> HvTabrow::BuildSheetSetMenu(unsigned* pNextId) {
    // The ids are dealt whatever the host, so that the ranges after them stay in place.
    BuildSheetSetRows(pNextId, true);
    if (!HostHasSheetSets())
        return std::nullopt;
    auto text = [this](const CFilePath& path) {
        return m_bShowFullPathInSheetSets != 0 ? path.GetPath() : path.GetFileTitle();
    };
    const std::size_t shown = static_cast<std::size_t>(std::max(m_nNumSheetSets, 0));
    return MenuRows{
        MenuRow::Command(cmd::kSheetSetSearchPath, L"Set Sheet Set Search Path..."),
        MenuRow::Command(cmd::kOpenSheetSetsInManager, L"Open Sheet Sets In Manager",
                         m_bOpenSheetSetInSSM != 0 ? mf::kChecked : 0u),
        MenuRow::Popup(L"Recent", PathRows(m_recentSheetSets, text, shown)),
        MenuRow::Popup(L"Found", PathRows(m_foundSheetSets, text))};
}

MenuRows HvTabrow::BuildWorkSetMenu(unsigned* pNextId) {
    MenuRows rows{MenuRow::Command(cmd::kManageWorkSets, L"Manage...")};
    BuildWorkSetRows(pNextId, m_WorkSetItems, true);
    if (m_WorkSetItems.size() == 1) {
        const auto& [id, path] = *m_WorkSetItems.begin();
        rows.push_back(MenuRow::Command(id, Title(path)));
        return rows;
    }
    // Two rows per set: the whole set, then the choice of its files. The popup is named by
    // the first row's title, so a name with a dot shows only what stands before the last one.
    for (auto it = m_WorkSetItems.begin(); it != m_WorkSetItems.end(); ++it) {
        const auto& [id, path] = *it;
        if (++it == m_WorkSetItems.end())
            break;
        rows.push_back(MenuRow::Popup(Title(path), {MenuRow::Command(id, L"All"),
                                                     MenuRow::Command(id + 1, L"Select...")}));
    }
    return rows;
}

void HvTabrow::AppendDrawingRows(MenuRows& menu, unsigned* pNextId) {
    HostDocuments& docs = Use<HostDocuments>();
    HostAutomation& automation = Use<HostAutomation>();
    HostDatabase* db = docs.Database(m_pMenuDoc);
    CFilePath path(docs.PathName(m_pMenuDoc));
    if (path.GetFileTitle().empty())
        path.SetFileTitle(docs.FileName(m_pMenuDoc));
    menu.push_back(MenuRow::Command(cmd::kClose, L"Close [" + path.GetFileTitle() + L"]"));
    menu.push_back(MenuRow::Command(cmd::kOpenFolder, L"Open Folder"));
    if (m_bTabMode == 0) {
        if (const TrDocItem* item = m_palette.FindItem(m_pMenuDoc)) {
            if (m_bAutoUpdatePreviews != 0)
                menu.push_back(MenuRow::Command(cmd::kLockPreview, L"Lock Preview",
                                                item->bLocked ? mf::kChecked : 0u));
            else
                menu.push_back(MenuRow::Command(cmd::kRefreshPreview, L"Refresh Preview"));
        }
    }

    ListLayouts(pNextId, &m_LayoutItems, db, true);
    std::wstring activeLayout;
    if (automation.HasOleLinkManager()) {
        AutoDocumentPtr document(automation.DocumentOfDatabase(db));
        if (document.Get() != nullptr)
            activeLayout = automation.ActiveLayoutName(document.Get());
    }
    MenuRows layouts;
    for (const auto& [id, name] : m_LayoutItems)
        layouts.push_back(MenuRow::Command(id, name, LayoutCheck(activeLayout, id)));
    menu.push_back(MenuRow::Popup(L"Layouts", std::move(layouts)));

    ListReferences(pNextId, &m_XrefItems, &m_ImageItems, &m_OleLinkItems, &m_HyperlinkItems, db,
                   true);
    auto referenceText = [this](const CFilePath& file) {
        return m_bShowFullPathInRefs != 0 ? file.GetPath() : file.GetFileName();
    };
    MenuRows references;
    for (auto [text, rows] : {std::pair{L"Xrefs", &m_XrefItems},
                              {L"Images", &m_ImageItems},
                              {L"Ole Links", &m_OleLinkItems},
                              {L"Hyperlinks", &m_HyperlinkItems}}) {
        const bool none = rows->empty() || rows->begin()->second.GetPath() == kNoneFound;
        references.push_back(
            MenuRow::Popup(text, PathRows(*rows, referenceText), none ? mf::kGrayed : 0u));
    }
    menu.push_back(MenuRow::Popup(L"References", std::move(references)));

    // The layouts' check is repeated here against a name that is never read, so no layer
    // state is ever checked.
    ListLayerStates(pNextId, &m_LayerStateItems, db, true);
    menu.push_back(MenuRow::Popup(L"Layer States", TextRows(m_LayerStateItems)));

    MenuRows views;
    if (m_pMenuDoc == docs.MdiActiveDocument())
        views.push_back(MenuRow::Command(cmd::kSaveView, L"Save..."));
    ListViews(pNextId, &m_ViewItems, db, true);
    for (const auto& [id, view] : m_ViewItems)
        views.push_back(MenuRow::Command(id, view.strName));
    menu.push_back(MenuRow::Popup(L"Views", std::move(views)));
    menu.push_back(MenuRow::Separator());
}

void HvTabrow::OpenMenuDocumentFolder() {
    if (m_pMenuDoc == nullptr)
        return;
    HostDocuments& docs = Use<HostDocuments>();
    if (docs.Database(m_pMenuDoc) == nullptr)
        return;
    Use<Shell>().Open(CFilePath(docs.PathName(m_pMenuDoc)).GetFolder(false), 5);
}

MsgResult HvTabrow::OnMenuCommand(unsigned id) {
    try {
        if (!Use<HostAutomation>().HasOleLinkManager())
            throw MenuFailure{L"AcAxGetOleLinkManager() failed!"};
        if (std::optional<MsgResult> done = RunMenuRow(id))
            return *done;
    } catch (const MenuFailure& failure) {
        Use<MessageBoxes>().Show(failure.text, L"", mb::kOk);
    } catch (const ComError& e) {
        Use<MessageBoxes>().Show(ComErrorText(e), L"", mb::kOk);
    } catch (...) {
        Use<HostServices>().Print(L"Unknown error in HvTabrow!\n");
    }
    return OnFixedCommand(id);
}

std::optional<MsgResult> HvTabrow::RunMenuRow(unsigned id) {
    const MenuListStarts starts{
        LowestId(m_WorkSetItems),   LowestId(m_recentSheetSets), LowestId(m_foundSheetSets),
        LowestId(m_TemplateItems),  LowestId(m_LayoutItems),     LowestId(m_XrefItems),
        LowestId(m_ImageItems),     LowestId(m_OleLinkItems),    LowestId(m_HyperlinkItems),
        LowestId(m_LayerStateItems), LowestId(m_ViewItems)};
    const MsgResult handled = MsgResult::Handled(1);
    switch (DecodeMenuId(id, starts)) {
        case MenuList::Recent:
            if (id - cmd::kFirstDynamic < m_RecentFiles.size())
                OpenFile(ParseFileEntry(m_RecentFiles[id - cmd::kFirstDynamic]), true, true);
            break;
        case MenuList::WorkSet: {
            const std::wstring text = m_WorkSetItems[id].GetPath();
            if (text == kNoneFound)
                return handled;
            const std::wstring prefix = kWorkSetSelectPrefix;
            if (text.compare(0, prefix.size(), prefix) == 0)
                SelectWorkSetFiles(text.substr(prefix.size()));
            else
                OpenWorkSet(text);
            break;
        }
        case MenuList::RecentSheetSet:
        case MenuList::FoundSheetSet: {
            TrPathRows& rows = m_recentSheetSets.count(id) ? m_recentSheetSets : m_foundSheetSets;
            if (rows[id].GetPath() == kNoneFound)
                return handled;
            OpenSheetSet(rows[id].GetPath());
            break;
        }
        case MenuList::Template: {
            // No test for "None Found": the host gets it as a template's name and refuses it.
            HostAutomation& automation = Use<HostAutomation>();
            automation.Release(automation.AddDocument(m_pHostApp, m_TemplateItems[id].GetPath()));
            break;
        }
        case MenuList::Layout: SwitchLayout(m_LayoutItems[id]); break;
        case MenuList::Xref: OpenFile(ParseFileEntry(m_XrefItems[id].GetPath()), true, true); break;
        case MenuList::Image: OpenFile(ParseFileEntry(m_ImageItems[id].GetPath()), true, true); break;
        case MenuList::OleLink:
            OpenFile(ParseFileEntry(m_OleLinkItems[id].GetPath()), true, true);
            break;
        case MenuList::Hyperlink:
            OpenFile(ParseFileEntry(m_HyperlinkItems[id].GetPath()), true, true);
            break;
        case MenuList::LayerState:
            if (m_LayerStateItems[id] == kNoneFound)
                return handled;
            RestoreLayerState(m_LayerStateItems[id]);
            break;
        case MenuList::View:
            if (m_ViewItems[id].strName == kNoneFound)
                return handled;
            if (!RestoreView(m_ViewItems[id]))
                return handled;
            break;
    }
    return std::nullopt;
}

void HvTabrow::SwitchLayout(const std::wstring& name) {
    TrBatchCommands batch(*this, m_pHostApp);
    AutoDocumentPtr document = batch.MenuDocument();
    if (document.Get() == nullptr)
        return;
    HostAutomation& automation = Use<HostAutomation>();
    automation.Activate(document.Get());
    const std::wstring layout = automation.LayoutName(document.Get(), name);
    if (layout == automation.ActiveLayoutName(document.Get()))
        return;
    automation.SetActiveLayout(document.Get(), layout);
    RefreshDocument(m_pMenuDoc, true);
}

void HvTabrow::RestoreLayerState(const std::wstring& name) {
    TrBatchCommands batch(*this, m_pHostApp);
    AutoDocumentPtr document = batch.MenuDocument();
    if (document.Get() == nullptr)
        return;
    Use<HostAutomation>().Activate(document.Get());
    HostDocuments& docs = Use<HostDocuments>();
    HostDatabasePort& database = Use<HostDatabasePort>();
    HostDatabase* db = docs.Database(m_pMenuDoc);
    if (!database.HasLayerStateManager(db))
        return;
    // The lock is the host's current drawing's, which the activation has made the menu's.
    HostDatabase* current = docs.Database(docs.CurDocument());
    const DbStatus locked = database.LockDocument(current);
    const DbStatus status = database.RestoreLayerState(db, name);
    if (locked == dbs::kOk)
        database.UnlockDocument(current);
    if (status != dbs::kOk) {
        Use<HostServices>().Print(L"Error restoring layer state " + name + L" - " +
                                  database.StatusText(status) + L"\n");
        return;
    }
    Use<HostAutomation>().RegenAll(document.Get());
    RefreshDocument(docs.MdiActiveDocument(), true);
}

bool HvTabrow::RestoreView(const ViewItem& item) {
    TrBatchCommands batch(*this, m_pHostApp);
    AutoDocumentPtr document = batch.MenuDocument();
    if (document.Get() == nullptr)
        return true;
    HostAutomation& automation = Use<HostAutomation>();
    HostAutoDocument* doc = document.Get();
    automation.Activate(doc);
    AutoRef<HostAutoView> view(automation.ViewItem(doc, item.strName));
    const int activeSpace = automation.ActiveSpace(doc);
    if (item.bModelSpace && activeSpace != space::kModel)
        automation.SetActiveSpace(doc, space::kModel);
    else if (!item.bModelSpace && activeSpace == space::kModel)
        automation.SetActiveSpace(doc, space::kPaper);

    if (automation.ActiveSpace(doc) == space::kModel) {
        AutoRef<HostAutoViewport> viewport(automation.ActiveViewport(doc, false));
        automation.SetViewportView(viewport.Get(), view.Get());
        automation.SetActiveViewport(doc, viewport.Get());
    } else {
        std::wstring layout = item.strLayout;
        if (layout.empty()) {
            const ListDialogRunner cancel = [](CListDialog&) { return false; };
            layout = SelectViewLayout(item.strName, m_pMenuDoc,
                                      m_runListDialog ? m_runListDialog : cancel);
            if (layout.empty())
                return false;
        }
        automation.SetActiveLayout(doc, layout);
        const double height = automation.GetView(view.Get(), ViewProperty::Height).x;
        const double width = automation.GetView(view.Get(), ViewProperty::Width).x;
        const DbPoint2d& c = item.ptCenter;
        automation.ZoomWindow(
            m_pHostApp, ViewValue{c.x - width / 2, c.y - height / 2, 0},
            ViewValue{c.x + width / 2, c.y + height / 2, 0});
    }
    RefreshDocument(m_pMenuDoc, true);
    return true;
}

MsgResult HvTabrow::OnMenuSelect(unsigned item, unsigned /*flags*/) {
    // The default procedure runs as well: the answer is "not handled" on every path.
    ToolTips& tips = Use<ToolTips>();
    if (s_nMenuTipId != 0) {
        tips.TrackActivate(m_tip, m_hWnd, s_nMenuTipId, false);
        tips.DelTool(m_tip, m_hWnd, s_nMenuTipId);
        // The tool is gone: the next highlight has none to take down.
        s_nMenuTipId = 0;
    }
    if (m_WorkSetItems.empty() || m_recentSheetSets.empty())
        return MsgResult::NotHandled();
    if (item < m_WorkSetItems.begin()->first || item >= m_recentSheetSets.begin()->first)
        return MsgResult::NotHandled();
    auto row = m_WorkSetItems.find(item);
    auto popup = s_WorkSetMenus.find(item);
    if (row == m_WorkSetItems.end() || popup == s_WorkSetMenus.end())
        return MsgResult::NotHandled();
    const std::wstring name = row->second.GetPath();
    if (name.empty() || name == kNoneFound || name.starts_with(kWorkSetSelectPrefix))
        return MsgResult::NotHandled();
    const std::wstring text = WorkSetTipText(name);
    if (text.empty())
        return MsgResult::NotHandled();

    WindowSystem& windows = Use<WindowSystem>();
    const win::RECT rect = Use<PopupMenus>().ItemRect(*popup->second, 0);
    const int maxX = windows.SystemMetric(ws::kSmCxMaxTrack);
    const int maxY = windows.SystemMetric(ws::kSmCyMaxTrack);
    ToolTipTool tool;
    tool.window = m_hWnd;
    tool.id = item;
    tool.text = text;
    tool.tracking = true;
    if (!tips.AddTool(m_tip, tool))
        return MsgResult::NotHandled();
    tips.TrackActivate(m_tip, m_hWnd, item, true);
    const win::SIZE bubble = tips.BubbleSize(m_tip, m_hWnd, item);
    // Right of the popup when the tip fits there, else left of it; as high as the row, or
    // lifted to end at the screen's foot.
    const int x = rect.right + bubble.cx <= maxX ? rect.right + 1 : rect.left - bubble.cx - 1;
    const int y = rect.top + bubble.cy <= maxY ? rect.top : maxY - bubble.cy;
    tips.TrackPosition(m_tip, {x, y});
    s_nMenuTipId = item;
    return MsgResult::NotHandled();
}

std::wstring HvTabrow::WorkSetTipText(const std::wstring& name) {
    std::vector<std::wstring> lines;
    HvIniFile(GetWorkSetFile(), true).GetLines(name, lines);
    std::wstring text;
    for (const std::wstring& line : lines) {
        const std::size_t equals = line.find(L'=');
        if (equals == std::wstring::npos)
            continue;
        const std::wstring value = line.substr(equals + 1);
        const CFilePath file(value.substr(0, value.find(L',')));
        text += (m_bShowFullPathInRefs != 0 ? file.GetPath() : file.GetFileName()) + L"\n";
    }
    while (!text.empty() && text.back() == L'\n')
        text.pop_back();
    return text;
}

// A user's session on the simulated host, told step by step: the module loaded by APPLOAD,
// drawings opened, edited, saved under a new name, switched by a click on a tab (or, in preview
// mode, on a thumbnail), closed, a work set opened from the right-click menu, and the bar floated
// with a drawing's tip showing. After each step it prints the bar's tabs (the selected one in
// brackets), the previews' order and where the bar and the drawing area are in the frame. Given
// a picture folder, it also paints the host's window after each step and saves it there as a
// PNG file.
//
// Usage: tabrow-session <scratch folder> [dock side 59419..59425] [sort 0..2] [picture folder]
//        [tabs|previews]

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "bar/hv_tabrow.h"
#include "foundation/text_encoding.h"
#include "host/tabrow_app.h"
#include "platform/sim/sim_file_system.h"
#include "platform/portable/portable_profile_file.h"
#include "platform/sim/sim_host.h"
#include "ports/window_messages.h"
#include "settings/settings_keys.h"
#include "tools/dwgthumb/png_codec.h"
#ifdef TABROW_HAS_FREETYPE
#include "platform/sim/canvas/freetype_font_rasteriser.h"
#endif

namespace {

const std::wstring kSettingsKey = L"Software\\Harvane\\Tabrow\\2.0 - R17";

std::string Narrow(const std::wstring& text) {
    return ToUtf8(text);
}

std::string RectText(const win::RECT& r) {
    return "(" + std::to_string(r.left) + "," + std::to_string(r.top) + ")-(" +
           std::to_string(r.right) + "," + std::to_string(r.bottom) + ")";
}

class Session {
public:
    Session(const std::filesystem::path& folder, int dockSide, int sortBy,
            std::filesystem::path pictures, bool tabs)
        : m_files(FromUtf8(folder.string() + "/")),
          m_filesPort(m_files),
          m_pictures(std::move(pictures)),
          m_tabs(tabs) {
        MapModule();
        StoreSetting(keys::kDockSide, dockSide);
        StoreSetting(keys::kSortBy, sortBy);
        StoreSetting(keys::kTabMode, tabs ? 1 : 0);
        m_host.SetAppLoader([this] { acrxEntryPoint(kInitAppMsg, Packet()); });
    }
    ~Session() {
        m_host.Quit();
        acrxEntryPoint(kUnloadAppMsg, Packet());
        // The host's windows go last, and the hooks left on them with them.
        m_host.Windows().Destroy(m_host.Windows().HostFrame());
    }

    SimHost& Host() { return m_host; }

    void Show(const std::string& step) {
        std::cout << "\n== " << step << " ==\n";
        if (g_pTabrow == nullptr) {
            std::cout << "  (no bar)\n";
            return;
        }
        HvDwgTabCtrl& tabs = g_pTabrow->m_tabCtrl;
        HostDocument* active = m_host.MdiActiveDocument();
        std::cout << "  tabs:    ";
        for (int i = 0; i < tabs.GetItemCount(); ++i) {
            std::string text = Narrow(tabs.GetItemText(i));
            bool selected = tabs.GetDocument(i) == active;
            std::cout << (selected ? "[" + text + "]" : " " + text + " ") << " ";
        }
        std::cout << "\n  previews:";
        for (const auto& item : g_pTabrow->m_palette.m_items)
            std::cout << " " << Narrow(item->path.GetFileName()) << (item->bModified ? "*" : "");
        SimWindowSystem& windows = m_host.Windows();
        std::cout << "\n  bar " << RectText(windows.RectInParent(g_pTabrow->GetSafeHwnd()))
                  << ", drawing area " << RectText(windows.RectInParent(g_hwndMdiClient))
                  << ", command window " << RectText(windows.RectInParent(g_hwndCmdWnd)) << "\n";
        for (const auto& box : m_host.MessageBoxesShown()) {
            if (m_boxesShown-- > 0)
                continue;
            std::cout << "  message box: " << Narrow(box.text) << "\n";
        }
        m_boxesShown = static_cast<int>(m_host.MessageBoxesShown().size());
        SavePicture();
    }

    // The host's window as it stands, painted, in the picture folder as step-N.png.
    void SavePicture() {
        if (m_pictures.empty())
            return;
        const std::unique_ptr<SoftwareCanvas> screen = m_host.Windows().PaintScreen();
        const std::string png = EncodePng(screen->Pixels(), screen->Width(), screen->Height());
        const std::filesystem::path file =
            m_pictures / ("step-" + std::to_string(++m_steps) + ".png");
        std::ofstream out(file, std::ios::binary);
        out << png;
        if (png.empty() || !out) {
            std::cout << "  picture: cannot write " << file.string() << "\n";
            return;
        }
        std::cout << "  picture: " << file.string() << "\n";
    }

    // A click on the tab of `doc`: the tab control asks the bar and tells it (a veto keeps the
    // selection). In preview mode, a press in the middle of the drawing's cell.
    void Click(HostDocument* doc) {
        if (m_tabs) {
            HvDwgTabCtrl& tabs = g_pTabrow->m_tabCtrl;
            m_host.TabControl().Click(tabs.m_hWnd, tabs.FindDocument(doc));
            return;
        }
        const std::optional<win::POINT> at = CellCentre(doc);
        if (!at)
            return;
        m_host.Windows().Mouse(wm::kLButtonDown, *at);
        m_host.Windows().Mouse(wm::kLButtonUp, *at);
    }

    // The middle of the drawing's thumbnail cell on the screen, none if it has no cell.
    std::optional<win::POINT> CellCentre(HostDocument* doc) {
        HvDwgPalette& palette = g_pTabrow->m_palette;
        m_host.Windows().PaintScreen();  // the cells take their places as they are painted
        TrDocItem* item = palette.FindItem(doc);
        if (item == nullptr)
            return std::nullopt;
        const win::RECT& r = item->rcItem;
        return m_host.Windows().ClientToScreen(
            palette.m_hWnd, {(r.left + r.right) / 2, (r.top + r.bottom) / 2});
    }

    // A work set of two drawings on disk, one kept read-only, opened as a user does: a right
    // click on the bar and Work Sets > the set > All.
    void OpenWorkSetFromMenu(const std::filesystem::path& folder) {
        std::filesystem::create_directories(folder / "jobs");
        std::string entries;
        int number = 0;
        for (const auto& [name, readOnly] : {std::pair{"Stair core.dwg", 1}, {"Roof.dwg", 0}}) {
            const std::filesystem::path drawing = folder / "jobs" / name;
            std::ofstream(drawing, std::ios::binary) << "AC1018" << std::string(64, '\0');
            entries += "File" + std::to_string(++number) + "=" + drawing.string() + "," +
                       std::to_string(readOnly) + "\n";
        }
        const std::filesystem::path sets(g_pTabrow->GetWorkSetFile());
        std::filesystem::create_directories(sets.parent_path());
        std::ofstream(sets, std::ios::binary) << "[Tower]\n" << entries;
        m_host.Menus().QueueChoice({L"Work Sets", L"Tower", L"All"});
        SimWindowSystem& windows = m_host.Windows();
        const win::RECT bar = windows.ScreenRect(g_pTabrow->GetSafeHwnd());
        const win::POINT at{bar.right - 2, bar.bottom - 2};
        windows.Mouse(wm::kRButtonDown, at);
        windows.Mouse(wm::kRButtonUp, at);
        for (const std::string& failure : m_host.Menus().Failures())
            std::cout << "  menu: " << failure << "\n";
    }

    // The bar moves into its floating window, which the user drags beside the drawing area,
    // and the mouse rests on the tab or the thumbnail of `doc` until its tip shows.
    void Float(HostDocument* doc) {
        SimWindowSystem& windows = m_host.Windows();
        g_pTabrow->m_bShowDwgPropsInTips = 1;
        g_pTabrow->SetFloating(true, true);
        HostWindow* floating = g_pTabrow->FloatingWindow();
        windows.Move(floating, {560, 260, 1360, 340}, true);
        if (m_tabs) {
            HvDwgTabCtrl& tabs = g_pTabrow->m_tabCtrl;
            win::RECT tab;
            m_host.TabControl().ItemRect(tabs.m_hWnd, tabs.FindDocument(doc), tab);
            windows.Mouse(wm::kMouseMove,
                          windows.ClientToScreen(tabs.m_hWnd, {tab.left + 12, tab.top + 8}));
        } else if (const std::optional<win::POINT> at = CellCentre(doc)) {
            windows.Mouse(wm::kMouseMove, *at);
        }
        windows.Elapse(static_cast<unsigned>(g_pTabrow->m_nTipDelay));
        std::cout << "  floating window " << RectText(windows.ScreenRect(floating)) << ", tip:\n    "
                  << Narrow(m_host.ToolTipControls().ShownText(g_pTabrow->m_tip)) << "\n";
    }

private:
    HostAppPacket* Packet() { return reinterpret_cast<HostAppPacket*>(&m_packetTag); }
    void StoreSetting(const std::wstring& name, std::uint32_t value) {
        m_host.Registry().CreateKey(RegHive::CurrentUser, kSettingsKey);
        RegValue dword{reg::kDword,
                       {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
                        static_cast<std::uint8_t>(value >> 16),
                        static_cast<std::uint8_t>(value >> 24)}};
        m_host.Registry().SetValue(RegHive::CurrentUser, kSettingsKey, name, dword);
    }

    SimFileSystem m_files;
    ScopedPort<FileSystem> m_filesPort;
    PortableProfileFile m_profiles;  // the work set file's reader
    ScopedPort<ProfileFile> m_profilesPort{m_profiles};
#ifdef TABROW_HAS_FREETYPE
    FreeTypeFontRasteriser m_fonts;  // the canvas's text
    ScopedPort<FontRasteriser> m_fontsPort{m_fonts};
#endif
    SimHost m_host;
    std::filesystem::path m_pictures;  // empty: no pictures
    int m_steps = 0;
    int m_packetTag = 0;
    int m_boxesShown = 0;
    bool m_tabs = true;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: tabrow-session <scratch folder> [dock side 59419..59425] [sort 0..2]"
                     " [picture folder] [tabs|previews]\n";
        return 2;
    }
    std::filesystem::path folder = argv[1];
    std::error_code error;
    std::filesystem::create_directories(folder / "appdata", error);
    const std::filesystem::path pictures = argc > 4 ? argv[4] : "";
    if (!error && !pictures.empty())
        std::filesystem::create_directories(pictures, error);
    if (error) {
        std::cerr << "tabrow-session: cannot make " << folder << ": " << error.message() << "\n";
        return 1;
    }
    int dockSide = argc > 2 ? std::atoi(argv[2]) : dock::kTop;
    int sortBy = argc > 3 ? std::atoi(argv[3]) : 1;
    const std::string mode = argc > 5 ? argv[5] : "tabs";
    if (dockSide < dock::kTop || dockSide > dock::kCmdWndRight || dockSide == 59423 ||
        sortBy < 0 || sortBy > 2 || (mode != "tabs" && mode != "previews")) {
        std::cerr << "tabrow-session: dock side 59419..59422, 59424 or 59425; sort 0, 1 or 2;"
                     " tabs or previews\n";
        return 2;
    }

    Session session(folder, dockSide, sortBy, pictures, mode == "tabs");
    SimHost& host = session.Host();
    HostDocument* site = host.OpenDrawing(L"C:\\jobs\\tower\\site.dwg");
    session.Show("the host has one drawing open");
    host.Type(L"APPLOAD");
    session.Show("APPLOAD: the bar takes its room");
    HostDocument* core = host.OpenDrawing(L"C:\\jobs\\tower\\Core walls.dwg");
    host.DatabaseOf(core).summary = {L"A. Archer", L"Core walls", L"Level 3", L"", L"",
                                     L"B. Builder", L"4", L"", {{L"Phase", L"Tender"}}};
    host.OpenDrawing(L"C:\\jobs\\archive\\plan.dwg", true);
    host.NewDrawing();
    session.Show("three more: a read-only one and a new one");
    host.Modify(host.MdiActiveDocument());
    host.Type(L"LINE");
    session.Show("LINE in the new drawing: it is marked modified");
    host.QueueFileName(L"C:\\jobs\\tower\\Annex.dwg");
    host.Type(L"SAVEAS");
    session.Show("SAVEAS Annex.dwg: renamed, re-sorted, mark cleared");
    host.StartCommand(L"LINE");
    g_pTabrow->m_bSwitchOnBusy = 0;
    session.Click(site);
    session.Show("a click on site while LINE waits, with switching on busy off");
    host.CancelCommand();
    session.Click(site);
    session.Show("Escape, then the click again: site is active");
    host.Type(L"CLOSE");
    session.Show("CLOSE site");
    session.OpenWorkSetFromMenu(folder);
    session.Show("a right click on the bar, Work Sets > Tower > All: its two drawings open");
    session.Float(core);
    session.Show("the bar floats in its own window; a drawing's tip with its properties");
    return 0;
}

#pragma once
// The simulated host's documents, commands and events behind real windows: the frame of
// host_frame.h, one MDI child per open drawing, the real window system, tab control, theme and
// GDI text behind the core's ports, and the module loaded as the host loads it (APPLOAD typed
// at the command line) and unloaded again. Settings live in the simulated registry, so that a
// session leaves the machine as it found it.

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host_frame.h"
#include "platform/sim/sim_drawing_view.h"
#include "platform/sim/sim_host.h"
#include "platform/win32/gdi_font_rasteriser.h"
#include "platform/win32/win32_file_system.h"
#include "platform/win32/win32_popup_menus.h"
#include "platform/win32/win32_profile_file.h"
#include "platform/win32/win32_system_look.h"
#include "platform/win32/win32_tab_controls.h"
#include "platform/win32/win32_theme.h"
#include "platform/win32/win32_tool_tips.h"
#include "platform/win32/win32_window_procedures.h"
#include "platform/win32/win32_window_system.h"

// What the module brings when it loads and takes away when it unloads: the adapters of the real
// window system behind the core's ports, installed over the simulated host's own.
struct ModuleAdapters {
    explicit ModuleAdapters(Win32HostFrame host) : windows(std::move(host)) {}
    Win32WindowSystem windows;
    Win32WindowProcedures procedures;
    Win32TabControls tabs;
    Win32Theme theme;
    Win32SystemLook look;
    Win32ToolTips tips;
    Win32PopupMenus menus;
    Win32ProfileFile profiles;
    ScopedPort<WindowSystem> windowsPort{windows};
    ScopedPort<WindowProcedures> proceduresPort{procedures};
    ScopedPort<TabControls> tabsPort{tabs};
    ScopedPort<Theme> themePort{theme};
    ScopedPort<SystemLook> lookPort{look};
    ScopedPort<ScrollBars> scrollBarsPort{windows};
    ScopedPort<ToolTips> tipsPort{tips};
    ScopedPort<PopupMenus> menusPort{menus};
    ScopedPort<ProfileFile> profilesPort{profiles};
};

// What a screenshot holds: red, green, blue, rows from the top.
struct HostPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgb;
};

class HostSession;

// The host's graphics system as the real frame shows it: both the screen shot and the copy of the
// view's client area are taken from the screen where the active drawing's MDI child stands; which
// viewports the graphics system draws, and the colours, are the simulated host's.
class ViewGraphics : public HostGraphics {
public:
    explicit ViewGraphics(HostSession& session) : m_session(session) {}
    bool HasGsView(int viewport) override;
    std::vector<int> ViewportVisualStyles() override;
    std::unique_ptr<HostScreenShot> ScreenShot(int viewport) override;
    std::unique_ptr<Canvas> CopyClientArea(HostWindow* view) override;
    HostDrawingColors CurrentColors() override;

private:
    HostSession& m_session;
};

class HostSession : private DocManagerReactor {
public:
    HostSession(int width, int height);
    ~HostSession() override;
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    SimHost& Host() { return m_host; }
    HostFrame& Frame() { return m_frame; }
    // The window system as the host itself uses it (its views paint through it).
    Win32WindowSystem& Windows() { return m_windows; }
    // A setting of the bar as a DWORD below its root key, read at the next load.
    void StoreSetting(const std::wstring& name, std::uint32_t value);

    // The module loaded by APPLOAD, as a user loads it while the host runs; false when it was
    // loaded already.
    bool Load();
    void Unload();
    bool IsLoaded() const { return m_module != nullptr; }
    // A line typed at the command line and Enter pressed.
    void Type(const std::wstring& command);
    // Every message waiting on this thread handled.
    void Pump();
    // One message of the main loop: the watchers the module registered see it first, as the
    // host's own loop shows them its messages, then its window.
    void Dispatch(const MSG& msg);
    // The drawing's MDI child, null when it has none.
    HWND ViewOf(HostDocument* doc) const;
    // The active drawing's MDI child, null when none is active.
    HWND ActiveView();
    // The frame's client area as the screen shows it.
    HostPicture Screenshot();

private:
    void documentCreated(HostDocument* doc) override;
    void documentToBeDestroyed(HostDocument* doc) override;
    void documentActivated(HostDocument* doc) override;
    void ViewActivated(HWND view);
    Win32HostFrame HostWindows();
    HostAppPacket* Packet() { return reinterpret_cast<HostAppPacket*>(&m_packetTag); }

    Win32FileSystem m_files;
    ScopedPort<FileSystem> m_filesPort{m_files};
    GdiFontRasteriser m_fonts;
    ScopedPort<FontRasteriser> m_fontsPort{m_fonts};
    SimHost m_host;
    HostFrame m_frame;
    Win32WindowSystem m_windows;
    std::unique_ptr<ModuleAdapters> m_module;  // while loaded
    struct View {
        HWND window = nullptr;
        std::unique_ptr<SimDrawingView> painter;
    };
    std::map<HostDocument*, View> m_views;
    ViewGraphics m_graphics{*this};
    ScopedPort<HostGraphics> m_graphicsPort{m_graphics};
    int m_packetTag = 0;
};

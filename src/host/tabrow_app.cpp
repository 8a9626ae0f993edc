#include "host/tabrow_app.h"

#include "bar/hv_tabrow.h"
#include "bar/command_edge.h"
#include "host/mdi_client_hook.h"
#include "host/message_watcher.h"
#include "layout/relayout.h"
#include "ports/com_error.h"
#include "ports/host_automation.h"
#include "ports/host_documents.h"
#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "ports/window_system.h"
#include "settings/settings_keys.h"
#include "settings/tabrow_settings.h"

namespace {

HvApp MakeApp() {
    return HvApp(L"Tabrow", L"2.0", L"Harvane\\Tabrow",
                 // The registry version stays that of the older host line on purpose: settings
                 // of earlier installations are found where they were.
                 L"2.0 - R17",
                 L"Tabrow is a document switching toolbar for AutoCAD 2007 and compatibles.  "
                 L"Please send any questions , comments or suggestions to:",
                 L"HvNe", 5);
}

constexpr wchar_t kGroup[] = L"HVTR";

void ObtainHostApp() {
    // A host without an automation object (E_NOINTERFACE) is tolerated, and so is any other
    // failure: the pointer stays null and the start-up says so.
    try {
        g_pHostApp = Use<HostAutomation>().QueryApplication();
    } catch (...) {
        g_pHostApp = nullptr;
    }
}

bool FindHostWindows(HostWindow*& frame, HostWindow*& mdiClient, HostWindow*& cmdWnd,
                     HostWindow*& cmdContainer) {
    WindowSystem& windows = Use<WindowSystem>();
    frame = windows.HostFrame();
    // The title is an empty string, not a null pointer: only an untitled MDI client matches.
    mdiClient = frame ? windows.FindChild(frame, L"MDIClient", L"") : nullptr;
    HostWindow* cmdLine = windows.DockedCommandLine();
    cmdWnd = cmdLine ? windows.Parent(cmdLine) : nullptr;
    cmdContainer = cmdWnd ? windows.Parent(cmdWnd) : nullptr;
    return frame && mdiClient && cmdWnd && cmdContainer;
}

void CreateSheetSetManager() {
    // A host without sheet sets leaves the pointer null; the sheet set dialog then loads nothing.
    try {
        g_pSheetSetMgr = Use<HostAutomation>().CreateSheetSetManager();
    } catch (...) {
        g_pSheetSetMgr = nullptr;
    }
}

void CreateBar() {
    g_pTabrow = new HvTabrow(BarContext{theApp, theApp.m_strAppDataDir, g_pHostApp});
    g_pTabrow->m_showAbout = [] { theApp.ShowAbout(g_hwndFrame); };
    g_pTabrow->m_showOptions = TrOptions;
    g_pTabrow->Create();  // builds the document lists at its end
    // After the bar's window: the hooks use the bar in their first message.
    g_pMdiClientHook = new HvTrMdiClientWnd;
    g_pMdiClientHook->HookWindow(g_hwndMdiClient);
    g_pCmdWndHook = new HvTrMdiClientWnd;
    g_pCmdWndHook->HookWindow(g_hwndCmdWnd);
    CreateSheetSetManager();
    Use<HostServices>().RegisterMessageWatcher(TabrowMessageWatcher);
    if (LoadBarOn(theApp)) {
        TrOn();
    } else {
        TrOff();
    }
    // The right tab selected, the view known to the message watcher from the first wheel step.
    g_pTabrow->OnDocumentActivated(Use<HostDocuments>().MdiActiveDocument());
}

void RemoveHook(HvTrMdiClientWnd*& hook, bool quitting) {
    if (hook == nullptr)
        return;
    if (quitting) {
        // While the host quits its windows go down anyway: the hook stays on its window, passes
        // everything on from now, and is freed by the window's death, so that no chain ever
        // holds a freed hook.
        hook->LeaveWithWindow();
    } else {
        hook->HookWindow(nullptr);
        delete hook;
    }
    hook = nullptr;
}

}  // namespace

HvApp theApp = MakeApp();
HvTabrow* g_pTabrow = nullptr;
HostApplication* g_pHostApp = nullptr;
HvTrMdiClientWnd* g_pMdiClientHook = nullptr;
HvTrMdiClientWnd* g_pCmdWndHook = nullptr;

void MapModule() {
    theApp = MakeApp();
    g_pTabrow = nullptr;
    g_pHostApp = nullptr;
    g_pSheetSetMgr = nullptr;
    g_pMdiClientHook = g_pCmdWndHook = nullptr;
    ForgetHostWindows();
}

int acrxEntryPoint(int msg, HostAppPacket* pkt) {
    HostServices& host = Use<HostServices>();
    if (msg == kInitAppMsg) {
        host.RegisterAppMdiAware(pkt);
        try {
            OnLoad(pkt);
        } catch (...) {
            // A failed start still leaves the application unlockable and so unloadable.
        }
        host.UnlockApplication(pkt);
    } else if (msg == kUnloadAppMsg) {
        try {
            OnUnload();
        } catch (...) {
            // Nothing crosses into the host; what was not undone goes with the process.
        }
    }
    return kRetOK;
}

void OnLoad(HostAppPacket* pkt) {
    HostServices& host = Use<HostServices>();
    if (host.IsInBackgroundMode())
        return;
    theApp.Start(nullptr);
    theApp.AddCommand(TrOptions, kGroup, L"TROPTIONS", L"Displays the Tabrow Preferences Dialog");
    theApp.AddCommand(TrAbout, kGroup, L"TRABOUT", L"Displays the Tabrow 'About' Dialog");
    theApp.AddCommand(TrOff, kGroup, L"TROFF", L"Turns the Tabrow off");
    theApp.AddCommand(TrOn, kGroup, L"TRON", L"Turns the Tabrow on");
    theApp.AddCommand(TrCenter, kGroup, L"TRCENTER",
                      L"Centers the Tabrow in the screen when floating");
    theApp.AddCommand(TrCmdCenter, kGroup, L"TRCMDCENTER", L"No description");
    theApp.RegisterCommands(LoadLoadOnCommand(theApp) ? 4 : 2, pkt);

    ObtainHostApp();
    HostWindow *frame, *mdiClient, *cmdWnd, *cmdContainer;
    bool allFound = FindHostWindows(frame, mdiClient, cmdWnd, cmdContainer);
    if (g_pHostApp == nullptr || !allFound) {
        Use<MessageBoxes>().Show(g_pHostApp != nullptr
                                     ? L"Error initializing Tabrow - not all windows found!"
                                     : L"Error initializing Tabrow - unable to get application "
                                       L"object!",
                                 L"", mb::kOk);
    } else {
        Use<WindowSystem>().ModifyStyle(cmdContainer, ws::kClipChildren, 0);
        g_hwndFrame = frame;
        g_hwndMdiClient = mdiClient;
        g_hwndCmdWnd = cmdWnd;
        g_hwndCmdContainer = cmdContainer;
        CreateBar();
    }
    // Loaded by hand while the host runs: take the bar's room now. At host start the frame's
    // own first layout does it.
    if (host.GetVariable(L"CMDNAMES").value_or(L"") == L"APPLOAD")
        RefreshHostLayout(g_hwndFrame);
}

void OnUnload() {
    HostServices& host = Use<HostServices>();
    theApp.SetInt(keys::kRoot, keys::kOn, g_bTabrowOn);
    if (g_pSheetSetMgr != nullptr) {
        Use<HostAutomation>().Release(g_pSheetSetMgr);
        g_pSheetSetMgr = nullptr;
    }
    host.RemoveMessageWatcher(TabrowMessageWatcher);
    bool quitting = host.IsQuitting();
    RemoveHook(g_pMdiClientHook, quitting);
    RemoveHook(g_pCmdWndHook, quitting);
    if (g_pTabrow != nullptr) {
        WindowSystem& windows = Use<WindowSystem>();
        if (windows.IsWindow(g_pTabrow->GetSafeHwnd()))
            windows.Destroy(g_pTabrow->GetSafeHwnd());
        if (!quitting)
            RefreshHostLayout(g_hwndFrame);
        delete g_pTabrow;
        // Deliberately left pointing at the deleted bar, as the shut-down always has: nothing
        // runs after this that reads it.
    }
    if (g_pHostApp != nullptr) {
        Use<HostAutomation>().Release(g_pHostApp);
        g_pHostApp = nullptr;
    }
    theApp.UnregisterCommands();
    theApp.Stop();
}

void TrOptions() {
    RunAtCommandEdge("TrOptions()", [] {
        // The preferences dialog arrives with the preferences pages; until then the command
        // says so instead of failing silently.
        Use<HostServices>().Print(L"\nThe preferences dialog is not available in this build.\n");
    });
}

void TrAbout() {
    RunAtCommandEdge("TrAbout()", [] { theApp.ShowAbout(nullptr); });
}

void TrOff() {
    RunAtCommandEdge("TrOff()", [] {
        if (g_bTabrowOn != 1)
            return;
        g_bTabrowOn = 0;
        if (g_pTabrow != nullptr)
            g_pTabrow->HideBar();
    });
}

void TrOn() {
    RunAtCommandEdge("TrOn()", [] {
        if (g_bTabrowOn != 0)
            return;
        g_bTabrowOn = 1;
        if (g_pTabrow != nullptr)
            g_pTabrow->ShowBar();
    });
}

void TrCenter() {
    RunAtCommandEdge("TrCenter()", [] {
        if (g_pTabrow != nullptr && g_pTabrow->m_bFloating != 0) {
            g_pTabrow->CenterFloating();
        } else {
            Use<HostServices>().Print(L"TRCENTER only applies to floating Tabrow!\n");
        }
    });
}

void TrCmdCenter() {
    RunAtCommandEdge("TrCmdCenter()", [] {
        if (g_pTabrow == nullptr)
            return;
        // Not written to the settings: only the end of a drag saves this width.
        g_pTabrow->m_nWidthOnCmdWnd = g_rcCmdWnd.Width() / 2;
        RefreshHostLayout(g_hwndFrame);
    });
}

// Sessions on the simulated host: the module loaded at host start or by APPLOAD, in background
// mode, without the host's windows or its automation object, switched on and off, unloaded.

#include "host/tabrow_app.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <utility>

#include "bar/hv_tabrow.h"
#include "host/subclass_wnd.h"
#include "platform/sim/sim_file_system.h"
#include "platform/sim/sim_host.h"
#include "support/test_files.h"

namespace {

const std::wstring kSettingsKey = L"Software\\Harvane\\Tabrow\\2.0 - R17";

class TabrowSession : public ::testing::Test {
protected:
    TabrowSession() { MapModule(); }
    ~TabrowSession() override {
        if (m_loaded)
            acrxEntryPoint(kUnloadAppMsg, Packet());
    }

    HostAppPacket* Packet() { return reinterpret_cast<HostAppPacket*>(&m_packetTag); }
    void Load() {
        acrxEntryPoint(kInitAppMsg, Packet());
        m_loaded = true;
    }
    void Unload() {
        acrxEntryPoint(kUnloadAppMsg, Packet());
        m_loaded = false;
    }
    void StoreSetting(const std::wstring& name, std::uint32_t value) {
        ASSERT_TRUE(host.Registry().CreateKey(RegHive::CurrentUser, kSettingsKey));
        RegValue dword{reg::kDword, {static_cast<std::uint8_t>(value), 0, 0, 0}};
        ASSERT_TRUE(host.Registry().SetValue(RegHive::CurrentUser, kSettingsKey, name, dword));
    }
    std::optional<RegValue> Value(const std::wstring& path, const std::wstring& name) {
        return host.Registry().QueryValue(RegHive::CurrentUser, path, name);
    }
    std::vector<std::uint8_t> Bytes(const std::wstring& path, const std::wstring& name) {
        auto value = Value(path, name);
        return value ? value->data : std::vector<std::uint8_t>{};
    }
    std::wstring Text(const std::wstring& path, const std::wstring& name) {
        auto value = Value(path, name);
        return value ? reg::StringText(value->data) : L"<missing>";
    }
    std::size_t Count(const std::wstring& needle) {
        std::wstring all = host.CommandLineText();
        std::size_t n = 0;
        for (auto at = all.find(needle); at != std::wstring::npos; at = all.find(needle, at + 1))
            ++n;
        return n;
    }
    std::vector<SimWindowSystem::MoveRecord> FrameMoveList() {
        std::vector<SimWindowSystem::MoveRecord> moves;
        for (const auto& move : host.Windows().Moves())
            if (move.window == g_hwndFrame)
                moves.push_back(move);
        return moves;
    }
    std::size_t FrameMoves() { return FrameMoveList().size(); }

    ScratchFolder scratch;
    SimFileSystem files{scratch.Folder()};
    ScopedPort<FileSystem> filesPort{files};
    SimHost host;
    int m_packetTag = 0;
    bool m_loaded = false;
};

TEST_F(TabrowSession, LoadAtHostStartRegistersCommandsCreatesTheBarPrintsTheBannerAndAnswersAbout) {
    host.OpenDrawing(L"C:\\jobs\\site.dwg");
    HostDocument* doc = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();

    EXPECT_TRUE(host.IsMdiAware(Packet()));
    EXPECT_TRUE(host.IsUnlocked(Packet()));
    std::vector<std::wstring> names;
    for (const auto& command : host.Commands()) {
        EXPECT_EQ(command.group, L"HVTR");
        EXPECT_EQ(command.localName, command.globalName);
        names.push_back(command.globalName);
    }
    EXPECT_EQ(names, (std::vector<std::wstring>{L"TROPTIONS", L"TRABOUT", L"TROFF", L"TRON",
                                                L"TRCENTER", L"TRCMDCENTER"}));

    EXPECT_EQ(Count(L" Harvane Tabrow 2.0 (build 97) LOADED "), 1u);
    EXPECT_EQ(Count(L"\n+ Registered commands : +++"), 1u);
    EXPECT_EQ(Count(L"+ TRCMDCENTER - No description +"), 1u);
    EXPECT_EQ(Count(L"+ TROPTIONS - Displays the Tabrow Preferences Dialog +"), 1u);

    ASSERT_NE(g_pTabrow, nullptr);
    EXPECT_TRUE(g_pTabrow->IsBarVisible());
    EXPECT_EQ(host.Windows().Parent(g_pTabrow->GetSafeHwnd()), host.Windows().HostFrame());
    // Told at its end which drawing is active: its tab selected, its view known.
    EXPECT_EQ(g_pTabrow->ActiveDocument(), doc);
    EXPECT_EQ(g_hwndDwgView, host.Document(doc).view);
    EXPECT_EQ(host.SheetSetManagers(), 1);
    EXPECT_EQ(host.GetVariable(L"SSMAUTOOPEN"), L"0");
    EXPECT_EQ(g_hwndMdiClient, host.Windows().MdiClient());
    EXPECT_EQ(g_hwndCmdWnd, host.Windows().CommandWindow());
    EXPECT_EQ(g_hwndCmdContainer, host.Windows().CommandContainer());
    EXPECT_EQ(host.Windows().Style(g_hwndCmdContainer) & ws::kClipChildren, 0u);
    EXPECT_EQ(host.AutomationReferences(), 1);
    // At host start the frame's own first layout places the bar; the bar's creation ends with
    // the frame laying out its command line and its MDI client, the frame itself unmoved.
    EXPECT_EQ(FrameMoves(), 0u);
    std::vector<HostWindow*> moved;
    for (const auto& move : host.Windows().Moves()) {
        if (move.window != g_pTabrow->FloatingWindow())  // hidden, placed as it is made
            moved.push_back(move.window);
    }
    EXPECT_EQ(moved,
              (std::vector<HostWindow*>{g_hwndCmdContainer, g_hwndCmdWnd,
                                        host.Windows().DockedCommandLine(), g_hwndMdiClient}));
    EXPECT_TRUE(host.MessageBoxesShown().empty());
    // Reading the settings left the root key behind.
    EXPECT_TRUE(host.Registry().KeyExists(RegHive::CurrentUser, kSettingsKey));

    host.Type(L"TRABOUT");
    ASSERT_EQ(host.MessageBoxesShown().size(), 1u);
    EXPECT_EQ(host.MessageBoxesShown()[0].text.rfind(L"Tabrow 2.0 (build 97)", 0), 0u);
}

// Also a host without sheet sets loads: the manager object stays null.
TEST_F(TabrowSession, TheRunningBarTakesItsDefaultsFromTheWindowSystemAndTheHostsProfile) {
    StoreSetting(L"OpenSheetSetInSSM", 1);
    host.FailAutomationCall(SimAutomationCall::CreateSheetSetManager, hr::kNoInterface, L"");
    const std::wstring wizard = host.ProfileKey() + L"\\Dialogs\\Sheet Set Wizard";
    ASSERT_TRUE(host.Registry().CreateKey(RegHive::CurrentUser, wizard));
    ASSERT_TRUE(host.Registry().SetValue(RegHive::CurrentUser, wizard, L"SheetSetCreatePath",
                                         {reg::kSz, reg::StringBytes(L"D:\\Sheets\\")}));
    Load();
    const HvTabrow& bar = *g_pTabrow;
    EXPECT_EQ(bar.m_clrBackground, SimSystemLook::kBtnFace);
    EXPECT_EQ(bar.m_clrTitleBack, SimSystemLook::kBtnFace);
    EXPECT_EQ(bar.m_clrTitleText, SimSystemLook::kBtnText);
    const win::LOGFONTW gui = SimSystemLook().DefaultGuiFont();
    for (const win::LOGFONTW* font : {&bar.m_lfTabFont, &bar.m_lfLabelFont}) {
        EXPECT_EQ(font->lfHeight, gui.lfHeight);
        EXPECT_EQ(std::u16string(font->lfFaceName), u"MS Shell Dlg");
    }
    EXPECT_EQ(bar.m_strSsSearchPath, L"D:\\Sheets\\");
    EXPECT_EQ(host.SheetSetManagers(), 0);
    EXPECT_EQ(host.GetVariable(L"SSMAUTOOPEN"), L"1");
}

TEST_F(TabrowSession, DemandLoadKeysFollowLoadOnCommand) {
    Load();
    std::wstring key = host.ProductKey() + L"\\Applications\\HvNeTabrow";
    auto loadCtrls = Value(key, L"LOADCTRLS");
    ASSERT_TRUE(loadCtrls);
    EXPECT_EQ(loadCtrls->type, reg::kDword);
    EXPECT_EQ(loadCtrls->data, (std::vector<std::uint8_t>{2, 0, 0, 0}));
    EXPECT_EQ(Text(key, L"LOADER"), files.ModulePath());
    EXPECT_EQ(Text(key, L"DESCRIPTION"), L"Tabrow 2.0");
    EXPECT_EQ(host.Registry().ValueNames(RegHive::CurrentUser, key + L"\\Groups"),
              std::vector<std::wstring>{L"HVTR"});
    EXPECT_EQ(Text(key + L"\\Groups", L"HVTR"), L"HVTR");
    EXPECT_EQ(host.Registry().ValueNames(RegHive::CurrentUser, key + L"\\Commands").size(), 6u);
    EXPECT_EQ(Text(key + L"\\Commands", L"TRCMDCENTER"), L"TRCMDCENTER");
    Unload();

    MapModule();
    StoreSetting(L"LoadOnCommand", 1);
    Load();
    EXPECT_EQ(Bytes(key, L"LOADCTRLS"), (std::vector<std::uint8_t>{4, 0, 0, 0}));
}

TEST_F(TabrowSession, LoadByApploadTakesTheBarsRoomAtOnce) {
    host.OpenDrawing(L"C:\\jobs\\site.dwg");
    host.SetAppLoader([this] { Load(); });
    win::RECT frame = host.Windows().RectInParent(host.Windows().HostFrame());
    ASSERT_TRUE(host.Type(L"appload"));

    const auto moves = FrameMoveList();
    ASSERT_EQ(moves.size(), 2u);
    EXPECT_EQ(moves[0].rect,
              (win::RECT{frame.left + 10, frame.top + 10, frame.right - 10, frame.bottom - 10}));
    EXPECT_FALSE(moves[0].repaint);
    EXPECT_EQ(moves[1].rect, frame);
    EXPECT_TRUE(moves[1].repaint);
    // One redraw for the refresh, and one for each size the bar takes in it (in the shrunk
    // frame, then in the full one).
    EXPECT_EQ(host.Windows().Window(g_hwndFrame).redraws, 3);
    EXPECT_EQ(*host.GetVariable(L"CMDNAMES"), L"");
}

TEST_F(TabrowSession, BackgroundModeCreatesNothingAndUnloadOnlyWritesOnAndSaysGoodbye) {
    host.SetBackgroundMode(true);
    Load();
    EXPECT_TRUE(host.Commands().empty());
    EXPECT_EQ(g_pTabrow, nullptr);
    EXPECT_EQ(Count(L"LOADED"), 0u);
    EXPECT_TRUE(host.CommandLine().empty());
    EXPECT_TRUE(host.IsUnlocked(Packet()));

    Unload();
    EXPECT_EQ(Count(L"UNLOADED"), 1u);
    // Start never ran, so the settings have no root yet: the state lands below the bare hive,
    // as the module has always done in this mode.
    EXPECT_EQ(theApp.GetInt(L"", L"On", -1), 1);
    EXPECT_FALSE(Value(kSettingsKey, L"On"));
}

// Without the application object or one of the host's windows: one message, no bar, and the
// commands kept, the switches working as far as they test for the bar.
TEST_F(TabrowSession, AFailedStartSaysWhyAndKeepsTheCommands) {
    const std::pair<std::function<void()>, std::wstring> cases[] = {
        {[this] { host.SetHasAutomation(false); },
         L"Error initializing Tabrow - unable to get application object!"},
        {[this] {
             host.SetHasAutomation(true);
             host.FailAutomationCall(SimAutomationCall::QueryApplication, hr::kCallRejected, L"");
         },
         L"Error initializing Tabrow - unable to get application object!"},
        {[this] { host.Windows().RemoveDockedCommandLine(); },
         L"Error initializing Tabrow - not all windows found!"},
    };
    for (const auto& [breakHost, message] : cases) {
        MapModule();
        breakHost();
        const std::size_t boxes = host.MessageBoxesShown().size();
        Load();
        ASSERT_EQ(host.MessageBoxesShown().size(), boxes + 1);
        EXPECT_EQ(host.MessageBoxesShown().back().text, message);
        EXPECT_EQ(g_pTabrow, nullptr);
        EXPECT_EQ(g_hwndFrame, nullptr);  // nothing is stored when one window is missing
        EXPECT_EQ(host.Commands().size(), 6u);
        EXPECT_TRUE(host.IsUnlocked(Packet()));
        EXPECT_TRUE(host.Type(L"TROFF"));
        EXPECT_EQ(g_bTabrowOn, 0);
        EXPECT_TRUE(host.Type(L"TRCMDCENTER"));
        EXPECT_TRUE(host.Type(L"TRON"));
        EXPECT_EQ(g_bTabrowOn, 1);
        Unload();
        EXPECT_EQ(host.AutomationReferences(), 0);
    }
}

TEST_F(TabrowSession, OnZeroStartsHiddenAndTronTroffSwitchWithoutWritingTheSetting) {
    StoreSetting(L"On", 0);
    Load();
    ASSERT_NE(g_pTabrow, nullptr);
    EXPECT_FALSE(g_pTabrow->IsBarVisible());
    EXPECT_EQ(g_bTabrowOn, 0);

    host.Type(L"TRON");
    EXPECT_TRUE(g_pTabrow->IsBarVisible());
    host.Type(L"TRON");  // already on: nothing changes
    EXPECT_TRUE(g_pTabrow->IsBarVisible());
    host.Type(L"TROFF");
    EXPECT_FALSE(g_pTabrow->IsBarVisible());
    host.Type(L"TRON");
    EXPECT_EQ(Bytes(kSettingsKey, L"On"), (std::vector<std::uint8_t>{0, 0, 0, 0}));

    Unload();  // only the unload writes the state
    EXPECT_EQ(Bytes(kSettingsKey, L"On"), (std::vector<std::uint8_t>{1, 0, 0, 0}));
}

TEST_F(TabrowSession, TrcenterCentresOnlyAFloatingBar) {
    Load();
    std::size_t movesBefore = host.Windows().Moves().size();
    host.Type(L"TRCENTER");
    EXPECT_EQ(host.CommandLine().back(), L"TRCENTER only applies to floating Tabrow!");
    EXPECT_EQ(host.Windows().Moves().size(), movesBefore);
    Unload();

    MapModule();
    StoreSetting(L"Floating", 1);
    Load();
    ASSERT_NE(g_pTabrow->FloatingWindow(), nullptr);
    host.Type(L"TRCENTER");
    win::RECT rect = host.Windows().RectInParent(g_pTabrow->FloatingWindow());
    EXPECT_EQ(rect.left + rect.right, SimWindowSystem::kScreen.right);
    EXPECT_EQ(rect.top + rect.bottom, SimWindowSystem::kScreen.bottom);
}

TEST_F(TabrowSession, TrcmdcenterHalvesTheCommandWindowAndRefreshesWithoutSaving) {
    StoreSetting(L"WidthOnCmdWnd", 200);
    Load();
    EXPECT_EQ(g_pTabrow->m_nWidthOnCmdWnd, 200);
    // The frame's first layout at host start shows the hook the command window.
    host.Windows().Move(g_hwndFrame, host.Windows().RectInParent(g_hwndFrame), true);
    host.Type(L"TRCMDCENTER");
    EXPECT_EQ(g_pTabrow->m_nWidthOnCmdWnd,
              host.Windows().RectInParent(host.Windows().CommandWindow()).Width() / 2);
    EXPECT_EQ(FrameMoves(), 3u);
    EXPECT_EQ(Bytes(kSettingsKey, L"WidthOnCmdWnd"), (std::vector<std::uint8_t>{200, 0, 0, 0}));
}

TEST_F(TabrowSession, UnloadGivesTheRoomBackUnlessTheHostQuits) {
    Load();
    HostWindow* bar = g_pTabrow->GetSafeHwnd();
    HostWindow* mdiClient = g_hwndMdiClient;
    EXPECT_FALSE(host.Windows().HasOwnProcedure(mdiClient));
    Unload();
    EXPECT_FALSE(host.Windows().IsWindow(bar));
    EXPECT_TRUE(host.Windows().HasOwnProcedure(mdiClient));
    EXPECT_TRUE(host.Windows().HasOwnProcedure(g_hwndCmdWnd));
    EXPECT_EQ(FrameMoves(), 2u);
    EXPECT_TRUE(host.Commands().empty());
    EXPECT_TRUE(host.MessageWatchers().empty());
    EXPECT_EQ(Count(L" Harvane Tabrow 2.0 (build 97) UNLOADED "), 1u);
    EXPECT_NE(host.CommandLineText().find(std::wstring(80, L'-')), std::wstring::npos);
    EXPECT_EQ(host.AutomationReferences(), 0);
    EXPECT_EQ(host.SheetSetManagers(), 0);

    MapModule();
    Load();
    host.Quit();
    Unload();
    EXPECT_EQ(g_pMdiClientHook, nullptr);
    EXPECT_EQ(g_pCmdWndHook, nullptr);
    EXPECT_EQ(FrameMoves(), 2u);  // only the first unload refreshed the layout
    // The hooks stay on their windows and let every position through until the windows die.
    EXPECT_FALSE(host.Windows().HasOwnProcedure(mdiClient));
    EXPECT_FALSE(host.Windows().HasOwnProcedure(g_hwndCmdWnd));
    const win::RECT room{0, 60, 1920, 880};
    host.Windows().Move(mdiClient, room, true);
    EXPECT_EQ(host.Windows().RectInParent(mdiClient), room);
    host.Windows().Destroy(host.Windows().HostFrame());
    EXPECT_EQ(CSubclassWnd::HookedWindowCount(), 0u);
}

TEST_F(TabrowSession, StartFindsTheDataFolderOrFallsBackToTheModulesFolder) {
    Load();
    EXPECT_EQ(theApp.m_strAppDataDir, scratch.Folder() + L"appdata/Harvane/Tabrow/");
    EXPECT_TRUE(std::filesystem::is_directory(scratch.Path() / "appdata" / "Harvane" / "Tabrow"));
    EXPECT_EQ(theApp.m_strUserName, L"cad-user");
    EXPECT_EQ(theApp.m_strBuild, L"97");
    EXPECT_EQ(theApp.SectionPath(L""), kSettingsKey + L"\\");
    Unload();

    MapModule();
    files.SetUserDataFolder(L"");
    Load();
    EXPECT_EQ(theApp.m_strAppDataDir, scratch.Folder() + L"modules/");
}

TEST_F(TabrowSession, AStoreThatRefusesWritesNeitherStopsTheLoadNorSaysSo) {
    host.Registry().SetReadOnly(true);
    Load();
    ASSERT_NE(g_pTabrow, nullptr);
    EXPECT_TRUE(g_pTabrow->IsBarVisible());
    EXPECT_EQ(g_pTabrow->m_nSize, 100);  // defaults stand in for what could not be read
    EXPECT_TRUE(host.MessageBoxesShown().empty());
    EXPECT_EQ(host.Commands().size(), 6u);
    EXPECT_FALSE(Value(host.ProductKey() + L"\\Applications\\HvNeTabrow", L"LOADCTRLS"));
    host.Type(L"TROFF");
    Unload();
    EXPECT_FALSE(Value(kSettingsKey, L"On"));
}

}  // namespace

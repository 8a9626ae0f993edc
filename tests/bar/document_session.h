#pragma once
// A session on the simulated host with the module loaded the way the host loads it, and a look
// at the bar's two document lists as the user sees them: tab texts and the palette's drawings.

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bar/hv_tabrow.h"
#include "host/tabrow_app.h"
#include "platform/sim/sim_file_system.h"
#include "platform/sim/sim_host.h"
#include "ports/tab_control.h"
#include "support/test_files.h"

// The module as the host holds it: loaded when made, unloaded when gone.
class LoadedModule {
public:
    LoadedModule() { acrxEntryPoint(kInitAppMsg, Packet()); }
    ~LoadedModule() { acrxEntryPoint(kUnloadAppMsg, Packet()); }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    HostAppPacket* Packet() { return reinterpret_cast<HostAppPacket*>(this); }
};

class DocumentSession : public ::testing::Test {
protected:
    DocumentSession() { MapModule(); }
    ~DocumentSession() override { m_module.reset(); }

    void Load() {
        m_module.emplace();
        ASSERT_NE(g_pTabrow, nullptr);
    }
    void Unload() { m_module.reset(); }
    // A setting in the program's root key, as the preferences store it.
    void Store(const std::wstring& name, std::uint32_t value) {
        RegValue dword{reg::kDword, {}};
        for (int shift = 0; shift < 32; shift += 8)
            dword.data.push_back(static_cast<std::uint8_t>(value >> shift));
        SimRegistry& registry = host.Registry();
        ASSERT_TRUE(registry.CreateKey(RegHive::CurrentUser, kKey));
        ASSERT_TRUE(registry.SetValue(RegHive::CurrentUser, kKey, name, dword));
    }

    HvTabrow& Bar() { return *g_pTabrow; }
    // The texts of the message boxes shown so far.
    std::vector<std::wstring> Boxes() {
        std::vector<std::wstring> texts;
        for (const auto& box : host.MessageBoxesShown())
            texts.push_back(box.text);
        return texts;
    }
    // The bar's recent drawings, newest first.
    std::vector<std::wstring> Recent() {
        return {Bar().m_RecentFiles.begin(), Bar().m_RecentFiles.end()};
    }
    HostWindow* Tabs() { return Bar().m_tabCtrl.m_hWnd; }
    HostWindow* Palette() { return Bar().m_palette.m_hWnd; }
    std::vector<std::wstring> TabTexts() {
        std::vector<std::wstring> texts;
        for (int i = 0; i < Bar().m_tabCtrl.GetItemCount(); ++i)
            texts.push_back(Bar().m_tabCtrl.GetItemText(i));
        return texts;
    }
    std::vector<std::wstring> PaletteTitles() {
        std::vector<std::wstring> titles;
        for (const auto& item : Bar().m_palette.m_items)
            titles.push_back(item->path.GetFileTitle());
        return titles;
    }
    // The texts of the message boxes shown so far.
    std::vector<std::wstring> Boxes() {
        std::vector<std::wstring> texts;
        for (const auto& box : host.MessageBoxesShown())
            texts.push_back(box.text);
        return texts;
    }
    int SelectedTab() { return host.TabControl().GetCurSel(Tabs()); }
    // A click on a tab: the control asks the bar, then changes and tells it.
    void ClickTab(int index) { host.TabControl().Click(Tabs(), index); }
    TrDocItem* Item(HostDocument* doc) {
        for (const auto& item : Bar().m_palette.m_items) {
            if (item->pDoc == doc)
                return item.get();
        }
        return nullptr;
    }

    static constexpr wchar_t kKey[] = L"Software\\Harvane\\Tabrow\\2.0 - R17";
    ScratchFolder scratch;
    SimFileSystem files{scratch.Folder()};
    ScopedPort<FileSystem> filesPort{files};
    SimHost host;
    std::optional<LoadedModule> m_module;  // last: unloaded before the host goes
};

// The same settings saved and read back through the registry export file and through the real
// registry, by the same seeded sequences of writes: every key of the settings table in its own
// kind, window placements, fonts, raw binary values, empty strings and names that differ only in
// case. Every value read back must be the same; where the two stores may differ by the rules the
// store is held to, the difference is named, counted and checked to be only that.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <functional>
#include <iostream>
#include <random>

#include "foundation/no_case.h"
#include "platform/portable/reg_file_store.h"
#include "platform/win32/win32_file_system.h"
#include "platform/win32/win32_registry_store.h"
#include "ports/port.h"
#include "scratch_registry_key.h"
#include "settings/reg_impl.h"
#include "settings/registry_key.h"
#include "settings/settings_keys.h"
#include "settings/tabrow_settings.h"
#include "settings/window_placement.h"
#include "support/test_files.h"

namespace {

enum class Kind { Int, String, Double, Font, Placement };

struct Setting {
    std::wstring section;
    std::wstring name;
    Kind kind;
};

// Every key of the settings table, the list controls' values and the dialogs' placements.
std::vector<Setting> SettingsTable() {
    using namespace keys;
    std::vector<Setting> table;
    for (const wchar_t* name : {kOn,
                                kLoadOnCommand,
                                kShowTips,
                                kTipWidth,
                                kTipDelay,
                                kTipRemain,
                                kShowFullPathInTips,
                                kShowDwgPropsInTips,
                                kShowFullPathInRefs,
                                kShowFullPathInSheetSets,
                                kSortBy,
                                kZoomExtentsOnSave,
                                kSwitchOnBusy,
                                kHideOnSingle,
                                kLockSize,
                                kDockSide,
                                kFloating,
                                kTabMode,
                                kSize,
                                kWidthOnCmdWnd,
                                kMinSize,
                                kHasScrollBar,
                                kMRUCount,
                                kOpenSheetSetInSSM,
                                kSortWorksets,
                                kNumSheetSets,
                                kDisableNewMenu,
                                kAvoidSaveasInLisp,
                                kAutoCheckForUpdates})
        table.push_back({kRoot, name, Kind::Int});
    for (const wchar_t* name : {kSsSearchPath, kLastWorkset, kSaveCommand})
        table.push_back({kRoot, name, Kind::String});
    table.push_back({kRoot, kTabFont, Kind::Font});
    table.push_back({kRoot, kLabelFont, Kind::Font});
    table.push_back({kRoot, kFloatPosition, Kind::Placement});
    for (const wchar_t* name : {kReadOnly, kModified, kBackground, kTitleBack, kTitleText})
        table.push_back({kColors, name, Kind::Int});
    for (const wchar_t* name :
         {kAutoUpdatePreviews, kShowDwgName, kDwgNameAbove, kScrollOverflow, kScrollBarSize})
        table.push_back({kPreviews, name, Kind::Int});
    for (const wchar_t* section : {kWhiteBack, kBlackBack}) {
        for (const wchar_t* name : {kBrightness, kContrast, kGamma})
            table.push_back({section, name, Kind::Double});
        table.push_back({section, kSharpness, Kind::Int});
    }
    for (int i = 1; i <= 10; ++i)
        table.push_back({kMru, L"Path_" + std::to_wstring(i), Kind::String});
    table.push_back({kWorksets, kPath, Kind::String});
    table.push_back({kPreferencesDlg, kLastTab, Kind::Int});
    table.push_back({kWorkSetDlg, kLastWorkSet, Kind::String});
    for (const wchar_t* dialog :
         {kReferencesDialog, kSheetSetDialog, kSelectWsFilesDlg, kWorkSetDlg, kPreferencesDlg})
        table.push_back({dialog, L"", Kind::Placement});
    const std::wstring list = std::wstring(kSelectWsFilesDlg) + L"\\FileList";
    for (int i = 0; i < 4; ++i)
        table.push_back({list, L"Col" + std::to_wstring(i), Kind::Int});
    table.push_back({list, kSort, Kind::Int});
    table.push_back({list, kOrder, Kind::String});
    return table;
}

// A character outside the basic plane, as two UTF-16 units.
std::wstring SurrogatePair() {
    return std::wstring{wchar_t(0xD83D), wchar_t(0xDCD0)};
}

const std::vector<std::wstring>& Strings() {
    static const std::vector<std::wstring> strings = {
        L"",
        L" ",
        L"_.QSAVE\n",
        L"C:\\Jobs\\Site A\\plan.dwg",
        L"D:\\sheets\\\\",
        L"Site \"B\"",
        L"=;[Section]@\"\\",
        L"line one\r\nline two",
        L"\u00C4rger \u2013 \u56F3\u9762",
        L"rocket " + SurrogatePair(),
        std::wstring(5000, L'x') + L"end",
    };
    return strings;
}

// A random case of each letter of `text`, so that names meet in another spelling.
std::wstring AnyCase(const std::wstring& text, std::mt19937& random) {
    std::wstring mixed = text;
    for (wchar_t& c : mixed) {
        if (random() % 3 == 0)
            c = static_cast<wchar_t>(c >= L'a' && c <= L'z'   ? c - 32
                                     : c >= L'A' && c <= L'Z' ? c + 32
                                                              : c);
    }
    return mixed;
}

std::wstring Hex(const std::vector<std::uint8_t>& bytes) {
    static const wchar_t digits[] = L"0123456789abcdef";
    std::wstring text;
    for (std::uint8_t byte : bytes) {
        text.push_back(digits[byte >> 4]);
        text.push_back(digits[byte & 15]);
    }
    return text;
}

std::wstring Show(const std::optional<RegValue>& value) {
    if (!value)
        return L"(none)";
    return L"type " + std::to_wstring(value->type) + L": " + Hex(value->data);
}

std::string Narrow(const std::wstring& text) {
    std::string narrow;
    for (wchar_t c : text)
        narrow.push_back(c >= 32 && c < 127 ? static_cast<char>(c) : '?');
    return narrow;
}

std::wstring Describe(const win::LOGFONTW& font) {
    std::vector<std::uint8_t> bytes(sizeof font);
    std::memcpy(bytes.data(), &font, sizeof font);
    return Hex(bytes);
}

// One store and the settings access over it.
struct Side {
    KeyValueStore* store;  // not owned
    HvRegImpl* reg;        // not owned

    template <class Action>
    auto Run(Action action) {
        ScopedPort<KeyValueStore> installed{*store};
        return action(*reg);
    }
};

// The differences allowed between the two stores, each with the reason it is allowed.
struct AcceptedDifferences {
    // The store's port promises no order of names; the system reads every value by its name.
    // The export file lists values and keys in the order they were first written; the registry
    // lists keys sorted by name, and Wine's lists values sorted too.
    int valueOrder = 0;
    int subKeyOrder = 0;
};

class SettingsDifferentialTest : public ::testing::Test {
protected:
    ScratchFolder folder;
    Win32FileSystem disk;
    ScopedPort<FileSystem> diskPort{disk};
    ScratchRegistryKey key;
    const std::wstring root = key.Path() + L"\\Harvane\\Tabrow\\2.0 - R17";
    HvRegImpl reg{root};
    std::unique_ptr<RegFileStore> fileStore = std::make_unique<RegFileStore>(FilePath());
    Win32RegistryStore registry;
    Side file{fileStore.get(), &reg};
    Side real{&registry, &reg};
    const std::vector<Setting> table = SettingsTable();
    AcceptedDifferences accepted;

    std::wstring FilePath() const { return folder.File(L"settings.reg"); }

    // The file store as a new start of the program finds it.
    void RestartFileStore() {
        fileStore = std::make_unique<RegFileStore>(FilePath());
        file.store = fileStore.get();
    }

    // A random write, delete or read-back of one setting; its description for failures.
    // `touched` is the setting as the operation names it.
    std::pair<std::string, std::function<std::wstring(HvRegImpl&)>> Pick(std::mt19937& random,
                                                                         Setting& touched) {
        const Setting& setting = table[random() % table.size()];
        const std::wstring section = AnyCase(setting.section, random);
        const std::wstring name = AnyCase(setting.name, random);
        touched = Setting{section, name, setting.kind};
        const std::wstring text = Strings()[random() % Strings().size()];
        const int number =
            std::initializer_list<int>{
                0, 1, -1, 59420, INT_MIN, INT_MAX, static_cast<int>(random())}
                .begin()[random() % 7];
        const double real =
            std::initializer_list<double>{0.0, -0.25, 1.8, 2.5, 1e300, -1e-7, 0.123456789}
                .begin()[random() % 7];
        win::LOGFONTW font;
        auto* fontBytes = reinterpret_cast<std::uint8_t*>(&font);
        for (std::size_t i = 0; i < sizeof font; ++i)
            fontBytes[i] = static_cast<std::uint8_t>(random());
        const WindowPlacement placement{
            {static_cast<int>(random() % 4000) - 2000, -8, static_cast<int>(random() % 3000), 900},
            random() % 4 == 0};
        std::vector<std::uint8_t> bytes(random() % 3 == 0 ? 0 : random() % 120);
        for (auto& byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        const std::string where = Narrow(L"[" + section + L"] " + name);

        switch (random() % 8) {
            case 0:
                return {"delete " + where, [=](HvRegImpl& r) {
                            CRegistryKey k(RegHive::CurrentUser, r.SectionPath(section), true);
                            return std::to_wstring(k.DeleteValue(name));
                        }};
            case 1:
                return {"binary " + where, [=](HvRegImpl& r) {
                            return std::to_wstring(
                                r.SetBinary(section, name, bytes.data(), bytes.size()));
                        }};
            case 2:
                return {"empty string " + where, [=](HvRegImpl& r) {
                            return std::to_wstring(r.SetString(section, name, L""));
                        }};
            case 3:
                return {"hand-typed string without terminator " + where, [=](HvRegImpl& r) {
                            std::vector<std::uint8_t> data = reg::StringBytes(text);
                            data.resize(data.size() - 2);
                            CRegistryKey k(RegHive::CurrentUser, r.SectionPath(section), true);
                            return std::to_wstring(k.SetValue(name, RegValue{reg::kSz, data}));
                        }};
            default:
                break;
        }
        // A value of the setting's own kind, written as the program writes it.
        static const char* const kKindNames[] = {"int ", "string ", "double ", "font ",
                                                 "placement "};
        const Kind kind = setting.kind;
        return {kKindNames[static_cast<int>(kind)] + where, [=](HvRegImpl& r) {
                    const bool written =
                        kind == Kind::Int      ? r.SetInt(section, name, number)
                        : kind == Kind::String ? r.SetString(section, name, text)
                        : kind == Kind::Double ? r.SetDouble(section, name, real)
                        : kind == Kind::Font
                            ? r.SetFont(section, name, font)
                            : r.SetString(section, name, FormatWindowPlacement(placement));
                    return std::to_wstring(written);
                }};
    }

    // What a setting reads as through every kind of access the program has.
    std::wstring ReadBack(const Setting& setting, HvRegImpl& r) {
        std::wstring text = L"int " + std::to_wstring(r.GetInt(setting.section, setting.name, 7)) +
                            L" string [" + r.GetString(setting.section, setting.name, L"dflt") +
                            L"] double " +
                            std::to_wstring(r.GetDouble(setting.section, setting.name, 0.5));
        win::LOGFONTW font;
        if (r.GetFont(setting.section, setting.name, font))
            text += L" font " + Describe(font);
        if (auto placement = ParseWindowPlacement(r.GetString(setting.section, setting.name, {})))
            text += L" placement " + FormatWindowPlacement(*placement);
        return text;
    }

    std::optional<RegValue> Stored(Side& side, const Setting& setting) {
        return side.Run([&setting](HvRegImpl& r) {
            return Use<KeyValueStore>().QueryValue(RegHive::CurrentUser,
                                                   r.SectionPath(setting.section), setting.name);
        });
    }

    // The stored bytes agree.
    void CompareStored(const Setting& setting, const std::string& context) {
        const auto expected = Stored(file, setting);
        const auto actual = Stored(real, setting);
        EXPECT_EQ(Narrow(Show(actual)), Narrow(Show(expected))) << context;
    }

    void CompareEverySetting(const std::string& context) {
        for (const Setting& setting : table) {
            const std::string where =
                context + ", " + Narrow(L"[" + setting.section + L"] " + setting.name);
            const std::wstring expected =
                file.Run([&](HvRegImpl& r) { return ReadBack(setting, r); });
            const std::wstring actual =
                real.Run([&](HvRegImpl& r) { return ReadBack(setting, r); });
            // Compared whole; the message shows them with '?' for what is not ASCII.
            EXPECT_TRUE(actual == expected) << where << "\n  registry: " << Narrow(actual)
                                            << "\n  file:     " << Narrow(expected);
            CompareStored(setting, where);
        }
    }

    // The same names below every key of the settings; the same order, or an accepted one.
    void CompareNames(const std::wstring& path, const std::string& context) {
        auto names = [&path](Side& side, bool subKeys) {
            return side.Run([&](HvRegImpl&) {
                KeyValueStore& store = Use<KeyValueStore>();
                return subKeys ? store.SubKeyNames(RegHive::CurrentUser, path)
                               : store.ValueNames(RegHive::CurrentUser, path);
            });
        };
        for (bool subKeys : {false, true}) {
            auto expected = names(file, subKeys);
            auto actual = names(real, subKeys);
            if (actual != expected) {
                auto sorted = [](std::vector<std::wstring> list) {
                    std::sort(list.begin(), list.end(), LessNoCase);
                    return list;
                };
                ASSERT_EQ(sorted(actual), sorted(expected))
                    << context << ": names below " << Narrow(path);
                ++(subKeys ? accepted.subKeyOrder : accepted.valueOrder);
            }
            if (subKeys) {
                for (const std::wstring& child : expected)
                    CompareNames(path + L"\\" + child, context);
            }
        }
    }

    void RunSequence(unsigned seed, int steps) {
        std::mt19937 random(seed);
        for (int step = 0; step < steps; ++step) {
            Setting touched;
            auto [what, operation] = Pick(random, touched);
            const std::string context =
                "seed " + std::to_string(seed) + ", step " + std::to_string(step) + ": " + what;
            ASSERT_EQ(Narrow(real.Run(operation)), Narrow(file.Run(operation))) << context;
            CompareStored(touched, context);
            if (HasFailure())
                return;
        }
        CompareEverySetting("end of seed " + std::to_string(seed));
    }
};

}  // namespace

TEST_F(SettingsDifferentialTest, RandomWritesReadBackTheSameThroughTheFileAndTheRegistry) {
    // The program's own save of the whole table first, then the random writes over it.
    const TabrowSettings defaults;
    for (Side* side : {&file, &real})
        ASSERT_TRUE(side->Run([&defaults](HvRegImpl& r) { return defaults.Save(r); }));
    for (unsigned seed = 1; seed <= 3; ++seed) {
        RunSequence(seed, 300);
        if (HasFailure())
            return;
    }
    RestartFileStore();
    CompareEverySetting("after a restart");
    CompareNames(root, "after a restart");
    std::cout << "accepted differences: value order " << accepted.valueOrder << ", key order "
              << accepted.subKeyOrder << "\n";
}

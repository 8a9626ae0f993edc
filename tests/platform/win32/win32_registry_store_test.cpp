#include "platform/win32/win32_registry_store.h"

#include <gtest/gtest.h>

#include "scratch_registry_key.h"

namespace {

class Win32RegistryStoreTest : public ::testing::Test {
protected:
    ScratchRegistryKey scratch;
    Win32RegistryStore store;
    const std::wstring root = scratch.Path();
};

}  // namespace

TEST_F(Win32RegistryStoreTest, KeysAreCreatedWithTheirParentsAndFoundWhateverTheCase) {
    EXPECT_FALSE(store.KeyExists(RegHive::CurrentUser, root));
    ASSERT_TRUE(store.CreateKey(RegHive::CurrentUser, root + L"\\\\Dialogs\\Sheet Set Wizard\\"));
    EXPECT_TRUE(store.KeyExists(RegHive::CurrentUser, root + L"\\dialogs"));
    EXPECT_TRUE(
        store.KeyExists(RegHive::CurrentUser, L"\\" + root + L"\\DIALOGS\\sheet set wizard"))
        << "empty parts are ignored, as the port promises";
    EXPECT_TRUE(store.CreateKey(RegHive::CurrentUser, root + L"\\Dialogs")) << "already there";
    EXPECT_EQ(store.SubKeyNames(RegHive::CurrentUser, root), std::vector<std::wstring>{L"Dialogs"});

    EXPECT_FALSE(store.CreateKey(RegHive::None, root + L"\\x"));
    EXPECT_FALSE(store.KeyExists(RegHive::None, L""));
    EXPECT_TRUE(store.SubKeyNames(RegHive::CurrentUser, root + L"\\Missing").empty());
}

TEST_F(Win32RegistryStoreTest, ValuesComeBackAsTheBytesStored) {
    ASSERT_TRUE(store.CreateKey(RegHive::CurrentUser, root));
    std::vector<std::uint8_t> large(300000);
    for (std::size_t i = 0; i < large.size(); ++i)
        large[i] = static_cast<std::uint8_t>(i * 7);
    const std::pair<std::wstring, RegValue> values[] = {
        {L"", RegValue{reg::kSz, reg::StringBytes(L"default")}},
        {L"Odd", RegValue{reg::kSz, {'a', 0, 'b'}}},
        // Only a hand edit stores a string without its terminator; it stays without one.
        {L"Unterminated", RegValue{reg::kSz, {'a', 0, 'b', 0}}},
        {L"Empty", RegValue{reg::kExpandSz, {}}},
        {L"Nothing", RegValue{reg::kBinary, {}}},
        {L"Dword", RegValue{reg::kDword, {0x1C, 0xE8, 0, 0}}},
        {L"Large", RegValue{reg::kBinary, large}},
        {L"Multi", RegValue{reg::kMultiSz, reg::StringBytes(std::wstring(L"a\0b\0", 4))}},
    };
    for (const auto& [name, value] : values)
        ASSERT_TRUE(store.SetValue(RegHive::CurrentUser, root, name, value))
            << "name " << name.size();
    for (const auto& [name, value] : values) {
        const auto read = store.QueryValue(RegHive::CurrentUser, root, name);
        ASSERT_TRUE(read) << "name " << name.size();
        EXPECT_EQ(read->type, value.type);
        EXPECT_EQ(read->data, value.data) << "name " << name.size();
    }
    EXPECT_EQ(store.QueryValue(RegHive::CurrentUser, root, L"DWORD")->data.size(), 4u);

    EXPECT_FALSE(store.QueryValue(RegHive::CurrentUser, root, L"Missing"));
    EXPECT_FALSE(store.QueryValue(RegHive::CurrentUser, root + L"\\Missing", L"Dword"));
}

TEST_F(Win32RegistryStoreTest, WritesNeedAnExistingKeyAndDeletesAnExistingValue) {
    const RegValue one{reg::kDword, {1, 0, 0, 0}};
    EXPECT_FALSE(store.SetValue(RegHive::CurrentUser, root, L"On", one));
    EXPECT_FALSE(scratch.Exists()) << "a refused write creates nothing";
    ASSERT_TRUE(store.CreateKey(RegHive::CurrentUser, root));
    ASSERT_TRUE(store.SetValue(RegHive::CurrentUser, root, L"On", one));
    ASSERT_TRUE(store.SetValue(RegHive::CurrentUser, root, L"Size", one));
    EXPECT_TRUE(store.DeleteValue(RegHive::CurrentUser, root, L"ON"));
    EXPECT_FALSE(store.DeleteValue(RegHive::CurrentUser, root, L"On"));
    EXPECT_FALSE(store.DeleteValue(RegHive::CurrentUser, root + L"\\Missing", L"Size"));
    EXPECT_EQ(store.ValueNames(RegHive::CurrentUser, root), std::vector<std::wstring>{L"Size"});
}

TEST_F(Win32RegistryStoreTest, EveryCallClosesTheKeyItOpened) {
    ASSERT_TRUE(store.CreateKey(RegHive::CurrentUser, root + L"\\Colors"));
    auto cycle = [this] {
        store.KeyExists(RegHive::CurrentUser, root);
        store.CreateKey(RegHive::CurrentUser, root + L"\\Colors");
        store.SetValue(RegHive::CurrentUser, root, L"x", RegValue{reg::kDword, {1, 0, 0, 0}});
        store.QueryValue(RegHive::CurrentUser, root, L"x");
        store.ValueNames(RegHive::CurrentUser, root);
        store.SubKeyNames(RegHive::CurrentUser, root);
        store.DeleteValue(RegHive::CurrentUser, root, L"x");
    };
    // A freed handle's slot is given out again: a key opened after the calls gets the same
    // handle as one opened before them unless the calls left some open.
    auto probe = [this] {
        const RegistryKey key = OpenRegistryKey(HKEY_CURRENT_USER, root.c_str(), KEY_READ);
        EXPECT_TRUE(key);
        return key.Get();
    };
    cycle();
    const HKEY before = probe();
    for (int i = 0; i < 50; ++i)
        cycle();
    EXPECT_EQ(probe(), before);
}

#include "platform/portable/reg_file_store.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "foundation/text_encoding.h"
#include "settings/reg_impl.h"
#include "settings/registry_key.h"
#include "settings_test_disk.h"

namespace fs = std::filesystem;

namespace {

const std::wstring kRoot = L"Software\\Harvane\\Tabrow\\2.0 - R17";

class RegFileStoreTest : public ::testing::Test {
protected:
    std::wstring StorePath() const { return RegFileStore::DefaultPath(); }
    fs::path StoreFile() const { return DiskPath(StorePath()); }
    std::string StoredBytes() const { return ReadBytes(StoreFile()); }
    void PutFile(const std::string& bytes) const {
        fs::create_directories(StoreFile().parent_path());
        std::ofstream(StoreFile(), std::ios::binary | std::ios::trunc) << bytes;
    }

    ScratchFolder scratch;
    SettingsTestDisk disk{scratch};
    ScopedPort<FileSystem> diskPort{disk};
    RegFileStore store{StorePath()};
    ScopedPort<KeyValueStore> storePort{store};
    HvRegImpl reg{kRoot};
};

}  // namespace

TEST_F(RegFileStoreTest, LivesInTheUsersConfigurationFolderAndSurvivesARestart) {
    EXPECT_EQ(NativePath(StorePath()),
              NativePath(scratch.Folder() + L"config/Harvane/Tabrow/settings.reg"));
    EXPECT_FALSE(fs::exists(StoreFile()));
    EXPECT_EQ(reg.GetInt(L"", L"On", 1), 1);
    ASSERT_TRUE(fs::exists(StoreFile())) << "reading a section leaves its key behind";
    ASSERT_TRUE(reg.SetInt(L"", L"On", 0));
    ASSERT_TRUE(reg.SetString(L"MRU", L"Path_1", L"C:\\dwg\\a.dwg"));

    RegFileStore restarted(StorePath());
    ScopedPort<KeyValueStore> port(restarted);
    EXPECT_EQ(reg.GetInt(L"", L"On", 1), 0);
    EXPECT_EQ(reg.GetString(L"MRU", L"Path_1", L""), L"C:\\dwg\\a.dwg");
}

TEST_F(RegFileStoreTest, SeesChangesMadeToTheFileByOthers) {
    ASSERT_TRUE(reg.SetInt(L"", L"Size", 100));
    RegFileStore other(StorePath());
    {
        ScopedPort<KeyValueStore> port(other);
        ASSERT_TRUE(reg.SetInt(L"", L"Size", 140));
        ASSERT_TRUE(reg.SetString(L"", L"LastWorkset", L"Site plans"));
    }
    EXPECT_EQ(reg.GetInt(L"", L"Size", 0), 140);
    EXPECT_EQ(reg.GetString(L"", L"LastWorkset", L""), L"Site plans");
}

TEST_F(RegFileStoreTest, EmptyAndMissingFilesGiveDefaultsAndBecomeStores) {
    PutFile("");
    EXPECT_EQ(reg.GetString(L"", L"SaveCommand", L"_.QSAVE\n"), L"_.QSAVE\n");
    EXPECT_TRUE(reg.SetInt(L"Colors", L"ReadOnly", 5));
    EXPECT_EQ(StoredBytes().substr(0, 2), "\xFF\xFE");
}

TEST_F(RegFileStoreTest, AForeignOrBinaryFileGivesDefaultsAndIsNeverOverwritten) {
    for (const std::string& foreign :
         {std::string("[settings]\r\nOn=0\r\n"), std::string("\x89PNG\r\n\x1a\n\0\0\x01\x02", 12),
          std::string(1000, '\0')}) {
        PutFile(foreign);
        RegFileStore fresh(StorePath());
        ScopedPort<KeyValueStore> port(fresh);
        EXPECT_EQ(reg.GetInt(L"", L"On", 1), 1);
        EXPECT_FALSE(reg.SetInt(L"", L"On", 0));
        EXPECT_FALSE(fresh.IsWritable());
        EXPECT_EQ(StoredBytes(), foreign);
    }
}

TEST_F(RegFileStoreTest, AFileTooLargeToReadIsLeftAlone) {
    PutFile("Windows Registry Editor Version 5.00\r\n");
    fs::resize_file(StoreFile(), RegFileStore::kMaxFileSize + 1);
    EXPECT_EQ(reg.GetInt(L"", L"TipWidth", 300), 300);
    EXPECT_FALSE(reg.SetInt(L"", L"TipWidth", 1));
    EXPECT_EQ(fs::file_size(StoreFile()), RegFileStore::kMaxFileSize + 1);
}

TEST_F(RegFileStoreTest, AReadOnlyFileIsReadAndAFailedWriteLosesNothing) {
    ASSERT_TRUE(reg.SetInt(L"", L"TipDelay", 42));
    const std::string before = StoredBytes();
    fs::permissions(StoreFile(), fs::perms::owner_write | fs::perms::group_write,
                    fs::perm_options::remove);

    EXPECT_FALSE(reg.SetInt(L"", L"TipDelay", 7));
    EXPECT_FALSE(reg.SetString(L"NewSection", L"x", L"y"));
    EXPECT_EQ(reg.GetInt(L"", L"TipDelay", 0), 42) << "the failed value is not taken";
    EXPECT_EQ(reg.GetString(L"NewSection", L"x", L"default"), L"default");
    EXPECT_EQ(StoredBytes(), before);
}

TEST_F(RegFileStoreTest, AHandEditedFileKeepsItsGarbageThroughWrites) {
    PutFile(
        "Windows Registry Editor Version 5.00\n\n"
        "[HKEY_CURRENT_USER\\Software\\Harvane\\Tabrow\\2.0 - R17]\n"
        "\"TipWidth\"=dword:00000190\n"
        "TipDelay=500   ; typed by hand\n"
        "\"SortBy\"=dword:2\n"
        "\x01\x02 binary junk \xFF\n");
    EXPECT_EQ(reg.GetInt(L"", L"TipWidth", 300), 400);
    EXPECT_EQ(reg.GetInt(L"", L"TipDelay", 3000), 3000);
    EXPECT_EQ(reg.GetInt(L"", L"SortBy", 0), 2);
    ASSERT_TRUE(reg.SetInt(L"", L"TipWidth", 250));

    std::string bytes = StoredBytes();
    std::wstring text = FromUtf16Le(bytes.substr(2));
    EXPECT_NE(text.find(L"TipDelay=500   ; typed by hand\r\n"), std::wstring::npos);
    EXPECT_NE(text.find(L" binary junk "), std::wstring::npos);
    EXPECT_NE(text.find(L"\"TipWidth\"=dword:000000fa\r\n"), std::wstring::npos);
    EXPECT_EQ(reg.GetInt(L"", L"SortBy", 0), 2);
}

TEST_F(RegFileStoreTest, KeysAndValuesCanBeListedAndValuesDeleted) {
    CRegistryKey list(RegHive::CurrentUser, kRoot + L"\\SelectWsFilesDlg\\FileList", true);
    ASSERT_TRUE(list.IsOpen());
    ASSERT_TRUE(list.SetDword(L"Col0", 120));
    ASSERT_TRUE(list.SetString(L"Order", L"0,1,2"));
    CRegistryKey dialog(RegHive::CurrentUser, kRoot + L"\\SelectWsFilesDlg", false);
    ASSERT_TRUE(dialog.IsOpen()) << "a parent exists once a key below it does";
    EXPECT_EQ(dialog.SubKeyNames(), std::vector<std::wstring>{L"FileList"});
    EXPECT_EQ(list.ValueNames(), (std::vector<std::wstring>{L"Col0", L"Order"}));
    EXPECT_TRUE(list.DeleteValue(L"col0"));
    EXPECT_FALSE(list.DeleteValue(L"Col0"));
    EXPECT_EQ(list.ValueNames(), std::vector<std::wstring>{L"Order"});
}

#include "foundation/ini_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "platform/portable/portable_profile_file.h"
#include "ports/port.h"
#include "support/disk_file_system.h"
#include "support/recording_message_boxes.h"
#include "support/test_files.h"

namespace fs = std::filesystem;
using Lines = std::vector<std::wstring>;

namespace {

class IniFileTest : public ::testing::Test {
protected:
    ScratchFolder scratch;
    DiskFileSystem disk;
    PortableProfileFile profile;
    ScopedPort<FileSystem> diskPort{disk};
    ScopedPort<ProfileFile> profilePort{profile};
    std::wstring path = scratch.File(L"Company.worksets");
    HvIniFile ini{path, true};

    Lines SectionNames() {
        Lines names;
        ini.GetSectionNames(names);
        return names;
    }
    Lines LinesOf(const wchar_t* section) {
        Lines lines;
        ini.GetLines(section, lines);
        return lines;
    }
};

// Characters a list of lines takes in the classic double-zero-ended buffer.
std::size_t BufferUsed(const Lines& lines) {
    std::size_t used = 1;
    for (const auto& line : lines)
        used += line.size() + 1;
    return used;
}

}  // namespace

TEST_F(IniFileTest, EmptyValuesReadAsTheDefault) {
    scratch.Write(L"Company.worksets",
                  "[s]\nempty=\nbool=TRUE\nzero=0\nblank= 1\nquoted=\" 1\"\none=1\n"
                  "yes=yes\nnum=2.5e1\nword=abc\n");
    EXPECT_EQ(ini.GetString(L"s", L"empty", L"dflt"), L"dflt");
    EXPECT_EQ(ini.GetString(L"S", L"WORD"), L"abc");
    EXPECT_TRUE(ini.GetBool(L"s", L"bool", false));
    EXPECT_FALSE(ini.GetBool(L"s", L"zero", true));
    // The profile reader takes blanks around a value off; only quotes keep one, and then " 1"
    // is not "1".
    EXPECT_TRUE(ini.GetBool(L"s", L"blank", false));
    EXPECT_FALSE(ini.GetBool(L"s", L"quoted", true));
    EXPECT_TRUE(ini.GetBool(L"s", L"one", false));
    EXPECT_FALSE(ini.GetBool(L"s", L"yes", true));
    EXPECT_TRUE(ini.GetBool(L"s", L"missing", true));
    EXPECT_FALSE(ini.GetBool(L"s", L"missing", false));
    EXPECT_DOUBLE_EQ(ini.GetDouble(L"s", L"num", 1.0), 25.0);
    EXPECT_DOUBLE_EQ(ini.GetDouble(L"s", L"word", 1.0), 0.0);
    EXPECT_DOUBLE_EQ(ini.GetDouble(L"s", L"missing", 1.5), 1.5);
    EXPECT_EQ(ini.GetInt(L"s", L"word", 7), 0);
    EXPECT_EQ(ini.GetInt(L"s", L"missing", 7), 7);
}

TEST_F(IniFileTest, WritersRoundTrip) {
    EXPECT_TRUE(ini.WriteBool(L"s", L"b", true));
    ini.WriteInt(L"s", L"i", -42);
    ini.WriteDouble(L"s", L"d", 0.125);
    ini.WriteString(L"s", L"t", L"C:\\Jobs\\survey, 2009.dwg,1");
    const unsigned char data[4] = {9, 8, 7, 6};
    ini.WriteStruct(L"s", L"st", data, 4);

    EXPECT_TRUE(ini.GetBool(L"s", L"b", false));
    EXPECT_EQ(ini.GetInt(L"s", L"i", 0), -42);
    EXPECT_EQ(ini.GetString(L"s", L"d"), L"0.125");
    EXPECT_EQ(ini.GetString(L"s", L"t"), L"C:\\Jobs\\survey, 2009.dwg,1");
    unsigned char back[4] = {};
    const unsigned size = 4;
    EXPECT_TRUE(ini.GetStruct(L"s", L"st", back, &size));
    EXPECT_EQ(back[3], 6);
    EXPECT_FALSE(ini.GetStruct(L"s", L"st", back, nullptr));
    EXPECT_EQ(ReadBytes(scratch.Path() / "Company.worksets"),
              "\xEF\xBB\xBF[s]\r\nb=True\r\ni=-42\r\nd=0.125\r\nt=C:\\Jobs\\survey, 2009.dwg,1\r\n"
              "st=090807061E\r\n");
}

TEST_F(IniFileTest, EmptyStringsRemoveKeysOnlyWhenAsked) {
    ini.WriteString(L"s", L"a", L"1");
    ini.WriteString(L"s", L"a", L"");
    Lines keys;
    ini.GetKeys(L"s", keys);
    EXPECT_TRUE(keys.empty());

    HvIniFile keeping(path, false);
    keeping.WriteString(L"s", L"a", L"");
    Lines lines;
    keeping.GetLines(L"s", lines);
    EXPECT_EQ(lines, Lines{L"a="});
}

TEST_F(IniFileTest, SectionsAreEnsuredClearedCopiedRenamedAndDeleted) {
    ini.EnsureSection(L"Empty");
    EXPECT_EQ(SectionNames(), Lines{L"Empty"});
    Lines keys{L"kept"};
    ini.GetKeys(L"Empty", keys);
    EXPECT_EQ(keys, Lines{L"kept"});

    ini.WriteString(L"Set", L"File1", L"a.dwg,0");
    ini.WriteString(L"Set", L"File2", L"b.dwg,1");
    ini.EnsureSection(L"set");
    EXPECT_EQ(ini.GetString(L"Set", L"File2"), L"b.dwg,1");

    EXPECT_TRUE(ini.RenameSection(L"Set", L"SET"));
    EXPECT_FALSE(ini.RenameSection(L"Empty", L"Other"));
    EXPECT_FALSE(ini.RenameSection(L"Absent", L"Set"));
    EXPECT_FALSE(ini.CopySection(L"Absent", L"Set"));
    EXPECT_TRUE(ini.RenameSection(L"Set", L"Moved"));
    EXPECT_EQ(SectionNames(), (Lines{L"Empty", L"Moved"}));
    EXPECT_EQ(LinesOf(L"Moved"), (Lines{L"File1=a.dwg,0", L"File2=b.dwg,1"}));

    ini.ClearSection(L"Moved");
    EXPECT_TRUE(LinesOf(L"Moved").empty());
    ini.DeleteSection(L"Moved");
    EXPECT_EQ(SectionNames(), Lines{L"Empty"});
}

TEST_F(IniFileTest, SectionMapDropsWhatFollowsASecondEquals) {
    scratch.Write(L"Company.worksets", "[m]\na=b=c\nlone\nB=1\nb=2\na=later\n");
    std::map<std::wstring, std::wstring> map;
    ini.GetSectionMap(L"m", map);
    EXPECT_EQ(map, (std::map<std::wstring, std::wstring>{
                       {L"a", L"later"}, {L"lone", L""}, {L"B", L"1"}, {L"b", L"2"}}));
    map.clear();
    scratch.Write(L"Company.worksets", "[m]\na=b=c\n");
    ini.GetSectionMap(L"m", map);
    EXPECT_EQ(map[L"a"], L"b");
}

TEST_F(IniFileTest, StatedLimitsHoldAsUpperLimits) {
    std::string bytes = "[big]\n";
    for (int i = 0; i < 20000; ++i)
        bytes += "File" + std::to_string(i) + "=x\n";
    bytes += "[v]\nk=" + std::string(10000, 'v') + "\n";
    for (int i = 0; i < 600; ++i)
        bytes += "[Work set number " + std::to_string(i) + "]\n";
    scratch.Write(L"Company.worksets", bytes);

    const Lines lines = LinesOf(L"big");
    EXPECT_LE(BufferUsed(lines), HvIniFile::kSectionLimit);
    EXPECT_GT(lines.size(), 5000u);
    EXPECT_EQ(ini.GetString(L"v", L"k").size(), HvIniFile::kValueLimit - 1);

    const Lines names = SectionNames();
    EXPECT_LE(BufferUsed(names), HvIniFile::kValueLimit);
    EXPECT_EQ(names.front(), L"big");

    EXPECT_TRUE(ini.CopySection(L"big", L"copy"));
    const std::size_t copied = BufferUsed(LinesOf(L"copy"));
    EXPECT_LE(copied, HvIniFile::kCopyLimit);
    EXPECT_GT(copied, HvIniFile::kCopyLimit - 20);
}

namespace {

// The disk, but with no temporary name to be had, or with every write refused.
struct FailingDisk : DiskFileSystem {
    bool noUniqueFile = false;
    bool refuseWrites = false;
    std::wstring CreateUniqueFile(const std::wstring& folder, const std::wstring& prefix) override {
        return noUniqueFile ? std::wstring() : DiskFileSystem::CreateUniqueFile(folder, prefix);
    }
    bool WriteAtomic(const std::wstring& path, const std::string& bytes) override {
        return !refuseWrites && DiskFileSystem::WriteAtomic(path, bytes);
    }
};

}  // namespace

// A file that can't be opened is an empty temporary copy, quietly; a write that fails is told,
// and leaves its file behind as no temporary copy.
TEST_F(IniFileTest, StreamCopyFailuresEitherPassQuietlyOrAreToldAndLeaveTheFile) {
    RecordingMessageBoxes boxes;
    ScopedPort<MessageBoxes> boxPort(boxes);
    FailingDisk failing;
    failing.noUniqueFile = true;
    ScopedPort<FileSystem> failingPort(failing);
    std::wistringstream reply(L"[Update]\nVersion=2.0.5\n");
    {
        const HvIniFile unopened(reply, false);
        EXPECT_TRUE(unopened.m_bIsTemp);
        EXPECT_FALSE(unopened.m_bRemoveEmpty);
        EXPECT_EQ(unopened.GetString(L"update", L"version", L"none"), L"none");
    }
    EXPECT_TRUE(boxes.shown.empty());

    failing.noUniqueFile = false;
    failing.refuseWrites = true;
    reply.clear();
    reply.seekg(0);
    std::wstring left;
    {
        const HvIniFile unwritten(reply, false);
        left = unwritten.m_strPath;
        EXPECT_FALSE(unwritten.m_bIsTemp);
        EXPECT_TRUE(unwritten.m_bRemoveEmpty);
    }
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_NE(boxes.shown[0].first.find(left), std::wstring::npos);
    EXPECT_TRUE(fs::exists(DiskPath(left)));
    fs::remove(DiskPath(left));
}

TEST_F(IniFileTest, StreamCopyIsATemporaryFileRemovedAtTheEnd) {
    std::wstring tempPath;
    {
        std::wistringstream reply(L"[Update]\nVersion=2.0.5\nUrl=http://example.invalid/x\n");
        const HvIniFile fromStream(reply, true);
        tempPath = fromStream.m_strPath;
        EXPECT_TRUE(fromStream.m_bIsTemp);
        EXPECT_EQ(fs::path(tempPath).filename().string().rfind("HV_", 0), 0u);
        EXPECT_EQ(fromStream.GetString(L"update", L"version"), L"2.0.5");
        EXPECT_TRUE(fs::exists(tempPath));
    }
    EXPECT_FALSE(fs::exists(tempPath));
}

TEST_F(IniFileTest, MissingFilesReadEmptyAndFailedWritesChangeNothing) {
    HvIniFile missing(scratch.File(L"none/x.ini"), true);
    EXPECT_EQ(missing.GetString(L"s", L"k", L"d"), L"d");
    EXPECT_FALSE(missing.WriteBool(L"s", L"k", true));
    Lines names;
    missing.GetSectionNames(names);
    EXPECT_TRUE(names.empty());
    EXPECT_FALSE(fs::exists(scratch.Path() / "none"));

    HvIniFile unnamed;
    EXPECT_EQ(unnamed.GetString(L"s", L"k", L"d"), L"d");
}

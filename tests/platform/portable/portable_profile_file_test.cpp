#include "platform/portable/portable_profile_file.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

#include "platform/posix/posix_file_system.h"
#include "ports/port.h"
#include "support/test_files.h"

namespace fs = std::filesystem;
using Lines = std::vector<std::wstring>;

namespace {

// The same file as a probe of the platform's own functions read it; the expectations below on
// cut results were taken from that probe.
constexpr const char* kSample =
    "pre=1\r\n"
    "[abc]\r\n"
    "key = \"quoted\" \r\n"
    "  spaced  =  v w  \r\n"
    ";comment=1\r\n"
    "noeq\r\n"
    "\r\n"
    "long=0123456789\r\n"
    "[defg]\r\n"
    "n=12abc\r\n"
    "m= -7x\r\n"
    "[hi]\r\n"
    "[]\r\n"
    "z=1\r\n";

class PortableProfileFileTest : public ::testing::Test {
protected:
    ScratchFolder scratch;
    PosixFileSystem disk;
    ScopedPort<FileSystem> port{disk};
    PortableProfileFile ini;
    std::wstring path = scratch.File(L"work.ini");

    std::string Bytes() const { return ReadBytes(scratch.Path() / "work.ini"); }
    void Put(const std::string& bytes) const { scratch.Write(L"work.ini", bytes); }
};

}  // namespace

TEST_F(PortableProfileFileTest, ReadsValuesAsThePlatformDoes) {
    Put(kSample);
    EXPECT_EQ(ini.GetString(path, L"abc", L"key", L"", 100), L"quoted");
    EXPECT_EQ(ini.GetString(path, L" ABC ", L" SPACED ", L"", 100), L"v w");
    EXPECT_EQ(ini.GetString(path, L"", L"pre", L"", 100), L"1");
    EXPECT_EQ(ini.GetString(path, L"", L"z", L"", 100), L"") << "only the first nameless section";
    EXPECT_EQ(ini.GetString(path, L"abc", L"noeq", L"dflt", 100), L"dflt");
    EXPECT_EQ(ini.GetString(path, L"abc", L"missing", L"dflt  ", 100), L"dflt");
    EXPECT_EQ(ini.GetString(scratch.File(L"none.ini"), L"abc", L"key", L"d", 100), L"d");
    EXPECT_EQ(ini.GetInt(path, L"defg", L"n", 5), 12);
    EXPECT_EQ(ini.GetInt(path, L"defg", L"m", 5), -7);
    EXPECT_EQ(ini.GetInt(path, L"abc", L"key", 5), 0);
    EXPECT_EQ(ini.GetInt(path, L"defg", L"none", 5), 5);
}

TEST_F(PortableProfileFileTest, CutsStringsWhereThePlatformDoes) {
    Put(kSample);
    const std::pair<std::size_t, const wchar_t*> cuts[] = {
        {0, L""},      {1, L""},      {2, L"q"},      {5, L"quot"},
        {6, L"quote"}, {7, L"quote"}, {8, L"quoted"}, {9, L"quoted"}};
    for (const auto& [capacity, expected] : cuts) {
        EXPECT_EQ(ini.GetString(path, L"abc", L"key", L"", capacity), expected) << capacity;
    }
    EXPECT_EQ(ini.GetString(path, L"abc", L"long", L"", 5), L"0123");
}

TEST_F(PortableProfileFileTest, CutsSectionsAndNamesWhereThePlatformDoes) {
    Put(kSample);
    EXPECT_EQ(ini.GetSection(path, L"abc", 100),
              (Lines{L"key=\"quoted\"", L"spaced=v w", L"noeq", L"long=0123456789"}));
    const std::pair<std::size_t, Lines> sections[] = {
        {2, {}},
        {3, {L"k"}},
        {6, {L"key="}},
        {14, {L"key=\"quoted\""}},
        {15, {L"key=\"quoted\""}},
        {16, {L"key=\"quoted\"", L"s"}},
        {31, {L"key=\"quoted\"", L"spaced=v w", L"noeq"}},
        {37, {L"key=\"quoted\"", L"spaced=v w", L"noeq", L"long=0"}}};
    for (const auto& [capacity, expected] : sections) {
        EXPECT_EQ(ini.GetSection(path, L"abc", capacity), expected) << capacity;
    }
    const std::pair<std::size_t, Lines> names[] = {{1, {}},
                                                   {2, {}},
                                                   {3, {L"a"}},
                                                   {6, {L"abc"}},
                                                   {7, {L"abc", L"d"}},
                                                   {10, {L"abc", L"defg"}},
                                                   {11, {L"abc", L"defg"}},
                                                   {12, {L"abc", L"defg", L"h"}},
                                                   {100, {L"abc", L"defg", L"hi"}}};
    for (const auto& [capacity, expected] : names) {
        EXPECT_EQ(ini.GetSectionNames(path, capacity), expected) << capacity;
    }
}

TEST_F(PortableProfileFileTest, WritesKeepEveryOtherLineAsItWas) {
    const std::string original = "; hand-written\n[A]\n  x = 1 \n\n[B]\ny=2\n";
    Put(original);
    ASSERT_TRUE(ini.WriteString(path, L"a", L"new", std::wstring(L"  3")));
    EXPECT_EQ(Bytes(), "; hand-written\n[A]\n  x = 1 \nnew=3\n\n[B]\ny=2\n");
    ASSERT_TRUE(ini.WriteString(path, L"A", L"X", std::wstring(L"9")));
    EXPECT_EQ(Bytes(), "; hand-written\n[A]\nx=9\nnew=3\n\n[B]\ny=2\n");
    ASSERT_TRUE(ini.WriteString(path, L"C", L"z", std::wstring(L"line\nbreak")));
    EXPECT_EQ(ini.GetSection(path, L"C", 100), Lines{L"z=line break"});
    ASSERT_TRUE(ini.WriteString(path, L"a", L"x", std::nullopt));
    ASSERT_TRUE(ini.WriteString(path, L"a", L"gone", std::nullopt));
    EXPECT_EQ(Bytes(), "; hand-written\n[A]\nnew=3\n\n[B]\ny=2\n[C]\nz=line break\n");
}

TEST_F(PortableProfileFileTest, SectionsAreReplacedClearedAndDeletedInPlace) {
    Put("[one]\r\na=1\r\n\r\n[two]\r\nb=2\r\n[three]\r\nc=3\r\n");
    ASSERT_TRUE(ini.WriteSection(path, L"TWO", Lines{L"x=1", L"noeq", L"", L"after=empty"}));
    EXPECT_EQ(ini.GetSection(path, L"two", 100), (Lines{L"x=1", L"noeq"}));
    ASSERT_TRUE(ini.WriteSection(path, L"one", Lines{}));
    ASSERT_TRUE(ini.WriteSection(path, L"four", Lines{}));
    ASSERT_TRUE(ini.DeleteSection(path, L"three"));
    EXPECT_EQ(Bytes(), "[one]\r\n\r\n[two]\r\nx=1\r\nnoeq\r\n[four]\r\n");
    EXPECT_EQ(ini.GetSectionNames(path, 100), (Lines{L"one", L"two", L"four"}));
    ASSERT_TRUE(ini.WriteSection(path, L"two", std::nullopt));
    EXPECT_EQ(ini.GetSectionNames(path, 100), (Lines{L"one", L"four"}));
    EXPECT_TRUE(ini.DeleteSection(path, L"absent"));
}

TEST_F(PortableProfileFileTest, NewFilesAreUtf8AndOtherEncodingsAreRead) {
    const std::wstring name = L"C:\\B\u00fcro\\\u56fe.dwg";
    ASSERT_TRUE(ini.WriteString(path, L"Set", L"File1", name));
    EXPECT_EQ(Bytes(),
              "\xEF\xBB\xBF[Set]\r\nFile1=C:\\B\xC3\xBC"
              "ro\\\xE5\x9B\xBE.dwg\r\n");
    EXPECT_EQ(ini.GetString(path, L"set", L"file1", L"", 4000), name);

    Put(std::string("\xFF\xFE[\0S\0]\0\n\0k\0=\0\xFC\0\n\0", 18));
    EXPECT_EQ(ini.GetString(path, L"S", L"k", L"", 10), L"\u00fc");
    ASSERT_TRUE(ini.WriteString(path, L"S", L"j", std::wstring(L"2")));
    EXPECT_EQ(Bytes(), "\xEF\xBB\xBF[S]\r\nk=\xC3\xBC\r\nj=2\r\n");

    // A line in the older single-byte encoding reads as such and keeps its bytes.
    Put("[S]\nk=B\xFCro \x80\n");
    EXPECT_EQ(ini.GetString(path, L"S", L"k", L"", 10), L"B\u00fcro \u20ac");
    ASSERT_TRUE(ini.WriteString(path, L"S", L"j", std::wstring(L"\u00fc")));
    EXPECT_EQ(Bytes(), "[S]\nk=B\xFCro \x80\nj=\xC3\xBC\n");
}

TEST_F(PortableProfileFileTest, StructsCarryAChecksum) {
    const unsigned char data[3] = {1, 0xAB, 0x10};
    ASSERT_TRUE(ini.WriteStruct(path, L"s", L"k", data, 3));
    EXPECT_EQ(ini.GetString(path, L"s", L"k", L"", 100), L"01AB10BC");
    unsigned char back[3] = {};
    EXPECT_TRUE(ini.GetStruct(path, L"s", L"k", back, 3));
    EXPECT_EQ(std::memcmp(back, data, 3), 0);
    EXPECT_FALSE(ini.GetStruct(path, L"s", L"k", back, 2));
    EXPECT_FALSE(ini.GetStruct(path, L"s", L"none", back, 3));
    ASSERT_TRUE(ini.WriteString(path, L"s", L"k", std::wstring(L"01ab10bd")));
    EXPECT_FALSE(ini.GetStruct(path, L"s", L"k", back, 3));
    ASSERT_TRUE(ini.WriteString(path, L"s", L"k", std::wstring(L"01ab10bc")));
    EXPECT_TRUE(ini.GetStruct(path, L"s", L"k", back, 3));
    ASSERT_TRUE(ini.WriteStruct(path, L"s", L"empty", nullptr, 0));
    EXPECT_TRUE(ini.GetStruct(path, L"s", L"empty", nullptr, 0));
}

TEST_F(PortableProfileFileTest, BinaryBytesSurviveAWrite) {
    std::string binary;
    for (int i = 0; i < 4096; ++i)
        binary.push_back(static_cast<char>((i * 7919) % 256));
    binary += std::string("\n[s]\nk=a\0b\n", 11);
    binary.insert(100, std::string("\0\0\0", 3));
    Put(binary);
    EXPECT_EQ(ini.GetSectionNames(path, 4000).back(), L"s");
    ASSERT_TRUE(ini.WriteString(path, L"s", L"added", std::wstring(L"1")));
    const std::string after = Bytes();
    EXPECT_EQ(after.substr(0, binary.size()), binary);
    EXPECT_EQ(after.substr(binary.size()), "added=1\n");
}

TEST_F(PortableProfileFileTest, HugeLinesAndSectionsStayWithinLimitsAndWhole) {
    std::string bytes = "[big]\n";
    for (int i = 0; i < 200000; ++i)
        bytes += "File" + std::to_string(i) + "=x\n";
    bytes += "[long]\nk=" + std::string(1 << 20, 'v') + "\n";
    Put(bytes);

    const Lines section = ini.GetSection(path, L"big", 64000);
    std::size_t used = 1;
    for (const auto& line : section)
        used += line.size() + 1;
    EXPECT_LE(used, 64000u);
    EXPECT_GT(used, 63990u);
    EXPECT_EQ(ini.GetString(path, L"long", L"k", L"", 4000).size(), 3999u);

    ASSERT_TRUE(ini.WriteString(path, L"other", L"a", std::wstring(L"b")));
    // Compared as a flag: a failing comparison of megabytes would print for minutes.
    EXPECT_TRUE(Bytes() == bytes + "[other]\na=b\n");
}

TEST_F(PortableProfileFileTest, UnwritablePlacesFailWithoutHarm) {
    EXPECT_FALSE(ini.WriteString(scratch.File(L"missing/x.ini"), L"s", L"k", std::wstring(L"v")));
    EXPECT_FALSE(ini.WriteString(scratch.Folder(), L"s", L"k", std::wstring(L"v")));
    Put("[s]\nk=v\n");
    fs::permissions(scratch.Path() / "work.ini", fs::perms::owner_write, fs::perm_options::remove);
    EXPECT_FALSE(ini.WriteSection(path, L"s", Lines{L"a=b"}));
    EXPECT_EQ(Bytes(), "[s]\nk=v\n");
    EXPECT_EQ(ini.GetString(path, L"s", L"k", L"", 10), L"v");
    EXPECT_TRUE(ini.WriteString(scratch.File(L"none.ini"), L"s", L"k", std::nullopt));
    EXPECT_FALSE(fs::exists(scratch.Path() / "none.ini"));
}

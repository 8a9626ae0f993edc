// The same random sequences of ini file operations through the portable profile file and through
// the window system's own profile functions, each on its own file, comparing every result.

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <sstream>

#include "foundation/ini_file.h"
#include "platform/portable/portable_profile_file.h"
#include "platform/win32/win32_file_system.h"
#include "platform/win32/win32_profile_file.h"
#include "ports/port.h"
#include "support/test_files.h"

namespace {

const std::wstring kSections[] = {L"Sets",       L"SETS",       L"sets", L"Files",
                                  L"Work Set 1", L"work set 1", L"Z"};
const std::wstring kKeys[] = {L"Path", L"PATH", L"path", L"Name", L"n", L"Count", L"x y"};

std::vector<std::wstring> MakeValues() {
    std::vector<std::wstring> values = {L"",
                                        L"1",
                                        L"TRUE",
                                        L"0",
                                        L" 7",
                                        L"12abc",
                                        L"2.5e1",
                                        L"a=b=c",
                                        L"\"quoted\"",
                                        L"  lead",
                                        L"C:\\Jobs\\Site A\\plan.dwg"};
    std::wstring longLine;
    for (int i = 0; longLine.size() < 4100; ++i)
        longLine += std::to_wstring(i) + L',';
    values.push_back(longLine);
    values.push_back(longLine.substr(0, 300));
    return values;
}

template <class T>
std::wstring Show(const T& value) {
    std::wostringstream text;
    text << value;
    return text.str();
}

std::wstring Show(const std::vector<std::wstring>& list) {
    std::wstring text = L"{";
    for (const auto& item : list)
        text += L"[" + item + L"]";
    return text + L"}";
}

std::wstring Show(const std::map<std::wstring, std::wstring>& map) {
    std::wstring text = L"{";
    for (const auto& [key, value] : map)
        text += L"[" + key + L"->" + value + L"]";
    return text + L"}";
}

std::string Narrow(const std::wstring& text) {
    return std::string(text.begin(), text.end());
}

// One file with one backend behind it, seen through two ini objects: one that removes keys
// written empty (as every caller in the system does) and one that writes them as "key=".
struct Side {
    Side(ProfileFile& backend, const std::wstring& path)
        : profile(backend), removing(path, true), keeping(path, false) {}

    // Runs `operation` with this side's backend installed.
    template <class Operation>
    std::wstring Run(Operation operation) {
        ScopedPort<ProfileFile> installed{profile};
        return operation(*this);
    }

    ProfileFile& profile;
    HvIniFile removing;
    HvIniFile keeping;
};

class ProfileDifferentialTest : public ::testing::Test {
protected:
    ScratchFolder scratch;
    Win32FileSystem disk;
    ScopedPort<FileSystem> diskPort{disk};
    PortableProfileFile portableBackend;
    Win32ProfileFile win32Backend;
    Side portable{portableBackend, scratch.File(L"portable.ini")};
    Side win32{win32Backend, scratch.File(L"win32.ini")};
    std::vector<std::wstring> values = MakeValues();
    int acceptedHeaders = 0;

    using Operation = std::function<std::wstring(Side&)>;

    // A random operation and a description of it for failure messages.
    std::pair<std::wstring, Operation> Pick(std::mt19937& random) {
        auto any = [&random](const auto& pool) {
            return pool[std::uniform_int_distribution<std::size_t>(0, std::size(pool) - 1)(random)];
        };
        const std::wstring section = any(kSections);
        const std::wstring other = any(kSections);
        const std::wstring key = any(kKeys);
        const std::wstring value = any(values);
        const int number = std::uniform_int_distribution<int>(-1000, 1000)(random);
        std::vector<unsigned char> bytes(std::uniform_int_distribution<std::size_t>(0, 6)(random));
        for (auto& byte : bytes)
            byte = static_cast<unsigned char>(random());
        const unsigned readSize =
            static_cast<unsigned>(bytes.size()) + (random() % 4 == 0 ? 1u : 0u);
        const std::wstring where = L"[" + section + L"] " + key;

        switch (std::uniform_int_distribution<int>(0, 19)(random)) {
            case 0:
            case 1:
            case 2:
                return {L"WriteString " + where + L"=" + value.substr(0, 20), [=](Side& s) {
                            s.removing.WriteString(section, key, value);
                            return std::wstring();
                        }};
            case 3:
                return {L"WriteString keeping empty " + where + L"=" + value.substr(0, 20),
                        [=](Side& s) {
                            s.keeping.WriteString(section, key, value);
                            return std::wstring();
                        }};
            case 4:
                return {L"WriteInt " + where, [=](Side& s) {
                            s.removing.WriteInt(section, key, number);
                            return std::wstring();
                        }};
            case 5:
                return {L"WriteBool " + where, [=](Side& s) {
                            return Show(s.removing.WriteBool(section, key, number > 0));
                        }};
            case 6:
                return {L"WriteStruct " + where, [=](Side& s) {
                            s.removing.WriteStruct(section, key, bytes.data(),
                                                   static_cast<unsigned>(bytes.size()));
                            return std::wstring();
                        }};
            case 7:
                return {L"DeleteSection " + section, [=](Side& s) {
                            s.removing.DeleteSection(section);
                            return std::wstring();
                        }};
            case 8:
                return {L"ClearSection " + section, [=](Side& s) {
                            s.removing.ClearSection(section);
                            return std::wstring();
                        }};
            case 9:
                return {L"EnsureSection " + section, [=](Side& s) {
                            s.removing.EnsureSection(section);
                            return std::wstring();
                        }};
            case 10:
                return {L"CopySection " + section + L" to " + other,
                        [=](Side& s) { return Show(s.removing.CopySection(section, other)); }};
            case 11:
                return {L"RenameSection " + section + L" to " + other,
                        [=](Side& s) { return Show(s.removing.RenameSection(section, other)); }};
            case 12:
                return {L"GetString " + where,
                        [=](Side& s) { return s.removing.GetString(section, key, L"dflt"); }};
            case 13:
                return {L"GetBool/GetInt/GetDouble " + where, [=](Side& s) {
                            return Show(s.removing.GetBool(section, key, number > 0)) + L"|" +
                                   Show(s.removing.GetInt(section, key, number)) + L"|" +
                                   Show(s.removing.GetDouble(section, key, 0.5));
                        }};
            case 14:
                return {L"GetStruct " + where, [=](Side& s) {
                            std::vector<unsigned char> read(readSize + 1, 0xEE);
                            const bool ok =
                                s.removing.GetStruct(section, key, read.data(), &readSize);
                            return Show(ok) + L"|" + std::wstring(read.begin(), read.end());
                        }};
            case 15:
                return {L"GetKeys " + section, [=](Side& s) {
                            std::vector<std::wstring> keys;
                            s.removing.GetKeys(section, keys);
                            return Show(keys);
                        }};
            case 16:
                return {L"GetLines " + section, [=](Side& s) {
                            std::vector<std::wstring> lines;
                            s.removing.GetLines(section, lines);
                            return Show(lines);
                        }};
            case 17:
                return {L"GetSectionMap " + section, [=](Side& s) {
                            std::map<std::wstring, std::wstring> map;
                            s.removing.GetSectionMap(section, map);
                            return Show(map);
                        }};
            default:
                return {L"GetSectionNames", [](Side& s) {
                            std::vector<std::wstring> names;
                            s.removing.GetSectionNames(names);
                            return Show(names);
                        }};
        }
    }

    std::vector<std::wstring> Names(Side& side) {
        std::vector<std::wstring> names;
        side.Run([&names](Side& s) {
            s.removing.GetSectionNames(names);
            return std::wstring();
        });
        return names;
    }

    // The one difference accepted by design. Asked to write an empty section that is not there,
    // the portable backend writes its header and the Windows one under test writes nothing;
    // the system relies on the header (a work set made empty stays listed), so the portable
    // result is the right one. The Windows file is brought level with a key written and taken
    // away again, which leaves the header, and the run goes on comparing everything.
    void AcceptEmptyHeaders() {
        const auto expected = Names(portable);
        for (const std::wstring& name : expected) {
            const auto present = Names(win32);
            if (std::find(present.begin(), present.end(), name) != present.end())
                continue;
            ++acceptedHeaders;
            win32.Run([&name](Side& s) {
                s.removing.WriteString(name, L"header", L"1");
                s.removing.WriteString(name, L"header", L"");
                return std::wstring();
            });
        }
    }

    void RunSequence(unsigned seed, int steps) {
        std::mt19937 random(seed);
        for (int step = 0; step < steps; ++step) {
            auto [what, operation] = Pick(random);
            const std::wstring expected = portable.Run(operation);
            const std::wstring actual = win32.Run(operation);
            ASSERT_EQ(Narrow(actual), Narrow(expected))
                << "seed " << seed << ", step " << step << ": " << Narrow(what);
            if (what.rfind(L"ClearSection", 0) == 0 || what.rfind(L"EnsureSection", 0) == 0)
                AcceptEmptyHeaders();
        }
    }
};

}  // namespace

TEST_F(ProfileDifferentialTest, RandomSequencesReadTheSameThroughBothBackends) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        RunSequence(seed, 1000);
        if (HasFatalFailure())
            return;
    }
    std::cout << "accepted missing empty headers: " << acceptedHeaders << "\n";

    // The final files hold the same sections and lines, read back by one reader. Their bytes
    // differ by design: the Windows functions write the active code page and their own spacing,
    // the portable writer UTF-8 and the lines it kept as they were.
    auto contents = [this](const std::wstring& path) {
        std::wstring text;
        for (const auto& name : portableBackend.GetSectionNames(path, 1u << 20))
            text += L"[" + name + L"]" + Show(portableBackend.GetSection(path, name, 1u << 20));
        return text;
    };
    const std::wstring expected = contents(scratch.File(L"portable.ini"));
    EXPECT_GT(expected.size(), 10u);
    EXPECT_EQ(Narrow(contents(scratch.File(L"win32.ini"))), Narrow(expected));
}

// The work set file as the bar uses it: the menu's rows from whatever the file holds, writes
// that survive a stop between their two steps, the numbering of adds and rewrites, and opening
// a set's files on the simulated host.

#include <filesystem>
#include <fstream>
#include <functional>

#include "bar/document_session.h"
#include "foundation/ini_file.h"
#include "foundation/text_encoding.h"
#include "platform/portable/portable_profile_file.h"
#include "ports/window_messages.h"

namespace {

using Texts = std::vector<std::wstring>;

class WorkSets : public DocumentSession {
protected:
    WorkSets() { Load(); }
    TrWorkSetStore Sets() { return TrWorkSetStore(Bar().GetWorkSetFile()); }
    std::filesystem::path File() { return ToUtf8(Sets().GetPath()); }
    void WriteFile(const std::string& bytes) {
        std::filesystem::create_directories(File().parent_path());
        std::ofstream(File(), std::ios::binary) << bytes;
    }
    // The rows' texts; their ids follow on from 7 without a gap.
    Texts Rows(bool bNoneFound = true) {
        TrWorkSetRows rows;
        unsigned next = 7;
        Bar().BuildWorkSetRows(&next, rows, bNoneFound);
        Texts texts;
        for (const auto& [id, row] : rows)
            texts.push_back(id == 7 + texts.size() ? row.GetPath() : L"gap");
        return next == 7 + texts.size() ? texts : Texts{L"next id"};
    }
    // The paths of a set's entries, read-only ones marked "(r)".
    Texts Opened(const std::wstring& name, std::vector<TrFileEntry> entries = {}) {
        if (entries.empty())
            entries = Sets().GetOpenEntries(name);
        Texts paths;
        for (const TrFileEntry& entry : entries)
            paths.push_back(entry.GetPath() + (entry.m_bReadOnly ? L"(r)" : L""));
        return paths;
    }

    PortableProfileFile profile;
    ScopedPort<ProfileFile> profilePort{profile};
};

// The work sets a reader of headers finds: a line that begins with "[" and holds a "]".
Texts HeaderRows(const std::string& text) {
    Texts rows;
    for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 1) {
        end = text.find('\n', at);
        const std::string line = text.substr(at, end - at);
        if (line.starts_with('[') && line.find(']') != std::string::npos)
            rows.push_back(FromUtf8(line.substr(1, line.find(']') - 1)));
    }
    for (std::size_t i = 0; i < rows.size(); i += 2)
        rows.insert(rows.begin() + static_cast<long>(i) + 1, L"<SELECT>" + rows[i]);
    return rows.empty() ? Texts{L"None Found"} : rows;
}

}  // namespace

TEST_F(WorkSets, AnUntidyFileCutAtEveryByteShowsWhatItsHeadersNameSortedWhereAsked) {
    const std::string untidy =
        "[Site plans]\r\nFile2=C:\\b.dwg,1\r\nFile1=C:\\a, 2009.dwg,0\r\nNote=x=y,1\r\nstray\r\n"
        "[b]\r\n[site PLANS]\r\nFile1=C:\\dup.dwg,0\r\n[Last]\r\nFile1=C:\\z.dwg";
    for (std::size_t cut = 0; cut <= untidy.size(); ++cut) {
        WriteFile(untidy.substr(0, cut));
        EXPECT_EQ(Rows(), HeaderRows(untidy.substr(0, cut))) << cut;
        EXPECT_LE(Sets().GetOpenEntries(L"SITE plans").size(), 3u) << cut;
    }
    Bar().m_bSortWorksets = 1;  // capitals first, in the menu only
    EXPECT_EQ(Rows(), HeaderRows("[Last]\n[Site plans]\n[b]\n[site PLANS]"));
    EXPECT_EQ(HeaderRows(ReadBytes(File())), HeaderRows(untidy));
    // Any key counts for the open, the manager lists File keys; the first of two sections is read.
    EXPECT_EQ(Opened(L"SITE plans"), (Texts{L"C:\\b.dwg(r)", L"C:\\a, 2009.dwg", L"x"}));
    std::vector<TrFileEntry> listed{TrFileEntry(L"kept")};
    EXPECT_EQ(Sets().ReadEntries(L"Site plans", listed), 2);
    EXPECT_EQ(Opened(L"", listed), (Texts{L"kept", L"C:\\b.dwg(r)", L"C:\\a, 2009.dwg"}));
    // A line past the profile layer's limit is cut, and what follows it is not read.
    WriteFile("[Long]\nFile1=" + std::string(HvIniFile::kSectionLimit, 'p') + ",1\nFile2=b,0\n");
    EXPECT_EQ(Opened(L"Long"), Texts{std::wstring(HvIniFile::kSectionLimit - 8, L'p')});
}

TEST_F(WorkSets, AStopOrAFailureBeforeTheRenameLeavesTheOldWorkSetsWhole) {
    const std::vector<TrFileEntry> two{TrFileEntry(L"C:\\n1.dwg"), TrFileEntry(L"C:\\n2.dwg")};
    const std::function<void(const TrWorkSetStore&)> writes[] = {
        [&](const TrWorkSetStore& s) { s.AddFiles(L"A", two); },
        [&](const TrWorkSetStore& s) { s.RewriteWorkSet(L"A", two); },
        [&](const TrWorkSetStore& s) { s.CreateWorkSet(L"New"); },
        [&](const TrWorkSetStore& s) { s.DeleteWorkSet(L"A"); },
    };
    const std::string old = "[A]\r\nFile1=C:\\a.dwg,1\r\nFile2=C:\\b.dwg,0\r\n[B]\r\n";
    for (const auto& write : writes) {
        WriteFile(old);
        files.BreakRename(SimFileSystem::RenameFault::Crash);
        EXPECT_THROW(write(Sets()), SimulatedCrash);
        EXPECT_EQ(ReadBytes(File()), old);
        files.BreakRename(SimFileSystem::RenameFault::Fail);
        write(Sets());
        EXPECT_EQ(ReadBytes(File()), old) << "a failed write changes nothing";
        write(Sets());  // beside the temporary file the stop left
        EXPECT_NE(ReadBytes(File()), old);
    }
    WriteFile(old);  // an add writes line by line: a stop keeps every line before it
    files.BreakRename(SimFileSystem::RenameFault::Crash, 1);
    EXPECT_THROW(writes[0](Sets()), SimulatedCrash);
    EXPECT_EQ(Opened(L"A"), (Texts{L"C:\\a.dwg(r)", L"C:\\b.dwg", L"C:\\n1.dwg"}));
    EXPECT_EQ(Boxes(), Texts{}) << "no file was there already";
}

TEST_F(WorkSets, AddsLeaveStoredFilesOutAndRewritesNumberFromOne) {
    WriteFile("[Jobs]\nFile1=C:\\a.dwg,0\nFile3=C:\\gap.dwg,0\n");
    TrFileEntry readOnly(L"C:\\new.dwg");
    readOnly.m_bReadOnly = true;
    Sets().AddFiles(L"Jobs", {TrFileEntry(L"c:\\A.DWG"), readOnly, TrFileEntry(L"C:\\x,y.txt")});
    EXPECT_EQ(Boxes(), Texts{L"1 files were already in the selected Work Set"});
    // Numbered on from the count of keys: the hand-made gap makes the first add overwrite.
    EXPECT_EQ(ReadBytes(File()),
              "[Jobs]\nFile1=C:\\a.dwg,0\nFile3=C:\\new.dwg,1\nFile4=C:\\x,y.txt,0\n");
    Sets().RewriteWorkSet(L"JOBS", Sets().GetOpenEntries(L"Jobs"));
    EXPECT_EQ(ReadBytes(File()),
              "[Jobs]\nFile1=C:\\a.dwg,0\nFile2=C:\\new.dwg,1\nFile3=C:\\x,y.txt,0\n");
    const wchar_t* const noName = L"You need to give the Work Set a name!";
    for (auto [name, refusal] : {std::pair{L"", noName},
                                 {L"<Enter Work Set Name>", noName},
                                 {L"<Select Work Set>", noName},
                                 {L"jOBS", L"That name is already used!"},
                                 {L"Jobs 2", L""}})
        EXPECT_EQ(Sets().CheckNewName(name), refusal) << name;
}

TEST_F(WorkSets, OpeningASetOpensEachFileWithItsFlagAndControlDoubleClickOpensItAgain) {
    const std::wstring a = scratch.Write(L"a.dwg", "AC1018"), b = scratch.Write(L"b.dwg", "AC1018"),
                       notes = scratch.Write(L"notes.txt", ""), gone = scratch.File(L"gone.dwg");
    WriteFile(ToUtf8(L"[Empty]\n[Site]\nFile1=" + a + L",1\nNote=" + notes + L",0\nFile2=" + gone +
                     L",0\nFile3=" + b + L",0\n"));
    Bar().OpenWorkSet(L"Empty");
    Bar().m_chooseWorkSetFiles = [&](const std::wstring& name, std::vector<TrFileEntry>& chosen) {
        chosen = {Sets().GetOpenEntries(name).at(0), Sets().GetOpenEntries(name).at(2)};
        return true;
    };
    Bar().SelectWorkSetFiles(L"Site");  // neither an empty set nor a choice is recorded
    Bar().DoubleClicked(mk::kControl);
    Bar().OpenWorkSet(L"Site");
    Bar().DoubleClicked(mk::kControl);  // the same set again: both drawings are open already
    const std::wstring open = L" is already open!\n",
                       missing = L"Specified file path does not exist -\n";
    EXPECT_EQ(Boxes(),
              (Texts{L"No files in Work Set!", missing + gone, L"No workset has been opened yet!",
                     a + open, missing + gone, a + open, missing + gone, b + open}));
    ASSERT_EQ(host.Documents().size(), 2u);
    EXPECT_EQ(host.FileName(host.Documents()[1]), b);
    EXPECT_TRUE(host.IsReadOnly(host.Documents()[0]));
    EXPECT_FALSE(host.IsReadOnly(host.Documents()[1]));
    for (HostDocument* doc : host.Documents())
        EXPECT_EQ(host.Document(doc).dbmod, 1) << "the open's mark is kept";
    EXPECT_EQ(host.FileShell().Opened(), (std::vector<SimShellOpen>(2, {notes, 5})));
    const std::wstring elsewhere = scratch.File(L"missing/team.worksets");  // taken as it stands
    host.Registry().SetValue(RegHive::CurrentUser, std::wstring(kKey) + L"\\Worksets", L"Path",
                             RegValue{reg::kSz, reg::StringBytes(elsewhere)});
    EXPECT_EQ(Sets().GetPath(), elsewhere);
    EXPECT_EQ(Rows(), Texts{L"None Found"});
    EXPECT_EQ(Rows(false), Texts{});
}

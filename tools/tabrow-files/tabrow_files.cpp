// tabrow-files: what the bar's file lists would show of a folder.
//
//   tabrow-files FOLDER [PATTERNS]
//
// Lists the files of FOLDER that match PATTERNS (comma-separated, default drawings and work set
// files) with their size and date as the file lists show them, the release string at the head
// of each drawing, and, for a work set file, every work set with its files.

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "foundation/file_info.h"
#include "foundation/files.h"
#include "foundation/ini_file.h"
#include "foundation/no_case.h"
#include "foundation/split.h"
#include "foundation/text_encoding.h"
#include "platform/portable/portable_profile_file.h"
#include "platform/posix/posix_file_system.h"
#include "ports/port.h"

namespace {

constexpr const wchar_t* kDefaultPatterns = L"*.dwg,*.dwt,*.dxf,*.worksets";

void Print(const std::wstring& line) { std::printf("%s\n", ToUtf8(line).c_str()); }

bool HasExtension(const CFilePath& path, const wchar_t* extension) {
    return EqualNoCase(path.GetExtension(), extension);
}

// The six characters a drawing starts with ("AC1015"), or why there are none.
std::wstring ReleaseString(const std::wstring& path) {
    std::unique_ptr<InputFile> file = Use<FileSystem>().OpenRead(path);
    if (!file) return L"(cannot be read)";
    char head[6] = {};
    if (file->ReadAt(0, head, sizeof head) != sizeof head) return L"(too short for a drawing)";
    for (char c : head) {
        if (c < 0x20 || c > 0x7E) return L"(no release string)";
    }
    return FromUtf8(std::string(head, sizeof head));
}

void ListWorkSets(const std::wstring& path) {
    HvIniFile store(path, true);
    std::vector<std::wstring> names;
    store.GetSectionNames(names);
    for (const std::wstring& name : names) {
        std::vector<std::wstring> lines;
        store.GetLines(name, lines);
        Print(L"      work set \"" + name + L"\": " + std::to_wstring(lines.size()) + L" file(s)");
        for (const std::wstring& line : lines) {
            // An entry is "path,flag"; the flag marks a file to open read-only.
            CSplit entry(line, L",", true);
            const bool readOnly = entry.m_pieces.size() > 1 && entry.m_pieces[1] == L"1";
            Print(L"        " + entry.m_pieces[0] + (readOnly ? L"  [read-only]" : L""));
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3 || std::strcmp(argv[1], "--help") == 0) {
        std::fprintf(stderr, "usage: tabrow-files FOLDER [PATTERNS]\n"
                             "  PATTERNS: comma-separated, default \"*.dwg,*.dwt,*.dxf,*.worksets\"\n");
        return 2;
    }
    PosixFileSystem fileSystem;
    PortableProfileFile profileFile;
    ScopedPort<FileSystem> useFileSystem(fileSystem);
    ScopedPort<ProfileFile> useProfileFile(profileFile);

    const CFilePath folder(FromUtf8(argv[1]));
    if (!folder.m_bIsFolder) {
        std::fprintf(stderr, "tabrow-files: %s is not a folder\n", argv[1]);
        return 1;
    }
    Files files(true, true);
    files.Load(folder.GetPath(false), argc == 3 ? FromUtf8(argv[2]) : kDefaultPatterns, L"", false);
    Print(L"Folder " + files.m_strRoot + L": " + std::to_wstring(files.m_files.size()) +
          L" file(s)");
    for (const std::wstring& path : files.m_files) {
        const CFileInfo info(path);
        std::wstring line = L"  " + info.m_path.GetFileName() + L"  " + info.m_strSize + L"  " +
                            info.m_strDate;
        const CFilePath& file = info.m_path;
        if (HasExtension(file, L".dwg") || HasExtension(file, L".dwt")) {
            line += L"  " + ReleaseString(path);
        }
        Print(line);
        if (HasExtension(file, L".worksets")) ListWorkSets(path);
    }
    return 0;
}

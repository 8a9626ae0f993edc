#include "views/dwg_version.h"

#include <algorithm>
#include <cstring>

#include "ports/file_system.h"
#include "ports/port.h"

namespace {

struct VersionText {
    const wchar_t* string;
    const wchar_t* text;
};

struct VersionCode {
    const wchar_t* string;
    int code;
};

// Searched in this order; the text table ends at a null row.
constexpr VersionText kTexts[] = {
    {L"AC1021", L"AutoCAD 2007"},
    {L"AC1018", L"AutoCAD 2004"},
    {L"AC402b", L"Internal: 2004 Late"},
    {L"AC401h", L"Internal: 2004 Early"},
    {L"AC1015", L"AutoCAD 2000"},
    {L"AC1500", L"Release T"},
    {L"AC1014", L"Release 14"},
    {L"AC1013", L"Internal: Early 14"},
    {L"AC1012", L"Release 13"},
    {L"AC1011", L"Internal: Late 13"},
    {L"AC1010", L"Internal: Early 13"},
    {L"AC1009", L"Release 11/12"},
    {L"AC1008", L"Internal: Late Z"},
    {L"AC1007", L"Internal: Early Z"},
    {L"AC1006", L"Release 10"},
    {L"AC1005", L"Version Y"},
    {L"AC1004", L"Release 9"},
    {L"AC1003", L"Version 2.60"},
    {L"AC1002", L"Version 2.50"},
    {L"AC1001", L"Version 2.22 (Unix)"},
    {L"AC2.22", L"Version 2.22 (MS-DOS)"},
    {L"AC2.21", L"Version 2.21"},
    {L"AC2.20", L"Internal: 2.20"},
    {L"AC2.10", L"Version 2.10"},
    {L"AC1.50", L"Version 1.50"},
    {L"AC1.40", L"Version 1.40"},
    {L"AC1.2", L"Version 1.2"},
    {L"MC0.0", L"Version 1.0"},
    {nullptr, nullptr},
};

// Only the strings with a code of their own; the older ones are known to the text table alone.
constexpr VersionCode kCodes[] = {
    {L"AC1021", 17}, {L"AC1018", 16}, {L"AC402b", 16}, {L"AC401h", 16}, {L"AC1015", 15},
    {L"AC1500", 15}, {L"AC1014", 14}, {L"AC1013", 14}, {L"AC1012", 13}, {L"AC1011", 13},
    {L"AC1010", 13}, {L"AC1009", 12}, {L"AC1008", 12}, {L"AC1007", 12}, {L"AC1006", 10},
    {L"AC1005", 10}, {L"AC1004", 9},
};

std::wstring Widen(const char* str) {
    std::wstring wide;
    for (const char* p = str; *p != '\0'; ++p)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(*p));
    return wide;
}

bool ReadHead(const std::wstring& path, char (&head)[7]) {
    std::memset(head, 0, sizeof head);
    const std::unique_ptr<InputFile> file = Use<FileSystem>().OpenRead(path);
    if (file == nullptr)
        return false;
    file->ReadAt(0, head, sizeof head);
    return true;
}

}  // namespace

int GetDwgVersionCode(const char* str) {
    if (str == nullptr)
        return 0;
    const std::wstring wide = Widen(str);
    for (const VersionCode& row : kCodes) {
        if (wide == row.string)
            return row.code;
    }
    return 0;
}

std::wstring GetDwgVersionText(const char* str) {
    if (str != nullptr) {
        const std::wstring wide = Widen(str);
        for (const VersionText* row = kTexts; row->string != nullptr; ++row) {
            if (wide == row->string)
                return row->text;
        }
    }
    return L"Unknown";
}

std::string DwgVersionString(const char (&head)[7]) {
    return std::string(head, std::find(head, head + sizeof head, '\0'));
}

int GetFileDwgVersionCode(const std::wstring& path) {
    char head[7];
    if (!ReadHead(path, head))
        return 0;
    return GetDwgVersionCode(DwgVersionString(head).c_str());
}

bool GetFileDwgVersionText(const std::wstring& path, std::wstring& text) {
    char head[7];
    if (!ReadHead(path, head))
        return false;
    text = GetDwgVersionText(DwgVersionString(head).c_str());
    return true;
}

#include "foundation/ini_file.h"

#include <cwchar>

#include "foundation/no_case.h"
#include "foundation/split.h"
#include "foundation/text_encoding.h"
#include "ports/file_system.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "ports/profile_file.h"

namespace {

ProfileFile& Profile() {
    return Use<ProfileFile>();
}

template <class... Args>
std::wstring Format(const wchar_t* format, Args... args) {
    wchar_t buffer[64];
    const int length = std::swprintf(buffer, 64, format, args...);
    return length < 0 ? std::wstring() : std::wstring(buffer, static_cast<std::size_t>(length));
}

}  // namespace

HvIniFile::HvIniFile(bool removeEmpty) : m_bRemoveEmpty(removeEmpty) {}

HvIniFile::HvIniFile(const std::wstring& path, bool removeEmpty)
    : m_bRemoveEmpty(removeEmpty), m_strPath(path) {}

HvIniFile::HvIniFile(std::wistream& text, bool removeEmpty) {
    FileSystem& files = Use<FileSystem>();
    m_strPath = files.CreateUniqueFile(files.TempFolder(), L"HV_");
    std::string bytes;
    for (std::wstring line; std::getline(text, line);) {
        bytes += ToUtf8(line);
        bytes += '\n';
    }
    // No file to open: nothing is written, and the object goes on as a temporary copy (an
    // empty one) without a word. A write that fails on the open file is an error the user is
    // told of, and the file it began stays behind.
    if (!m_strPath.empty() && !files.WriteAtomic(m_strPath, bytes)) {
        if (IsInstalled<MessageBoxes>()) {
            Use<MessageBoxes>().Show(L"An error occurred while writing " + m_strPath + L".", L"",
                                     mb::kOk | mb::kIconError);
        }
        return;
    }
    m_bIsTemp = true;
    m_bRemoveEmpty = removeEmpty;
}

HvIniFile::~HvIniFile() {
    if (m_bIsTemp && m_bDeleteTemp && IsInstalled<FileSystem>()) {
        Use<FileSystem>().Remove(m_strPath);
    }
}

bool HvIniFile::WriteBool(const std::wstring& section, const std::wstring& key, bool value) {
    return Profile().WriteString(m_strPath, section, key, std::wstring(value ? L"True" : L"False"));
}

void HvIniFile::WriteInt(const std::wstring& section, const std::wstring& key, int value) {
    Profile().WriteString(m_strPath, section, key, Format(L"%i", value));
}

void HvIniFile::WriteDouble(const std::wstring& section, const std::wstring& key, double value) {
    Profile().WriteString(m_strPath, section, key, Format(L"%g", value));
}

bool HvIniFile::WriteString(const std::wstring& section, const std::wstring& key,
                            const std::wstring& value) {
    if (m_bRemoveEmpty && value.empty())
        return Profile().WriteString(m_strPath, section, key, std::nullopt);
    return Profile().WriteString(m_strPath, section, key, value);
}

void HvIniFile::WriteStruct(const std::wstring& section, const std::wstring& key, const void* data,
                            unsigned size) {
    Profile().WriteStruct(m_strPath, section, key, data, size);
}

void HvIniFile::DeleteSection(const std::wstring& section) {
    Profile().WriteSection(m_strPath, section, std::nullopt);
}

void HvIniFile::ClearSection(const std::wstring& section) {
    Profile().WriteSection(m_strPath, section, std::vector<std::wstring>{});
}

void HvIniFile::ReplaceSection(const std::wstring& section,
                               const std::vector<std::wstring>& lines) {
    Profile().WriteSection(m_strPath, section, lines);
}

void HvIniFile::EnsureSection(const std::wstring& section) {
    std::vector<std::wstring> keys;
    GetKeys(section, keys);
    if (keys.empty())
        ClearSection(section);
}

bool HvIniFile::CopySection(const std::wstring& from, const std::wstring& to) {
    const auto lines = Profile().GetSection(m_strPath, from, kCopyLimit);
    if (lines.empty())
        return false;
    Profile().WriteSection(m_strPath, to, lines);
    return true;
}

bool HvIniFile::RenameSection(const std::wstring& from, const std::wstring& to) {
    if (EqualNoCase(from, to))
        return true;
    if (!CopySection(from, to))
        return false;
    DeleteSection(from);
    return true;
}

std::wstring HvIniFile::GetString(const std::wstring& section, const std::wstring& key,
                                  const std::wstring& fallback) const {
    // Asked with an empty default, so that a present but empty value also yields `fallback`.
    std::wstring text = Profile().GetString(m_strPath, section, key, L"", kValueLimit);
    return text.empty() ? fallback : text;
}

bool HvIniFile::GetBool(const std::wstring& section, const std::wstring& key, bool fallback) const {
    const std::wstring text = GetString(section, key, fallback ? L"True" : L"False");
    return EqualNoCase(text, L"True") || text == L"1";
}

int HvIniFile::GetInt(const std::wstring& section, const std::wstring& key, int fallback) const {
    return Profile().GetInt(m_strPath, section, key, fallback);
}

double HvIniFile::GetDouble(const std::wstring& section, const std::wstring& key,
                            double fallback) const {
    const std::wstring text = GetString(section, key);
    if (text.empty())
        return fallback;
    return std::wcstod(text.c_str(), nullptr);  // a text that is no number gives 0.0
}

bool HvIniFile::GetStruct(const std::wstring& section, const std::wstring& key, void* data,
                          const unsigned* size) const {
    if (size == nullptr)
        return false;
    return Profile().GetStruct(m_strPath, section, key, data, *size);
}

void HvIniFile::GetKeys(const std::wstring& section, std::vector<std::wstring>& keys) const {
    for (const std::wstring& line : Profile().GetSection(m_strPath, section, kSectionLimit)) {
        keys.push_back(line.substr(0, line.find(L'=')));
    }
}

void HvIniFile::GetLines(const std::wstring& section, std::vector<std::wstring>& lines) const {
    for (std::wstring& line : Profile().GetSection(m_strPath, section, kSectionLimit)) {
        lines.push_back(std::move(line));
    }
}

void HvIniFile::GetSectionMap(const std::wstring& section,
                              std::map<std::wstring, std::wstring>& map) const {
    std::vector<std::wstring> lines;
    GetLines(section, lines);
    for (const std::wstring& line : lines) {
        const CSplit pieces(line, L"=");
        // What stands behind a second "=" is dropped on purpose, not joined back.
        if (pieces.m_pieces.size() >= 2) {
            map[pieces.m_pieces[0]] = pieces.m_pieces[1];
        } else {
            map[line] = L"";
        }
    }
}

void HvIniFile::GetSectionNames(std::vector<std::wstring>& names) const {
    for (std::wstring& name : Profile().GetSectionNames(m_strPath, kValueLimit)) {
        names.push_back(std::move(name));
    }
}

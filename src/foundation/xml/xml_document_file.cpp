// Reading and writing the document's file through the file system port.

#include <cerrno>
#include <climits>
#include <cstring>

#include "foundation/text_encoding.h"
#include "foundation/xml/xml_document.h"
#include "ports/file_system.h"
#include "ports/port.h"

namespace {

// Offsets in the index are signed 32-bit, and a UTF-8 file never has fewer bytes than
// characters.
constexpr std::uint64_t kLargestFile = INT_MAX;

std::wstring SystemErrorText(int code) {
    return FromUtf8(std::strerror(code));
}

// The reason a file could not be read, as the C library words it. The port reports only
// failure, so the reason comes from errno when the adapter left one, else from what the
// file system says about the path.
std::wstring ReadFailureText(FileSystem& files, const std::wstring& path, int savedErrno) {
    const std::optional<FoundFile> found = files.Stat(path);
    if (!found)
        return SystemErrorText(ENOENT);
    if (found->isFolder)
        return SystemErrorText(EISDIR);
    if (found->size > kLargestFile)
        return SystemErrorText(EFBIG);
    return SystemErrorText(savedErrno != 0 ? savedErrno : EIO);
}

bool HasUtf16LeMark(const std::string& bytes) {
    return bytes.size() >= 2 && static_cast<unsigned char>(bytes[0]) == 0xFF &&
           static_cast<unsigned char>(bytes[1]) == 0xFE;
}

}  // namespace

bool XmlDocument::Load(const std::wstring& path) {
    FileSystem& files = Use<FileSystem>();
    errno = 0;
    std::optional<std::string> bytes = files.ReadAll(path, kLargestFile);
    if (!bytes) {
        const int savedErrno = errno;
        Parse(std::wstring());
        // The read's reason replaces the empty document's message: nothing was parsed.
        m_strError = ReadFailureText(files, path, savedErrno);
        return false;
    }
    // A UTF-8 byte order mark is not looked for: it stays as a character before the root and
    // is passed over as text. UTF-16 cannot be read any other way, so its mark is honoured.
    std::wstring text;
    const wchar_t* encoding = L"UTF-8 ";
    if (HasUtf16LeMark(*bytes)) {
        text = FromUtf16Le(std::string_view(*bytes).substr(2));
        encoding = L"UTF-16LE ";
    } else {
        text = FromUtf8(*bytes);
    }
    m_strError = encoding + std::to_wstring(bytes->size()) + L" bytes to " +
                 std::to_wstring(text.size()) + L" wide chars";
    m_strDoc = std::move(text);
    return Reindex();
}

bool XmlDocument::Save(const std::wstring& path) {
    const std::string bytes = ToUtf8(m_strDoc);
    errno = 0;
    if (!Use<FileSystem>().WriteAtomic(path, bytes)) {
        m_strError = SystemErrorText(errno != 0 ? errno : EIO);
        return false;
    }
    m_strError = std::to_wstring(m_strDoc.size()) + L" wide chars to UTF-8 " +
                 std::to_wstring(bytes.size()) + L" bytes";
    return true;
}

#include "platform/win32/win32_file_system.h"

#include <lmcons.h>
#include <shlobj.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "platform/win32/unique_handle.h"

namespace {

// The core's path with '\' only: the wide functions take '/' in most places, but not in the
// patterns of the finder or in every name that goes to a rename.
std::wstring NativePath(std::wstring path) {
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

// Takes trailing separators off, but leaves a root such as "C:\" or "\" whole.
std::wstring WithoutTrailingSeparator(std::wstring path) {
    while (path.size() > 1 && path.back() == L'\\' && path[path.size() - 2] != L':')
        path.pop_back();
    return path;
}

std::wstring FolderOf(const std::wstring& path) {
    const std::size_t slash = path.rfind(L'\\');
    if (slash == std::wstring::npos)
        return path.size() >= 2 && path[1] == L':' ? path.substr(0, 2) + L"." : L".";
    return path.substr(0, slash + 1);
}

std::wstring NameOf(const std::wstring& path) {
    const std::size_t slash = path.find_last_of(L"\\:");
    return slash == std::wstring::npos ? path : path.substr(slash + 1);
}

std::wstring WithSeparator(std::wstring folder) {
    if (!folder.empty() && folder.back() != L'\\')
        folder.push_back(L'\\');
    return folder;
}

std::uint64_t Combine(DWORD high, DWORD low) {
    return (static_cast<std::uint64_t>(high) << 32) | low;
}

// File times count 100 ns steps from 1601-01-01; the port wants seconds from 1970-01-01.
std::int64_t UnixSeconds(const FILETIME& time) {
    constexpr std::int64_t kEpochDifference = 116444736000000000LL;
    const auto ticks = static_cast<std::int64_t>(Combine(time.dwHighDateTime, time.dwLowDateTime));
    return (ticks - kEpochDifference) / 10000000LL;
}

FoundFile Describe(std::wstring name, DWORD attributes, DWORD sizeHigh, DWORD sizeLow,
                   const FILETIME& written) {
    FoundFile found;
    found.name = std::move(name);
    found.isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    found.isReadOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    found.size = found.isFolder ? 0 : Combine(sizeHigh, sizeLow);
    found.lastWriteTime = UnixSeconds(written);
    return found;
}

class Win32InputFile : public InputFile {
public:
    Win32InputFile(FileHandle file, std::uint64_t size) : m_file(std::move(file)), m_size(size) {}

    std::uint64_t Size() const override { return m_size; }

    std::size_t ReadAt(std::uint64_t offset, void* buffer, std::size_t count) override {
        std::size_t done = 0;
        auto* bytes = static_cast<char*>(buffer);
        while (done < count) {
            // One call reads at most a DWORD's worth.
            const DWORD chunk = static_cast<DWORD>(std::min<std::size_t>(count - done, 1u << 30));
            OVERLAPPED at{};
            const std::uint64_t position = offset + done;
            at.Offset = static_cast<DWORD>(position);
            at.OffsetHigh = static_cast<DWORD>(position >> 32);
            DWORD got = 0;
            if (!::ReadFile(m_file.Get(), bytes + done, chunk, &got, &at) || got == 0)
                break;
            done += got;
        }
        return done;
    }

private:
    FileHandle m_file;
    std::uint64_t m_size;
};

bool WriteWhole(HANDLE file, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const DWORD chunk =
            static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, 1u << 30));
        DWORD put = 0;
        if (!::WriteFile(file, bytes.data() + done, chunk, &put, nullptr) || put == 0)
            return false;
        done += put;
    }
    return true;
}

struct TempFile {
    std::wstring path;  // empty when none could be made
    FileHandle file;
};

// A new file beside `target` that no one else has: the name carries the process and a counter,
// and CREATE_NEW refuses a name that is taken.
TempFile CreateSiblingTemp(const std::wstring& target) {
    static std::atomic<unsigned> counter{0};
    const std::wstring stem = FolderOf(target) + L"~" + NameOf(target) + L"." +
                              std::to_wstring(::GetCurrentProcessId()) + L".";
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::wstring temp = stem + std::to_wstring(counter++) + L".tmp";
        FileHandle file(::CreateFileW(temp.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file)
            return {std::move(temp), std::move(file)};
        if (::GetLastError() != ERROR_FILE_EXISTS && ::GetLastError() != ERROR_ALREADY_EXISTS)
            break;
    }
    return {};
}

// Any address inside this module, so that a plug-in names its own file and not the host's.
void ModuleAnchor() {}

}  // namespace

std::vector<FoundFile> Win32FileSystem::Find(const std::wstring& pattern) {
    std::vector<FoundFile> result;
    const std::wstring native = NativePath(pattern);
    const std::wstring namePattern = NameOf(native);
    if (namePattern.empty())
        return result;
    if (namePattern.find_first_of(L"*?") == std::wstring::npos) {
        if (auto found = Stat(native))
            result.push_back(std::move(*found));
        return result;
    }
    WIN32_FIND_DATAW data{};
    const FindHandle search(::FindFirstFileW(native.c_str(), &data));
    if (!search)
        return result;
    do {
        result.push_back(Describe(data.cFileName, data.dwFileAttributes, data.nFileSizeHigh,
                                  data.nFileSizeLow, data.ftLastWriteTime));
    } while (::FindNextFileW(search.Get(), &data));
    return result;
}

std::optional<FoundFile> Win32FileSystem::Stat(const std::wstring& path) {
    if (path.empty() || path.find_first_of(L"*?") != std::wstring::npos)
        return std::nullopt;
    const std::wstring native = NativePath(path);
    const std::wstring bare = WithoutTrailingSeparator(native);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(bare.c_str(), GetFileExInfoStandard, &data))
        return std::nullopt;
    FoundFile found = Describe(NameOf(bare), data.dwFileAttributes, data.nFileSizeHigh,
                               data.nFileSizeLow, data.ftLastWriteTime);
    // "name\" names a folder only.
    if (bare.size() < native.size() && !found.isFolder)
        return std::nullopt;
    return found;
}

std::unique_ptr<InputFile> Win32FileSystem::OpenRead(const std::wstring& path) {
    // Others may go on writing or replacing the file while it is read, as the host's own
    // readers allow.
    FileHandle file(::CreateFileW(NativePath(path).c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size{};
    if (!file || !::GetFileSizeEx(file.Get(), &size) || ::GetFileType(file.Get()) != FILE_TYPE_DISK)
        return nullptr;
    return std::make_unique<Win32InputFile>(std::move(file),
                                            static_cast<std::uint64_t>(size.QuadPart));
}

std::optional<std::string> Win32FileSystem::ReadAll(const std::wstring& path, std::uint64_t limit) {
    return ReadWholeFile(OpenRead(path), limit);
}

bool Win32FileSystem::WriteAtomic(const std::wstring& path, const std::string& bytes) {
    const std::wstring target = NativePath(path);
    const DWORD attributes = ::GetFileAttributesW(target.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0) {
        return false;
    }
    TempFile temp = CreateSiblingTemp(target);
    if (!temp.file)
        return false;
    const bool written = WriteWhole(temp.file.Get(), bytes) && ::FlushFileBuffers(temp.file.Get());
    const bool closed = temp.file.Reset();
    if (!written || !closed || !Rename(temp.path, target)) {
        ::DeleteFileW(temp.path.c_str());
        return false;
    }
    return true;
}

bool Win32FileSystem::Rename(const std::wstring& from, const std::wstring& to) {
    return ::MoveFileExW(NativePath(from).c_str(), NativePath(to).c_str(),
                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool Win32FileSystem::CreateFolder(const std::wstring& path) {
    return ::CreateDirectoryW(WithoutTrailingSeparator(NativePath(path)).c_str(), nullptr) != 0;
}

bool Win32FileSystem::Remove(const std::wstring& path) {
    return ::DeleteFileW(NativePath(path).c_str()) != 0;
}

std::wstring Win32FileSystem::CreateUniqueFile(const std::wstring& folder,
                                               const std::wstring& prefix) {
    wchar_t name[MAX_PATH + 1] = {};
    if (::GetTempFileNameW(NativePath(folder).c_str(), prefix.c_str(), 0, name) == 0)
        return {};
    return name;
}

std::wstring Win32FileSystem::ModulePath() {
    HMODULE module = nullptr;
    if (!::GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<LPCWSTR>(&ModuleAnchor), &module)) {
        module = nullptr;
    }
    // The buffer grows until the name fits: a long path comes back cut without an error.
    for (DWORD size = MAX_PATH; size <= 32768; size *= 2) {
        std::wstring buffer(size, L'\0');
        const DWORD length = ::GetModuleFileNameW(module, buffer.data(), size);
        if (length == 0)
            return {};
        if (length < size) {
            buffer.resize(length);
            return buffer;
        }
    }
    return {};
}

std::wstring Win32FileSystem::UserName() {
    wchar_t name[UNLEN + 1] = {};
    DWORD size = UNLEN + 1;
    if (!::GetUserNameW(name, &size))
        return {};
    return name;
}

std::wstring Win32FileSystem::UserDataFolder() {
    wchar_t folder[MAX_PATH] = {};
    if (FAILED(::SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder)))
        return {};
    return WithSeparator(folder);
}

std::wstring Win32FileSystem::TempFolder() {
    wchar_t folder[MAX_PATH + 1] = {};
    const DWORD length = ::GetTempPathW(MAX_PATH + 1, folder);
    if (length == 0 || length > MAX_PATH)
        return {};
    return WithSeparator(std::wstring(folder, length));
}

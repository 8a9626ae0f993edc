#include "platform/posix/posix_file_system.h"

#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "foundation/no_case.h"
#include "foundation/text_encoding.h"
#include "foundation/wildcard_match.h"

namespace {

// The core's path as a native UTF-8 path: '\' becomes '/'.
std::string NativePath(const std::wstring& path) {
    std::wstring slashed = path;
    std::replace(slashed.begin(), slashed.end(), L'\\', L'/');
    return ToUtf8(slashed);
}

// Takes trailing separators off, but leaves the root alone.
std::string WithoutTrailingSlash(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    if (slash == 0)
        return "/";
    return path.substr(0, slash);
}

std::string NameOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

FoundFile Describe(const std::string& name, const struct stat& info) {
    FoundFile found;
    found.name = FromUtf8(name);
    found.isFolder = S_ISDIR(info.st_mode);
    found.isReadOnly = (info.st_mode & S_IWUSR) == 0;
    found.size = found.isFolder ? 0 : static_cast<std::uint64_t>(info.st_size);
    found.lastWriteTime = static_cast<std::int64_t>(info.st_mtime);
    return found;
}

bool IsDots(const std::wstring& name) {
    return name == L"." || name == L"..";
}

class PosixInputFile : public InputFile {
public:
    PosixInputFile(int fd, std::uint64_t size) : m_fd(fd), m_size(size) {}
    ~PosixInputFile() override { ::close(m_fd); }
    PosixInputFile(const PosixInputFile&) = delete;
    PosixInputFile& operator=(const PosixInputFile&) = delete;

    std::uint64_t Size() const override { return m_size; }

    std::size_t ReadAt(std::uint64_t offset, void* buffer, std::size_t count) override {
        std::size_t done = 0;
        auto* bytes = static_cast<char*>(buffer);
        while (done < count) {
            const ssize_t got =
                ::pread(m_fd, bytes + done, count - done, static_cast<off_t>(offset + done));
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0)
                break;
            done += static_cast<std::size_t>(got);
        }
        return done;
    }

private:
    int m_fd;
    std::uint64_t m_size;
};

bool WriteWhole(int fd, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            return false;
        done += static_cast<std::size_t>(put);
    }
    return true;
}

std::wstring WithSlash(std::string folder) {
    if (folder.empty() || folder.back() != '/')
        folder.push_back('/');
    return FromUtf8(folder);
}

std::string HomeFolder() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home == '/')
        return home;
    const passwd* user = ::getpwuid(::geteuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

}  // namespace

std::vector<FoundFile> PosixFileSystem::Find(const std::wstring& pattern) {
    std::vector<FoundFile> result;
    const std::string native = NativePath(pattern);
    const std::string folder = FolderOf(native);
    const std::wstring namePattern = FromUtf8(NameOf(native));
    if (namePattern.empty())
        return result;

    if (namePattern.find_first_of(L"*?") == std::wstring::npos) {
        if (auto found = Stat(pattern))
            result.push_back(std::move(*found));
        return result;
    }
    // As on the platform whose patterns these are, "*.*" also matches names without a dot.
    const std::wstring effective = namePattern == L"*.*" ? L"*" : namePattern;

    DIR* dir = ::opendir(folder.c_str());
    if (dir == nullptr)
        return result;
    while (const dirent* entry = ::readdir(dir)) {
        const std::string name = entry->d_name;
        if (!WildcardMatch(effective, FromUtf8(name), false))
            continue;
        struct stat info {};
        if (::stat((folder + "/" + name).c_str(), &info) != 0)
            continue;  // a dangling link
        result.push_back(Describe(name, info));
    }
    ::closedir(dir);

    // "." and ".." first, as the platform's finder returns them, then a listing that does not
    // depend on the order of the directory on disk.
    std::sort(result.begin(), result.end(), [](const FoundFile& a, const FoundFile& b) {
        const bool aDots = IsDots(a.name);
        const bool bDots = IsDots(b.name);
        if (aDots != bDots)
            return aDots;
        if (aDots)
            return a.name.size() < b.name.size();
        return LessNoCase(a.name, b.name);
    });
    return result;
}

std::optional<FoundFile> PosixFileSystem::Stat(const std::wstring& path) {
    if (path.empty())
        return std::nullopt;
    const std::string native = WithoutTrailingSlash(NativePath(path));
    struct stat info {};
    if (::stat(native.c_str(), &info) != 0)
        return std::nullopt;
    // "name/" names a folder only.
    if (native.size() < NativePath(path).size() && !S_ISDIR(info.st_mode))
        return std::nullopt;
    return Describe(NameOf(native), info);
}

std::unique_ptr<InputFile> PosixFileSystem::OpenRead(const std::wstring& path) {
    const int fd = ::open(NativePath(path).c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return nullptr;
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        return nullptr;
    }
    return std::make_unique<PosixInputFile>(fd, static_cast<std::uint64_t>(info.st_size));
}

std::optional<std::string> PosixFileSystem::ReadAll(const std::wstring& path, std::uint64_t limit) {
    return ReadWholeFile(OpenRead(path), limit);
}

bool PosixFileSystem::WriteAtomic(const std::wstring& path, const std::string& bytes) {
    const std::string target = NativePath(path);
    mode_t mode = 0666;
    struct stat existing {};
    if (::stat(target.c_str(), &existing) == 0) {
        // A read-only file stays as it is, as it would on the platform the files come from,
        // although a rename could replace it here.
        if (!S_ISREG(existing.st_mode) || (existing.st_mode & S_IWUSR) == 0)
            return false;
        mode = existing.st_mode & 07777;
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode &= ~mask;
    }

    const std::string folder = FolderOf(target);
    std::string temp = folder + "/." + NameOf(target) + ".XXXXXX";
    const int fd = ::mkstemp(temp.data());
    if (fd < 0)
        return false;
    const bool written = WriteWhole(fd, bytes) && ::fchmod(fd, mode) == 0 && ::fsync(fd) == 0;
    const bool closed = ::close(fd) == 0;
    if (!written || !closed || !Rename(FromUtf8(temp), path)) {
        ::unlink(temp.c_str());
        return false;
    }
    // The rename itself must reach the disk before the write counts as done.
    const int dirFd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dirFd >= 0) {
        ::fsync(dirFd);
        ::close(dirFd);
    }
    return true;
}

bool PosixFileSystem::Rename(const std::wstring& from, const std::wstring& to) {
    return ::rename(NativePath(from).c_str(), NativePath(to).c_str()) == 0;
}

bool PosixFileSystem::CreateFolder(const std::wstring& path) {
    return ::mkdir(WithoutTrailingSlash(NativePath(path)).c_str(), 0777) == 0;
}

bool PosixFileSystem::Remove(const std::wstring& path) {
    return ::unlink(NativePath(path).c_str()) == 0;
}

std::wstring PosixFileSystem::CreateUniqueFile(const std::wstring& folder,
                                               const std::wstring& prefix) {
    std::string name = WithoutTrailingSlash(NativePath(folder));
    if (name.empty() || name.back() != '/')
        name.push_back('/');
    name += ToUtf8(prefix) + "XXXXXX.tmp";
    const int fd = ::mkstemps(name.data(), 4);
    if (fd < 0)
        return {};
    ::close(fd);
    return FromUtf8(name);
}

std::wstring PosixFileSystem::ModulePath() {
    std::string buffer(4096, '\0');
    const ssize_t length = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
    if (length <= 0 || static_cast<std::size_t>(length) >= buffer.size())
        return {};
    buffer.resize(static_cast<std::size_t>(length));
    return FromUtf8(buffer);
}

std::wstring PosixFileSystem::UserName() {
    if (const passwd* user = ::getpwuid(::geteuid()); user != nullptr && user->pw_name != nullptr) {
        return FromUtf8(user->pw_name);
    }
    const char* name = std::getenv("USER");
    return name != nullptr ? FromUtf8(name) : std::wstring();
}

std::wstring PosixFileSystem::UserDataFolder() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    if (config != nullptr && *config == '/')
        return WithSlash(config);
    return WithSlash(WithoutTrailingSlash(HomeFolder()) + "/.config");
}

std::wstring PosixFileSystem::TempFolder() {
    const char* temp = std::getenv("TMPDIR");
    if (temp != nullptr && *temp != '\0')
        return WithSlash(temp);
    return L"/tmp/";
}

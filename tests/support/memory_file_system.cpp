#include "support/memory_file_system.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

class MemoryInputFile : public InputFile {
public:
    explicit MemoryInputFile(std::string bytes) : m_bytes(std::move(bytes)) {}
    std::uint64_t Size() const override { return m_bytes.size(); }
    std::size_t ReadAt(std::uint64_t offset, void* buffer, std::size_t count) override {
        if (offset >= m_bytes.size() || count == 0)
            return 0;
        const std::size_t n = std::min<std::uint64_t>(count, m_bytes.size() - offset);
        std::memcpy(buffer, m_bytes.data() + offset, n);
        return n;
    }

private:
    std::string m_bytes;
};

}  // namespace

std::vector<FoundFile> MemoryFileSystem::Find(const std::wstring& pattern) {
    std::vector<FoundFile> found;
    if (const auto entry = Stat(pattern))
        found.push_back(*entry);
    return found;
}

std::optional<FoundFile> MemoryFileSystem::Stat(const std::wstring& path) {
    const auto file = files.find(path);
    if (file == files.end())
        return std::nullopt;
    FoundFile entry;
    entry.name = path.substr(path.find_last_of(L'/') + 1);
    entry.size = file->second.size();
    entry.lastWriteTime = 1700000000;
    return entry;
}

std::unique_ptr<InputFile> MemoryFileSystem::OpenRead(const std::wstring& path) {
    const auto file = files.find(path);
    if (file == files.end() || locked.count(path) != 0)
        return nullptr;
    return std::make_unique<MemoryInputFile>(file->second);
}

std::optional<std::string> MemoryFileSystem::ReadAll(const std::wstring& path,
                                                     std::uint64_t limit) {
    const auto file = files.find(path);
    if (file == files.end())
        errno = ENOENT;
    if (file == files.end() || file->second.size() > limit)
        return std::nullopt;
    return file->second;
}

bool MemoryFileSystem::WriteAtomic(const std::wstring& path, const std::string& bytes) {
    if (path == failingWrite) {
        errno = EACCES;
        return false;
    }
    files[path] = bytes;
    return true;
}

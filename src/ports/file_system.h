#pragma once
// The file system as the core needs it: finding by pattern, reading, atomic writing,
// and the few well-known folders.
//
// Paths are wide strings. Both '\' and '/' separate folders in what the core passes in;
// paths that come back use the platform's own separator.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct FoundFile {
    std::wstring name;             // name and extension, no folder
    bool isFolder = false;
    bool isReadOnly = false;
    std::uint64_t size = 0;        // bytes
    std::int64_t lastWriteTime = 0;  // seconds since 1970-01-01 UTC
};

// A file open for reading at any offset. Reads past the end return fewer bytes.
class InputFile {
public:
    virtual ~InputFile() = default;
    virtual std::uint64_t Size() const = 0;
    // Reads up to `count` bytes at `offset` into `buffer`; returns how many were read.
    virtual std::size_t ReadAt(std::uint64_t offset, void* buffer, std::size_t count) = 0;
};

// The whole of an open file of at most `limit` bytes; nullopt if there is none or it is larger.
// Adapters build their ReadAll on it.
inline std::optional<std::string> ReadWholeFile(std::unique_ptr<InputFile> file,
                                                std::uint64_t limit) {
    if (!file || file->Size() > limit) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(file->Size()), '\0');
    bytes.resize(file->ReadAt(0, bytes.data(), bytes.size()));
    return bytes;
}

class FileSystem {
public:
    virtual ~FileSystem() = default;

    // The platform's folder separator, '\\' or '/'.
    virtual wchar_t Separator() const = 0;

    // Entries of one folder that match a pattern such as "C:\\dwg\\*.dwg" or "/home/u/x*".
    // The wildcards are '*' and '?', matched without regard to case; "*.*" matches every name.
    // A pattern that matches dots lists "." and ".." first, as the platform's finder does;
    // the rest come in the platform's listing order. A pattern without wildcards finds that
    // one entry, if it exists.
    virtual std::vector<FoundFile> Find(const std::wstring& pattern) = 0;

    // The entry at `path` (a trailing separator is allowed on folders), if it exists.
    virtual std::optional<FoundFile> Stat(const std::wstring& path) = 0;

    virtual std::unique_ptr<InputFile> OpenRead(const std::wstring& path) = 0;

    // Reads a whole file of at most `limit` bytes; nullopt if it cannot be read or is larger.
    virtual std::optional<std::string> ReadAll(const std::wstring& path, std::uint64_t limit) = 0;

    // Replaces the file's contents atomically: a temporary file in the same folder, then a
    // rename over the old one. On failure the old file is left as it was.
    virtual bool WriteAtomic(const std::wstring& path, const std::string& bytes) = 0;
    // Moves a file to `to` in one step, replacing a file there: the second step of WriteAtomic,
    // which calls it. Until it succeeds, the file at `to` is the old one.
    virtual bool Rename(const std::wstring& from, const std::wstring& to) = 0;

    virtual bool CreateFolder(const std::wstring& path) = 0;  // one level
    virtual bool Remove(const std::wstring& path) = 0;        // a file

    // Creates a new empty file with a unique name in `folder` (which ends with a separator)
    // and returns its full path; empty on failure.
    virtual std::wstring CreateUniqueFile(const std::wstring& folder,
                                          const std::wstring& prefix) = 0;

    virtual std::wstring ModulePath() = 0;      // the running module (program or plug-in)
    virtual std::wstring UserName() = 0;
    virtual std::wstring UserDataFolder() = 0;  // per-user, roaming; ends with a separator
    virtual std::wstring TempFolder() = 0;      // ends with a separator
};

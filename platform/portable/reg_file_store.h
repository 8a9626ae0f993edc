#pragma once
// The key/value store where there is no registry: one export-format text file per user, read
// when it changes and replaced as a whole, atomically, on every change.
//
// A file that is there but cannot be taken as ours (unreadable, too large, not an export file)
// still gives every read its default, and every write is refused, so that nothing in it is lost.

#include <cstdint>
#include <optional>
#include <string>

#include "platform/portable/reg_file_document.h"
#include "ports/key_value_store.h"

class RegFileStore : public KeyValueStore {
public:
    // Files above this size are not read (and so never overwritten).
    static constexpr std::uint64_t kMaxFileSize = 16 * 1024 * 1024;

    // The store in `filePath`; its folder is created on the first write when missing.
    explicit RegFileStore(std::wstring filePath);

    // The user's file below the configuration folder of the file system port.
    static std::wstring DefaultPath();

    bool KeyExists(RegHive hive, const std::wstring& path) override;
    bool CreateKey(RegHive hive, const std::wstring& path) override;
    std::optional<RegValue> QueryValue(RegHive hive, const std::wstring& path,
                                       const std::wstring& name) override;
    bool SetValue(RegHive hive, const std::wstring& path, const std::wstring& name,
                  const RegValue& value) override;
    bool DeleteValue(RegHive hive, const std::wstring& path, const std::wstring& name) override;
    std::vector<std::wstring> ValueNames(RegHive hive, const std::wstring& path) override;
    std::vector<std::wstring> SubKeyNames(RegHive hive, const std::wstring& path) override;

    // False while the file is there but is not one this store may rewrite.
    bool IsWritable();

private:
    struct FileStamp {
        std::uint64_t size = 0;
        std::int64_t lastWriteTime = 0;
        friend bool operator==(const FileStamp&, const FileStamp&) = default;
    };

    void Refresh();
    // Writes `next` in place of the file; the store takes it only when the write succeeded.
    bool Commit(RegFileDocument next);
    void CreateFolders();

    std::wstring m_path;
    RegFileDocument m_document;
    bool m_writable = true;
    std::optional<FileStamp> m_stamp;  // of the file last read or written; none when missing
    bool m_loaded = false;
};

#include "platform/portable/reg_file_store.h"

#include <utility>

#include "ports/file_system.h"
#include "ports/port.h"

RegFileStore::RegFileStore(std::wstring filePath) : m_path(std::move(filePath)) {}

std::wstring RegFileStore::DefaultPath() {
    FileSystem& files = Use<FileSystem>();
    const wchar_t sep = files.Separator();
    return files.UserDataFolder() + L"Harvane" + sep + L"Tabrow" + sep + L"settings.reg";
}

void RegFileStore::Refresh() {
    FileSystem& files = Use<FileSystem>();
    std::optional<FoundFile> found = files.Stat(m_path);
    std::optional<FileStamp> stamp;
    if (found)
        stamp = FileStamp{found->size, found->lastWriteTime};
    if (m_loaded && stamp == m_stamp)
        return;

    m_loaded = true;
    m_stamp = stamp;
    m_document = RegFileDocument();
    m_writable = true;
    if (!found)
        return;
    if (found->isFolder || found->size > kMaxFileSize) {
        m_writable = false;
        return;
    }
    std::optional<std::string> bytes = files.ReadAll(m_path, kMaxFileSize);
    std::optional<RegFileDocument> document;
    if (bytes)
        document = RegFileDocument::Parse(*bytes);
    if (!document) {
        m_writable = false;
        return;
    }
    m_document = std::move(*document);
}

bool RegFileStore::IsWritable() {
    Refresh();
    return m_writable;
}

void RegFileStore::CreateFolders() {
    FileSystem& files = Use<FileSystem>();
    // Each missing level in turn; failures show up as a failed write.
    for (std::size_t cut = m_path.find_first_of(L"\\/", 1); cut != std::wstring::npos;
         cut = m_path.find_first_of(L"\\/", cut + 1)) {
        std::wstring folder = m_path.substr(0, cut);
        if (!files.Stat(folder))
            files.CreateFolder(folder);
    }
}

bool RegFileStore::Commit(RegFileDocument next) {
    if (!m_writable)
        return false;
    FileSystem& files = Use<FileSystem>();
    if (!m_stamp)
        CreateFolders();
    if (!files.WriteAtomic(m_path, next.Serialize()))
        return false;
    m_document = std::move(next);
    std::optional<FoundFile> found = files.Stat(m_path);
    m_stamp.reset();
    if (found)
        m_stamp = FileStamp{found->size, found->lastWriteTime};
    return true;
}

bool RegFileStore::KeyExists(RegHive hive, const std::wstring& path) {
    Refresh();
    return m_document.HasKeyOrDescendant(hive, NormalizeKeyPath(path));
}

bool RegFileStore::CreateKey(RegHive hive, const std::wstring& path) {
    if (hive == RegHive::None)
        return false;
    Refresh();
    std::wstring normal = NormalizeKeyPath(path);
    if (m_document.HasKeyOrDescendant(hive, normal))
        return true;
    RegFileDocument next = m_document;
    next.AddKey(hive, normal);
    return Commit(std::move(next));
}

std::optional<RegValue> RegFileStore::QueryValue(RegHive hive, const std::wstring& path,
                                                 const std::wstring& name) {
    Refresh();
    RegFileKey* key = m_document.FindKey(hive, NormalizeKeyPath(path));
    if (!key)
        return std::nullopt;
    RegFileValue* value = FindValue(*key, name);
    if (!value)
        return std::nullopt;
    return value->value;
}

bool RegFileStore::SetValue(RegHive hive, const std::wstring& path, const std::wstring& name,
                            const RegValue& value) {
    Refresh();
    std::wstring normal = NormalizeKeyPath(path);
    if (hive == RegHive::None || !m_document.HasKeyOrDescendant(hive, normal))
        return false;
    RegFileDocument next = m_document;
    RegFileKey& key = next.AddKey(hive, normal);
    if (RegFileValue* existing = FindValue(key, name)) {
        if (existing->value == value)
            return true;
        existing->value = value;
    } else {
        key.values.push_back(RegFileValue{name, value});
    }
    return Commit(std::move(next));
}

bool RegFileStore::DeleteValue(RegHive hive, const std::wstring& path, const std::wstring& name) {
    Refresh();
    RegFileDocument next = m_document;
    RegFileKey* key = next.FindKey(hive, NormalizeKeyPath(path));
    if (!key)
        return false;
    RegFileValue* value = FindValue(*key, name);
    if (!value)
        return false;
    key->values.erase(key->values.begin() + (value - key->values.data()));
    return Commit(std::move(next));
}

std::vector<std::wstring> RegFileStore::ValueNames(RegHive hive, const std::wstring& path) {
    Refresh();
    std::vector<std::wstring> names;
    if (const RegFileKey* key = m_document.FindKey(hive, NormalizeKeyPath(path))) {
        for (const RegFileValue& value : key->values)
            names.push_back(value.name);
    }
    return names;
}

std::vector<std::wstring> RegFileStore::SubKeyNames(RegHive hive, const std::wstring& path) {
    Refresh();
    return m_document.ChildNames(hive, NormalizeKeyPath(path));
}

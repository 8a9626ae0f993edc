#include "platform/sim/sim_database_port.h"

#include <algorithm>
#include <stdexcept>

#include "foundation/no_case.h"

namespace {

// Which classes an open by `asked` accepts: the class itself and those derived from it.
bool IsKindOf(DbClass actual, DbClass asked) {
    if (actual == asked || asked == DbClass::kObject)
        return true;
    if (asked == DbClass::kEntity) {
        switch (actual) {
            case DbClass::kLine:
            case DbClass::kBlockReference:
            case DbClass::kRasterImage:
            case DbClass::kOle2Frame:
            case DbClass::kViewport:
            case DbClass::kAttribute:
            case DbClass::kAttributeDefinition:
                return true;
            default:
                return false;
        }
    }
    return false;
}

}  // namespace

void SimDatabasePort::Unregister(SimDatabase* db) {
    std::erase(m_databases, db);
    if (m_working == db)
        m_working = nullptr;
    std::erase_if(m_handles, [db](const auto& entry) { return entry.second.db == db; });
}

SimDatabase* SimDatabasePort::Owner(DbObjectId id) const {
    for (SimDatabase* db : m_databases) {
        if (db->Has(id))
            return db;
    }
    return nullptr;
}

SimDbObject& SimDatabasePort::Obj(DbObject* obj) {
    auto it = m_handles.find(obj);
    if (it == m_handles.end())
        throw std::logic_error("database object used after close");
    return it->second.db->Object(it->second.id);
}

HostDatabase* SimDatabasePort::WorkingDatabase() {
    return m_working ? m_working->Handle() : nullptr;
}

void SimDatabasePort::LockDocumentOf(DbObjectId) {
    ++m_lockDepth;
    ++m_locksTaken;
}

void SimDatabasePort::UnlockDocumentOf(DbObjectId) {
    if (m_lockDepth == 0)
        throw std::logic_error("document unlocked more often than locked");
    --m_lockDepth;
}

DbStatus SimDatabasePort::OpenIn(SimDatabase* db, DbObjectId id, DbClass cls, DbOpenMode mode,
                                 bool openErased, DbObject*& out) {
    out = nullptr;
    if (id == 0)
        return dbs::kNullObjectId;
    if (db == nullptr || !db->Has(id))
        return dbs::kKeyNotFound;
    SimDbObject& obj = db->Object(id);
    if (!IsKindOf(obj.cls, cls))
        return dbs::kNotThatKindOfClass;
    if (obj.erased && !openErased)
        return dbs::kWasErased;
    if (obj.writer)
        return dbs::kWasOpenForWrite;
    if (mode == DbOpenMode::kForWrite) {
        if (obj.readers > 0)
            return dbs::kWasOpenForRead;
        obj.writer = true;
    } else {
        ++obj.readers;
    }
    out = reinterpret_cast<DbObject*>(m_nextHandle++);
    m_handles[out] = Handle{db, id, mode};
    return dbs::kOk;
}

DbStatus SimDatabasePort::Open(DbObjectId id, DbClass cls, DbOpenMode mode, bool openErased,
                               DbObject*& out) {
    return OpenIn(Owner(id), id, cls, mode, openErased, out);
}

DbStatus SimDatabasePort::OpenSymbolTable(HostDatabase* db, DbClass table, DbOpenMode mode,
                                          DbObject*& out) {
    SimDatabase* sim = SimDatabase::From(db);
    out = nullptr;
    if (sim == nullptr)
        return dbs::kNullObjectId;
    DbObjectId id = sim->TableId(table);
    if (id == 0)
        return dbs::kNotThatKindOfClass;
    return OpenIn(sim, id, table, mode, false, out);
}

DbStatus SimDatabasePort::OpenNamedObjectsDictionary(HostDatabase* db, DbOpenMode mode,
                                                     DbObject*& out) {
    SimDatabase* sim = SimDatabase::From(db);
    out = nullptr;
    if (sim == nullptr)
        return dbs::kNullObjectId;
    return OpenIn(sim, sim->NamedObjectsDictionaryId(), DbClass::kDictionary, mode, false, out);
}

void SimDatabasePort::Close(DbObject* obj) {
    auto it = m_handles.find(obj);
    if (it == m_handles.end())
        throw std::logic_error("database object closed twice");
    SimDbObject& o = it->second.db->Object(it->second.id);
    if (it->second.mode == DbOpenMode::kForWrite) {
        o.writer = false;
    } else {
        --o.readers;
    }
    m_handles.erase(it);
}

DbObjectId SimDatabasePort::IdOf(DbObject* obj) {
    return Obj(obj).id;
}
bool SimDatabasePort::IsErased(DbObject* obj) {
    return Obj(obj).erased;
}

DbObjectId SimDatabasePort::CurrentSpaceId(HostDatabase* db) {
    return db ? SimDatabase::From(db)->CurrentSpaceId() : 0;
}

std::wstring SimDatabasePort::ActiveLayoutName() {
    if (m_working == nullptr)
        return L"";
    DbObjectId block = m_working->CurrentSpaceId();
    return m_working->Object(m_working->Object(block).layoutId).name;
}

DbStatus SimDatabasePort::GetAt(DbObject* table, const std::wstring& name, DbObjectId& id) {
    id = 0;
    auto it = m_handles.find(table);
    if (it == m_handles.end())
        throw std::logic_error("database object used after close");
    SimDatabase* db = it->second.db;
    // Symbol table names compare without regard to case; erased records are not found.
    for (DbObjectId child : db->Object(it->second.id).children) {
        const SimDbObject& rec = db->Object(child);
        if (!rec.erased && EqualNoCase(rec.name, name)) {
            id = child;
            return dbs::kOk;
        }
    }
    return dbs::kKeyNotFound;
}

std::vector<DbObjectId> SimDatabasePort::RecordIds(DbObject* table) {
    return Obj(table).children;
}
std::wstring SimDatabasePort::RecordName(DbObject* record) {
    return Obj(record).name;
}
bool SimDatabasePort::IsDependent(DbObject* record) {
    return Obj(record).flags.isDependent;
}
DbBlockFlags SimDatabasePort::BlockFlags(DbObject* record) {
    return Obj(record).flags;
}
DbObjectId SimDatabasePort::LayoutId(DbObject* record) {
    return Obj(record).layoutId;
}

std::vector<DbObjectId> SimDatabasePort::EntityIds(DbObject* record, bool includeErased) {
    auto it = m_handles.find(record);
    if (it == m_handles.end())
        throw std::logic_error("database object used after close");
    std::vector<DbObjectId> ids;
    for (DbObjectId child : it->second.db->Object(it->second.id).children) {
        if (includeErased || !it->second.db->Object(child).erased)
            ids.push_back(child);
    }
    return ids;
}

std::wstring SimDatabasePort::LayoutName(DbObject* layout) {
    return Obj(layout).name;
}
int SimDatabasePort::TabOrder(DbObject* layout) {
    return Obj(layout).tabOrder;
}

std::vector<std::pair<std::wstring, DbObjectId>> SimDatabasePort::Entries(DbObject* dict) {
    auto it = m_handles.find(dict);
    if (it == m_handles.end())
        throw std::logic_error("database object used after close");
    std::vector<std::pair<std::wstring, DbObjectId>> entries;
    for (DbObjectId child : it->second.db->Object(it->second.id).children) {
        const SimDbObject& entry = it->second.db->Object(child);
        if (!entry.erased)
            entries.emplace_back(entry.name, child);
    }
    return entries;
}

DbStatus SimDatabasePort::AddDictionary(DbObject* dict, const std::wstring& name,
                                        bool treatElementsAsHard, DbObject*& out) {
    out = nullptr;
    auto it = m_handles.find(dict);
    if (it == m_handles.end())
        throw std::logic_error("database object used after close");
    if (it->second.mode != DbOpenMode::kForWrite)
        return dbs::kInvalidOpenState;
    SimDatabase* db = it->second.db;
    DbObjectId owner = it->second.id;
    for (DbObjectId child : db->Object(owner).children) {
        if (!db->Object(child).erased && db->Object(child).name == name)
            return dbs::kInvalidKey;
    }
    DbObjectId id = db->AddDictionaryEntry(name, DbClass::kDictionary);
    // The entry is made in the named objects dictionary and moved under its real owner.
    if (owner != db->NamedObjectsDictionaryId()) {
        std::erase(db->Object(db->NamedObjectsDictionaryId()).children, id);
        db->Object(id).owner = owner;
        db->Object(owner).children.push_back(id);
    }
    db->Object(id).treatElementsAsHard = treatElementsAsHard;
    return OpenIn(db, id, DbClass::kDictionary, DbOpenMode::kForWrite, false, out);
}

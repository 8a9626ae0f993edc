#include "platform/sim/sim_database_port.h"

#include <algorithm>
#include <stdexcept>

#include "foundation/no_case.h"

namespace {

// Which classes an open by `asked` accepts: the class itself and those derived from it.
bool IsKindOfClass(DbClass actual, DbClass asked) {
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

bool SimDatabasePort::Read(HostDatabase* db, DrawingSummary& summary) {
    SimDatabase* sim = SimDatabase::From(db);
    if (std::find(m_databases.begin(), m_databases.end(), sim) == m_databases.end() ||
        !sim->hasSummary)
        return false;
    summary = sim->summary;
    return true;
}

SimDatabase* SimDatabasePort::Owner(DbObjectId id) const {
    for (SimDatabase* db : m_databases) {
        if (db->Has(id))
            return db;
    }
    return nullptr;
}

SimDatabasePort::Handle& SimDatabasePort::HandleOf(DbObject* obj) {
    auto it = m_handles.find(obj);
    if (it == m_handles.end())
        throw std::logic_error("database object used after close");
    return it->second;
}

SimDbObject& SimDatabasePort::Obj(DbObject* obj) {
    Handle& handle = HandleOf(obj);
    return handle.db->Object(handle.id);
}

SimDbObject* SimDatabasePort::Writable(DbObject* obj) {
    Handle& handle = HandleOf(obj);
    return handle.mode == DbOpenMode::kForWrite ? &handle.db->Object(handle.id) : nullptr;
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
    if (obj.openFailure != dbs::kOk)
        return obj.openFailure;
    if (!IsKindOfClass(obj.cls, cls))
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

bool SimDatabasePort::IsKindOf(DbObject* obj, DbClass cls) {
    return IsKindOfClass(Obj(obj).cls, cls);
}

std::optional<std::wstring> SimDatabasePort::XrefFileName(DbObject* record) {
    const SimDbObject& rec = Obj(record);
    if (!rec.xrefResolved || rec.path.empty())
        return std::nullopt;
    return rec.path;
}

DbObjectId SimDatabasePort::ImageDefId(DbObject* image) {
    return Obj(image).reference;
}

std::optional<std::wstring> SimDatabasePort::ImageFileName(DbObject* imageDef) {
    const SimDbObject& def = Obj(imageDef);
    if (def.path.empty())
        return std::nullopt;
    return def.path;
}

int SimDatabasePort::OleType(DbObject* frame) {
    return Obj(frame).oleType;
}

bool SimDatabasePort::GetLinkPath(DbObject* frame, std::wstring& path, std::size_t bufferChars) {
    const SimDbObject& ole = Obj(frame);
    // The host writes a terminated string and fails when it does not fit.
    if (ole.path.empty() || ole.path.size() + 1 > bufferChars)
        return false;
    path = ole.path;
    return true;
}

bool SimDatabasePort::HasHyperlink(DbObject* obj) {
    Handle& handle = HandleOf(obj);
    const SimDbObject& o = handle.db->Object(handle.id);
    if (!o.hyperlinks.empty())
        return true;
    return o.cls == DbClass::kBlockReference && o.reference != 0 &&
           !handle.db->Object(o.reference).hyperlinks.empty();
}

std::vector<std::wstring> SimDatabasePort::HyperlinkNames(DbObject* obj) {
    return Obj(obj).hyperlinks;
}

DbObjectId SimDatabasePort::LayerStatesDictionaryId(HostDatabase* db) {
    return db ? SimDatabase::From(db)->LayerStatesId() : 0;
}

bool SimDatabasePort::HasLayerStateManager(HostDatabase* db) {
    return db != nullptr && SimDatabase::From(db)->LayerStatesId() != 0;
}

DbStatus SimDatabasePort::RestoreLayerState(HostDatabase* db, const std::wstring& name) {
    if (m_lockDepth == 0)
        return dbs::kLockViolation;
    return SimDatabase::From(db)->RestoreLayerState(name);
}

bool SimDatabasePort::IsPaperspaceView(DbObject* view) {
    return Obj(view).paperspaceView;
}

DbStatus SimDatabasePort::SetIsPaperspaceView(DbObject* view, bool on) {
    SimDbObject* rec = Writable(view);
    if (rec == nullptr)
        return dbs::kInvalidOpenState;
    rec->paperspaceView = on;
    return dbs::kOk;
}

DbPoint2d SimDatabasePort::CenterPoint(DbObject* view) {
    return Obj(view).center;
}

std::optional<DbXData> SimDatabasePort::XData(DbObject* obj, const std::wstring& app) {
    const SimDbObject& o = Obj(obj);
    for (const auto& [name, data] : o.xdata) {
        if (EqualNoCase(name, app))
            return data;
    }
    return std::nullopt;
}

DbStatus SimDatabasePort::SetXData(DbObject* obj, const DbXData& data) {
    SimDbObject* o = Writable(obj);
    if (o == nullptr)
        return dbs::kInvalidOpenState;
    SimDatabase* db = HandleOf(obj).db;
    // The list is cut at each application name; every name must be registered first.
    std::map<std::wstring, DbXData> groups;
    DbXData* current = nullptr;
    for (const DbXDataItem& item : data) {
        if (item.code == 1001) {
            DbObject* table = nullptr;
            DbObjectId found = 0;
            OpenSymbolTable(db->Handle(), DbClass::kRegAppTable, DbOpenMode::kForRead, table);
            if (table == nullptr)
                return dbs::kRegappIdNotFound;
            DbStatus status = GetAt(table, item.text, found);
            Close(table);
            if (status != dbs::kOk)
                return dbs::kRegappIdNotFound;
            current = &groups[item.text];
        } else if (current == nullptr) {
            return dbs::kRegappIdNotFound;
        }
        current->push_back(item);
    }
    for (auto& entry : groups) {
        const std::wstring& app = entry.first;
        std::erase_if(o->xdata, [&](const auto& data) { return EqualNoCase(data.first, app); });
        o->xdata[app] = std::move(entry.second);
    }
    return dbs::kOk;
}

DbStatus SimDatabasePort::AddRecord(DbObject* table, const std::wstring& name) {
    SimDbObject* t = Writable(table);
    if (t == nullptr)
        return dbs::kInvalidOpenState;
    DbObjectId existing = 0;
    if (GetAt(table, name, existing) == dbs::kOk)
        return dbs::kDuplicateRecordName;
    SimDatabase* db = HandleOf(table).db;
    switch (t->cls) {
        case DbClass::kRegAppTable:
            db->AddRegApp(name);
            return dbs::kOk;
        case DbClass::kViewTable:
            db->AddView(name);
            return dbs::kOk;
        case DbClass::kBlockTable:
            db->AddBlock(name);
            return dbs::kOk;
        default:
            return dbs::kNotThatKindOfClass;
    }
}

std::wstring SimDatabasePort::StatusText(DbStatus status) {
    static const std::pair<DbStatus, const wchar_t*> kNames[] = {
        {dbs::kOk, L"eOk"},
        {dbs::kNullObjectId, L"eNullObjectId"},
        {dbs::kNotThatKindOfClass, L"eNotThatKindOfClass"},
        {dbs::kInvalidKey, L"eInvalidKey"},
        {dbs::kKeyNotFound, L"eKeyNotFound"},
        {dbs::kWasErased, L"eWasErased"},
        {dbs::kWasOpenForWrite, L"eWasOpenForWrite"},
        {dbs::kWasOpenForRead, L"eWasOpenForRead"},
        {dbs::kInvalidOpenState, L"eNotOpenForWrite"},
        {dbs::kRegappIdNotFound, L"eRegappIdNotFound"},
        {dbs::kDuplicateRecordName, L"eDuplicateRecordName"},
        {dbs::kLockViolation, L"eLockViolation"},
    };
    for (const auto& [code, name] : kNames) {
        if (code == status)
            return name;
    }
    return L"eUnknownError";
}

DbStatus SimDatabasePort::LockDocument(HostDatabase* db) {
    if (m_lockRefusal != dbs::kOk)
        return m_lockRefusal;
    LockDocumentOf(db ? SimDatabase::From(db)->BlockTableId() : 0);
    return dbs::kOk;
}

void SimDatabasePort::UnlockDocument(HostDatabase* db) {
    UnlockDocumentOf(db ? SimDatabase::From(db)->BlockTableId() : 0);
}

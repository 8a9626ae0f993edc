#pragma once
// The database port over the simulated host's databases. It keeps the host's open rules so
// that a caller that forgets to close, or opens twice for write, is caught by a test.

#include <map>
#include <vector>

#include "platform/sim/sim_database.h"
#include "ports/drawing_summary.h"
#include "ports/host_database.h"

class SimDatabasePort : public HostDatabasePort, public DrawingSummaries {
public:
    // A database the host doesn't know has no summary to give.
    bool Read(HostDatabase* db, DrawingSummary& summary) override;

    void Register(SimDatabase* db) { m_databases.push_back(db); }
    void Unregister(SimDatabase* db);
    void SetWorkingDatabase(SimDatabase* db) { m_working = db; }
    int LockDepth() const { return m_lockDepth; }
    int LocksTaken() const { return m_locksTaken; }
    // The next document locks fail with `status` (kOk lets them through again).
    void RefuseLocks(DbStatus status) { m_lockRefusal = status; }

    HostDatabase* WorkingDatabase() override;
    bool Tilemode(HostDatabase* db) override { return SimDatabase::From(db)->Tilemode(); }
    void LockDocumentOf(DbObjectId id) override;
    void UnlockDocumentOf(DbObjectId id) override;
    DbStatus Open(DbObjectId id, DbClass cls, DbOpenMode mode, bool openErased,
                  DbObject*& out) override;
    DbStatus OpenSymbolTable(HostDatabase* db, DbClass table, DbOpenMode mode,
                             DbObject*& out) override;
    DbStatus OpenNamedObjectsDictionary(HostDatabase* db, DbOpenMode mode, DbObject*& out) override;
    void Close(DbObject* obj) override;
    DbObjectId IdOf(DbObject* obj) override;
    bool IsErased(DbObject* obj) override;
    DbObjectId CurrentSpaceId(HostDatabase* db) override;
    std::wstring ActiveLayoutName() override;
    DbStatus GetAt(DbObject* table, const std::wstring& name, DbObjectId& id) override;
    std::vector<DbObjectId> RecordIds(DbObject* table) override;
    std::wstring RecordName(DbObject* record) override;
    bool IsDependent(DbObject* record) override;
    DbBlockFlags BlockFlags(DbObject* record) override;
    DbObjectId LayoutId(DbObject* record) override;
    std::vector<DbObjectId> EntityIds(DbObject* record, bool includeErased) override;
    std::wstring LayoutName(DbObject* layout) override;
    int TabOrder(DbObject* layout) override;
    std::vector<std::pair<std::wstring, DbObjectId>> Entries(DbObject* dict) override;
    DbStatus AddDictionary(DbObject* dict, const std::wstring& name, bool treatElementsAsHard,
                           DbObject*& out) override;
    bool IsKindOf(DbObject* obj, DbClass cls) override;
    std::optional<std::wstring> XrefFileName(DbObject* record) override;
    DbObjectId ImageDefId(DbObject* image) override;
    std::optional<std::wstring> ImageFileName(DbObject* imageDef) override;
    int OleType(DbObject* frame) override;
    bool GetLinkPath(DbObject* frame, std::wstring& path, std::size_t bufferChars) override;
    bool HasHyperlink(DbObject* obj) override;
    std::vector<std::wstring> HyperlinkNames(DbObject* obj) override;
    DbObjectId LayerStatesDictionaryId(HostDatabase* db) override;
    bool HasLayerStateManager(HostDatabase* db) override;
    // Refused with kLockViolation unless a document is locked.
    DbStatus RestoreLayerState(HostDatabase* db, const std::wstring& name) override;
    bool IsPaperspaceView(DbObject* view) override;
    DbStatus SetIsPaperspaceView(DbObject* view, bool on) override;
    DbPoint2d CenterPoint(DbObject* view) override;
    std::optional<DbXData> XData(DbObject* obj, const std::wstring& app) override;
    DbStatus SetXData(DbObject* obj, const DbXData& data) override;
    DbStatus AddRecord(DbObject* table, const std::wstring& name) override;
    std::wstring StatusText(DbStatus status) override;
    DbStatus LockDocument(HostDatabase* db) override;
    void UnlockDocument(HostDatabase* db) override;

private:
    struct Handle {
        SimDatabase* db;
        DbObjectId id;
        DbOpenMode mode;
    };
    SimDatabase* Owner(DbObjectId id) const;
    SimDbObject& Obj(DbObject* obj);
    Handle& HandleOf(DbObject* obj);
    // The object behind a handle that must be open for write.
    SimDbObject* Writable(DbObject* obj);
    DbStatus OpenIn(SimDatabase* db, DbObjectId id, DbClass cls, DbOpenMode mode, bool openErased,
                    DbObject*& out);

    std::vector<SimDatabase*> m_databases;  // not owned
    SimDatabase* m_working = nullptr;
    // Every handle is checked against this table, so a stale or closed one fails a test
    // instead of reading freed memory.
    std::map<DbObject*, Handle> m_handles;
    std::uintptr_t m_nextHandle = 1;
    int m_lockDepth = 0;
    int m_locksTaken = 0;
    DbStatus m_lockRefusal = dbs::kOk;
};

#pragma once
// The host database as the object pointers and their enumerators need it. Objects are opened
// by id and must be closed by whoever opened them; an open handle is opaque.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

struct HostDatabase;
struct DbObject;

// An object id; 0 is the null id.
using DbObjectId = std::uint64_t;

// The classes the core opens by. An open succeeds only when the object is of the class asked
// for or derived from it (kEntity takes every entity, kObject everything).
enum class DbClass {
    kObject,
    kBlockTable,
    kBlockTableRecord,
    kLayerTable,
    kLayerTableRecord,
    kLinetypeTable,
    kLinetypeTableRecord,
    kViewportTable,
    kViewportTableRecord,
    kViewTable,
    kViewTableRecord,
    kTextStyleTable,
    kTextStyleTableRecord,
    kDimStyleTable,
    kDimStyleTableRecord,
    kRegAppTable,
    kRegAppTableRecord,
    kUcsTable,
    kUcsTableRecord,
    kDictionary,
    kLayout,
    kEntity,
    kLine,
    kBlockReference,
    kRasterImage,
    kRasterImageDef,
    kOle2Frame,
    kViewport,
    kAttribute,
    kAttributeDefinition,
    kVisualStyle,
};

enum class DbOpenMode : std::int32_t { kForRead = 0, kForWrite = 1, kForNotify = 2 };

// Open results. The three the core tests by number keep the host's values; the adapter maps
// any other failure to one of the rest.
using DbStatus = std::int32_t;
namespace dbs {
constexpr DbStatus kOk = 0;
constexpr DbStatus kNullObjectId = 12;
constexpr DbStatus kNotThatKindOfClass = 46;
constexpr DbStatus kInvalidKey = 47;
constexpr DbStatus kKeyNotFound = 80;
constexpr DbStatus kWasErased = 81;
constexpr DbStatus kWasOpenForWrite = 82;
constexpr DbStatus kWasOpenForRead = 83;
constexpr DbStatus kInvalidOpenState = 84;
}  // namespace dbs

// The flags of a block table record.
struct DbBlockFlags {
    bool isAnonymous = false;
    bool isFromExternalReference = false;
    bool isLayout = false;
    bool isDependent = false;  // belongs to an attached xref
};

class HostDatabasePort {
public:
    virtual ~HostDatabasePort() = default;

    virtual HostDatabase* WorkingDatabase() = 0;
    // Held around opens in a document other than the current one.
    virtual void LockDocumentOf(DbObjectId id) = 0;
    virtual void UnlockDocumentOf(DbObjectId id) = 0;

    virtual DbStatus Open(DbObjectId id, DbClass cls, DbOpenMode mode, bool openErased,
                          DbObject*& out) = 0;
    virtual DbStatus OpenSymbolTable(HostDatabase* db, DbClass table, DbOpenMode mode,
                                     DbObject*& out) = 0;
    virtual DbStatus OpenNamedObjectsDictionary(HostDatabase* db, DbOpenMode mode,
                                                DbObject*& out) = 0;
    virtual void Close(DbObject* obj) = 0;

    virtual DbObjectId IdOf(DbObject* obj) = 0;
    virtual bool IsErased(DbObject* obj) = 0;
    virtual DbObjectId CurrentSpaceId(HostDatabase* db) = 0;
    virtual std::wstring ActiveLayoutName() = 0;  // of the host's layout manager

    // Symbol tables and their records.
    virtual DbStatus GetAt(DbObject* table, const std::wstring& name, DbObjectId& id) = 0;
    virtual std::vector<DbObjectId> RecordIds(DbObject* table) = 0;  // table order, erased too
    virtual std::wstring RecordName(DbObject* record) = 0;
    virtual bool IsDependent(DbObject* record) = 0;

    // Block table records.
    virtual DbBlockFlags BlockFlags(DbObject* record) = 0;
    virtual DbObjectId LayoutId(DbObject* record) = 0;
    virtual std::vector<DbObjectId> EntityIds(DbObject* record, bool includeErased) = 0;

    // Layouts.
    virtual std::wstring LayoutName(DbObject* layout) = 0;
    virtual int TabOrder(DbObject* layout) = 0;

    // Dictionaries, entries in the iterator's order.
    virtual std::vector<std::pair<std::wstring, DbObjectId>> Entries(DbObject* dict) = 0;
    // Adds a new dictionary under `name` to `dict` (open for write) and returns it open for
    // write.
    virtual DbStatus AddDictionary(DbObject* dict, const std::wstring& name,
                                   bool treatElementsAsHard, DbObject*& out) = 0;
};

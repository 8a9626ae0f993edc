#pragma once
// The host database as the object pointers and their enumerators need it. Objects are opened
// by id and must be closed by whoever opened them; an open handle is opaque.

#include <cstddef>
#include <cstdint>
#include <optional>
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
constexpr DbStatus kRegappIdNotFound = 86;
constexpr DbStatus kDuplicateRecordName = 95;  // kept by number: a caller accepts it
constexpr DbStatus kLockViolation = 97;
}  // namespace dbs

struct DbPoint2d {
    double x = 0;
    double y = 0;
    friend bool operator==(const DbPoint2d&, const DbPoint2d&) = default;
};

// Extended data as the host's result buffer list: group code and text, in order. The data of
// one application starts with its name under code 1001.
struct DbXDataItem {
    int code = 0;
    std::wstring text;
    friend bool operator==(const DbXDataItem&, const DbXDataItem&) = default;
};
using DbXData = std::vector<DbXDataItem>;

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
    // TILEMODE of the database: true while it shows model space, false on a layout.
    virtual bool Tilemode(HostDatabase* db) = 0;
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

    // What a drawing refers to. IsKindOf asks the class of an open object, so one open as an
    // entity serves every question below.
    virtual bool IsKindOf(DbObject* obj, DbClass cls) = 0;
    // The original file name of an xref record's database; nullopt when the xref is not
    // resolved or its database has no name.
    virtual std::optional<std::wstring> XrefFileName(DbObject* record) = 0;
    virtual DbObjectId ImageDefId(DbObject* image) = 0;
    virtual std::optional<std::wstring> ImageFileName(DbObject* imageDef) = 0;
    virtual int OleType(DbObject* frame) = 0;  // 1 for a linked object
    // getLinkPath into a buffer of `bufferChars` characters; false when it does not fit or the
    // frame has no link.
    virtual bool GetLinkPath(DbObject* frame, std::wstring& path, std::size_t bufferChars) = 0;
    // Through the object's hyperlink extension: whether it has a hyperlink, counting its block
    // definition's for a block reference; and the names of its own, in order.
    virtual bool HasHyperlink(DbObject* obj) = 0;
    virtual std::vector<std::wstring> HyperlinkNames(DbObject* obj) = 0;
    // The dictionary of the database's layer state manager, without making one: 0 when there
    // is no manager or no dictionary.
    virtual DbObjectId LayerStatesDictionaryId(HostDatabase* db) = 0;
    // getLayerStateManager: false when the database has none.
    virtual bool HasLayerStateManager(HostDatabase* db) = 0;
    // restoreLayerState of the manager: the layers take the state's properties. The
    // database's document must be locked for writing.
    virtual DbStatus RestoreLayerState(HostDatabase* db, const std::wstring& name) = 0;

    // View table records.
    virtual bool IsPaperspaceView(DbObject* view) = 0;
    virtual DbStatus SetIsPaperspaceView(DbObject* view, bool on) = 0;  // open for write
    virtual DbPoint2d CenterPoint(DbObject* view) = 0;

    // Extended data of one registered application, nullopt when the object has none; setting
    // replaces the data of each application named in `data`, which must be registered.
    virtual std::optional<DbXData> XData(DbObject* obj, const std::wstring& app) = 0;
    virtual DbStatus SetXData(DbObject* obj, const DbXData& data) = 0;  // open for write
    // Adds a new record called `name` to a symbol table open for write.
    virtual DbStatus AddRecord(DbObject* table, const std::wstring& name) = 0;
    // The host's name of a status, for messages.
    virtual std::wstring StatusText(DbStatus status) = 0;
    // lockDocument for writing on the database's document, and its release.
    virtual DbStatus LockDocument(HostDatabase* db) = 0;
    virtual void UnlockDocument(HostDatabase* db) = 0;
};

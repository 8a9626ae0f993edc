#pragma once
// A drawing's database in the simulated host: a block table (model space, layouts with their
// tab order, named, anonymous, dependent and xref blocks), entities (raster images and their
// definitions, OLE frames, block references, hyperlinks on entities and block definitions), a
// view table (paper space views, centres, extended data), a registered application table, a
// layer table, the named objects dictionary (layouts, layer states) and TILEMODE. Any object
// can be made to refuse its opens, and any symbol table to be missing. Objects are opened and closed through the database port with the host's rules:
// one writer or many readers, erased objects only when asked, opens checked by class.

#include <map>
#include <string>
#include <vector>

#include "ports/drawing_summary.h"
#include "ports/host_database.h"

struct SimDbObject {
    DbClass cls = DbClass::kObject;
    DbObjectId id = 0;
    DbObjectId owner = 0;
    std::wstring name;
    bool erased = false;
    int readers = 0;
    bool writer = false;
    std::vector<DbObjectId> children;  // table records, dictionary entries, block entities
    DbBlockFlags flags;
    DbObjectId layoutId = 0;  // block record -> layout, layout -> block record
    int tabOrder = 0;
    bool treatElementsAsHard = false;
    // An xref's original file name, an image definition's file, an OLE frame's link; empty
    // stands for the host's null name.
    std::wstring path;
    bool xrefResolved = false;
    DbObjectId reference = 0;  // image -> its definition, block reference -> its block
    int oleType = 0;
    std::vector<std::wstring> hyperlinks;
    bool paperspaceView = false;
    DbPoint2d center;
    std::map<std::wstring, DbXData> xdata;  // by application name
    DbStatus openFailure = dbs::kOk;        // every open of the object fails with this
};

class SimDatabase {
public:
    // Ids are unique across all databases of one host; `firstId` keeps them apart.
    explicit SimDatabase(DbObjectId firstId);

    HostDatabase* Handle() { return reinterpret_cast<HostDatabase*>(this); }
    static SimDatabase* From(HostDatabase* db) { return reinterpret_cast<SimDatabase*>(db); }

    // Building a drawing.
    DbObjectId AddLayout(const std::wstring& layoutName, int tabOrder);  // returns the block
    DbObjectId AddBlock(const std::wstring& name, DbBlockFlags flags = {});
    // An empty path is an xref whose database has no name.
    DbObjectId AddXref(const std::wstring& name, const std::wstring& originalPath,
                       bool resolved = true);
    DbObjectId AddEntity(DbObjectId blockId, DbClass cls);
    DbObjectId AddImageDef(const std::wstring& fileName);  // in the image dictionary
    DbObjectId AddImage(DbObjectId blockId, DbObjectId imageDefId);
    DbObjectId AddOleFrame(DbObjectId blockId, int type, const std::wstring& linkPath);
    DbObjectId AddBlockReference(DbObjectId blockId, DbObjectId definitionId);
    void AddHyperlink(DbObjectId id, const std::wstring& name);  // an entity or a block
    DbObjectId AddView(const std::wstring& name, bool dependent = false);
    DbObjectId AddPaperspaceView(const std::wstring& name, DbPoint2d center);
    DbObjectId AddRegApp(const std::wstring& name);
    DbObjectId AddLayerState(const std::wstring& name);
    DbObjectId AddDictionaryEntry(const std::wstring& name, DbClass cls);  // in the NOD
    void Erase(DbObjectId id);

    // The host's failures: an object that cannot be opened, a table that is not there, a
    // database without a layer state manager.
    void FailOpens(DbObjectId id, DbStatus status) { m_objects.at(id).openFailure = status; }
    void RemoveTable(DbClass table) { m_tables.erase(table); }
    void SetHasLayerStateManager(bool has) { m_hasLayerStateManager = has; }
    DbObjectId LayerStatesId() const { return m_hasLayerStateManager ? m_layerStates : 0; }

    DbObjectId ModelSpaceId() const { return m_modelSpace; }
    DbObjectId PaperSpaceId() const { return m_paperSpace; }
    DbObjectId BlockTableId() const { return m_blockTable; }
    DbObjectId NamedObjectsDictionaryId() const { return m_namedObjects; }
    DbObjectId TableId(DbClass table) const;
    DbObjectId CurrentSpaceId() const { return m_tilemode ? m_modelSpace : m_currentLayout; }
    void SetCurrentLayout(DbObjectId blockId);
    bool Tilemode() const { return m_tilemode; }
    void SetTilemode(bool on) { m_tilemode = on; }
    // The view table's record of that name (in any letter case), 0 for none.
    DbObjectId FindView(const std::wstring& name) const;
    // The block of the layout of that name (in any letter case), 0 for none.
    DbObjectId FindLayout(const std::wstring& layoutName) const;
    // Restoring a layer state: the names restored, in order; kKeyNotFound for a name the
    // drawing does not hold.
    DbStatus RestoreLayerState(const std::wstring& name);
    const std::vector<std::wstring>& RestoredLayerStates() const { return m_restoredStates; }

    bool Has(DbObjectId id) const { return m_objects.count(id) != 0; }
    SimDbObject& Object(DbObjectId id) { return m_objects.at(id); }
    const SimDbObject& Object(DbObjectId id) const { return m_objects.at(id); }
    int OpenCount() const;  // objects still open: a leak in the caller

    // The drawing's properties; a database without its summary record gives none.
    DrawingSummary summary;
    bool hasSummary = true;

private:
    DbObjectId Add(DbClass cls, DbObjectId owner, const std::wstring& name);
    DbObjectId AddEntityReferring(DbObjectId blockId, DbClass cls, DbObjectId reference);
    DbObjectId AddLayoutFor(DbObjectId blockId, const std::wstring& layoutName, int tabOrder);

    DbObjectId m_nextId;
    std::map<DbObjectId, SimDbObject> m_objects;
    std::map<DbClass, DbObjectId> m_tables;
    DbObjectId m_blockTable = 0;
    DbObjectId m_namedObjects = 0;
    DbObjectId m_layoutDict = 0;
    DbObjectId m_layerStates = 0;
    DbObjectId m_imageDict = 0;
    bool m_hasLayerStateManager = true;
    DbObjectId m_modelSpace = 0;
    DbObjectId m_paperSpace = 0;
    DbObjectId m_currentLayout = 0;
    int m_paperSpaceCount = 0;
    bool m_tilemode = true;
    std::vector<std::wstring> m_restoredStates;
};

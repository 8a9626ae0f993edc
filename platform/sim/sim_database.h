#pragma once
// A drawing's database in the simulated host: a block table (model space, layouts with their
// tab order, named, anonymous, dependent and xref blocks), entities, a view table, a registered
// application table, a layer table, the named objects dictionary (layouts, layer states) and
// TILEMODE. Objects are opened and closed through the database port with the host's rules:
// one writer or many readers, erased objects only when asked, opens checked by class.

#include <map>
#include <string>
#include <vector>

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
    HostDatabase* xrefDatabase = nullptr;  // resolved xref, not owned
    std::wstring xrefPath;                 // the xref's original file name
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
    DbObjectId AddXref(const std::wstring& name, const std::wstring& originalPath,
                       HostDatabase* resolved);
    DbObjectId AddEntity(DbObjectId blockId, DbClass cls);
    DbObjectId AddView(const std::wstring& name, bool dependent = false);
    DbObjectId AddRegApp(const std::wstring& name);
    DbObjectId AddLayerState(const std::wstring& name);
    DbObjectId AddDictionaryEntry(const std::wstring& name, DbClass cls);  // in the NOD
    void Erase(DbObjectId id);

    DbObjectId ModelSpaceId() const { return m_modelSpace; }
    DbObjectId PaperSpaceId() const { return m_paperSpace; }
    DbObjectId BlockTableId() const { return m_blockTable; }
    DbObjectId NamedObjectsDictionaryId() const { return m_namedObjects; }
    DbObjectId TableId(DbClass table) const;
    DbObjectId CurrentSpaceId() const { return m_tilemode ? m_modelSpace : m_currentLayout; }
    void SetCurrentLayout(DbObjectId blockId);
    bool Tilemode() const { return m_tilemode; }
    void SetTilemode(bool on) { m_tilemode = on; }

    bool Has(DbObjectId id) const { return m_objects.count(id) != 0; }
    SimDbObject& Object(DbObjectId id) { return m_objects.at(id); }
    const SimDbObject& Object(DbObjectId id) const { return m_objects.at(id); }
    int OpenCount() const;  // objects still open: a leak in the caller

private:
    DbObjectId Add(DbClass cls, DbObjectId owner, const std::wstring& name);
    DbObjectId AddLayoutFor(DbObjectId blockId, const std::wstring& layoutName, int tabOrder);

    DbObjectId m_nextId;
    std::map<DbObjectId, SimDbObject> m_objects;
    std::map<DbClass, DbObjectId> m_tables;
    DbObjectId m_blockTable = 0;
    DbObjectId m_namedObjects = 0;
    DbObjectId m_layoutDict = 0;
    DbObjectId m_layerStates = 0;
    DbObjectId m_modelSpace = 0;
    DbObjectId m_paperSpace = 0;
    DbObjectId m_currentLayout = 0;
    int m_paperSpaceCount = 0;
    bool m_tilemode = true;
};

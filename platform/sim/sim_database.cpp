#include "platform/sim/sim_database.h"

#include <stdexcept>

#include "foundation/no_case.h"

SimDatabase::SimDatabase(DbObjectId firstId) : m_nextId(firstId) {
    for (DbClass table : {DbClass::kBlockTable, DbClass::kLayerTable, DbClass::kLinetypeTable,
                          DbClass::kViewportTable, DbClass::kViewTable, DbClass::kTextStyleTable,
                          DbClass::kDimStyleTable, DbClass::kRegAppTable, DbClass::kUcsTable}) {
        m_tables[table] = Add(table, 0, L"");
    }
    m_blockTable = m_tables[DbClass::kBlockTable];
    m_namedObjects = Add(DbClass::kDictionary, 0, L"");
    m_layoutDict = AddDictionaryEntry(L"ACAD_LAYOUT", DbClass::kDictionary);
    // Layer states live in the layer table's extension dictionary in a real drawing; one
    // dictionary reached from the named objects dictionary serves the core the same way.
    m_layerStates = AddDictionaryEntry(L"ACAD_LAYERSTATES", DbClass::kDictionary);
    Add(DbClass::kLayerTableRecord, m_tables[DbClass::kLayerTable], L"0");
    Add(DbClass::kRegAppTableRecord, m_tables[DbClass::kRegAppTable], L"ACAD");

    m_modelSpace = AddBlock(L"*Model_Space", DbBlockFlags{false, false, true, false});
    AddLayoutFor(m_modelSpace, L"Model", 0);
    m_paperSpace = AddLayout(L"Layout1", 1);
    m_currentLayout = m_paperSpace;
}

DbObjectId SimDatabase::Add(DbClass cls, DbObjectId owner, const std::wstring& name) {
    DbObjectId id = m_nextId++;
    SimDbObject& obj = m_objects[id];
    obj.cls = cls;
    obj.id = id;
    obj.owner = owner;
    obj.name = name;
    if (owner != 0)
        m_objects.at(owner).children.push_back(id);
    return id;
}

DbObjectId SimDatabase::AddLayoutFor(DbObjectId blockId, const std::wstring& layoutName,
                                     int tabOrder) {
    DbObjectId layout = Add(DbClass::kLayout, m_layoutDict, layoutName);
    m_objects.at(layout).tabOrder = tabOrder;
    m_objects.at(layout).layoutId = blockId;
    m_objects.at(blockId).layoutId = layout;
    return layout;
}

DbObjectId SimDatabase::AddLayout(const std::wstring& layoutName, int tabOrder) {
    // The first paper space is "*Paper_Space", the others are numbered from 0, as the host
    // names them.
    std::wstring blockName = L"*Paper_Space";
    if (m_paperSpaceCount > 0)
        blockName += std::to_wstring(m_paperSpaceCount - 1);
    ++m_paperSpaceCount;
    DbObjectId block = AddBlock(blockName, DbBlockFlags{false, false, true, false});
    AddLayoutFor(block, layoutName, tabOrder);
    return block;
}

DbObjectId SimDatabase::AddBlock(const std::wstring& name, DbBlockFlags flags) {
    DbObjectId id = Add(DbClass::kBlockTableRecord, m_blockTable, name);
    m_objects.at(id).flags = flags;
    return id;
}

DbObjectId SimDatabase::AddXref(const std::wstring& name, const std::wstring& originalPath,
                                bool resolved) {
    DbObjectId id = AddBlock(name, DbBlockFlags{false, true, false, false});
    m_objects.at(id).path = originalPath;
    m_objects.at(id).xrefResolved = resolved;
    return id;
}

DbObjectId SimDatabase::AddEntity(DbObjectId blockId, DbClass cls) {
    if (m_objects.at(blockId).cls != DbClass::kBlockTableRecord) {
        throw std::invalid_argument("entities belong to a block table record");
    }
    return Add(cls, blockId, L"");
}

DbObjectId SimDatabase::AddImageDef(const std::wstring& fileName) {
    if (m_imageDict == 0)
        m_imageDict = AddDictionaryEntry(L"ACAD_IMAGE_DICT", DbClass::kDictionary);
    DbObjectId id = Add(DbClass::kRasterImageDef, m_imageDict, L"");
    m_objects.at(id).path = fileName;
    return id;
}

DbObjectId SimDatabase::AddEntityReferring(DbObjectId blockId, DbClass cls, DbObjectId reference) {
    DbObjectId id = AddEntity(blockId, cls);
    m_objects.at(id).reference = reference;
    return id;
}

DbObjectId SimDatabase::AddImage(DbObjectId blockId, DbObjectId imageDefId) {
    return AddEntityReferring(blockId, DbClass::kRasterImage, imageDefId);
}

DbObjectId SimDatabase::AddOleFrame(DbObjectId blockId, int type, const std::wstring& linkPath) {
    DbObjectId id = AddEntity(blockId, DbClass::kOle2Frame);
    m_objects.at(id).oleType = type;
    m_objects.at(id).path = linkPath;
    return id;
}

DbObjectId SimDatabase::AddBlockReference(DbObjectId blockId, DbObjectId definitionId) {
    return AddEntityReferring(blockId, DbClass::kBlockReference, definitionId);
}

void SimDatabase::AddHyperlink(DbObjectId id, const std::wstring& name) {
    m_objects.at(id).hyperlinks.push_back(name);
}

DbObjectId SimDatabase::AddPaperspaceView(const std::wstring& name, DbPoint2d center) {
    DbObjectId id = AddView(name);
    m_objects.at(id).paperspaceView = true;
    m_objects.at(id).center = center;
    return id;
}

DbObjectId SimDatabase::AddView(const std::wstring& name, bool dependent) {
    DbObjectId id = Add(DbClass::kViewTableRecord, m_tables.at(DbClass::kViewTable), name);
    m_objects.at(id).flags.isDependent = dependent;
    return id;
}

DbObjectId SimDatabase::AddRegApp(const std::wstring& name) {
    return Add(DbClass::kRegAppTableRecord, m_tables.at(DbClass::kRegAppTable), name);
}

DbObjectId SimDatabase::AddLayerState(const std::wstring& name) {
    return Add(DbClass::kObject, m_layerStates, name);
}

DbObjectId SimDatabase::AddDictionaryEntry(const std::wstring& name, DbClass cls) {
    return Add(cls, m_namedObjects, name);
}

DbObjectId SimDatabase::FindView(const std::wstring& name) const {
    for (DbObjectId id : m_objects.at(TableId(DbClass::kViewTable)).children) {
        if (EqualNoCase(m_objects.at(id).name, name))
            return id;
    }
    return 0;
}

DbObjectId SimDatabase::FindLayout(const std::wstring& layoutName) const {
    for (DbObjectId id : m_objects.at(m_layoutDict).children) {
        const SimDbObject& layout = m_objects.at(id);
        if (!layout.erased && EqualNoCase(layout.name, layoutName))
            return layout.layoutId;
    }
    return 0;
}

DbStatus SimDatabase::RestoreLayerState(const std::wstring& name) {
    for (DbObjectId id : m_objects.at(m_layerStates).children) {
        if (!m_objects.at(id).erased && EqualNoCase(m_objects.at(id).name, name)) {
            m_restoredStates.push_back(m_objects.at(id).name);
            return dbs::kOk;
        }
    }
    return dbs::kKeyNotFound;
}

void SimDatabase::Erase(DbObjectId id) {
    m_objects.at(id).erased = true;
}

DbObjectId SimDatabase::TableId(DbClass table) const {
    auto it = m_tables.find(table);
    return it == m_tables.end() ? 0 : it->second;
}

void SimDatabase::SetCurrentLayout(DbObjectId blockId) {
    m_currentLayout = blockId;
    m_tilemode = blockId == m_modelSpace;
}

int SimDatabase::OpenCount() const {
    int count = 0;
    for (const auto& [id, obj] : m_objects) {
        if (obj.readers > 0 || obj.writer)
            ++count;
    }
    return count;
}

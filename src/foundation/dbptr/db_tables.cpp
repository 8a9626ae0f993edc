#include "foundation/dbptr/db_tables.h"

#include "foundation/no_case.h"

namespace {

constexpr wchar_t kModelSpace[] = L"*Model_Space";

// A three-valued switch: 1 demands, 0 forbids, anything else lets everything through.
bool Passes(int nSwitch, bool property) {
    if (nSwitch == 1)
        return property;
    if (nSwitch == 0)
        return !property;
    return true;
}

}  // namespace

void AcDbViewTablePtr::GetViews(std::map<std::wstring, DbObjectId>& views, int nDependent) {
    if (m_pObj == nullptr)
        return;
    HostDatabasePort& port = Use<HostDatabasePort>();
    for (DbObjectId id : port.RecordIds(m_pObj)) {
        HvPtr<AcDbViewTableRecord> rec(id);
        if (rec.m_pObj == nullptr)
            continue;
        bool dependent = port.IsDependent(rec.m_pObj);
        if ((nDependent == 0 && dependent) || (nDependent == 1 && !dependent))
            continue;
        views[port.RecordName(rec.m_pObj)] = id;
    }
}

void AcDbBlockTablePtr::GetXrefBlocks(std::vector<DbObjectId>& ids) {
    if (m_pObj == nullptr)
        return;
    HostDatabasePort& port = Use<HostDatabasePort>();
    for (DbObjectId id : port.RecordIds(m_pObj)) {
        AcDbBlockTableRecordPtr rec(id);
        if (rec.m_pObj != nullptr && port.BlockFlags(rec.m_pObj).isFromExternalReference) {
            ids.push_back(id);
        }
    }
}

void AcDbBlockTablePtr::GetBlocks(std::vector<DbObjectId>& ids, int nAnonymous, int nXref,
                                  int nLayout, int nDependent, int nModelSpace) {
    if (m_pObj == nullptr)
        return;
    HostDatabasePort& port = Use<HostDatabasePort>();
    for (DbObjectId id : port.RecordIds(m_pObj)) {
        AcDbBlockTableRecordPtr rec(id);
        if (rec.m_pObj == nullptr)
            continue;
        DbBlockFlags flags = port.BlockFlags(rec.m_pObj);
        if (!Passes(nAnonymous, flags.isAnonymous))
            continue;
        if (!Passes(nXref, flags.isFromExternalReference))
            continue;
        bool modelSpace = EqualNoCase(port.RecordName(rec.m_pObj), kModelSpace);
        if (!Passes(nModelSpace, modelSpace))
            continue;
        // Model space is a layout too; its own switch has decided about it already.
        if (!modelSpace && !Passes(nLayout, flags.isLayout))
            continue;
        if (!Passes(nDependent, flags.isDependent))
            continue;
        ids.push_back(id);
    }
}

void AcDbBlockTablePtr::GetLayouts(std::vector<TrLayoutInfo>& list, bool bIncludeModel) {
    if (m_pObj == nullptr)
        return;
    HostDatabasePort& port = Use<HostDatabasePort>();
    std::wstring active = port.ActiveLayoutName();
    for (DbObjectId id : port.RecordIds(m_pObj)) {
        AcDbBlockTableRecordPtr rec(id);
        if (rec.m_pObj == nullptr || !port.BlockFlags(rec.m_pObj).isLayout)
            continue;
        if (!bIncludeModel && EqualNoCase(port.RecordName(rec.m_pObj), kModelSpace))
            continue;
        TrLayoutInfo info;
        if (!rec.GetLayoutInfo(info))
            continue;
        info.bCurrent = EqualNoCase(info.strLayoutName, active);
        list.push_back(info);
    }
}

void AcDbBlockTablePtr::GetLayoutNames(std::vector<std::wstring>& list, bool bIncludeModel) {
    std::vector<TrLayoutInfo> layouts;
    GetLayouts(layouts, bIncludeModel);
    for (const TrLayoutInfo& info : layouts)
        list.push_back(info.strLayoutName);
}

void AcDbBlockTableRecordPtr::GetEntityIds(std::vector<DbObjectId>& ids, bool bByEntity) {
    if (m_pObj == nullptr)
        return;
    HostDatabasePort& port = Use<HostDatabasePort>();
    if (!bByEntity) {
        for (DbObjectId id : port.EntityIds(m_pObj, false))
            ids.push_back(id);
        return;
    }
    // Opening each entity takes erased ones too, as the host's iterator hands them out.
    for (DbObjectId id : port.EntityIds(m_pObj, true)) {
        HvPtr<AcDbEntity> entity(id, DbOpenMode::kForRead, true);
        if (entity.m_pObj != nullptr)
            ids.push_back(entity.Id());
    }
}

bool AcDbBlockTableRecordPtr::GetLayoutInfo(TrLayoutInfo& info) {
    if (m_pObj == nullptr)
        return false;
    HostDatabasePort& port = Use<HostDatabasePort>();
    info.blockId = port.IdOf(m_pObj);
    info.strBlockName = port.RecordName(m_pObj);
    info.layoutId = port.LayoutId(m_pObj);
    HvPtr<AcDbLayout> layout(info.layoutId);
    if (layout.m_pObj == nullptr)
        return false;
    info.strLayoutName = port.LayoutName(layout.m_pObj);
    info.nTabOrder = port.TabOrder(layout.m_pObj);
    return true;
}

AcDbCurrentSpace::AcDbCurrentSpace(DbOpenMode mode, HostDatabase* db, bool bOpenErased)
    : AcDbBlockTableRecordPtr(Use<HostDatabasePort>().CurrentSpaceId(Resolve(db)), mode,
                              bOpenErased) {}

AcDbNamedObjectDict::AcDbNamedObjectDict(DbOpenMode mode, HostDatabase* db) : HvPtr(mode, nullptr) {
    m_status = Use<HostDatabasePort>().OpenNamedObjectsDictionary(Resolve(db), mode, m_pObj);
}

AcDbDictionaryPtr::AcDbDictionaryPtr(const std::wstring& name, DbOpenMode mode, HostDatabase* db,
                                     bool bCreate, bool bTreatElementsAsHard)
    : HvPtr(mode, nullptr) {
    HostDatabasePort& port = Use<HostDatabasePort>();
    AcDbNamedObjectDict nod(bCreate ? DbOpenMode::kForWrite : DbOpenMode::kForRead, db);
    if (nod.m_pObj == nullptr) {
        m_status = nod.m_status;
        return;
    }
    for (const auto& [entryName, id] : port.Entries(nod.m_pObj)) {
        if (entryName != name)
            continue;
        m_status = port.Open(id, DbClass::kObject, mode, false, m_pObj);
        if (m_pObj == nullptr)
            return;
        // Open by the general class first, so that an entry of another kind says so.
        port.Close(m_pObj);
        m_pObj = nullptr;
        m_status = port.Open(id, DbClass::kDictionary, mode, false, m_pObj);
        if (m_pObj == nullptr)
            m_status = dbs::kNotThatKindOfClass;
        return;
    }
    if (!bCreate) {
        m_status = dbs::kKeyNotFound;
        return;
    }
    m_status = port.AddDictionary(nod.m_pObj, name, bTreatElementsAsHard, m_pObj);
    m_mode = DbOpenMode::kForWrite;
}

void AcDbDictionaryPtr::GetNames(std::vector<std::wstring>& list) {
    if (m_pObj == nullptr)
        return;
    for (const auto& entry : Use<HostDatabasePort>().Entries(m_pObj))
        list.push_back(entry.first);
}

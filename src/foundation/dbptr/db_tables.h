#pragma once
// The table, space and dictionary pointers the system calls, with their enumerators.

#include <map>
#include <string>
#include <vector>

#include "foundation/dbptr/hv_ptr.h"

// One element of a layout list.
struct TrLayoutInfo {
    DbObjectId blockId = 0;
    std::wstring strBlockName;
    DbObjectId layoutId = 0;
    std::wstring strLayoutName;
    int nTabOrder = 0;
    bool bCurrent = false;
};

class AcDbViewTablePtr : public HvTablePtr<AcDbViewTable> {
public:
    using HvTablePtr::HvTablePtr;
    // View name to id, ordered by case-sensitive comparison. nDependent: 0 only views that are
    // not dependent, 1 only dependent ones, 2 all.
    void GetViews(std::map<std::wstring, DbObjectId>& views, int nDependent);
};

class AcDbBlockTablePtr : public HvTablePtr<AcDbBlockTable> {
public:
    using HvTablePtr::HvTablePtr;
    void GetXrefBlocks(std::vector<DbObjectId>& ids);
    // Each switch: 1 demands the property, 0 forbids it, anything else ignores it.
    void GetBlocks(std::vector<DbObjectId>& ids, int nAnonymous, int nXref, int nLayout,
                   int nDependent, int nModelSpace);
    void GetLayouts(std::vector<TrLayoutInfo>& list, bool bIncludeModel);
    void GetLayoutNames(std::vector<std::wstring>& list, bool bIncludeModel);
    // Opens each entity of each layout once, for reading, in the order of GetLayouts, and hands
    // it to `read`; erased entities and those that cannot be opened are passed over.
    template <class Read>
    void ForEachLayoutEntity(Read read);
};

class AcDbBlockTableRecordPtr : public HvTblRecPtr<AcDbBlockTableRecord, AcDbBlockTable> {
public:
    AcDbBlockTableRecordPtr(DbObjectId id, DbOpenMode mode = DbOpenMode::kForRead,
                            bool bOpenErased = false)
        : HvTblRecPtr(id, mode, bOpenErased) {}
    AcDbBlockTableRecordPtr(const wchar_t* name, DbOpenMode mode = DbOpenMode::kForRead,
                            HostDatabase* db = nullptr, bool bOpenErased = false)
        : HvTblRecPtr(name, mode, db, bOpenErased) {}

    void GetEntityIds(std::vector<DbObjectId>& ids, bool bByEntity);
    // Block id and name, layout id, and the layout's name and tab order. False when the layout
    // cannot be opened (the fields it would give stay as they were).
    bool GetLayoutInfo(TrLayoutInfo& info);
};

template <class Read>
void AcDbBlockTablePtr::ForEachLayoutEntity(Read read) {
    std::vector<TrLayoutInfo> layouts;
    GetLayouts(layouts, true);
    std::vector<DbObjectId> ids;
    for (const TrLayoutInfo& layout : layouts) {
        ids.clear();
        AcDbBlockTableRecordPtr(layout.blockId).GetEntityIds(ids, false);
        for (DbObjectId id : ids) {
            HvPtr<AcDbEntity> entity(id);
            if (entity.m_pObj != nullptr)
                read(entity.m_pObj);
        }
    }
}

class AcDbModelSpace : public AcDbBlockTableRecordPtr {
public:
    explicit AcDbModelSpace(DbOpenMode mode = DbOpenMode::kForRead, HostDatabase* db = nullptr)
        : AcDbBlockTableRecordPtr(L"*Model_Space", mode, db, false) {}
};

class AcDbPaperSpace : public AcDbBlockTableRecordPtr {
public:
    explicit AcDbPaperSpace(DbOpenMode mode = DbOpenMode::kForRead, HostDatabase* db = nullptr,
                            bool bOpenErased = false)
        : AcDbBlockTableRecordPtr(L"*Paper_Space", mode, db, bOpenErased) {}
};

class AcDbCurrentSpace : public AcDbBlockTableRecordPtr {
public:
    explicit AcDbCurrentSpace(DbOpenMode mode = DbOpenMode::kForRead, HostDatabase* db = nullptr,
                              bool bOpenErased = false);
};

class AcDbNamedObjectDict : public HvPtr<AcDbDictionary> {
public:
    explicit AcDbNamedObjectDict(DbOpenMode mode = DbOpenMode::kForRead,
                                 HostDatabase* db = nullptr);
};

class AcDbDictionaryPtr : public HvPtr<AcDbDictionary> {
public:
    using HvPtr::HvPtr;
    // An entry of the named objects dictionary; with bCreate a missing one is made.
    AcDbDictionaryPtr(const std::wstring& name, DbOpenMode mode, HostDatabase* db = nullptr,
                      bool bCreate = false, bool bTreatElementsAsHard = false);
    void GetNames(std::vector<std::wstring>& list);
};

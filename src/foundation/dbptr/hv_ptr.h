#pragma once
// Stack objects over the host's database objects: open in the constructor, keep the status of
// the open, close in the destructor. A user tests m_pObj first and reads m_status only for a
// message.

#include <string>

#include "foundation/dbptr/db_classes.h"
#include "ports/host_database.h"
#include "ports/port.h"

template <class T>
class HvPtr {
public:
    HvPtr(DbObjectId id, DbOpenMode mode = DbOpenMode::kForRead, bool bOpenErased = false,
          bool bLockDoc = false)
        : m_mode(mode) {
        if (id == 0) {
            m_status = dbs::kNullObjectId;  // no host call for an id that is not valid
            return;
        }
        HostDatabasePort& port = Use<HostDatabasePort>();
        if (bLockDoc)
            port.LockDocumentOf(id);
        m_status = port.Open(id, T::desc(), mode, bOpenErased, m_pObj);
        if (bLockDoc)
            port.UnlockDocumentOf(id);
    }
    virtual ~HvPtr() { Close(); }
    HvPtr(const HvPtr&) = delete;
    HvPtr& operator=(const HvPtr&) = delete;

    void Close() {
        if (m_pObj != nullptr) {
            Use<HostDatabasePort>().Close(m_pObj);
            m_pObj = nullptr;
        }
    }
    DbObjectId Id() const { return m_pObj ? Use<HostDatabasePort>().IdOf(m_pObj) : 0; }

    DbObject* m_pObj = nullptr;
    DbStatus m_status = dbs::kOk;
    DbOpenMode m_mode;

protected:
    // For the openers that do not go by id; they fill m_pObj and m_status themselves.
    explicit HvPtr(DbOpenMode mode, std::nullptr_t) : m_mode(mode) {}

    static HostDatabase* Resolve(HostDatabase* db) {
        return db != nullptr ? db : Use<HostDatabasePort>().WorkingDatabase();
    }
    void OpenTable(HostDatabase* db) {
        m_status = Use<HostDatabasePort>().OpenSymbolTable(Resolve(db), T::desc(), m_mode, m_pObj);
    }
};

// A pointer to a symbol table record that can also be opened by its name in its table.
template <class T, class Table>
class HvTblRecPtr : public HvPtr<T> {
public:
    using HvPtr<T>::HvPtr;

    HvTblRecPtr(const wchar_t* name, DbOpenMode mode, HostDatabase* db, bool bOpenErased)
        : HvPtr<T>(mode, nullptr) {
        if (name == nullptr) {
            this->m_status = dbs::kInvalidKey;
            return;
        }
        HostDatabasePort& port = Use<HostDatabasePort>();
        DbObject* table = nullptr;
        this->m_status =
            port.OpenSymbolTable(this->Resolve(db), Table::desc(), DbOpenMode::kForRead, table);
        if (table == nullptr)
            return;
        DbObjectId id = 0;
        this->m_status = port.GetAt(table, name, id);
        port.Close(table);
        if (this->m_status == dbs::kOk) {
            this->m_status = port.Open(id, T::desc(), mode, bOpenErased, this->m_pObj);
        }
    }
};

// A symbol table of the given database, or of the working one when db is null.
template <class T>
class HvTablePtr : public HvPtr<T> {
public:
    explicit HvTablePtr(DbOpenMode mode = DbOpenMode::kForRead, HostDatabase* db = nullptr)
        : HvPtr<T>(mode, nullptr) {
        this->OpenTable(db);
    }
};

class AcDbLayerTablePtr : public HvTablePtr<AcDbLayerTable> {
public:
    using HvTablePtr::HvTablePtr;
};
class AcDbLinetypeTablePtr : public HvTablePtr<AcDbLinetypeTable> {
public:
    using HvTablePtr::HvTablePtr;
};
class AcDbViewportTablePtr : public HvTablePtr<AcDbViewportTable> {
public:
    using HvTablePtr::HvTablePtr;
};
class AcDbTextStyleTablePtr : public HvTablePtr<AcDbTextStyleTable> {
public:
    using HvTablePtr::HvTablePtr;
};
class AcDbDimStyleTablePtr : public HvTablePtr<AcDbDimStyleTable> {
public:
    using HvTablePtr::HvTablePtr;
};
class AcDbRegAppTablePtr : public HvTablePtr<AcDbRegAppTable> {
public:
    using HvTablePtr::HvTablePtr;
};
class AcDbUCSTablePtr : public HvTablePtr<AcDbUCSTable> {
public:
    using HvTablePtr::HvTablePtr;
};

class AcDbBlockReferencePtr : public HvPtr<AcDbBlockReference> {
public:
    using HvPtr::HvPtr;
};

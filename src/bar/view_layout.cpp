#include "bar/view_layout.h"

#include <vector>

#include "foundation/dbptr/db_tables.h"
#include "ports/host_documents.h"
#include "ports/host_services.h"

namespace {

using AcDbViewTableRecordPtr = HvTblRecPtr<AcDbViewTableRecord, AcDbViewTable>;

// The document's write lock for one scope; `m_bLocked` says whether the host gave it.
class DocumentLock {
public:
    explicit DocumentLock(HostDatabase* db)
        : m_db(db), m_bLocked(Use<HostDatabasePort>().LockDocument(db) == dbs::kOk) {}
    ~DocumentLock() {
        if (m_bLocked)
            Use<HostDatabasePort>().UnlockDocument(m_db);
    }
    DocumentLock(const DocumentLock&) = delete;
    DocumentLock& operator=(const DocumentLock&) = delete;

    HostDatabase* m_db;  // not owned
    bool m_bLocked;
};

}  // namespace

DbStatus AddRegApp(HostDatabase* db, const std::wstring& name) {
    AcDbRegAppTablePtr table(DbOpenMode::kForWrite, db);
    if (table.m_pObj == nullptr)
        return table.m_status;
    return Use<HostDatabasePort>().AddRecord(table.m_pObj, name);
}

std::wstring GetViewLayout(const std::wstring& viewName, HostDatabase* db) {
    AcDbViewTableRecordPtr record(viewName.c_str(), DbOpenMode::kForRead, db, false);
    if (record.m_pObj == nullptr)
        return L"";
    auto data = Use<HostDatabasePort>().XData(record.m_pObj, kViewLayoutApp);
    if (!data || data->size() < 2)
        return L"";
    return (*data)[1].text;
}

void SetViewLayout(const std::wstring& viewName, const std::wstring& layoutName,
                   HostDocument* doc) {
    HostDatabase* db = Use<HostDocuments>().Database(doc);
    DocumentLock lock(db);
    if (!lock.m_bLocked)
        return;
    HostDatabasePort& port = Use<HostDatabasePort>();
    DbStatus status = AddRegApp(db, kViewLayoutApp);
    if (status != dbs::kOk && status != dbs::kDuplicateRecordName) {
        // The host's message has no line feed, and is kept so.
        Use<HostServices>().Print(L"Unable to register HVNE_TABROW appid - " +
                                  port.StatusText(status));
        return;
    }
    AcDbViewTableRecordPtr record(viewName.c_str(), DbOpenMode::kForWrite, db, false);
    if (record.m_pObj == nullptr)
        return;
    port.SetIsPaperspaceView(record.m_pObj, true);
    port.SetXData(record.m_pObj, DbXData{{1001, kViewLayoutApp}, {1000, layoutName}});
}

std::wstring SelectViewLayout(const std::wstring& viewName, HostDocument* doc,
                              const ListDialogRunner& runDialog) {
    std::vector<std::wstring> layouts;
    {
        AcDbBlockTablePtr table(DbOpenMode::kForRead, Use<HostDocuments>().Database(doc));
        if (table.m_pObj == nullptr)
            return L"";
        table.GetLayoutNames(layouts, false);
    }
    std::wstring answer;
    if (layouts.size() == 1) {
        answer = layouts.front();
    } else {
        CListDialog dialog;
        dialog.m_strTitle = L"Select Layout for '" + viewName + L"'";
        dialog.m_items = layouts;
        if (!runDialog(dialog) || dialog.m_selected.empty())
            return L"";
        answer = dialog.m_selected.front();
    }
    SetViewLayout(viewName, answer, doc);
    return answer;
}

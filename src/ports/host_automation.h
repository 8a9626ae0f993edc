#pragma once
// The host's automation application object. A failed call throws ComError.

#include <string>

struct HostApplication;
struct HostDatabase;
struct HostAutoDocument;     // a drawing's automation document
struct HostSheetSetManager;  // the host's sheet set manager object

class HostAutomation {
public:
    virtual ~HostAutomation() = default;
    // The application object with one reference held for the caller; throws ComError, with
    // hr::kNoInterface when the host offers none.
    virtual HostApplication* QueryApplication() = 0;
    virtual void Release(HostApplication* app) = 0;

    // Application.Documents.Count; throws ComError.
    virtual int DocumentCount(HostApplication* app) = 0;

    // The OLE link manager's way from a database to its document: false when the host has no
    // link manager. The document comes with one reference held, or null when the database's
    // object offers no document interface (E_NOINTERFACE); other failures throw ComError.
    virtual bool HasOleLinkManager() = 0;
    virtual HostAutoDocument* DocumentOfDatabase(HostDatabase* db) = 0;
    virtual void Release(HostAutoDocument* doc) = 0;
    // Document.GetVariable of an integer variable; throws ComError.
    virtual int GetIntVariable(HostAutoDocument* doc, const std::wstring& name) = 0;

    // A new sheet set manager object with one reference held; throws ComError when it cannot
    // be made (a host without sheet sets).
    virtual HostSheetSetManager* CreateSheetSetManager() = 0;
    virtual void Release(HostSheetSetManager* manager) = 0;
};

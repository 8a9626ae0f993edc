#pragma once
// The host's document manager as far as the core asks it. Documents and databases are opaque:
// the core only passes them back.

#include <string>
#include <vector>

struct HostDocument;
struct HostDatabase;

class HostDocuments {
public:
    virtual ~HostDocuments() = default;

    virtual HostDocument* MdiActiveDocument() = 0;  // null while no drawing is open
    virtual HostDocument* CurDocument() = 0;
    virtual std::vector<HostDocument*> Documents() = 0;  // in the order the host opened them
    virtual HostDocument* DocumentOf(HostDatabase* db) = 0;

    // setCurDocument(doc, kNone, true) and activateDocument(doc, false): the two ways the bar
    // asks for a switch; the host may defer the real switch.
    virtual void SetCurDocument(HostDocument* doc) = 0;
    virtual void ActivateDocument(HostDocument* doc) = 0;

    virtual std::wstring FileName(HostDocument* doc) = 0;  // full path as the host keeps it
    // The document object's path name: empty for a drawing that was never saved.
    virtual std::wstring PathName(HostDocument* doc) = 0;
    virtual bool IsQuiescent(HostDocument* doc) = 0;  // no command is running in it
    virtual std::wstring Title(HostDocument* doc) = 0;
    virtual bool IsReadOnly(HostDocument* doc) = 0;
    virtual bool IsModified(HostDocument* doc) = 0;  // DBMOD != 0
    virtual HostDatabase* Database(HostDocument* doc) = 0;
    // popDbmod: DBMOD back to the value the host pushed before it changed it on its own.
    virtual void PopDbmod(HostDocument* doc) = 0;
    // appContextNewDocument: a new drawing from a template ("" for the default) while no
    // document is there to run automation in.
    virtual void AppContextNewDocument(const std::wstring& templateName) = 0;
};

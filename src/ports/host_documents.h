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

    virtual std::wstring FileName(HostDocument* doc) = 0;  // full path as the host keeps it
    virtual std::wstring Title(HostDocument* doc) = 0;
    virtual bool IsReadOnly(HostDocument* doc) = 0;
    virtual bool IsModified(HostDocument* doc) = 0;  // DBMOD != 0
    virtual HostDatabase* Database(HostDocument* doc) = 0;
};

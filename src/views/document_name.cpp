#include "views/document_name.h"

#include "foundation/file_path.h"
#include "ports/host_documents.h"
#include "ports/port.h"

std::wstring DocumentPath(HostDocument* doc) {
    HostDocuments& docs = Use<HostDocuments>();
    std::wstring path = docs.PathName(doc);
    return path.empty() ? docs.FileName(doc) : path;
}

std::wstring GetDocumentName(HostDocument* doc, bool bFullPath) {
    HostDocuments& docs = Use<HostDocuments>();
    CFilePath path(docs.PathName(doc));
    if (path.GetFileTitle().empty())
        path.SetPath(docs.FileName(doc));
    return bFullPath ? path.GetPath() : path.GetFileTitle();
}

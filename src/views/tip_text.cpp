#include "views/tip_text.h"

#include "foundation/file_path.h"
#include "ports/drawing_summary.h"
#include "ports/host_documents.h"
#include "ports/port.h"
#include "views/document_name.h"

std::wstring SummaryTipLines(const DrawingSummary& summary) {
    std::wstring text;
    const auto line = [&text](const std::wstring& label, const std::wstring& value) {
        if (!value.empty())
            text += L"\n" + label + value;
    };
    line(L"Author: ", summary.author);
    line(L"Title: ", summary.title);
    line(L"Subject: ", summary.subject);
    line(L"Keywords: ", summary.keywords);
    line(L"Comments: ", summary.comments);
    line(L"LastSavedBy: ", summary.lastSavedBy);
    line(L"RevisionNumber: ", summary.revisionNumber);
    line(L"HyperlinkBase: ", summary.hyperlinkBase);
    for (const auto& [key, value] : summary.custom)
        line(key + L": ", value);
    return text;
}

std::wstring DrawingTipText(HostDocument* doc, bool bFullPath, bool bWithProperties) {
    const CFilePath path(DocumentPath(doc));
    std::wstring text = bFullPath ? path.GetPath() : path.GetFileName();
    DrawingSummary summary;
    if (bWithProperties && IsInstalled<DrawingSummaries>() &&
        Use<DrawingSummaries>().Read(Use<HostDocuments>().Database(doc), summary))
        text += SummaryTipLines(summary);
    return text;
}

#pragma once
// The marker that ties a paper space view to its layout: extended data on the view's record
// under the registered application HVNE_TABROW, the application's name (1001) and then the
// layout's name (1000). It lives in the drawing, so it outlasts the session.

#include <string>

#include "bar/list_dialog.h"
#include "ports/host_database.h"

struct HostDocument;

inline constexpr wchar_t kViewLayoutApp[] = L"HVNE_TABROW";

// Registers an application name; kDuplicateRecordName when it is there already.
DbStatus AddRegApp(HostDatabase* db, const std::wstring& name);
// The layout of the view's marker; empty when anything is missing.
std::wstring GetViewLayout(const std::wstring& viewName, HostDatabase* db);
// Makes the view a paper space view of `layoutName`, with the document locked.
void SetViewLayout(const std::wstring& viewName, const std::wstring& layoutName,
                   HostDocument* doc);
// The layout for a paper space view without a marker: the drawing's only layout, or the one the
// user picks in the list dialog. The answer is written as the view's marker, so the question
// comes once per view. Empty when cancelled or nothing can be read.
std::wstring SelectViewLayout(const std::wstring& viewName, HostDocument* doc,
                              const ListDialogRunner& runDialog);

#pragma once
// The listers of what a drawing holds: xrefs, images, linked OLE objects, hyperlinks, layouts,
// layer states and named views. Each takes one menu id per row from the running counter and
// advances it. A null database gives "None Found" rows; what cannot be read gives fewer rows,
// never a message.

#include <map>
#include <string>

#include "foundation/file_path.h"
#include "ports/host_database.h"

// The text of the one row of a list that has nothing to show; rows are recognised by it.
inline constexpr wchar_t kNoneFound[] = L"None Found";

// A named view as the menu knows it.
struct ViewItem {
    bool bModelSpace = true;  // not a paper space view
    std::wstring strName;
    std::wstring strLayout;  // the layout a paper space view belongs to
    DbPoint2d ptCenter;
    friend bool operator==(const ViewItem&, const ViewItem&) = default;
};

using TrPathRows = std::map<unsigned, CFilePath>;
using TrTextRows = std::map<unsigned, std::wstring>;
using TrViewRows = std::map<unsigned, ViewItem>;

void ListReferences(unsigned* pNextId, TrPathRows* xrefs, TrPathRows* images,
                    TrPathRows* oleLinks, TrPathRows* hyperlinks, HostDatabase* db,
                    bool bNoneFound);
void ListLayouts(unsigned* pNextId, TrTextRows* layouts, HostDatabase* db, bool bNoneFound);
void ListLayerStates(unsigned* pNextId, TrTextRows* states, HostDatabase* db, bool bNoneFound);
void ListViews(unsigned* pNextId, TrViewRows* views, HostDatabase* db, bool bNoneFound);

#include "bar/drawing_contents.h"

#include <unordered_set>
#include <vector>

#include "bar/view_layout.h"
#include "foundation/dbptr/db_tables.h"
#include "foundation/no_case.h"

namespace {

// getLinkPath writes into a buffer of this many characters.
constexpr std::size_t kLinkPathChars = 260;
constexpr int kOleLinked = 1;

// The texts of one kind that have a row already, compared without regard to case; the row
// keeps the spelling met first.
class FoundTexts {
public:
    void Add(const std::wstring& text) {
        std::wstring folded = text;
        for (wchar_t& c : folded)
            c = FoldCase(c);
        if (m_seen.insert(std::move(folded)).second)
            m_texts.push_back(text);
    }
    const std::vector<std::wstring>& Texts() const { return m_texts; }

private:
    std::unordered_set<std::wstring> m_seen;
    std::vector<std::wstring> m_texts;
};

template <class Rows>
void Deal(unsigned* pNextId, Rows* rows, const std::vector<std::wstring>& texts,
          bool bNoneFound) {
    for (const std::wstring& text : texts)
        (*rows)[(*pNextId)++] = text;
    if (bNoneFound && texts.empty())
        (*rows)[(*pNextId)++] = std::wstring(kNoneFound);
}

std::vector<std::wstring> XrefFiles(AcDbBlockTablePtr& table) {
    HostDatabasePort& port = Use<HostDatabasePort>();
    std::vector<DbObjectId> ids;
    table.GetXrefBlocks(ids);
    FoundTexts found;
    for (DbObjectId id : ids) {
        AcDbBlockTableRecordPtr record(id);
        if (record.m_pObj == nullptr)
            continue;
        if (auto name = port.XrefFileName(record.m_pObj))
            found.Add(*name);
    }
    return found.Texts();
}

// Images, linked OLE objects and hyperlinks of the layouts' entities. Each entity is opened once
// and asked for all three kinds; the rows come out as if each kind had had a walk of its own.
struct EntityReferences {
    FoundTexts images;
    FoundTexts oleLinks;
    FoundTexts hyperlinks;

    void Read(HostDatabasePort& port, DbObject* entity) {
        if (port.IsKindOf(entity, DbClass::kRasterImage)) {
            HvPtr<AcDbRasterImageDef> def(port.ImageDefId(entity));
            if (def.m_pObj != nullptr) {
                if (auto name = port.ImageFileName(def.m_pObj))
                    images.Add(*name);
            }
        } else if (port.IsKindOf(entity, DbClass::kOle2Frame) &&
                   port.OleType(entity) == kOleLinked) {
            std::wstring path;
            if (port.GetLinkPath(entity, path, kLinkPathChars))
                oleLinks.Add(path);
        }
        // A block reference counts its definition's hyperlinks here, but only the entity's own
        // are listed; the definitions' follow separately.
        if (port.HasHyperlink(entity)) {
            for (const std::wstring& name : port.HyperlinkNames(entity))
                hyperlinks.Add(name);
        }
    }
};

void ReadBlockHyperlinks(AcDbBlockTablePtr& table, FoundTexts& hyperlinks) {
    HostDatabasePort& port = Use<HostDatabasePort>();
    std::vector<DbObjectId> blocks;
    table.GetBlocks(blocks, 0, 0, 0, 0, 0);
    for (DbObjectId id : blocks) {
        AcDbBlockTableRecordPtr block(id);
        if (block.m_pObj == nullptr)
            continue;
        for (const std::wstring& name : port.HyperlinkNames(block.m_pObj))
            hyperlinks.Add(name);
    }
}

}  // namespace

void ListReferences(unsigned* pNextId, TrPathRows* xrefs, TrPathRows* images,
                    TrPathRows* oleLinks, TrPathRows* hyperlinks, HostDatabase* db,
                    bool bNoneFound) {
    TrPathRows* all[] = {xrefs, images, oleLinks, hyperlinks};
    for (TrPathRows* rows : all)
        rows->clear();
    if (db == nullptr) {
        // The menu's decoding needs a row in each, whatever the caller asked.
        for (TrPathRows* rows : all)
            (*rows)[(*pNextId)++] = std::wstring(kNoneFound);
        return;
    }
    AcDbBlockTablePtr table(DbOpenMode::kForRead, db);
    if (table.m_pObj == nullptr)
        return;
    std::vector<std::wstring> xrefFiles = XrefFiles(table);
    EntityReferences refs;
    HostDatabasePort& port = Use<HostDatabasePort>();
    table.ForEachLayoutEntity([&](DbObject* entity) { refs.Read(port, entity); });
    ReadBlockHyperlinks(table, refs.hyperlinks);
    table.Close();

    Deal(pNextId, xrefs, xrefFiles, bNoneFound);
    Deal(pNextId, images, refs.images.Texts(), bNoneFound);
    Deal(pNextId, oleLinks, refs.oleLinks.Texts(), bNoneFound);
    Deal(pNextId, hyperlinks, refs.hyperlinks.Texts(), bNoneFound);
}

void ListLayouts(unsigned* pNextId, TrTextRows* layouts, HostDatabase* db, bool bNoneFound) {
    layouts->clear();
    if (db == nullptr) {
        (*layouts)[(*pNextId)++] = kNoneFound;
        return;
    }
    AcDbBlockTablePtr table(DbOpenMode::kForRead, db);
    if (table.m_pObj == nullptr)
        return;
    // Block table order, model space included: the rows do not follow the tabs.
    std::vector<std::wstring> names;
    table.GetLayoutNames(names, true);
    Deal(pNextId, layouts, names, bNoneFound);
}

void ListLayerStates(unsigned* pNextId, TrTextRows* states, HostDatabase* db, bool bNoneFound) {
    states->clear();
    if (db == nullptr) {
        (*states)[(*pNextId)++] = kNoneFound;
        return;
    }
    std::vector<std::wstring> names;
    AcDbDictionaryPtr(Use<HostDatabasePort>().LayerStatesDictionaryId(db)).GetNames(names);
    Deal(pNextId, states, names, bNoneFound);
}

void ListViews(unsigned* pNextId, TrViewRows* views, HostDatabase* db, bool bNoneFound) {
    views->clear();
    const ViewItem noneFound{true, kNoneFound, L"", {}};
    if (db == nullptr) {
        (*views)[(*pNextId)++] = noneFound;
        return;
    }
    std::map<std::wstring, DbObjectId> ids;
    {
        // Closed before the records are opened, and before GetViewLayout opens it again.
        AcDbViewTablePtr table(DbOpenMode::kForRead, db);
        table.GetViews(ids, 0);
    }
    HostDatabasePort& port = Use<HostDatabasePort>();
    for (const auto& [name, id] : ids) {
        HvPtr<AcDbViewTableRecord> record(id);
        if (record.m_pObj == nullptr)
            continue;
        ViewItem item;
        item.bModelSpace = !port.IsPaperspaceView(record.m_pObj);
        item.strName = name;
        item.ptCenter = port.CenterPoint(record.m_pObj);
        record.Close();
        if (!item.bModelSpace)
            item.strLayout = GetViewLayout(name, db);
        (*views)[(*pNextId)++] = item;
    }
    if (bNoneFound && views->empty())
        (*views)[(*pNextId)++] = noneFound;
}

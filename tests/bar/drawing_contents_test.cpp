#include "bar/drawing_contents.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "bar/view_layout.h"
#include "platform/sim/sim_file_system.h"
#include "platform/sim/sim_host.h"
#include "support/test_files.h"

namespace {

using Texts = std::vector<std::wstring>;
const Texts kNone{kNoneFound};
enum Kind { kLayouts, kXrefs, kImages, kOleLinks, kHyperlinks, kLayerStates, kViews, kKinds };

// Every lister over one database in the menu's order, from the menu's first id.
struct Listing {
    TrTextRows layouts, states;
    TrPathRows xrefs, images, oleLinks, hyperlinks;
    TrViewRows views;
    unsigned next = 5000;

    Listing(HostDatabase* db, bool bNoneFound = true) {
        ListLayouts(&next, &layouts, db, bNoneFound);
        ListReferences(&next, &xrefs, &images, &oleLinks, &hyperlinks, db, bNoneFound);
        ListLayerStates(&next, &states, db, bNoneFound);
        ListViews(&next, &views, db, bNoneFound);
    }
    // The row texts of each kind, after checking that the ids run on without a gap.
    std::vector<Texts> ByKind() const {
        std::vector<Texts> texts;
        unsigned expected = 5000;
        auto take = [&](const auto& rows) {
            texts.emplace_back();
            for (const auto& [id, row] : rows) {
                EXPECT_EQ(id, expected++);
                texts.back().push_back(Text(row));
            }
        };
        take(layouts), take(xrefs), take(images), take(oleLinks), take(hyperlinks);
        take(states), take(views);
        EXPECT_EQ(next, expected);
        return texts;
    }
    static std::wstring Text(const std::wstring& s) { return s; }
    static std::wstring Text(const CFilePath& p) { return p.GetPath(); }
    static std::wstring Text(const ViewItem& v) { return v.strName; }
};

class DrawingContentsTest : public ::testing::Test {
protected:
    ScratchFolder scratch;
    SimFileSystem files{scratch.Folder()};
    ScopedPort<FileSystem> disk{files};
    std::unique_ptr<SimHost> host;
    HostDocument* doc = nullptr;
    SimDatabase* db = nullptr;

    DrawingContentsTest() { NewDrawing(); }
    void NewDrawing() {
        host.reset();
        host = std::make_unique<SimHost>();
        doc = host->OpenDrawing(L"C:\\jobs\\site.dwg");
        db = &host->DatabaseOf(doc);
    }
    DbObjectId Model() const { return db->ModelSpaceId(); }
};

// How to put the i-th thing of a kind, whose row reads `text`, into a drawing.
struct KindCase {
    Kind kind;
    const wchar_t* prefix;
    void (*add)(SimDatabase& db, const std::wstring& text, int i);
    Texts base;  // what a new drawing lists
};
#define ADD [](SimDatabase & db, const std::wstring& text, [[maybe_unused]] int i)
const KindCase kKindCases[] = {
    {kLayouts, L"Sheet ", ADD { db.AddLayout(text, i + 2); }, {L"Model", L"Layout1"}},
    {kXrefs, L"C:\\refs\\x", ADD { db.AddXref(L"X" + std::to_wstring(i), text); }, {}},
    {kImages, L"C:\\img\\", ADD { db.AddImage(db.PaperSpaceId(), db.AddImageDef(text)); }, {}},
    {kOleLinks, L"C:\\ole\\", ADD { db.AddOleFrame(db.ModelSpaceId(), 1, text); }, {}},
    {kHyperlinks, L"http://h/",
     ADD { db.AddHyperlink(db.AddEntity(db.ModelSpaceId(), DbClass::kLine), text); }, {}},
    {kLayerStates, L"State ", ADD { db.AddLayerState(text); }, {}},
    {kViews, L"View ", ADD { db.AddView(text); }, {}},
};
#undef ADD

TEST_F(DrawingContentsTest, EachListerGivesNoneOneOrManyRowsOnTheRunningCounter) {
    for (const KindCase& c : kKindCases) {
        for (int count : {0, 1, 3}) {
            SCOPED_TRACE(testing::Message() << "kind " << c.kind << ", " << count << " added");
            NewDrawing();
            Texts added = c.base;
            for (int i = 0; i < count; ++i) {
                added.push_back(c.prefix + std::to_wstring(i));
                c.add(*db, added.back(), i);
            }
            std::vector<Texts> texts = Listing(db->Handle()).ByKind();
            for (const KindCase& other : kKindCases) {
                Texts expected = other.kind == c.kind ? added : other.base;
                EXPECT_EQ(texts[other.kind], expected.empty() ? kNone : expected);
            }
            EXPECT_EQ(Listing(db->Handle(), false).ByKind()[c.kind], added);
            EXPECT_EQ(db->OpenCount(), 0);
        }
    }
}

TEST_F(DrawingContentsTest, ANullDatabaseGivesOneNoneFoundRowInEveryList) {
    Listing listing(nullptr, false);
    EXPECT_EQ(listing.ByKind(), std::vector<Texts>(kKinds, kNone));
    EXPECT_TRUE(listing.views.at(5006).bModelSpace);
}

TEST_F(DrawingContentsTest, ReferencesAreListedOncePerTextAndOnlyWhenReadable) {
    db->AddXref(L"A", L"C:\\Refs\\Base.dwg");
    db->AddXref(L"B", L"c:\\refs\\BASE.DWG");     // the same file in other letters
    db->AddXref(L"C", L"C:\\refs\\gone.dwg", false);  // not resolved
    db->AddXref(L"D", L"");                            // a database without a name
    DbObjectId def = db->AddImageDef(L"C:\\Refs\\Base.dwg");
    db->AddImage(Model(), def);
    db->AddImage(db->PaperSpaceId(), def);
    db->AddImage(Model(), db->AddImageDef(L""));
    db->Erase(db->AddImage(Model(), db->AddImageDef(L"C:\\img\\erased.png")));
    DbObjectId door = db->AddBlock(L"Door");
    db->AddImage(door, db->AddImageDef(L"C:\\img\\in-a-block.png"));  // not in a layout
    db->FailOpens(db->AddOleFrame(Model(), 1, L"C:\\ole\\locked.xls"), dbs::kWasOpenForWrite);
    db->AddOleFrame(Model(), 2, L"C:\\ole\\embedded.doc");
    db->AddOleFrame(Model(), 1, L"C:\\" + std::wstring(257, L'x'));  // no room for the end
    db->AddOleFrame(Model(), 1, L"C:\\" + std::wstring(256, L'y'));
    db->AddHyperlink(door, L"http://door");
    db->AddHyperlink(door, L"http://shared");
    DbObjectId ref = db->AddBlockReference(Model(), door);
    db->AddHyperlink(db->AddEntity(Model(), DbClass::kLine), L"HTTP://SHARED");
    db->AddHyperlink(ref, L"http://ref");

    std::vector<Texts> texts = Listing(db->Handle()).ByKind();
    EXPECT_EQ(texts[kXrefs], (Texts{L"C:\\Refs\\Base.dwg"}));
    EXPECT_EQ(texts[kImages], (Texts{L"C:\\Refs\\Base.dwg"}));
    EXPECT_EQ(texts[kOleLinks], (Texts{L"C:\\" + std::wstring(256, L'y')}));
    EXPECT_EQ(texts[kHyperlinks], (Texts{L"http://ref", L"HTTP://SHARED", L"http://door"}));
    EXPECT_EQ(db->OpenCount(), 0);

    db->RemoveTable(DbClass::kBlockTable);
    Listing noTable(db->Handle());
    EXPECT_TRUE(noTable.xrefs.empty() && noTable.hyperlinks.empty() && noTable.layouts.empty());
}

TEST_F(DrawingContentsTest, MissingManagersTablesAndRecordsGiveFewerRows) {
    db->SetHasLayerStateManager(false);
    db->AddLayerState(L"Hidden");
    db->AddView(L"Base|Plan", true);  // a view of an attached xref
    db->FailOpens(db->AddView(L"Locked"), dbs::kWasOpenForWrite);
    db->AddView(L"Open");
    std::vector<Texts> texts = Listing(db->Handle()).ByKind();
    EXPECT_EQ(texts[kLayerStates], kNone);
    EXPECT_EQ(texts[kViews], (Texts{L"Open"}));
    db->RemoveTable(DbClass::kViewTable);
    EXPECT_EQ(Listing(db->Handle()).ByKind()[kViews], kNone);
}

// The user's part of the list dialog: picks the row called `pick`, or cancels when it is
// empty. Every dialog shown is kept in `shown`.
ListDialogRunner Answer(const std::wstring& pick, std::vector<CListDialog>& shown) {
    return [pick, &shown](CListDialog& dialog) {
        shown.push_back(dialog);
        dialog.OnSelChange([&](int row) { return dialog.m_items.at(row) == pick; });
        return !pick.empty();
    };
}

TEST_F(DrawingContentsTest, APaperSpaceViewIsFoundAgainByItsMarker) {
    db->AddPaperspaceView(L"North wing", {10, 20});  // saved before the marker existed
    std::vector<CListDialog> shown;
    EXPECT_EQ(SelectViewLayout(L"North wing", doc, Answer(L"", shown)), L"Layout1");
    EXPECT_TRUE(shown.empty());  // one layout: no question
    db->AddView(L"South");             // a view saved from the menu in paper space
    SetViewLayout(L"South", L"Layout1", doc);
    EXPECT_EQ(host->DatabasePort().LocksTaken(), 2);
    EXPECT_EQ(host->DatabasePort().LockDepth(), 0);
    TrViewRows views = Listing(db->Handle()).views;
    ASSERT_EQ(views.size(), 2u);
    EXPECT_EQ(views.begin()->second, (ViewItem{false, L"North wing", L"Layout1", {10, 20}}));
    EXPECT_EQ(views.rbegin()->second, (ViewItem{false, L"South", L"Layout1", {}}));
}

TEST_F(DrawingContentsTest, WithSeveralLayoutsTheUserChoosesOrCancels) {
    db->AddLayout(L"Sheet B", 2);
    db->AddView(L"East");
    std::vector<CListDialog> shown;
    EXPECT_EQ(SelectViewLayout(L"East", doc, Answer(L"", shown)), L"");
    EXPECT_EQ(SelectViewLayout(L"East", doc, Answer(L"No row", shown)), L"");  // OK, none chosen
    EXPECT_EQ(GetViewLayout(L"East", db->Handle()), L"");
    EXPECT_EQ(SelectViewLayout(L"East", doc, Answer(L"Sheet B", shown)), L"Sheet B");
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_EQ(shown[2].m_strTitle, L"Select Layout for 'East'");
    EXPECT_EQ(shown[2].m_items, (Texts{L"Layout1", L"Sheet B"}));
    EXPECT_EQ(GetViewLayout(L"East", db->Handle()), L"Sheet B");
}

TEST_F(DrawingContentsTest, AMarkerIsNotWrittenWhenItsApplicationCannotBeRegistered) {
    db->AddView(L"West");
    db->RemoveTable(DbClass::kRegAppTable);
    SetViewLayout(L"West", L"Layout1", doc);
    EXPECT_EQ(host->CommandLineText(),
              L"Unable to register HVNE_TABROW appid - eNotThatKindOfClass");
    EXPECT_EQ(host->DatabasePort().LockDepth(), 0);
    EXPECT_EQ(Listing(db->Handle()).views.begin()->second.bModelSpace, true);
    host->DatabasePort().RefuseLocks(dbs::kLockViolation);
    SetViewLayout(L"West", L"Layout1", doc);  // no lock, no write, no word
    EXPECT_EQ(host->DatabasePort().LocksTaken(), 1);
}

TEST(ListDialogTest, TheInitialTextIsSelectedAndSelectionsFollowTheList) {
    const std::pair<std::wstring, int> kInitialRows[] = {
        {L"", -1}, {L"sheet", 1}, {L"Layout1", 0}, {L"Z", -1}};
    for (const auto& [initial, row] : kInitialRows) {
        CListDialog dialog;
        dialog.m_items = {L"Layout1", L"Sheet B", L"Sheet C"};
        dialog.m_strInitial = initial;
        EXPECT_EQ(dialog.OnInitDialog(), row);
        EXPECT_EQ(dialog.m_selected, initial.empty() ? Texts{} : Texts{initial});
        dialog.OnSelChange([](int i) {
            EXPECT_LT(i, 3);
            return i > 0;
        });
        EXPECT_EQ(dialog.m_selected, (Texts{L"Sheet B", L"Sheet C"}));
    }
    CListDialog dialog;
    EXPECT_EQ(dialog.SetItems({}), -1);
    EXPECT_EQ(dialog.SetItems({L"A"}), 0);
}

}  // namespace

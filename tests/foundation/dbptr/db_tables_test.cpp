#include "foundation/dbptr/db_tables.h"

#include <gtest/gtest.h>

#include "platform/sim/sim_host.h"

namespace {

class DbPtrTest : public ::testing::Test {
protected:
    SimHost host;
    HostDocument* doc = host.OpenDrawing(L"/drawings/site.dwg");
    SimDatabase& db = host.DatabaseOf(doc);
};

TEST_F(DbPtrTest, OpenFailuresCarryTheHostStatusAndCloseNothing) {
    HvPtr<AcDbEntity> nullId(0);
    EXPECT_EQ(nullId.m_pObj, nullptr);
    EXPECT_EQ(nullId.m_status, dbs::kNullObjectId);

    AcDbBlockTableRecordPtr nullName(static_cast<const wchar_t*>(nullptr));
    EXPECT_EQ(nullName.m_pObj, nullptr);
    EXPECT_EQ(nullName.m_status, dbs::kInvalidKey);

    AcDbBlockTableRecordPtr missing(L"NoSuchBlock");
    EXPECT_EQ(missing.m_pObj, nullptr);
    EXPECT_EQ(missing.m_status, dbs::kKeyNotFound);
    EXPECT_EQ(db.OpenCount(), 0);
}

// Every class the pointers open by: an object of that class opens, an entity opens as an
// entity too, and an object of another class is refused. This is how the system tells which
// kind of entity an id is.
struct ClassCase {
    const char* name;
    DbClass cls;
    bool (*opens)(DbObjectId id);
    bool isEntity;
};
#define TABROW_OPENS(T) \
    #T, DbClass::k##T, [](DbObjectId id) { return HvPtr<AcDb##T>(id).m_pObj != nullptr; }
// clang-format off
const ClassCase kClassCases[] = {
    {TABROW_OPENS(RasterImage), true},     {TABROW_OPENS(RasterImageDef), false},
    {TABROW_OPENS(Ole2Frame), true},       {TABROW_OPENS(Viewport), true},
    {TABROW_OPENS(BlockReference), true},  {TABROW_OPENS(Layout), false},
    {TABROW_OPENS(VisualStyle), false},    {TABROW_OPENS(Attribute), true},
    {TABROW_OPENS(AttributeDefinition), true},
};
// clang-format on
#undef TABROW_OPENS

TEST_F(DbPtrTest, EachClassInstanceOpensItsOwnClassOnly) {
    DbObjectId line = db.AddEntity(db.ModelSpaceId(), DbClass::kLine);
    DbObjectId plain = db.AddDictionaryEntry(L"PLAIN", DbClass::kObject);
    for (const ClassCase& c : kClassCases) {
        SCOPED_TRACE(c.name);
        DbObjectId id = c.isEntity ? db.AddEntity(db.ModelSpaceId(), c.cls)
                                   : db.AddDictionaryEntry(L"ENTRY", c.cls);
        EXPECT_TRUE(c.opens(id));
        EXPECT_FALSE(c.opens(line));
        EXPECT_FALSE(c.opens(plain));
        EXPECT_EQ(HvPtr<AcDbEntity>(id).m_pObj != nullptr, c.isEntity);
        HvPtr<AcDbObject> held(id);
        EXPECT_EQ(db.OpenCount(), 1);  // open for the pointer's life, closed after
    }
    EXPECT_EQ(HvPtr<AcDbRasterImage>(line).m_status, dbs::kNotThatKindOfClass);
    EXPECT_EQ(db.OpenCount(), 0);  // the destructors closed what they opened
}

TEST_F(DbPtrTest, WriteOpensExcludeEachOtherAndLockingIsReleasedRightAfter) {
    DbObjectId line = db.AddEntity(db.ModelSpaceId(), DbClass::kLine);
    HvPtr<AcDbEntity> writer(line, DbOpenMode::kForWrite, false, true);
    ASSERT_NE(writer.m_pObj, nullptr);
    EXPECT_EQ(host.DatabasePort().LocksTaken(), 1);
    EXPECT_EQ(host.DatabasePort().LockDepth(), 0);
    HvPtr<AcDbEntity> second(line);
    EXPECT_EQ(second.m_pObj, nullptr);
    EXPECT_EQ(second.m_status, dbs::kWasOpenForWrite);
}

TEST_F(DbPtrTest, SpacesOpenByNameAndByTheCurrentSpace) {
    AcDbModelSpace model;
    AcDbPaperSpace paper;
    EXPECT_EQ(model.Id(), db.ModelSpaceId());
    EXPECT_EQ(paper.Id(), db.PaperSpaceId());
    model.Close();
    paper.Close();
    db.SetCurrentLayout(db.ModelSpaceId());
    EXPECT_EQ(AcDbCurrentSpace().Id(), db.ModelSpaceId());
    db.SetCurrentLayout(db.PaperSpaceId());
    EXPECT_EQ(AcDbCurrentSpace().Id(), db.PaperSpaceId());
}

TEST_F(DbPtrTest, GetBlocksAppliesItsFiveSwitches) {
    DbObjectId named = db.AddBlock(L"Door");
    DbObjectId anonymous = db.AddBlock(L"*U1", DbBlockFlags{true, false, false, false});
    DbObjectId xref = db.AddXref(L"Base", L"C:\\refs\\base.dwg");
    DbObjectId dependent = db.AddBlock(L"Base|Window", DbBlockFlags{false, false, false, true});

    AcDbBlockTablePtr table;
    std::vector<DbObjectId> ordinary;
    table.GetBlocks(ordinary, 0, 0, 0, 0, 0);
    EXPECT_EQ(ordinary, (std::vector<DbObjectId>{named}));

    std::vector<DbObjectId> layoutsAndModel;
    table.GetBlocks(layoutsAndModel, 2, 2, 1, 2, 2);
    EXPECT_EQ(layoutsAndModel, (std::vector<DbObjectId>{db.ModelSpaceId(), db.PaperSpaceId()}));

    std::vector<DbObjectId> modelOnly;
    table.GetBlocks(modelOnly, 2, 2, 0, 2, 1);  // the layout switch is not asked of model space
    EXPECT_EQ(modelOnly, (std::vector<DbObjectId>{db.ModelSpaceId()}));

    std::vector<DbObjectId> each;
    table.GetBlocks(each, 1, 2, 2, 2, 2);
    table.GetBlocks(each, 2, 2, 2, 1, 2);
    EXPECT_EQ(each, (std::vector<DbObjectId>{anonymous, dependent}));

    std::vector<DbObjectId> xrefs;
    table.GetXrefBlocks(xrefs);
    EXPECT_EQ(xrefs, (std::vector<DbObjectId>{xref}));
}

TEST_F(DbPtrTest, ARecordThatCannotBeOpenedIsPassedOver) {
    DbObjectId busy = db.AddBlock(L"Busy");
    DbObjectId free = db.AddBlock(L"Free");
    AcDbBlockTableRecordPtr writer(busy, DbOpenMode::kForWrite);
    ASSERT_NE(writer.m_pObj, nullptr);
    AcDbBlockTablePtr table;
    std::vector<DbObjectId> ids;
    table.GetBlocks(ids, 0, 0, 0, 0, 0);
    EXPECT_EQ(ids, (std::vector<DbObjectId>{free}));
}

TEST_F(DbPtrTest, LayoutsComeInTableOrderWithTheActiveOneMarked) {
    DbObjectId second = db.AddLayout(L"Sheet B", 2);
    db.SetCurrentLayout(second);

    AcDbBlockTablePtr table;
    std::vector<TrLayoutInfo> withModel;
    table.GetLayouts(withModel, true);
    ASSERT_EQ(withModel.size(), 3u);
    EXPECT_EQ(withModel[0].strBlockName, L"*Model_Space");
    EXPECT_EQ(withModel[0].strLayoutName, L"Model");
    EXPECT_EQ(withModel[1].strLayoutName, L"Layout1");
    EXPECT_EQ(withModel[1].nTabOrder, 1);
    EXPECT_EQ(withModel[2].strBlockName, L"*Paper_Space0");
    EXPECT_EQ(withModel[2].blockId, second);
    EXPECT_TRUE(withModel[2].bCurrent);
    EXPECT_FALSE(withModel[0].bCurrent || withModel[1].bCurrent);

    std::vector<std::wstring> names;
    table.GetLayoutNames(names, false);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"Layout1", L"Sheet B"}));
    table.Close();
    EXPECT_EQ(db.OpenCount(), 0);
}

TEST_F(DbPtrTest, ViewsAreSortedCaseSensitivelyAndFilteredByDependency) {
    DbObjectId b = db.AddView(L"b-north");
    DbObjectId a = db.AddView(L"A-east");
    DbObjectId dep = db.AddView(L"Base|plan", true);
    db.Erase(db.AddView(L"gone"));

    AcDbViewTablePtr table;
    std::map<std::wstring, DbObjectId> own, deps, all;
    table.GetViews(own, 0);
    table.GetViews(deps, 1);
    table.GetViews(all, 2);
    EXPECT_EQ(own, (std::map<std::wstring, DbObjectId>{{L"A-east", a}, {L"b-north", b}}));
    EXPECT_EQ(deps, (std::map<std::wstring, DbObjectId>{{L"Base|plan", dep}}));
    EXPECT_EQ(all.size(), 3u);
    EXPECT_EQ(all.begin()->first, L"A-east");  // upper case sorts before lower
}

TEST_F(DbPtrTest, EntityIdsSkipErasedOnesUnlessOpenedOneByOne) {
    DbObjectId kept = db.AddEntity(db.ModelSpaceId(), DbClass::kLine);
    DbObjectId erased = db.AddEntity(db.ModelSpaceId(), DbClass::kOle2Frame);
    db.Erase(erased);
    AcDbModelSpace model;
    std::vector<DbObjectId> byIterator, byEntity;
    model.GetEntityIds(byIterator, false);
    model.GetEntityIds(byEntity, true);
    EXPECT_EQ(byIterator, (std::vector<DbObjectId>{kept}));
    EXPECT_EQ(byEntity, (std::vector<DbObjectId>{kept, erased}));
}

TEST_F(DbPtrTest, DictionariesAreFoundCreatedOrRefused) {
    db.AddDictionaryEntry(L"NOT_A_DICT", DbClass::kObject);
    {
        AcDbDictionaryPtr wrongKind(L"NOT_A_DICT", DbOpenMode::kForRead);
        EXPECT_EQ(wrongKind.m_pObj, nullptr);
        EXPECT_EQ(wrongKind.m_status, dbs::kNotThatKindOfClass);

        AcDbDictionaryPtr absent(L"HV_TABROW", DbOpenMode::kForRead);
        EXPECT_EQ(absent.m_pObj, nullptr);

        AcDbDictionaryPtr created(L"HV_TABROW", DbOpenMode::kForRead, nullptr, true, true);
        ASSERT_NE(created.m_pObj, nullptr);
        EXPECT_EQ(created.m_mode, DbOpenMode::kForWrite);
        EXPECT_TRUE(db.Object(created.Id()).treatElementsAsHard);
    }
    AcDbNamedObjectDict nod;
    AcDbDictionaryPtr again(L"HV_TABROW", DbOpenMode::kForRead);
    EXPECT_NE(again.m_pObj, nullptr);
    AcDbDictionaryPtr layouts(L"ACAD_LAYOUT", DbOpenMode::kForRead);
    std::vector<std::wstring> names;
    layouts.GetNames(names);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"Model", L"Layout1"}));
}

}  // namespace

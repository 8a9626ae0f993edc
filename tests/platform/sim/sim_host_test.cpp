// The simulated host as every other test relies on it: events in the host's order, commands,
// DBMOD, system variables, message boxes, automation failures, its registry and window hooks.

#include "platform/sim/sim_host.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

class EventLog : public EditorReactor, public DocManagerReactor {
public:
    explicit EventLog(SimHost& host) : m_host(host) {
        host.AddEditorReactor(this);
        host.AddDocManagerReactor(this);
    }
    ~EventLog() override {
        m_host.RemoveEditorReactor(this);
        m_host.RemoveDocManagerReactor(this);
    }
    void documentCreated(HostDocument* d) override { Add(L"created ", d); }
    void documentActivated(HostDocument* d) override { Add(L"activated ", d); }
    void documentToBeDestroyed(HostDocument* d) override { Add(L"destroying ", d); }
    void documentDestroyed(const std::wstring& name) override { log.push_back(L"gone " + name); }
    void commandWillStart(const std::wstring& c) override {
        log.push_back(L"start " + c + L" " + m_host.GetVariable(L"CMDNAMES").value());
    }
    void commandEnded(const std::wstring& c) override { log.push_back(L"end " + c); }
    void commandCancelled(const std::wstring& c) override { log.push_back(L"cancel " + c); }
    void saveComplete(HostDatabase* db, const std::wstring& path) override {
        log.push_back(L"saved " + m_host.Title(m_host.DocumentOf(db)) + L" " + path);
    }
    void lispWillStart(const std::wstring& expression) override {
        log.push_back(L"lisp " + expression);
    }
    void lispEnded() override { log.push_back(L"lisp ended"); }
    void lispCancelled() override { log.push_back(L"lisp cancelled"); }
    void endDwgOpen(const std::wstring& name) override { log.push_back(L"opened " + name); }
    std::vector<std::wstring> log;

private:
    void Add(const wchar_t* what, HostDocument* d) { log.push_back(what + m_host.Title(d)); }
    SimHost& m_host;
};

class SimSession : public testing::Test {
protected:
    SimHost host;
    EventLog events{host};
};

TEST_F(SimSession, DocumentsComeAndGoWithTheHostsEventsInOrder) {
    HostDocument* site = host.OpenDrawing(L"C:\\jobs\\site.dwg");
    HostDocument* fresh = host.NewDrawing();
    host.Activate(site);
    host.Activate(site);  // already active: no event
    EXPECT_EQ(host.Title(fresh), L"Drawing1.dwg");
    EXPECT_EQ(host.FileName(site), L"C:\\jobs\\site.dwg");
    EXPECT_EQ(host.Documents(), (std::vector<HostDocument*>{site, fresh}));

    host.Type(L"close");
    EXPECT_EQ(host.MdiActiveDocument(), fresh);
    EXPECT_EQ(events.log,
              (std::vector<std::wstring>{L"opened C:\\jobs\\site.dwg", L"created site.dwg",
                                         L"activated site.dwg", L"created Drawing1.dwg",
                                         L"activated Drawing1.dwg", L"activated site.dwg",
                                         L"start CLOSE CLOSE", L"end CLOSE", L"destroying site.dwg",
                                         L"gone C:\\jobs\\site.dwg", L"activated Drawing1.dwg"}));
    host.Type(L"CLOSE");
    EXPECT_EQ(host.MdiActiveDocument(), nullptr);
    EXPECT_EQ(host.DatabasePort().WorkingDatabase(), nullptr);
}

TEST_F(SimSession, SavingClearsDbmodAndTheFlagUnlessTheDrawingIsReadOnly) {
    HostDocument* doc = host.OpenDrawing(L"/jobs/plan.dwg");
    EXPECT_EQ(host.GetVariable(L"DBMOD"), L"0");
    host.SetDbmod(doc, 4);  // DBMOD alone: the document's flag does not follow
    EXPECT_FALSE(host.IsModified(doc));
    EXPECT_EQ(host.GetVariable(L"dbmod"), L"4");
    host.SetDbmod(doc, 0);
    host.SetDocumentFlag(doc, true);
    EXPECT_EQ(host.GetVariable(L"DBMOD"), L"0");
    host.Modify(doc);
    EXPECT_TRUE(host.IsModified(doc));
    EXPECT_EQ(host.GetVariable(L"dbmod"), L"1");
    host.Type(L"QSAVE");
    EXPECT_FALSE(host.IsModified(doc));
    EXPECT_EQ(host.GetVariable(L"DBMOD"), L"0");
    EXPECT_EQ(events.log.back(), L"end QSAVE");
    EXPECT_EQ(events.log[events.log.size() - 2], L"saved plan.dwg /jobs/plan.dwg");

    HostDocument* locked = host.OpenDrawing(L"/jobs/locked.dwg", true);
    host.Modify(locked);
    host.Type(L"SAVE");
    EXPECT_TRUE(host.IsModified(locked));
    EXPECT_TRUE(host.IsReadOnly(locked));
}

TEST_F(SimSession, SaveAsTakesItsNameFromTheDialogAndACancelledDialogCancelsTheCommand) {
    HostDocument* doc = host.NewDrawing();
    host.Modify(doc);
    host.Type(L"QSAVE");  // never saved: asks for a name, and none comes
    EXPECT_TRUE(host.IsModified(doc));
    EXPECT_EQ(host.PathName(doc), L"");
    host.QueueFileName(L"/jobs/new.dwg");
    host.Type(L"_.saveas");
    EXPECT_FALSE(host.IsModified(doc));
    EXPECT_EQ(host.PathName(doc), L"/jobs/new.dwg");
    EXPECT_EQ(events.log, (std::vector<std::wstring>{
                              L"created Drawing1.dwg", L"activated Drawing1.dwg",
                              L"start QSAVE QSAVE", L"cancel QSAVE", L"start SAVEAS SAVEAS",
                              L"saved new.dwg /jobs/new.dwg", L"end SAVEAS"}));
}

TEST_F(SimSession, AStartedCommandKeepsTheDrawingBusyUntilItEnds) {
    HostDocument* doc = host.OpenDrawing(L"/jobs/plan.dwg");
    host.StartCommand(L"LINE");
    EXPECT_FALSE(host.IsQuiescent(doc));
    EXPECT_THROW(host.Type(L"QSAVE"), std::logic_error);
    host.CancelCommand();
    EXPECT_TRUE(host.IsQuiescent(doc));
    host.StartCommand(L"LINE");
    host.EndCommand();
    EXPECT_EQ(std::vector<std::wstring>(events.log.end() - 4, events.log.end()),
              (std::vector<std::wstring>{L"start LINE LINE", L"cancel LINE", L"start LINE LINE",
                                         L"end LINE"}));
}

// A command in another drawing makes it current and busy; reactors hear names in capitals
// unless told to keep the typed case.
TEST_F(SimSession, CommandsRunInTheCurrentDrawingAndAreHeardByTheirReportedNames) {
    HostDocument* site = host.OpenDrawing(L"/jobs/site.dwg");
    HostDocument* plan = host.OpenDrawing(L"/jobs/plan.dwg");
    host.SetDbmod(site, 1);
    std::wstring seen;
    host.AddCommand({L"T", L"PEEK", L"PEEK", 0, [&] {
                         seen = host.Title(host.CurDocument()) + L" " +
                                host.Title(host.MdiActiveDocument()) + L" " +
                                host.GetVariable(L"DBMOD").value() +
                                (host.IsQuiescent(site) ? L" -" : L" site") +
                                (host.IsQuiescent(plan) ? L" -" : L" plan");
                     }});
    host.TypeIn(site, L"peek");
    EXPECT_EQ(seen, L"site.dwg plan.dwg 1 site -");
    EXPECT_EQ(host.CurDocument(), plan);
    events.log.clear();
    host.Type(L"_.peek");
    EXPECT_EQ(seen, L"plan.dwg plan.dwg 0 - plan");
    host.ReportCommandsAsTyped(true);
    host.Type(L"_.peek");
    EXPECT_EQ(events.log, (std::vector<std::wstring>{L"start PEEK PEEK", L"end PEEK",
                                                     L"start peek PEEK", L"end peek"}));
}

TEST_F(SimSession, LispRunsItsCommandsBetweenItsOwnEventsAndAutosavesNeedNoCommand) {
    HostDocument* doc = host.OpenDrawing(L"/jobs/plan.dwg");
    events.log.clear();
    host.RunLisp(L"(command \"LINE\")", {L"LINE"});
    host.RunLisp(L"(command \"REGEN\")", {L"REGEN"}, true);
    host.Modify(doc);
    host.Autosave(doc);
    EXPECT_TRUE(host.IsModified(doc));
    EXPECT_EQ(events.log,
              (std::vector<std::wstring>{L"lisp (command \"LINE\")", L"start LINE LINE",
                                         L"end LINE", L"lisp ended", L"lisp (command \"REGEN\")",
                                         L"start REGEN REGEN", L"end REGEN", L"lisp cancelled",
                                         L"saved plan.dwg C:\\Temp\\plan.dwg_1_1_0001.sv$"}));
}

TEST_F(SimSession, CommandsRunByNameAndGroupsGoTogether) {
    int runs = 0;
    std::wstring seen;
    EXPECT_TRUE(host.AddCommand({L"G1", L"ONE", L"ONE", 0, [&] {
                                     ++runs;
                                     seen = host.GetVariable(L"CMDNAMES").value();
                                 }}));
    EXPECT_FALSE(host.AddCommand({L"G2", L"one", L"one", 0, [] {}}));  // name taken
    EXPECT_TRUE(host.AddCommand({L"G1", L"TWO", L"TWO", 0, [] {}}));
    EXPECT_TRUE(host.Type(L"one"));
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(seen, L"ONE");
    EXPECT_EQ(host.GetVariable(L"CMDNAMES"), L"");

    host.RemoveGroup(L"g1");
    EXPECT_TRUE(host.Commands().empty());
    EXPECT_FALSE(host.Type(L"ONE"));
    EXPECT_EQ(host.CommandLine().back(), L"Unknown command \"ONE\".  Press F1 for help.");
}

TEST_F(SimSession, SystemVariablesKnowTheirNamesAndReadOnlyOnesRefuse) {
    for (const wchar_t* name :
         {L"CMDNAMES", L"DBMOD", L"CVPORT", L"CPROFILE", L"SSMAUTOOPEN", L"BACKGROUNDPLOT"}) {
        EXPECT_TRUE(host.GetVariable(name).has_value()) << name;
    }
    EXPECT_FALSE(host.GetVariable(L"NOSUCHVAR").has_value());
    EXPECT_FALSE(host.SetVariable(L"CMDNAMES", L"X"));
    EXPECT_TRUE(host.SetVariable(L"backgroundplot", L"0"));
    EXPECT_EQ(host.GetVariable(L"BACKGROUNDPLOT"), L"0");

    HostDocument* doc = host.OpenDrawing(L"/a.dwg");
    EXPECT_TRUE(host.SetVariable(L"TILEMODE", L"0"));
    EXPECT_FALSE(host.DatabaseOf(doc).Tilemode());
    EXPECT_EQ(host.DatabasePort().CurrentSpaceId(host.Database(doc)),
              host.DatabaseOf(doc).PaperSpaceId());
}

TEST_F(SimSession, PrintedTextIsSplitIntoLinesAndPartialLinesWait) {
    host.Print(L"\nfirst");
    host.Print(L" half\nsecond\n");
    host.Print(L"pending");
    EXPECT_EQ(host.CommandLine(), (std::vector<std::wstring>{L"", L"first half", L"second"}));
    EXPECT_EQ(host.CommandLineText(), L"\nfirst half\nsecond\npending");
}

TEST_F(SimSession, MessageBoxesAreAnsweredFromTheQueueAndRecorded) {
    host.QueueAnswer(mb::kIdNo);
    EXPECT_EQ(host.Show(L"Save changes?", L"", mb::kYesNoCancel), mb::kIdNo);
    EXPECT_EQ(host.Show(L"Done", L"Tabrow", mb::kOk), mb::kIdOk);  // empty queue
    ASSERT_EQ(host.MessageBoxesShown().size(), 2u);
    EXPECT_EQ(host.MessageBoxesShown()[0].flags, mb::kYesNoCancel);
    EXPECT_EQ(host.MessageBoxesShown()[1].caption, L"Tabrow");
}

TEST_F(SimSession, AutomationCanBeMissingOrToldToFail) {
    HostApplication* app = host.QueryApplication();
    EXPECT_EQ(host.AutomationReferences(), 1);
    host.Release(app);
    EXPECT_THROW(host.Release(app), std::logic_error);

    auto failure = [this]() -> std::optional<ComError> {
        try {
            host.QueryApplication();
        } catch (const ComError& e) {
            return e;
        }
        return std::nullopt;
    };
    host.FailAutomation(hr::kFail, L"Unspecified error");
    std::optional<ComError> raised = failure();
    ASSERT_TRUE(raised) << "the failure was not raised";
    EXPECT_EQ(raised->Error(), hr::kFail);
    EXPECT_EQ(raised->Description(), L"Unspecified error");
    host.ClearAutomationFailure();

    // One call of one kind fails once; calls of other kinds go through meanwhile.
    host.FailAutomationCall(SimAutomationCall::QueryApplication, hr::kCallRejected, L"busy");
    HostSheetSetManager* manager = host.CreateSheetSetManager();
    EXPECT_EQ(host.SheetSetManagers(), 1);
    host.Release(manager);
    raised = failure();
    ASSERT_TRUE(raised) << "the single failure was not raised";
    EXPECT_EQ(raised->Error(), hr::kCallRejected);
    EXPECT_FALSE(failure()) << "the single failure came twice";
    EXPECT_EQ(host.AutomationReferences(), 1);

    host.SetHasAutomation(false);
    raised = failure();
    ASSERT_TRUE(raised) << "a host without automation answered";
    EXPECT_EQ(raised->Error(), hr::kNoInterface);
}

TEST(SimRegistry, KeysCompareWithoutCaseAndEmptyPartsAreIgnored) {
    SimRegistry reg;
    EXPECT_FALSE(reg.SetValue(RegHive::CurrentUser, L"Software\\A", L"v", {reg::kDword, {1}}));
    ASSERT_TRUE(reg.CreateKey(RegHive::CurrentUser, L"Software\\Maker\\App\\"));
    EXPECT_TRUE(reg.KeyExists(RegHive::CurrentUser, L"SOFTWARE\\\\maker"));
    EXPECT_FALSE(reg.KeyExists(RegHive::LocalMachine, L"Software\\Maker"));
    EXPECT_TRUE(
        reg.SetValue(RegHive::CurrentUser, L"software\\maker\\app", L"Size", {reg::kDword, {7}}));
    EXPECT_TRUE(
        reg.SetValue(RegHive::CurrentUser, L"Software\\Maker\\App", L"SIZE", {reg::kDword, {8}}));
    EXPECT_EQ(reg.QueryValue(RegHive::CurrentUser, L"Software\\Maker\\App", L"size")->data,
              std::vector<std::uint8_t>{8});
    EXPECT_EQ(reg.ValueNames(RegHive::CurrentUser, L"Software\\Maker\\App"),
              std::vector<std::wstring>{L"Size"});
    EXPECT_EQ(reg.SubKeyNames(RegHive::CurrentUser, L"Software"),
              std::vector<std::wstring>{L"Maker"});
    EXPECT_TRUE(reg.DeleteValue(RegHive::CurrentUser, L"Software\\Maker\\App", L"Size"));
    EXPECT_FALSE(reg.QueryValue(RegHive::CurrentUser, L"Software\\Maker\\App", L"Size"));
}

TEST(SimRegistry, AReadOnlyStoreRefusesWritesAndKeepsWhatItHas) {
    SimRegistry reg;
    ASSERT_TRUE(reg.CreateKey(RegHive::CurrentUser, L"K"));
    ASSERT_TRUE(reg.SetValue(RegHive::CurrentUser, L"K", L"", {reg::kSz, reg::StringBytes(L"x")}));
    reg.SetReadOnly(true);
    EXPECT_FALSE(reg.CreateKey(RegHive::CurrentUser, L"K\\New"));
    EXPECT_TRUE(reg.CreateKey(RegHive::CurrentUser, L"k"));  // opening an existing key works
    EXPECT_FALSE(reg.SetValue(RegHive::CurrentUser, L"K", L"", {reg::kSz, reg::StringBytes(L"y")}));
    EXPECT_FALSE(reg.DeleteValue(RegHive::CurrentUser, L"K", L""));
    EXPECT_EQ(reg::StringText(reg.QueryValue(RegHive::CurrentUser, L"K", L"")->data), L"x");
}

TEST(SimWindows, TheHostWindowsNestAndVisibilityFollowsParents) {
    SimWindowSystem windows;
    HostWindow* frame = windows.HostFrame();
    EXPECT_EQ(windows.FindChild(frame, L"MDIClient", L""), windows.MdiClient());
    EXPECT_EQ(windows.FindChild(frame, L"MDIClient", L"x"), nullptr);
    EXPECT_EQ(windows.Parent(windows.DockedCommandLine()), windows.CommandWindow());
    EXPECT_EQ(windows.Parent(windows.CommandWindow()), windows.CommandContainer());
    EXPECT_EQ(windows.ScreenRect(windows.CommandWindow()).top, 880);

    HostWindow* child =
        windows.CreateChild(frame, L"Bar", win::RECT{0, 0, 10, 10}, ws::kChild | ws::kVisible);
    HostWindow* inner =
        windows.CreateChild(child, L"Inner", win::RECT{0, 0, 5, 5}, ws::kChild | ws::kVisible);
    windows.Show(child, false);
    EXPECT_FALSE(windows.IsVisible(inner));
    windows.Destroy(child);
    EXPECT_FALSE(windows.IsWindow(inner));
}

}  // namespace

// The bar's two reactors in a session: commands and LISP stretches deciding the modified mark,
// saves renaming, the host's colours, attaching to and leaving the host.

#include <gtest/gtest.h>

#include "bar/document_session.h"

namespace {

using Texts = std::vector<std::wstring>;

TEST_F(DocumentSession, SaveAsAtThePromptRenamesTheTabAndClearsTheMark) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    host.Modify(plan);
    host.Type(L"LINE");
    EXPECT_EQ(TabTexts(), (Texts{L"* plan"}));
    host.QueueFileName(L"C:\\jobs\\plan-rev2.dwg");
    host.Type(L"_.saveas");
    EXPECT_EQ(TabTexts(), (Texts{L"plan-rev2"}));
    EXPECT_EQ(Recent(), (Texts{L"C:\\jobs\\plan-rev2.dwg"}));
    // Reported in another case it is no renaming save: the mark goes, the name stays.
    host.ReportCommandsAsTyped(true);
    host.Modify(plan);
    host.QueueFileName(L"C:\\jobs\\plan-rev3.dwg");
    host.Type(L"SaveAs");
    EXPECT_EQ(TabTexts(), (Texts{L"plan-rev2"}));
    EXPECT_EQ(Bar().m_RecentFiles.size(), 1u);
    // A drawing never saved takes its name through QSAVE and SAVE as well.
    host.ReportCommandsAsTyped(false);
    for (const std::wstring command : {L"QSAVE", L"SAVE"}) {
        host.NewDrawing();
        host.QueueFileName(L"C:\\jobs\\" + command + L".dwg");
        host.Type(command);
        EXPECT_EQ(TabTexts().back(), command);
    }
}

TEST_F(DocumentSession, OpeningADrawingRecordsItAsRecentEvenWithTheBarOff) {
    Load();
    host.Type(L"TROFF");
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    EXPECT_EQ(Recent(), (Texts{L"C:\\jobs\\plan.dwg"}));
    // Marks, though, wait for the bar to be on again.
    host.Modify(plan);
    host.Type(L"LINE");
    EXPECT_EQ(TabTexts(), (Texts{L"plan"}));
    host.Type(L"TRON");
    host.Type(L"LINE");
    EXPECT_EQ(TabTexts(), (Texts{L"* plan"}));
}

TEST_F(DocumentSession, SaveAsFromLispStaysSilentWhenAvoidedAndLispsEndSetsTheMark) {
    Store(L"AvoidSaveasInLisp", 1);
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    host.Modify(plan);
    host.Type(L"LINE");
    host.QueueFileName(L"C:\\jobs\\copy.dwg");
    host.RunLisp(L"(command \"_.SAVEAS\" \"\" \"C:/jobs/copy\")", {L"_.SAVEAS"});
    EXPECT_EQ(TabTexts(), (Texts{L"plan"}));  // not renamed, and the mark corrected at the end
    EXPECT_TRUE(Bar().m_RecentFiles.empty());
    EXPECT_EQ(Bar().m_editorReactor.m_bInLisp, 0);
    // Nor does a silent stretch inside a command that saves.
    host.StartCommand(L"SAVEAS");
    Bar().m_editorReactor.lispWillStart(L"(save)");
    Bar().m_editorReactor.saveComplete(host.Database(plan), L"C:\\jobs\\other.dwg");
    EXPECT_EQ(TabTexts(), (Texts{L"plan"}));
    Bar().m_editorReactor.lispCancelled();
    host.CancelCommand();
}

TEST_F(DocumentSession, LispCommandsAreFollowedLikeOthersByDefault) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    host.Modify(plan);
    host.QueueFileName(L"C:\\jobs\\copy.dwg");
    host.RunLisp(L"(command \"_.SAVEAS\" \"\" \"C:/jobs/copy\")", {L"_.SAVEAS"});
    EXPECT_EQ(TabTexts(), (Texts{L"copy"}));
}

TEST_F(DocumentSession, ACancelledLispStretchEndsSilenceWithoutAMark) {
    Store(L"AvoidSaveasInLisp", 1);
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    host.RunLisp(L"(command \"LINE\")", {L"LINE"}, true);
    host.Modify(plan);
    host.Type(L"LINE");  // followed again
    EXPECT_EQ(TabTexts(), (Texts{L"* plan"}));
}

TEST_F(DocumentSession, ACancelledSaveLeavesNoCommandSoAnAutosaveGoesUnnoticed) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    host.Modify(plan);
    host.Type(L"LINE");
    host.Type(L"SAVEAS");  // the file dialog is cancelled
    host.Autosave(plan);
    EXPECT_EQ(TabTexts(), (Texts{L"* plan"}));
    EXPECT_TRUE(Bar().m_RecentFiles.empty());
}

TEST_F(DocumentSession, SavesByOtherCommandsClearTheMarkWithoutRenaming) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    host.Modify(plan);
    host.Type(L"LINE");
    host.StartCommand(L"CLOSE");  // closing with a save
    Bar().m_editorReactor.saveComplete(host.Database(plan), L"C:\\elsewhere\\other.dwg");
    EXPECT_EQ(TabTexts(), (Texts{L"plan"}));
    host.CancelCommand();
}

TEST_F(DocumentSession, ACommandInAnotherDrawingSetsTheMarkOfTheActiveOne) {
    HostDocument* site = host.OpenDrawing(L"C:\\jobs\\site.dwg");
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    host.Modify(site);
    host.TypeIn(site, L"LINE");
    EXPECT_EQ(TabTexts(), (Texts{L"site", L"plan"}));
    host.Modify(plan);
    host.TypeIn(site, L"LINE");
    EXPECT_EQ(TabTexts(), (Texts{L"site", L"* plan"}));
}

// Only in preview mode, and only for the three names as the host reports them, in capitals.
TEST_F(DocumentSession, ColourCommandsReadTheHostsColoursAgainInPreviewMode) {
    struct Case {
        int tabMode;
        const wchar_t* command;
        bool asTyped;
        bool reread;
    };
    const Case cases[] = {{0, L"OPTIONS", false, true},     {0, L"_config", false, true},
                          {0, L"PREFERENCES", false, true}, {0, L"options", true, false},
                          {1, L"OPTIONS", false, false},    {0, L"REGEN", false, false}};
    host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    for (const Case& c : cases) {
        Store(L"TabMode", static_cast<std::uint32_t>(c.tabMode));
        host.SetCurrentColors(HostDrawingColors{0x000000, 0xFFFFFF});
        Load();
        host.ReportCommandsAsTyped(c.asTyped);
        host.SetCurrentColors(HostDrawingColors{0x332211, 0xEEEEEE});
        host.Type(c.command);
        EXPECT_EQ(Bar().m_palette.m_colors.modelBackground, c.reread ? 0x332211u : 0u)
            << c.command << " in tab mode " << c.tabMode;
        Unload();
        MapModule();
    }
}

TEST_F(DocumentSession, AnAutomationFailureAtACommandsEndLeavesTheMarkAndReachesTheHost) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    host.Modify(plan);
    for (SimAutomationCall call :
         {SimAutomationCall::DocumentOfDatabase, SimAutomationCall::GetVariable}) {
        host.FailAutomationCall(call, hr::kFail, L"Unspecified error");
        host.Type(L"LINE");
        EXPECT_EQ(TabTexts(), (Texts{L"plan"}));
        EXPECT_EQ(host.AutomationReferences(), 1);  // the drawing's document was let go
    }
    EXPECT_EQ(host.ReactorFailures().size(), 2u);
    host.Type(L"LINE");
    EXPECT_EQ(TabTexts(), (Texts{L"* plan"}));
}

// DBMOD, read through the drawing's automation document, outranks the document's own flag;
// only a database that offers no such document leaves the flag to decide.
TEST_F(DocumentSession, DbmodOutranksTheDocumentsFlagWhereTheDocumentOffersIt) {
    struct Case {
        bool noInterface;
        int dbmod;
        bool flag;
        const wchar_t* tab;
    };
    const Case cases[] = {{false, 1, false, L"* plan"},
                          {false, 0, true, L"plan"},
                          {false, 2, true, L"* plan"},
                          {true, 1, false, L"plan"},
                          {true, 0, true, L"* plan"}};
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    for (const Case& c : cases) {
        host.SetDocumentsHaveNoInterface(c.noInterface);
        host.SetDbmod(plan, c.dbmod);
        host.SetDocumentFlag(plan, c.flag);
        host.Type(L"LINE");
        EXPECT_EQ(TabTexts(), (Texts{c.tab}))
            << "no interface " << c.noInterface << ", DBMOD " << c.dbmod << ", flag " << c.flag;
    }
    EXPECT_TRUE(host.ReactorFailures().empty());
    EXPECT_EQ(host.AutomationReferences(), 1);  // only the application object is held
}

TEST_F(DocumentSession, ReactorsAttachWhereTheHostHasTheirSourceAndLeaveAtUnload) {
    host.SetHasEditor(false);
    Load();
    EXPECT_EQ(host.ReactorCount(), 1u);
    Unload();
    EXPECT_EQ(host.ReactorCount(), 0u);

    host.SetHasEditor(true);
    host.SetHasDocManager(false);
    host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();  // the drawings open then are listed all the same, and later ones go unheard
    host.OpenDrawing(L"C:\\jobs\\site.dwg");
    EXPECT_EQ(PaletteTitles(), (Texts{L"plan"}));
    EXPECT_TRUE(host.Windows().IsVisible(Palette()));
    EXPECT_TRUE(host.MessageBoxesShown().empty());
}

}  // namespace

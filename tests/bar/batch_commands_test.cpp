// The bar's batch and plot commands on a session of the simulated host: drawings modified,
// read-only, never saved and failing to save, the user's answers, and what the host is left
// with: the drawings visited in what order, what was saved, what stays open, what the user was
// asked and what was reported.

#include <algorithm>
#include <sstream>

#include "bar/batch_commands.h"
#include "bar/plot_all.h"
#include "document_session.h"

namespace {

std::vector<std::wstring> Split(const std::wstring& text, wchar_t separator) {
    std::vector<std::wstring> parts;
    std::wstringstream stream(text);
    for (std::wstring part; std::getline(stream, part, separator);)
        if (!part.empty())
            parts.push_back(part);
    return parts;
}

// The host's calls, "|" between them. "Announce N" stands for the pair of notifications and
// "Save T" for a save with the default settings: activate, zoom to the extents, send QSAVE.
std::vector<std::wstring> Calls(const std::wstring& spec) {
    std::vector<std::wstring> calls;
    for (const std::wstring& call : Split(spec, L'|')) {
        if (call.starts_with(L"Announce ")) {
            calls.push_back(L"ModelessStart " + call.substr(9));
            calls.push_back(L"ModelessEnded " + call.substr(9));
        } else if (call.starts_with(L"Save ")) {
            const std::wstring title = call.substr(5);
            for (const wchar_t* c : {L"Activate ", L"ZoomExtents "})
                calls.push_back(c + title);
            calls.push_back(L"SendCommand " + title + L" _.QSAVE\n");
        } else {
            calls.push_back(call);
        }
    }
    return calls;
}

struct BatchCase {
    const char* name;
    unsigned id;
    // Opened in order, the last one active. "A" is C:\d\A.dwg, modified; "new" a drawing never
    // saved; marks after ":": ro (opened read-only), clean, flag and dbmod (one of the two
    // modified states alone, on a clean drawing), paper (paper space, a viewport
    // active), locked (by another user), rofile (read-only on the disk), refused (the host
    // rejects its save), nodevice (its plot device is missing).
    const wchar_t* drawings;
    std::vector<int> answers;
    std::wstring calls;
    const wchar_t* open;      // titles left open, in the host's order
    const wchar_t* modified;  // of those, the ones still modified
    std::vector<std::wstring> boxes;
    std::wstring printed = {};  // a line the command line must hold
};

void PrintTo(const BatchCase& c, std::ostream* os) {
    *os << c.name;
}

class BatchCommands : public DocumentSession, public ::testing::WithParamInterface<BatchCase> {
protected:
    // A host that quits frees the hooks on its windows when they go, which it does last.
    ~BatchCommands() override {
        if (host.IsQuitting()) {
            Unload();
            host.Windows().Destroy(host.Windows().HostFrame());
        }
    }
    void Open(const std::wstring& drawings) {
        for (const std::wstring& word : Split(drawings, L' ')) {
            const std::vector<std::wstring> parts = Split(word, L':');
            auto marked = [&](const wchar_t* mark) {
                return std::find(parts.begin() + 1, parts.end(), mark) != parts.end();
            };
            HostDocument* doc =
                parts[0] == L"new"
                    ? host.NewDrawing()
                    : host.OpenDrawing(L"C:\\d\\" + parts[0] + L".dwg", marked(L"ro"));
            if (!marked(L"clean"))
                host.Modify(doc);
            SimDocument& d = host.Document(doc);
            d.saveFailure = marked(L"locked")    ? SimSaveFailure::LockedElsewhere
                            : marked(L"rofile")  ? SimSaveFailure::ReadOnlyFile
                            : marked(L"refused") ? SimSaveFailure::Refused
                                                 : SimSaveFailure::None;
            if (marked(L"nodevice"))
                d.plotDevice.clear();
            if (marked(L"flag"))  // the document's own flag alone, DBMOD 0
                host.SetDocumentFlag(doc, true);
            if (marked(L"dbmod"))  // DBMOD alone
                host.SetDbmod(doc, 1);
            if (marked(L"paper"))
                host.DatabaseOf(doc).SetTilemode(false);
            docs.push_back(doc);
        }
    }
    void Command(unsigned id) {
        EXPECT_TRUE(Bar().OnCommand(id, 0, nullptr).IsHandled());
        EXPECT_EQ(host.AutomationReferences(), 1) << "only the application's own reference";
    }
    void Check(const BatchCase& c) {
        EXPECT_EQ(host.AutomationLog(), Calls(c.calls));
        std::vector<std::wstring> open, modified, boxes;
        for (HostDocument* doc : host.Documents()) {
            open.push_back(host.Title(doc));
            if (host.Document(doc).dbmod != 0)
                modified.push_back(host.Title(doc));
        }
        EXPECT_EQ(open, Split(c.open, L' '));
        EXPECT_EQ(modified, Split(c.modified, L' '));
        for (const SimMessageBox& box : host.MessageBoxesShown())
            boxes.push_back(box.text);
        EXPECT_EQ(boxes, c.boxes);
        if (!c.printed.empty()) {
            const auto& lines = host.CommandLine();
            EXPECT_NE(std::find(lines.begin(), lines.end(), c.printed), lines.end())
                << ::testing::PrintToString(host.CommandLineText());
        }
    }
    std::vector<HostDocument*> docs;
};

TEST_P(BatchCommands, VisitsSavesClosesAndReportsAsTheUserExpects) {
    const BatchCase& c = GetParam();
    Load();
    Open(c.drawings);
    for (int answer : c.answers)
        host.QueueAnswer(answer);
    Command(c.id);
    Check(c);
    // Exit, No Save hides the frame while the drawings go, for good once the host quits.
    EXPECT_EQ(host.Windows().IsVisible(host.Windows().HostFrame()),
              c.id != cmd::kExitNoSave || !host.IsQuitting());
}

const std::wstring kRejected = L"Error [0x80010001]\nCall was rejected by callee.";
const std::wstring kDiscard = L"Discard any changes?";
const std::wstring kPlotBox = L"Plot with the settings of each drawing's active layout.";

// The bar asks with the drawing's name, the host with its file name. One scenario a row:
// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Scenarios, BatchCommands,
    ::testing::Values(
        BatchCase{"SaveAllSkipsReadOnlyAndEndsOnTheActive", cmd::kSaveAll, L"A C:ro B", {},
            L"Announce TR_SaveAll|Save B.dwg|Save A.dwg|Activate B.dwg",
            L"A.dwg C.dwg B.dwg", L"C.dwg", {}},
        BatchCase{"SaveAllGoesOnPastEachFailingDrawing", cmd::kSaveAll,
            L"A:locked B:refused C:rofile new", {},
            L"Announce TR_SaveAll|Save Drawing1.dwg|Save C.dwg|Save B.dwg|Save A.dwg|"
            L"Activate Drawing1.dwg",
            L"A.dwg B.dwg C.dwg Drawing1.dwg", L"A.dwg B.dwg C.dwg Drawing1.dwg", {kRejected},
            L"C:\\d\\A.dwg is locked by another user; the drawing was not saved."},
        BatchCase{"SaveAllLeavesAPaperSpaceViewportBeforeZooming", cmd::kSaveAll, L"A:paper", {},
            L"Announce TR_SaveAll|Activate A.dwg|SendCommand A.dwg _.PSPACE\n|ZoomAll A.dwg|"
            L"SendCommand A.dwg _.QSAVE\n|Activate A.dwg", L"A.dwg", L"", {}},
        BatchCase{"SaveAllWithNoDrawingReportsTheNullActiveDocument", cmd::kSaveAll, L"", {},
            L"Announce TR_SaveAll", L"", L"", {L"Error [0x80004003]\nInvalid pointer"}},
        BatchCase{"CloseAllCancelledAtTheThirdLeavesTheRestOpen", cmd::kCloseAll, L"A B C D E",
            {mb::kIdNo, mb::kIdNo, mb::kIdCancel}, L"Announce TR_CloseAll|Close E.dwg|Close D.dwg",
            L"A.dwg B.dwg C.dwg", L"A.dwg B.dwg C.dwg",
            {L"Save changes to E?", L"Save changes to D?", L"Save changes to C?"}},
        BatchCase{"CloseAllSavesOnYesAndClosesReadOnlyAndCleanWithoutAsking", cmd::kCloseAll,
            L"A:clean B:ro C", {mb::kIdYes},
            L"Announce TR_CloseAll|Save C.dwg|Close C.dwg|Close B.dwg|Close A.dwg", L"", L"",
            {L"Save changes to C?"}},
        BatchCase{"CloseAllAsksByDbmodNotByTheDocumentsFlag", cmd::kCloseAll,
            L"A:clean:flag B:clean:dbmod", {mb::kIdNo},
            L"Announce TR_CloseAll|Close B.dwg|Close A.dwg", L"", L"", {L"Save changes to B?"}},
        BatchCase{"CloseAllClosesADrawingWhoseSaveFailedAsAnsweredAndGoesOn", cmd::kCloseAll,
            L"A B:locked", {mb::kIdYes, mb::kIdCancel},
            L"Announce TR_CloseAll|Save B.dwg|Close B.dwg", L"A.dwg", L"A.dwg",
            {L"Save changes to B?", L"Save changes to A?"},
            L"C:\\d\\B.dwg is locked by another user; the drawing was not saved."},
        BatchCase{"CloseAllAnswersNoForANeverSavedDrawing", cmd::kCloseAll, L"A:clean new",
            {mb::kIdNo},
            L"Announce TR_CloseAll|Close Drawing1.dwg|Close A.dwg", L"", L"",
            {L"Save changes to Drawing1?"}},
        BatchCase{"SaveAndCloseAllStopsAtAFailedSaveTheUserWantsKept", cmd::kSaveAndCloseAll,
            L"A B:rofile C", {mb::kIdYes},
            L"Announce TR_SaveAndCloseAll|Save C.dwg|Close C.dwg|Save B.dwg|Close B.dwg",
            L"A.dwg B.dwg", L"A.dwg B.dwg",
            {L"Save changes to B.dwg?",
             L"Error [0x80004005]\nThe drawing was not saved; it stays open."},
            L"Unable to write to C:\\d\\B.dwg: the file is read-only."},
        BatchCase{"SaveAndCloseAllDiscardsOnlyWhenTheUserSaysNo", cmd::kSaveAndCloseAll,
            L"A B:refused", {mb::kIdNo},
            L"Announce TR_SaveAndCloseAll|Save B.dwg|Close B.dwg|Save A.dwg|Close A.dwg", L"", L"",
            {kRejected, L"Save changes to B.dwg?"}},
        BatchCase{"CloseAllNoSaveClosesEveryDrawingUnsaved", cmd::kCloseAllNoSave, L"A B:ro",
            {mb::kIdYes}, L"Close B.dwg|Close A.dwg", L"", L"", {kDiscard}},
        BatchCase{"ExitSaveAllSavesClosesAndQuits", cmd::kExitSaveAll, L"A B:clean", {},
            L"Announce TR_ExitSaveAll|Save B.dwg|Close B.dwg|Save A.dwg|Close A.dwg|Quit", L"",
            L"", {}},
        BatchCase{"ExitNoSaveAnsweredNoHasOnlyAnnounced", cmd::kExitNoSave, L"A", {mb::kIdNo},
            L"Announce TR_ExitNoSave", L"A.dwg", L"A.dwg", {kDiscard}},
        BatchCase{"ExitNoSaveClosesAllAndQuits", cmd::kExitNoSave, L"A B", {mb::kIdYes},
            L"Announce TR_ExitNoSave|Close B.dwg|Close A.dwg|Quit", L"", L"", {kDiscard}},
        BatchCase{"QuickPlotAllGoesOnPastAMissingDevice", cmd::kQuickPlotAll, L"A B:nodevice", {},
            L"Announce TR_QuickPlotAll|RefreshPlotDeviceInfo B.dwg|PlotToDevice B.dwg|"
            L"RefreshPlotDeviceInfo A.dwg|PlotToDevice A.dwg", L"A.dwg B.dwg", L"A.dwg B.dwg",
            {L"Error [0x80004005]\nThe plot device of the layout is missing."}},
        BatchCase{"PlotAllCancelledPlotsNothing", cmd::kPlotAll, L"A", {mb::kIdCancel},
            L"Announce TR_PlotAll", L"A.dwg", L"A.dwg", {kPlotBox}}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

// Each plot waits for the one before it; the user's BACKGROUNDPLOT comes back, also after a
// failed plot, and the dialog's OK plots with it as it stands.
TEST_F(BatchCommands, PlotsRunInTheForegroundAndLeaveBackgroundPlotAsItWas) {
    Load();
    Open(L"A B");
    host.SetVariable(L"BACKGROUNDPLOT", L"2");
    host.FailAutomationCall(SimAutomationCall::PlotToDevice, hr::kFail, L"plotter offline");
    Command(cmd::kQuickPlotAll);
    EXPECT_EQ(host.GetVariable(L"BACKGROUNDPLOT"), L"2");
    host.QueueAnswer(mb::kIdOk);
    Command(cmd::kPlotAll);
    EXPECT_EQ(host.Plots(), (std::vector<SimPlot>{{L"A.dwg", L"Default Printer", L"0"},
                                                  {L"B.dwg", L"Default Printer", L"2"},
                                                  {L"A.dwg", L"Default Printer", L"2"}}));
}

// Close and plot of the drawing the menu was opened on, and the settings of a save.
TEST_F(BatchCommands, MenuDrawingAndSaveSettings) {
    Store(L"ZoomExtentsOnSave", 0);
    Load();
    Open(L"A:clean B:paper");
    Command(cmd::kClose);  // no menu drawing: nothing
    Command(cmd::kPlotDialog);
    Bar().m_pMenuDoc = docs[0];
    Command(cmd::kPlotDialog);
    Command(cmd::kPlotDrawing);
    Command(cmd::kClose);
    Bar().m_strSaveCommand = L"(command \"_.QSAVE\")";  // a script of the user's: sent as it is
    Command(cmd::kSaveAll);
    Check({"",
           0,
           L"",
           {},
           L"RefreshPlotDeviceInfo A.dwg|PlotToDevice A.dwg|Close A.dwg|Announce TR_SaveAll|"
           L"Activate B.dwg|SendCommand B.dwg (command \"_.QSAVE\")|Activate B.dwg",
           L"B.dwg",
           L"B.dwg",
           {kPlotBox}});
}

// A failure that is no automation error names the function; Exit, No Save brings the frame
// back before it reports.
TEST_F(BatchCommands, FailuresNameTheFunctionAndShowTheFrameAgain) {
    Load();
    Open(L"A");
    host.StartCommand(L"LINE");  // the drawing is busy: typing into it is refused
    Command(cmd::kSaveAll);
    host.CancelCommand();
    EXPECT_EQ(host.CommandLine().back(), L"Unknown error in HvTabrow::OnSaveAll()!");
    host.FailAutomationCall(SimAutomationCall::Close, hr::kFail, L"busy");
    host.QueueAnswer(mb::kIdYes);
    Command(cmd::kExitNoSave);
    EXPECT_TRUE(host.Windows().IsVisible(host.Windows().HostFrame()));
    EXPECT_EQ(host.MessageBoxesShown().back().text, L"Error [0x80004005]\nbusy");
    EXPECT_FALSE(host.IsQuitting());
}

}  // namespace

#include "bar/batch_commands.h"

#include "bar/hv_tabrow.h"
#include "bar/command_edge.h"
#include "ports/document_automation.h"
#include "ports/host_automation.h"
#include "ports/host_documents.h"
#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "ports/window_system.h"

namespace {

constexpr HRESULT kPointer = static_cast<HRESULT>(0x80004003);

DocumentAutomation& Automation() {
    return Use<DocumentAutomation>();
}

// The smart pointer's rule: a call through a null object raises E_POINTER.
HostAutoDocument* Checked(HostAutoDocument* doc) {
    if (doc == nullptr)
        throw ComError(kPointer, L"Invalid pointer");
    return doc;
}

HostApplication* Checked(HostApplication* app) {
    if (app == nullptr)
        throw ComError(kPointer, L"Invalid pointer");
    return app;
}

}  // namespace

void AnnounceModelessOperation(const std::wstring& name) {
    Automation().SendModelessOperationStart(name);
    Automation().SendModelessOperationEnded(name);
}

int AutomationDocumentCount(HostApplication* app) {
    return Use<HostAutomation>().DocumentCount(Checked(app));
}

AutoDocumentPtr AutomationDocumentItem(HostApplication* app, int index) {
    return AutoDocumentPtr(Use<HostAutomation>().DocumentItem(Checked(app), index));
}

void TrBatchCommands::SaveDrawing(HostAutoDocument* doc) {
    RunAtCommandEdge("HvTabrow::OnSaveAll()", [&] {
        DocumentAutomation& automation = Automation();
        if (automation.IsReadOnly(Checked(doc)))
            return;
        const std::wstring command = m_bar.m_strSaveCommand;
        // The commands that follow act on the active drawing.
        Use<HostAutomation>().Activate(doc);
        if (m_bar.m_bZoomExtentsOnSave != 0) {
            // The whole drawing goes into the file's stored preview.
            if (Use<HostAutomation>().ActiveSpace(doc) == space::kModel) {
                automation.ZoomExtents(Checked(m_pHostApp));
            } else {
                if (Use<HostServices>().GetVariable(L"CVPORT").value_or(L"1") != L"1")
                    automation.SendCommand(doc, L"_.PSPACE\n");
                automation.ZoomAll(Checked(m_pHostApp));
            }
        }
        // Sent as it stands: a command of the user's own may carry its own line ends.
        automation.SendCommand(doc, command);
    });
}

HostDocument* TrBatchCommands::GetDocumentFromAutomation(HostAutoDocument* doc) {
    HostAutomation& automation = Use<HostAutomation>();
    for (HostDocument* candidate : Use<HostDocuments>().Documents()) {
        AutoDocumentPtr object(
            automation.DocumentOfDatabase(Use<HostDocuments>().Database(candidate)));
        if (object.Get() != nullptr && object.Get() == doc)
            return candidate;
    }
    return nullptr;
}

bool TrBatchCommands::CloseDrawing(HostAutoDocument* doc) {
    if (doc == nullptr)
        return false;
    bool closed = false;
    RunAtCommandEdge("HvTabrow::CloseDrawing()", [&] {
        DocumentAutomation& automation = Automation();
        // A read-only drawing has nothing to save: it closes without a question.
        if (!automation.IsReadOnly(doc)) {
            HostDocument* pDoc = GetDocumentFromAutomation(doc);
            if (pDoc == nullptr)
                return;
            // DBMOD decides, not the document's own flag: the two can disagree.
            if (Use<HostAutomation>().GetIntVariable(doc, L"DBMOD") >= 1) {
                const int answer = Use<MessageBoxes>().Show(
                    L"Save changes to " + m_bar.GetDocumentName(pDoc, false) + L"?", L"",
                    mb::kYesNoCancel);
                if (answer == mb::kIdCancel)
                    return;
                // The close that follows says no to saving whatever the save did: a save that
                // failed has told the user so on its own edge.
                if (answer == mb::kIdYes)
                    SaveDrawing(doc);
            }
        }
        automation.Close(doc, false);
        closed = true;
    });
    return closed;
}

bool TrBatchCommands::HasMenuDocument() const {
    return m_bar.m_pMenuDoc != nullptr;
}

AutoDocumentPtr TrBatchCommands::MenuDocument() {
    HostAutomation& automation = Use<HostAutomation>();
    if (m_bar.m_pMenuDoc == nullptr || !automation.HasOleLinkManager())
        return {};
    // A database whose object offers no document interface gives none (E_NOINTERFACE).
    return AutoDocumentPtr(
        automation.DocumentOfDatabase(Use<HostDocuments>().Database(m_bar.m_pMenuDoc)));
}

void TrBatchCommands::OnSaveAll() {
    RunAtCommandEdge("HvTabrow::OnSaveAll()", [&] {
        AnnounceModelessOperation(L"TR_SaveAll");
        AutoDocumentPtr active(Automation().ActiveDocument(Checked(m_pHostApp)));
        ForEachDocument([&](HostAutoDocument* doc) {
            SaveDrawing(doc);
            return true;
        });
        Use<HostAutomation>().Activate(Checked(active.Get()));
    });
    // Also after a failure: the marks of what was saved are up to date.
    if (HostWindow* bar = m_bar.GetSafeHwnd())
        Use<WindowSystem>().Redraw(bar, ws::kRdwInvalidate | ws::kRdwErase | ws::kRdwUpdateNow);
}

void TrBatchCommands::OnCloseAll() {
    RunAtCommandEdge("HvTabrow::OnCloseAll()", [&] {
        AnnounceModelessOperation(L"TR_CloseAll");
        // A Cancel stops here: the drawings of higher index are already closed.
        ForEachDocument([&](HostAutoDocument* doc) { return CloseDrawing(doc); });
    });
}

void TrBatchCommands::OnClose() {
    RunAtCommandEdge("HvTabrow::OnClose()", [&] {
        AutoDocumentPtr doc = MenuDocument();
        if (doc.Get() != nullptr)
            CloseDrawing(doc.Get());
    });
}

void TrBatchCommands::SaveAndCloseEach() {
    ForEachDocument([&](HostAutoDocument* doc) {
        if (doc != nullptr) {
            SaveDrawing(doc);
            // No prompt from the bar: the host decides what a drawing still modified does.
            Automation().Close(doc, std::nullopt);
        }
        return true;
    });
}

void TrBatchCommands::OnSaveAndCloseAll() {
    RunAtCommandEdge("HvTabrow::OnSaveAndCloseAll()", [&] {
        AnnounceModelessOperation(L"TR_SaveAndCloseAll");
        SaveAndCloseEach();
    });
}

void TrBatchCommands::OnExitSaveAll() {
    RunAtCommandEdge("HvTabrow::OnExitSaveAll()", [&] {
        AnnounceModelessOperation(L"TR_ExitSaveAll");
        SaveAndCloseEach();
        Automation().Quit(Checked(m_pHostApp));
    });
}

bool TrBatchCommands::UserDiscardsChanges() {
    return Use<MessageBoxes>().Show(L"Discard any changes?", L"", mb::kYesNo) == mb::kIdYes;
}

void TrBatchCommands::CloseEachNoSave() {
    ForEachDocument([&](HostAutoDocument* doc) {
        Automation().Close(Checked(doc), false);
        return true;
    });
}

void TrBatchCommands::OnCloseAllNoSave() {
    RunAtCommandEdge("HvTabrow::OnCloseAllNoSave()", [&] {
        if (UserDiscardsChanges())
            CloseEachNoSave();
    });
}

void TrBatchCommands::OnExitNoSave() {
    // Shares its failure text with Close All, No Save, as it shares its loop.
    RunAtCommandEdge("HvTabrow::OnCloseAllNoSave()", [&] {
        AnnounceModelessOperation(L"TR_ExitNoSave");
        if (!UserDiscardsChanges())
            return;
        WindowSystem& windows = Use<WindowSystem>();
        HostWindow* frame = windows.HostFrame();
        // The user doesn't watch the drawings go; a failure brings the frame back before the
        // report.
        if (frame != nullptr)
            windows.Show(frame, false);
        try {
            CloseEachNoSave();
            Automation().Quit(Checked(m_pHostApp));
        } catch (...) {
            if (frame != nullptr && windows.IsWindow(frame))
                windows.Show(frame, true);
            throw;
        }
    });
}

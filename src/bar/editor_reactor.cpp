#include "bar/editor_reactor.h"

#include "bar/auto_ref.h"
#include "bar/host_callback.h"
#include "bar/hv_tabrow.h"
#include "layout/host_windows.h"
#include "ports/host_automation.h"
#include "ports/host_documents.h"
#include "ports/port.h"
#include "settings/tabrow_settings.h"

namespace {

bool IsColourCommand(const std::wstring& command) {
    // Compared exactly: the host reports its global names in capitals.
    return command == L"CONFIG" || command == L"OPTIONS" || command == L"PREFERENCES";
}

bool IsRenamingSave(const std::wstring& command) {
    return command == L"QSAVE" || command == L"SAVE" || command == L"SAVEAS";
}

}  // namespace

HvTrEditorReactor::HvTrEditorReactor(HvTabrow* pTabrow) {
    m_nAvoidSaveasInLisp = LoadAvoidSaveasInLisp(pTabrow->m_store) ? 1 : 0;
    if (IsInstalled<HostReactors>() && Use<HostReactors>().HasEditor()) {
        Use<HostReactors>().AddEditorReactor(this);
        m_bAttached = true;
    }
    m_pTabrow = pTabrow;
}

HvTrEditorReactor::~HvTrEditorReactor() {
    if (m_bAttached && IsInstalled<HostReactors>() && Use<HostReactors>().HasEditor())
        Use<HostReactors>().RemoveEditorReactor(this);
}

void HvTrEditorReactor::commandWillStart(const std::wstring& command) {
    HostCallback([&] {
        if (m_bInLisp == 0)
            m_strCommand = command;
    });
}

void HvTrEditorReactor::commandEnded(const std::wstring& command) {
    HostCallbackPassingComErrors([&] {
        if (m_bInLisp == 0)
            OnCommandFinished(command);
    });
}

// A cancelled or failed command changes no mark.
void HvTrEditorReactor::commandCancelled(const std::wstring&) {
    m_strCommand.clear();
}

void HvTrEditorReactor::commandFailed(const std::wstring& command) {
    commandCancelled(command);
}

void HvTrEditorReactor::lispWillStart(const std::wstring&) {
    m_bInLisp = m_nAvoidSaveasInLisp != 0 ? 1 : 0;
}

void HvTrEditorReactor::lispEnded() {
    HostCallbackPassingComErrors([&] {
        if (m_bInLisp != 0)
            OnCommandFinished(L"lispEnded()");
        m_bInLisp = 0;
    });
}

void HvTrEditorReactor::lispCancelled() {
    m_bInLisp = 0;
}

void HvTrEditorReactor::OnCommandFinished(const std::wstring& name) {
    if (name.empty())
        return;
    if (g_bTabrowOn != 0 && m_pTabrow != nullptr) {
        if (m_pTabrow->m_bTabMode == 0 && IsColourCommand(m_strCommand))
            m_pTabrow->m_palette.UpdateColors();
        HostDocuments& docs = Use<HostDocuments>();
        if (HostDocument* doc = docs.MdiActiveDocument()) {
            bool modified = docs.IsModified(doc);
            HostAutomation& automation = Use<HostAutomation>();
            if (automation.HasOleLinkManager()) {
                // DBMOD through the drawing's automation document outranks the document's own
                // flag; a database that offers no such document leaves the flag standing.
                AutoDocumentPtr autoDoc(automation.DocumentOfDatabase(docs.Database(doc)));
                if (autoDoc.Get() != nullptr)
                    modified = automation.GetIntVariable(autoDoc.Get(), L"DBMOD") >= 1;
            }
            m_pTabrow->SetDocumentModified(doc, modified);
        }
    }
    m_strCommand.clear();
}

void HvTrEditorReactor::saveComplete(HostDatabase* db, const std::wstring& actualName) {
    // An autosave runs under no command, and a silent LISP stretch sets none: both pass.
    if (m_strCommand.empty() || m_bInLisp != 0 || m_pTabrow == nullptr)
        return;
    HostCallback([&] {
        HostDocument* doc = Use<HostDocuments>().DocumentOf(db);
        if (IsRenamingSave(m_strCommand)) {
            m_pTabrow->SetDocumentPath(doc, actualName);
            m_pTabrow->AddRecentFile(actualName);
        }
        m_pTabrow->SetDocumentModified(doc, false);
    });
}

void HvTrEditorReactor::endDwgOpen(const std::wstring& fileName) {
    if (m_pTabrow != nullptr)
        HostCallback([&] { m_pTabrow->AddRecentFile(fileName); });
}

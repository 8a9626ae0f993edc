#pragma once
// The bar's commands that act on every open drawing at once: save, close, exit. They run in
// the bar's window procedure, outside any host command, and drive the host through its
// automation objects, the one interface that works across drawings from there. Each handler
// sits behind the command edge and keeps nothing between commands.

#include <string>

#include "bar/auto_ref.h"

class HvTabrow;
struct HostApplication;
struct HostDocument;

// The menu's command ids of these handlers.
namespace cmd {
constexpr unsigned kSaveAll = 4007;
constexpr unsigned kCloseAll = 4008;
constexpr unsigned kSaveAndCloseAll = 4009;
constexpr unsigned kCloseAllNoSave = 4010;
constexpr unsigned kClose = 4011;
constexpr unsigned kExitSaveAll = 4034;
constexpr unsigned kExitNoSave = 4035;
}  // namespace cmd

// The pair of calls that tells other applications in the host that a modeless operation of
// this name happened. It brackets nothing: both go out before any work.
void AnnounceModelessOperation(const std::wstring& name);

class TrBatchCommands {
public:
    // `app` is the host's application object (not owned; null when the host gave none).
    TrBatchCommands(HvTabrow& bar, HostApplication* app) : m_bar(bar), m_pHostApp(app) {}

    void OnSaveAll();
    void OnCloseAll();
    void OnSaveAndCloseAll();
    void OnCloseAllNoSave();
    void OnClose();  // the drawing the menu was opened on
    void OnExitSaveAll();
    void OnExitNoSave();

    // Activates the drawing, zooms it when the settings ask, and sends the save command; a
    // read-only drawing is left alone. A failure is reported and ends this drawing only.
    void SaveDrawing(HostAutoDocument* doc);
    // Asks about unsaved changes and closes; false when the user cancelled, the drawing could
    // not be found or a call failed, and a batch must stop.
    bool CloseDrawing(HostAutoDocument* doc);
    // The host's document behind an automation document; null when none matches.
    HostDocument* GetDocumentFromAutomation(HostAutoDocument* doc);
    // The automation document of the drawing the menu was opened on; empty when there is none,
    // no link manager, or the drawing's object offers no document interface.
    AutoDocumentPtr MenuDocument();
    bool HasMenuDocument() const;

    // Documents.Count read once, then Item(i) taken anew from the last index down to the first,
    // so that the indices left stay valid while drawings close. `visit` answers false to stop.
    template <class Visit>
    void ForEachDocument(Visit visit);

private:
    void SaveAndCloseEach();
    void CloseEachNoSave();
    bool UserDiscardsChanges();

    HvTabrow& m_bar;
    HostApplication* m_pHostApp;  // not owned
};

int AutomationDocumentCount(HostApplication* app);
AutoDocumentPtr AutomationDocumentItem(HostApplication* app, int index);

template <class Visit>
void TrBatchCommands::ForEachDocument(Visit visit) {
    const int count = AutomationDocumentCount(m_pHostApp);
    for (int i = count - 1; i >= 0; --i) {
        // The host's message loop runs inside every call: take the item anew each turn.
        AutoDocumentPtr doc = AutomationDocumentItem(m_pHostApp, i);
        if (!visit(doc.Get()))
            return;
    }
}

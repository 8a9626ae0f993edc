// The bar's preview commands: renewing one drawing's thumbnail or all of them. A thumbnail is
// taken only of the active drawing, so each command activates the drawings it renews and puts
// the active one back.

#include "bar/auto_ref.h"
#include "bar/command_edge.h"
#include "bar/hv_tabrow.h"
#include "ports/host_documents.h"
#include "ports/port.h"

namespace {

// Activates through the drawing's automation object, as the menu's actions do; a drawing whose
// object cannot be had stays where it is.
void ActivateThroughAutomation(HostDocument* doc) {
    HostAutomation& automation = Use<HostAutomation>();
    AutoDocumentPtr object(automation.DocumentOfDatabase(Use<HostDocuments>().Database(doc)));
    if (object.Get() != nullptr)
        automation.Activate(object.Get());
}

}  // namespace

void HvTabrow::RefreshDocument(HostDocument* doc, bool bForce) {
    m_palette.RefreshPreview(doc, bForce);
}

void HvTabrow::OnRefreshPreview() {
    RunAtCommandEdge("HvTabrow::OnRefreshPreview()", [&] {
        HostDocument* doc = m_pMenuDoc;
        if (doc == nullptr)
            return;
        HostDocument* former = Use<HostDocuments>().MdiActiveDocument();
        const bool switched = doc != former;
        if (switched)
            ActivateThroughAutomation(doc);
        // The activation ran the host's events; the record is looked up afresh.
        m_palette.RefreshPreview(doc, true);
        if (switched && former != nullptr)
            ActivateThroughAutomation(former);
    });
}

void HvTabrow::OnRefreshPreviews() {
    // The edge names another command, as it always has; the text is kept as it stands.
    RunAtCommandEdge("HvTabrow::OnClose()", [&] {
        HostDocuments& docs = Use<HostDocuments>();
        HostDocument* noted = docs.MdiActiveDocument();
        for (HostDocument* doc : docs.Documents()) {
            docs.ActivateDocument(doc);
            m_palette.RefreshPreview(doc, true);
        }
        if (noted != nullptr)
            docs.ActivateDocument(noted);
    });
}

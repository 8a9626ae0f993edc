#include "bar/doc_manager_reactor.h"

#include "bar/host_callback.h"
#include "bar/hv_tabrow.h"
#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "ports/host_services.h"
#include "ports/port.h"
#include "ports/window_system.h"

HvTrDocManagerReactor::HvTrDocManagerReactor(HvTabrow* pTabrow) {
    if (IsInstalled<HostReactors>() && Use<HostReactors>().HasDocManager()) {
        Use<HostReactors>().AddDocManagerReactor(this);
        m_bAttached = true;
    }
    m_pTabrow = pTabrow;
}

HvTrDocManagerReactor::~HvTrDocManagerReactor() {
    if (m_bAttached && IsInstalled<HostReactors>() && Use<HostReactors>().HasDocManager())
        Use<HostReactors>().RemoveDocManagerReactor(this);
}

void HvTrDocManagerReactor::documentCreated(HostDocument* doc) {
    if (m_pTabrow != nullptr)
        HostCallback([&] { m_pTabrow->OnDocumentCreated(doc); });
}

void HvTrDocManagerReactor::documentToBeDestroyed(HostDocument* doc) {
    if (doc != nullptr && m_pTabrow != nullptr)
        HostCallback([&] { m_pTabrow->OnDocumentToBeDestroyed(doc); });
}

void HvTrDocManagerReactor::documentActivated(HostDocument* doc) {
    if (m_pTabrow != nullptr)
        HostCallback([&] { m_pTabrow->OnDocumentActivated(doc); });
}

void HvTrDocManagerReactor::documentDestroyed(const std::wstring&) {
    if (m_pTabrow == nullptr || m_pTabrow->m_bHideOnSingle == 0)
        return;
    HostCallback([&] {
        if (m_pTabrow->GetOpenDocumentCount() != 1)
            return;
        // One drawing left: the bar's room goes, and the relayout wipes the command prompt.
        RefreshHostLayout(g_hwndFrame);
        Use<WindowSystem>().Redraw(g_hwndFrame,
                                   ws::kRdwInvalidate | ws::kRdwErase | ws::kRdwUpdateNow);
        Use<HostServices>().PostCommandPrompt();
    });
}

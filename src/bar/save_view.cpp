#include "bar/save_view.h"

#include "bar/auto_ref.h"
#include "bar/command_edge.h"
#include "bar/view_layout.h"
#include "ports/host_automation.h"
#include "ports/host_documents.h"
#include "ports/host_services.h"
#include "ports/port.h"

namespace {

constexpr ViewProperty kCopied[] = {ViewProperty::Center, ViewProperty::Direction,
                                    ViewProperty::Height, ViewProperty::Target,
                                    ViewProperty::Width};

void SaveView(HostDocument* doc) {
    const auto name = Use<HostServices>().GetString(L"View Name: ", true);
    if (!name)
        return;
    HostAutomation& automation = Use<HostAutomation>();
    if (!automation.HasOleLinkManager())
        return;
    AutoRef<HostAutoDocument> document(
        automation.DocumentOfDatabase(Use<HostDocuments>().Database(doc)));
    if (document.Get() == nullptr)
        return;
    AutoRef<HostAutoView> view(automation.AddView(document.Get(), *name));
    const bool paper = automation.ActiveSpace(document.Get()) != space::kModel;
    AutoRef<HostAutoViewport> viewport(automation.ActiveViewport(document.Get(), paper));
    for (ViewProperty property : kCopied) {
        ViewValue value = automation.GetViewport(viewport.Get(), property);
        // A paper space viewport's centre is read as a point on the sheet.
        if (paper && property == ViewProperty::Center)
            value.z = 0;
        automation.SetView(view.Get(), property, value);
    }
    if (paper)
        SetViewLayout(*name, automation.ActiveLayoutName(document.Get()), doc);
}

}  // namespace

void OnSaveView(HostDocument* doc) {
    RunAtCommandEdge("HvTabrow::OnSaveView()", [doc] { SaveView(doc); });
}

// The simulated host's automation of going somewhere in a drawing: a layout made active, the
// space changed, a named view shown in a viewport or zoomed to, a regeneration.

#include <cwchar>

#include "platform/sim/sim_host.h"

namespace {

std::wstring Number(double value) {
    wchar_t text[32];
    std::swprintf(text, 32, L"%g", value);
    return text;
}

// What the collections answer for a name they do not hold.
ComError NotFound() {
    return ComError(static_cast<HRESULT>(0x8002802B), L"Key not found");
}

}  // namespace

std::wstring SimHost::LayoutName(HostAutoDocument* doc, const std::wstring& name) {
    CheckAutomation(SimAutomationCall::Layouts);
    SimDatabase& db = DatabaseOf(AutoDocument(doc));
    DbObjectId block = db.FindLayout(name);
    if (block == 0)
        throw NotFound();
    return db.Object(db.Object(block).layoutId).name;
}

void SimHost::SetActiveLayout(HostAutoDocument* doc, const std::wstring& name) {
    const std::wstring layout = LayoutName(doc, name);
    HostDocument* handle = AutoDocument(doc);
    DatabaseOf(handle).SetCurrentLayout(DatabaseOf(handle).FindLayout(layout));
    Log(L"ActiveLayout " + layout, handle);
}

void SimHost::SetActiveSpace(HostAutoDocument* doc, int activeSpace) {
    CheckAutomation(SimAutomationCall::ActiveSpace);
    HostDocument* handle = AutoDocument(doc);
    SimDatabase& db = DatabaseOf(handle);
    if (activeSpace == space::kModel) {
        db.SetCurrentLayout(db.ModelSpaceId());
    } else if (db.Tilemode()) {
        db.SetCurrentLayout(db.PaperSpaceId());  // the host goes back to a layout
    }
    Log(L"ActiveSpace " + std::to_wstring(activeSpace), handle);
}

HostAutoView* SimHost::ViewItem(HostAutoDocument* doc, const std::wstring& name) {
    CheckAutomation(SimAutomationCall::Views);
    HostDocument* handle = AutoDocument(doc);
    if (DatabaseOf(handle).FindView(name) == 0)
        throw NotFound();
    ++m_automationRefs;
    return reinterpret_cast<HostAutoView*>(&NamedView(handle, name));
}

ViewValue SimHost::GetView(HostAutoView* view, ViewProperty property) {
    CheckAutomation(SimAutomationCall::Views);
    const auto& v = *reinterpret_cast<SimView*>(view);
    auto it = v.values.find(property);
    return it == v.values.end() ? ViewValue{} : it->second;
}

void SimHost::SetViewValue(HostDocument* doc, const std::wstring& name, ViewProperty property,
                           const ViewValue& value) {
    NamedView(doc, name).values[property] = value;
}

void SimHost::SetViewportView(HostAutoViewport* viewport, HostAutoView* view) {
    CheckAutomation(SimAutomationCall::SetView);
    auto& vp = *reinterpret_cast<SimViewport*>(viewport);
    const auto& v = *reinterpret_cast<SimView*>(view);
    vp.view = v.name;
    for (auto [property, target] : {std::pair{ViewProperty::Center, &vp.center},
                                    {ViewProperty::Height, &vp.height},
                                    {ViewProperty::Width, &vp.width}}) {
        if (auto it = v.values.find(property); it != v.values.end())
            *target = it->second;
    }
    m_automationLog.push_back(L"SetView " + v.name);
}

void SimHost::SetActiveViewport(HostAutoDocument* doc, HostAutoViewport* viewport) {
    CheckAutomation(SimAutomationCall::ActiveViewport);
    HostDocument* handle = AutoDocument(doc);
    if (viewport != reinterpret_cast<HostAutoViewport*>(&Viewport(handle, false)))
        throw ComError(hr::kFail, L"Invalid viewport");
    Log(L"ActiveViewport", handle);
}

void SimHost::RegenAll(HostAutoDocument* doc) {
    CheckAutomation(SimAutomationCall::Regen);
    Log(L"Regen", AutoDocument(doc));
}

void SimHost::ZoomWindow(HostApplication* app, const ViewValue& lowerLeft,
                         const ViewValue& upperRight) {
    CheckAutomation(SimAutomationCall::ZoomWindow);
    CheckApplication(app);
    Log(L"ZoomWindow " + Number(lowerLeft.x) + L"," + Number(lowerLeft.y) + L" " +
            Number(upperRight.x) + L"," + Number(upperRight.y),
        m_active);
}

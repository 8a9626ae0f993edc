// The simulated host's automation of documents as the bar's batch commands drive it: saves
// through commands sent to a drawing, closes that may ask the user, plots to a recorded device.

#include <algorithm>
#include <cwctype>

#include "platform/sim/sim_host.h"

namespace {

bool IsSaveCommand(const std::wstring& line) {
    std::wstring name;
    for (wchar_t c : line) {
        if (c == L' ')
            break;
        if (c != L'_' && c != L'.')
            name += static_cast<wchar_t>(std::towupper(c));
    }
    return name == L"SAVE" || name == L"QSAVE" || name == L"SAVEAS";
}

}  // namespace

void SimHost::Log(const std::wstring& call, HostDocument* doc) {
    m_automationLog.push_back(doc == nullptr ? call : call + L" " + Document(doc).title);
}

bool SimHost::DiskTakesSave(const SimDocument& d, const std::wstring& path) {
    if (path != d.pathName)
        return true;
    switch (d.saveFailure) {
        case SimSaveFailure::ReadOnlyFile:
            Print(L"\nUnable to write to " + path + L": the file is read-only.\n");
            return false;
        case SimSaveFailure::LockedElsewhere:
            Print(L"\n" + path + L" is locked by another user; the drawing was not saved.\n");
            return false;
        default:
            return true;
    }
}

HostDocument* SimHost::Automated(HostAutoDocument* doc, SimAutomationCall call) {
    CheckAutomation(call);
    if (doc == nullptr)
        throw std::logic_error("automation call on a null document");
    auto* handle = reinterpret_cast<HostDocument*>(doc);
    Document(handle);  // a closed document's object is stale: the call is a fault of the caller
    return handle;
}

HostAutoDocument* SimHost::Referenced(HostDocument* doc) {
    if (doc == nullptr)
        return nullptr;
    ++m_automationRefs;
    return reinterpret_cast<HostAutoDocument*>(doc);
}

void SimHost::SendModelessOperationStart(const std::wstring& name) {
    Log(L"ModelessStart " + name);
}

void SimHost::SendModelessOperationEnded(const std::wstring& name) {
    Log(L"ModelessEnded " + name);
}

HostAutoDocument* SimHost::ActiveDocument(HostApplication* /*app*/) {
    CheckAutomation(SimAutomationCall::ActiveDocument);
    return Referenced(m_active);
}

void SimHost::ZoomExtents(HostApplication* /*app*/) {
    Log(L"ZoomExtents", m_active);
}

void SimHost::ZoomAll(HostApplication* /*app*/) {
    Log(L"ZoomAll", m_active);
}

void SimHost::Quit(HostApplication* /*app*/) {
    Log(L"Quit");
    Quit();
}

bool SimHost::IsReadOnly(HostAutoDocument* doc) {
    return Document(Automated(doc, SimAutomationCall::ReadOnly)).readOnly;
}

void SimHost::SendCommand(HostAutoDocument* doc, const std::wstring& text) {
    HostDocument* handle = Automated(doc, SimAutomationCall::SendCommand);
    Log(L"SendCommand", handle);
    m_automationLog.back() += L" " + text;
    std::vector<std::wstring> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find(L'\n', start)) != std::wstring::npos; start = end + 1)
        lines.push_back(text.substr(start, end - start));
    if (Document(handle).saveFailure == SimSaveFailure::Refused &&
        std::any_of(lines.begin(), lines.end(), IsSaveCommand)) {
        throw ComError(hr::kCallRejected, L"Call was rejected by callee.");
    }
    for (const std::wstring& line : lines) {
        if (GlobalName(line) == L"PSPACE")
            m_variables[L"CVPORT"] = L"1";
        else if (!m_sheetSets.OpenInManager(line))
            TypeIn(handle, line);
    }
}

void SimHost::Close(HostAutoDocument* doc, std::optional<bool> saveChanges) {
    HostDocument* handle = Automated(doc, SimAutomationCall::Close);
    Log(L"Close", handle);
    SimDocument& d = Document(handle);
    if (saveChanges.value_or(false) || (!saveChanges && d.dbmod != 0)) {
        int answer = mb::kIdYes;
        if (!saveChanges) {
            answer = Show(L"Save changes to " + d.title + L"?", L"SimHost",
                          mb::kYesNoCancel | mb::kIconWarning);
        }
        if (answer == mb::kIdCancel)
            throw ComError(hr::kFail, L"The drawing was not closed.");
        if (answer == mb::kIdYes) {
            TypeIn(handle, L"_.QSAVE");
            if (d.dbmod != 0)
                throw ComError(hr::kFail, L"The drawing was not saved; it stays open.");
        }
    }
    CloseDocument(handle);
}

void SimHost::RefreshPlotDeviceInfo(HostAutoDocument* doc) {
    Log(L"RefreshPlotDeviceInfo", reinterpret_cast<HostDocument*>(doc));
}

bool SimHost::PlotToDevice(HostAutoDocument* doc) {
    HostDocument* handle = Automated(doc, SimAutomationCall::PlotToDevice);
    Log(L"PlotToDevice", handle);
    SimDocument& d = Document(handle);
    if (d.plotDevice.empty())
        throw ComError(hr::kFail, L"The plot device of the layout is missing.");
    m_plots.push_back(SimPlot{d.title, d.plotDevice, m_variables[L"BACKGROUNDPLOT"]});
    return true;
}

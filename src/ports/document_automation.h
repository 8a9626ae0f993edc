#pragma once
// The host's automation objects as the bar's batch commands drive them from outside any
// command: the documents collection, a document, its active layout and plot object. Every call
// can run the host's message loop, so reactors fire inside it; a failed call throws ComError.
// Documents come with one reference held, given back with HostAutomation::Release; the
// documents collection's items, activation and the active space are HostAutomation's.

#include <optional>
#include <string>

struct HostApplication;
struct HostAutoDocument;

class DocumentAutomation {
public:
    virtual ~DocumentAutomation() = default;

    // acedSendModelessOperationStart and ...Ended: they tell other applications in the host
    // that an operation of that name happened.
    virtual void SendModelessOperationStart(const std::wstring& name) = 0;
    virtual void SendModelessOperationEnded(const std::wstring& name) = 0;

    // Application.ActiveDocument: null when the host gives none.
    virtual HostAutoDocument* ActiveDocument(HostApplication* app) = 0;
    // Application.ZoomExtents, ZoomAll and Quit; the zooms act on the active drawing.
    virtual void ZoomExtents(HostApplication* app) = 0;
    virtual void ZoomAll(HostApplication* app) = 0;
    virtual void Quit(HostApplication* app) = 0;

    virtual bool IsReadOnly(HostAutoDocument* doc) = 0;
    // Document.SendCommand: the text as it stands; each "\n" ends a line of input.
    virtual void SendCommand(HostAutoDocument* doc, const std::wstring& text) = 0;
    // Document.Close with a missing FileName. A missing SaveChanges (nullopt) leaves it to the
    // host what a modified drawing does; it may ask the user.
    virtual void Close(HostAutoDocument* doc, std::optional<bool> saveChanges) = 0;

    // ActiveLayout.RefreshPlotDeviceInfo, and Plot.PlotToDevice with the active layout's own
    // configuration (a missing argument).
    virtual void RefreshPlotDeviceInfo(HostAutoDocument* doc) = 0;
    virtual bool PlotToDevice(HostAutoDocument* doc) = 0;
};

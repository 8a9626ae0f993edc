#include "bar/plot_all.h"

#include "bar/batch_commands.h"
#include "bar/command_edge.h"
#include "ports/document_automation.h"
#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/port.h"

int PlotParametersDlg::DoModal() {
    // Until the dialog has a window of its own, a box with the same title and buttons stands
    // in for it: the answer is the only thing the commands take from it.
    return Use<MessageBoxes>().Show(L"Plot with the settings of each drawing's active layout.",
                                    kTitle, mb::kOkCancel);
}

BackgroundPlotOff::BackgroundPlotOff() {
    HostServices& services = Use<HostServices>();
    if (auto value = services.GetVariable(L"BACKGROUNDPLOT")) {
        m_strSaved = *value;
        m_bRead = true;
    }
    services.SetVariable(L"BACKGROUNDPLOT", L"0");
}

BackgroundPlotOff::~BackgroundPlotOff() {
    if (m_bRead)
        Use<HostServices>().SetVariable(L"BACKGROUNDPLOT", m_strSaved);
}

void TrPlotAll::PlotDrawing(HostAutoDocument* doc) {
    // The text names another function; it is what plotting has always reported.
    RunAtCommandEdge("HvTabrow::OnClose()", [&] {
        if (doc == nullptr)
            throw ComError(static_cast<HRESULT>(0x80004003), L"Invalid pointer");
        DocumentAutomation& automation = Use<DocumentAutomation>();
        // The device data that the drawing stored is brought up to date first.
        automation.RefreshPlotDeviceInfo(doc);
        automation.PlotToDevice(doc);  // the result says nothing that the host has not shown
    });
}

void TrPlotAll::PlotEach() {
    m_batch.ForEachDocument([&](HostAutoDocument* doc) {
        PlotDrawing(doc);
        return true;
    });
}

// A failure in the plot commands' own loops ends them without a word.
void TrPlotAll::OnQuickPlotAll() {
    try {
        AnnounceModelessOperation(L"TR_QuickPlotAll");
        BackgroundPlotOff foreground;
        PlotEach();
    } catch (...) {
    }
}

void TrPlotAll::OnPlotAll() {
    try {
        AnnounceModelessOperation(L"TR_PlotAll");
        PlotParametersDlg dialog;
        if (dialog.DoModal() == mb::kIdOk)
            PlotEach();
    } catch (...) {
    }
}

void TrPlotAll::OnPlotDialog() {
    try {
        if (!m_batch.HasMenuDocument())
            return;
        PlotParametersDlg dialog;
        dialog.DoModal();
    } catch (...) {
    }
}

void TrPlotAll::OnPlotDrawing() {
    try {
        AutoDocumentPtr doc = m_batch.MenuDocument();
        if (doc.Get() != nullptr)
            PlotDrawing(doc.Get());
    } catch (...) {
    }
}

#pragma once
// Plotting every open drawing to the device its active layout names, with the layout's own
// settings. Quick Plot All is on the bar's menu; plotting the menu's drawing, the dialog alone
// and the dialog then everything are reachable by their command ids only.

#include <string>

class TrBatchCommands;
struct HostAutoDocument;

namespace cmd {
constexpr unsigned kPlotDrawing = 4012;  // the menu's drawing; no menu entry
constexpr unsigned kQuickPlotAll = 4013;
constexpr unsigned kPlotDialog = 4014;  // no menu entry
constexpr unsigned kPlotAll = 4015;     // no menu entry
}  // namespace cmd

// The plot commands' dialog, "Plot Settings": OK and Cancel, a list of page setups and one of
// plot devices, "Plot to file" and a file name. Nothing fills the lists and nothing reads them:
// how it is closed is all that counts.
class PlotParametersDlg {
public:
    static constexpr wchar_t kTitle[] = L"Plot Settings";
    static constexpr int kWidthDlu = 320;
    static constexpr int kHeightDlu = 218;
    static constexpr unsigned kPlotToFileId = 2044;
    static constexpr unsigned kFileNameId = 2045;
    static constexpr unsigned kPlotDevicesId = 2046;
    static constexpr unsigned kPageSetupsId = 2047;

    // Modal; IDOK or IDCANCEL.
    int DoModal();
};

// BACKGROUNDPLOT held at 0 for a scope, so that each plot runs in the foreground and is done
// before the next starts; the old value is written back however the scope ends.
class BackgroundPlotOff {
public:
    BackgroundPlotOff();
    ~BackgroundPlotOff();
    BackgroundPlotOff(const BackgroundPlotOff&) = delete;
    BackgroundPlotOff& operator=(const BackgroundPlotOff&) = delete;

private:
    std::wstring m_strSaved;
    bool m_bRead = false;
};

class TrPlotAll {
public:
    explicit TrPlotAll(TrBatchCommands& batch) : m_batch(batch) {}

    void OnQuickPlotAll();
    void OnPlotAll();
    void OnPlotDialog();
    void OnPlotDrawing();
    // Refreshes the layout's device data and plots; the drawing is not activated. A failure is
    // reported and ends this drawing only.
    void PlotDrawing(HostAutoDocument* doc);

private:
    void PlotEach();

    TrBatchCommands& m_batch;
};

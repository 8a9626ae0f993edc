#pragma once
// The document bar. It is created by the application's start-up as a child of the host's frame
// (or inside its own floating window), shown and hidden by TRON and TROFF, and told which
// drawing is active. Its settings are fields of its own, as the rest of the system reads them.

#include "foundation/win_types.h"
#include "settings/tabrow_settings.h"

struct HostDocument;
struct HostWindow;

class HvTabrow : public TabrowSettings {
public:
    HvTabrow();  // loads the settings
    virtual ~HvTabrow();
    HvTabrow(const HvTabrow&) = delete;
    HvTabrow& operator=(const HvTabrow&) = delete;

    virtual bool Create();
    void LoadSettings();
    void ShowBar();
    void HideBar();
    bool IsBarVisible() const;
    void CenterFloating();
    void OnDocumentActivated(HostDocument* doc);

    // The thickness that the hook cuts out of the MDI client or the command window.
    int CalcTabBarSize(const win::RECT* prc);
    int GetPreviewBarSize();
    int GetCmdWndBarWidth();
    // Application.Documents.Count; throws ComError.
    int GetOpenDocumentCount();

    HostWindow* GetSafeHwnd() const { return m_hWnd; }
    HostWindow* FloatingWindow() const { return m_hFloatWnd; }
    HostDocument* ActiveDocument() const { return m_pActiveDoc; }

    win::RECT m_rcCmdWnd;  // the command window as the bar last saw it

private:
    HostWindow* m_hWnd = nullptr;       // owned: destroyed with the bar
    HostWindow* m_hFloatWnd = nullptr;  // owned, null while docked
    HostDocument* m_pActiveDoc = nullptr;
};

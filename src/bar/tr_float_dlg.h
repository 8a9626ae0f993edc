#pragma once
// The floating window of the bar: a captioned tool window with a sizing frame and no controls of
// its own, into which the bar moves while it floats. The window stays from the bar's creation to
// its end and is shown and hidden as the bar floats or docks; its place on the screen is kept in
// the settings from one session to the next.

#include "ports/window_handler.h"

class HvTabrow;
struct HostWindow;

class TrFloatDlg : public WindowHandler {
public:
    static constexpr unsigned kTemplateId = 507;
    // The dialog's own answers to Enter and Esc.
    static constexpr unsigned kIdOk = 1;
    static constexpr unsigned kIdCancel = 2;
    // Where a first floating start puts the window: the drawing area's top left, this size.
    static constexpr int kFirstWidth = 300;
    static constexpr int kFirstHeight = 100;

    explicit TrFloatDlg(HvTabrow& bar) : m_bar(bar) {}
    TrFloatDlg(const TrFloatDlg&) = delete;
    TrFloatDlg& operator=(const TrFloatDlg&) = delete;

    // Makes the hidden window, owned by `parent`; false when it couldn't be made.
    bool Create(unsigned templateId, HostWindow* parent);
    // The window's place: the stored one, or the first one.
    MsgResult OnCreate() override;
    // A floating bar fills the client area exactly.
    MsgResult OnSize(unsigned type, win::SIZE client) override;
    // The place is stored as the window goes.
    MsgResult OnDestroy() override;
    MsgResult OnNcDestroy() override;
    // The host must not take the focus away, and the caption never looks inactive.
    MsgResult OnKeepFocus() override { return MsgResult::Handled(1); }
    MsgResult OnNcActivate(bool) override { return MsgResult::Handled(1); }
    MsgResult OnExitSizeMove() override { return MsgResult::Handled(0); }
    // Enter and Esc do nothing: the window doesn't end as a dialog would.
    MsgResult OnCommand(unsigned id, unsigned code, HostWindow* control) override;

    HostWindow* m_hWnd = nullptr;  // owned; null once destroyed

private:
    HvTabrow& m_bar;
};

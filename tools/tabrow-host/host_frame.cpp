#include "host_frame.h"

#include <algorithm>

#include "platform/win32/gdi_handles.h"
#include "platform/win32/win32_window_procedures.h"

namespace {

constexpr wchar_t kFrameClass[] = L"TabrowHostFrame";
constexpr wchar_t kCommandBarClass[] = L"TabrowHostCommandBar";
constexpr wchar_t kCommandWindowClass[] = L"TabrowHostCommandWindow";
constexpr wchar_t kDrawingClass[] = L"TabrowHostDrawing";
constexpr int kMdiClientId = 0xE900;  // the first pane of a frame
constexpr int kFirstChildId = 0xFF00;
constexpr int kHistoryLineHeight = 16;

template <class Owner>
Owner* OwnerOf(HWND hwnd) {
    return reinterpret_cast<Owner*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
}

void Register(HINSTANCE instance, const wchar_t* name, WNDPROC procedure, int background) {
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = procedure;
    wc.hInstance = instance;
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground =
        background < 0 ? nullptr : reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(background + 1));
    wc.lpszClassName = name;
    ::RegisterClassExW(&wc);
}

HWND MakeChild(const wchar_t* className, const wchar_t* title, DWORD style, HWND parent,
               HINSTANCE instance, void* param = nullptr, int id = 0) {
    return ::CreateWindowExW(0, className, title, WS_CHILD | WS_VISIBLE | style, 0, 0, 10, 10,
                             parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance,
                             param);
}

}  // namespace

HostFrame::HostFrame(Events events, int width, int height)
    : m_events(std::move(events)), m_instance(::GetModuleHandleW(nullptr)) {
    Register(m_instance, kFrameClass, &FrameProcedure, COLOR_BTNFACE);
    Register(m_instance, kCommandBarClass, &CommandBarProcedure, COLOR_BTNFACE);
    Register(m_instance, kCommandWindowClass, &CommandWindowProcedure, -1);
    Register(m_instance, kDrawingClass, &DrawingProcedure, -1);
    m_frame =
        ::CreateWindowExW(0, kFrameClass, L"Tabrow Host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0,
                          0, width, height, nullptr, nullptr, m_instance, nullptr);
    ::SetWindowLongPtrW(m_frame, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    CLIENTCREATESTRUCT client{nullptr, kFirstChildId};
    m_mdiClient =
        MakeChild(L"MDIClient", L"", WS_CLIPCHILDREN, m_frame, m_instance, &client, kMdiClientId);
    m_commandBar =
        MakeChild(kCommandBarClass, L"Command Line", WS_CLIPCHILDREN, m_frame, m_instance);
    ::SetWindowLongPtrW(m_commandBar, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    m_commandWindow = MakeChild(kCommandWindowClass, L"", 0, m_commandBar, m_instance);
    ::SetWindowLongPtrW(m_commandWindow, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    m_commandLine = MakeChild(L"EDIT", L"", ES_AUTOHSCROLL, m_commandWindow, m_instance);
    ::SetWindowLongPtrW(m_commandLine, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    m_editProcedure = reinterpret_cast<WNDPROC>(::SetWindowLongPtrW(
        m_commandLine, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CommandLineProcedure)));
    ::SendMessageW(m_commandLine, WM_SETFONT,
                   reinterpret_cast<WPARAM>(::GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    ::ShowWindow(m_frame, SW_SHOW);
    LayOut();
    ::UpdateWindow(m_frame);
}

HostFrame::~HostFrame() {
    if (::IsWindow(m_frame))
        ::DestroyWindow(m_frame);
    for (const wchar_t* name : {kFrameClass, kCommandBarClass, kCommandWindowClass, kDrawingClass})
        ::UnregisterClassW(name, m_instance);
}

RECT HostFrame::MdiClientRoom() const {
    RECT room{};
    ::GetClientRect(m_frame, &room);
    room.top += kToolbarsHeight;
    room.bottom -= kStatusBarHeight;
    // The docked command line is a control bar of the frame: it takes the bottom of the room.
    if (::IsWindowVisible(m_commandBar))
        room.bottom -= kCommandBarHeight;
    return room;
}

void HostFrame::LayOut() {
    RECT client{};
    ::GetClientRect(m_frame, &client);
    const RECT room = MdiClientRoom();
    ::MoveWindow(m_commandBar, 0, room.bottom, client.right, kCommandBarHeight, TRUE);
    ::MoveWindow(m_mdiClient, room.left, room.top, room.right - room.left, room.bottom - room.top,
                 TRUE);
}

HWND HostFrame::AddDrawing(const std::wstring& title) {
    MDICREATESTRUCTW create{};
    create.szClass = kDrawingClass;
    create.szTitle = title.c_str();
    create.hOwner = m_instance;
    create.x = create.y = create.cx = create.cy = CW_USEDEFAULT;
    create.style = WS_MAXIMIZE;
    m_bActivating = true;
    HWND view = reinterpret_cast<HWND>(
        ::SendMessageW(m_mdiClient, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&create)));
    m_bActivating = false;
    return view;
}

void HostFrame::ActivateDrawing(HWND view) {
    m_bActivating = true;
    ::SendMessageW(m_mdiClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(view), 0);
    m_bActivating = false;
}

void HostFrame::RemoveDrawing(HWND view) {
    m_bActivating = true;
    ::SendMessageW(m_mdiClient, WM_MDIDESTROY, reinterpret_cast<WPARAM>(view), 0);
    m_bActivating = false;
}

void HostFrame::SetHistory(std::vector<std::wstring> lines) {
    m_history = std::move(lines);
    ::InvalidateRect(m_commandWindow, nullptr, TRUE);
}

void HostFrame::PaintHistory(HWND window) {
    PAINTSTRUCT paint{};
    HDC dc = ::BeginPaint(window, &paint);
    if (dc == nullptr)
        return;
    RECT client{};
    ::GetClientRect(window, &client);
    ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    {
        const SelectGuard font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
        ::SetBkMode(dc, TRANSPARENT);
        const int rows = std::max(
            0, (static_cast<int>(client.bottom) - kCommandLineHeight) / kHistoryLineHeight);
        const std::size_t first = m_history.size() > static_cast<std::size_t>(rows)
                                      ? m_history.size() - static_cast<std::size_t>(rows)
                                      : 0;
        int y = 2;
        for (std::size_t i = first; i < m_history.size(); ++i, y += kHistoryLineHeight)
            ::TextOutW(dc, 4, y, m_history[i].c_str(), static_cast<int>(m_history[i].size()));
    }  // the font is put back before the paint ends
    ::EndPaint(window, &paint);
}

LRESULT CALLBACK HostFrame::FrameProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    HostFrame* self = OwnerOf<HostFrame>(hwnd);
    if (self != nullptr && message == WM_SIZE) {
        // The frame lays out its own children; the default frame procedure would give the
        // whole client area to the MDI client.
        self->LayOut();
        return 0;
    }
    if (message == WM_DESTROY)
        ::PostQuitMessage(0);  // the user closed the host
    return ::DefFrameProcW(hwnd, self != nullptr ? self->m_mdiClient : nullptr, message, wParam,
                           lParam);
}

LRESULT CALLBACK HostFrame::CommandBarProcedure(HWND hwnd, UINT message, WPARAM wParam,
                                                LPARAM lParam) {
    HostFrame* self = OwnerOf<HostFrame>(hwnd);
    if (self != nullptr && message == WM_SIZE) {
        ::MoveWindow(self->m_commandWindow, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
        return 0;
    }
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

LRESULT CALLBACK HostFrame::CommandWindowProcedure(HWND hwnd, UINT message, WPARAM wParam,
                                                   LPARAM lParam) {
    HostFrame* self = OwnerOf<HostFrame>(hwnd);
    if (self != nullptr && message == WM_SIZE) {
        const int height = HIWORD(lParam);
        ::MoveWindow(self->m_commandLine, 0, height - kCommandLineHeight, LOWORD(lParam),
                     kCommandLineHeight, TRUE);
        return 0;
    }
    if (self != nullptr && message == WM_PAINT) {
        self->PaintHistory(hwnd);
        return 0;
    }
    if (message == WM_ERASEBKGND)
        return 1;
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

LRESULT CALLBACK HostFrame::CommandLineProcedure(HWND hwnd, UINT message, WPARAM wParam,
                                                 LPARAM lParam) {
    HostFrame* self = OwnerOf<HostFrame>(hwnd);
    if (message == WM_CHAR && wParam == VK_RETURN) {
        const int length = ::GetWindowTextLengthW(hwnd);
        std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
        ::GetWindowTextW(hwnd, text.data(), length + 1);
        text.resize(static_cast<std::size_t>(length));
        ::SetWindowTextW(hwnd, L"");
        // What the command does stays on this side of the window system.
        try {
            if (self->m_events.command)
                self->m_events.command(text);
        } catch (...) {
        }
        return 0;
    }
    return ::CallWindowProcW(self->m_editProcedure, hwnd, message, wParam, lParam);
}

LRESULT CALLBACK HostFrame::DrawingProcedure(HWND hwnd, UINT message, WPARAM wParam,
                                             LPARAM lParam) {
    if (message == WM_PAINT || message == WM_ERASEBKGND || message == WM_NCDESTROY) {
        // The drawing's painter draws it; the window forgets it as it goes.
        return HandlerWindowProcedure(hwnd, message, wParam, lParam);
    }
    if (message == WM_MDIACTIVATE && reinterpret_cast<HWND>(lParam) == hwnd) {
        HWND frame = ::GetParent(::GetParent(hwnd));
        HostFrame* self = OwnerOf<HostFrame>(frame);
        try {
            if (self != nullptr && !self->m_bActivating && self->m_events.drawingActivated)
                self->m_events.drawingActivated(hwnd);
        } catch (...) {
        }
    }
    return ::DefMDIChildProcW(hwnd, message, wParam, lParam);
}

#include "platform/win32/win32_window_system.h"

#include <algorithm>

#include "platform/win32/gdi_canvas.h"
#include "platform/win32/gdi_handles.h"
#include "platform/win32/win32_window_procedures.h"

namespace {

constexpr wchar_t kSubclassHandler[] = L"Tabrow.SubclassHandler";
constexpr wchar_t kSubclassPrevious[] = L"Tabrow.SubclassPrevious";

HWND ToHwnd(HostWindow* window) {
    return reinterpret_cast<HWND>(window);
}

HostWindow* ToHost(HWND hwnd) {
    return reinterpret_cast<HostWindow*>(hwnd);
}

win::RECT ToCore(const RECT& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

bool IsChild(HWND hwnd) {
    return (::GetWindowLongPtrW(hwnd, GWL_STYLE) & WS_CHILD) != 0;
}

// A control's procedure with a handler in front of it: what the handler leaves, and a failure
// in it, go to the control's own procedure.
LRESULT CALLBACK HandlerSubclassProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto previous = reinterpret_cast<WNDPROC>(::GetPropW(hwnd, kSubclassPrevious));
    if (auto* handler = static_cast<WindowHandler*>(::GetPropW(hwnd, kSubclassHandler))) {
        try {
            const MsgResult result = DispatchToHandler(*handler, message, wParam, lParam);
            if (result.IsHandled())
                return result.Value();
        } catch (...) {
        }
    }
    if (previous == nullptr)
        return ::DefWindowProcW(hwnd, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        ::SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previous));
        ::RemovePropW(hwnd, kSubclassHandler);
        ::RemovePropW(hwnd, kSubclassPrevious);
    }
    return ::CallWindowProcW(previous, hwnd, message, wParam, lParam);
}

void SubclassForHandler(HWND hwnd, WindowHandler* handler) {
    ::SetPropW(hwnd, kSubclassHandler, handler);
    if (IsSubclassedForHandler(hwnd))
        return;
    const LONG_PTR previous = ::GetWindowLongPtrW(hwnd, GWLP_WNDPROC);
    ::SetPropW(hwnd, kSubclassPrevious, reinterpret_cast<HANDLE>(previous));
    ::SetWindowLongPtrW(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&HandlerSubclassProcedure));
}

// The window being made gets its handler when the system first tells of it, before its
// WM_NCCREATE: a CBT hook for the length of one CreateWindowExW on this thread.
struct PendingCreation {
    const ChildWindowSpec* spec = nullptr;
    bool ownClass = false;
    HHOOK hook = nullptr;
};
thread_local PendingCreation* t_pPending = nullptr;

LRESULT CALLBACK CreationHook(int code, WPARAM wParam, LPARAM lParam) {
    PendingCreation* pending = t_pPending;
    if (pending != nullptr && code == HCBT_CREATEWND && pending->spec != nullptr) {
        const ChildWindowSpec& spec = *pending->spec;
        pending->spec = nullptr;  // windows that this one makes in its creation are not it
        const auto hwnd = reinterpret_cast<HWND>(wParam);
        if (spec.handler != nullptr) {
            if (pending->ownClass)
                SetWindowHandler(hwnd, spec.handler);
            else
                SubclassForHandler(hwnd, spec.handler);
        }
        if (spec.attach != nullptr)
            *spec.attach = ToHost(hwnd);
    }
    return ::CallNextHookEx(pending != nullptr ? pending->hook : nullptr, code, wParam, lParam);
}

// The client area of a window as a canvas; what is painted goes to the window in one blit when
// the canvas goes, which ends the paint.
class PaintScopeCanvas : public Canvas {
public:
    PaintScopeCanvas(HWND hwnd, const PAINTSTRUCT& paint, std::unique_ptr<GdiCanvas> memory)
        : m_hwnd(hwnd), m_paint(paint), m_memory(std::move(memory)) {}
    ~PaintScopeCanvas() override {
        m_memory->BlitTo(m_paint.hdc, 0, 0);
        ::EndPaint(m_hwnd, &m_paint);
    }
    PaintScopeCanvas(const PaintScopeCanvas&) = delete;
    PaintScopeCanvas& operator=(const PaintScopeCanvas&) = delete;

    int Width() const override { return m_memory->Width(); }
    int Height() const override { return m_memory->Height(); }
    void FillRect(const win::RECT& rect, win::COLORREF color) override {
        m_memory->FillRect(rect, color);
    }
    void Draw3dRect(const win::RECT& rect, win::COLORREF topLeft,
                    win::COLORREF bottomRight) override {
        m_memory->Draw3dRect(rect, topLeft, bottomRight);
    }
    void DrawText(const std::wstring& text, const win::RECT& rect, const win::LOGFONTW& font,
                  win::COLORREF color, std::uint32_t format) override {
        m_memory->DrawText(text, rect, font, color, format);
    }
    win::SIZE MeasureText(const std::wstring& text, const win::LOGFONTW& font) override {
        return m_memory->MeasureText(text, font);
    }
    void BlitRgb(const std::uint8_t* rgb, int width, int height, int stride, int x,
                 int y) override {
        m_memory->BlitRgb(rgb, width, height, stride, x, y);
    }
    void StretchDib(const std::uint8_t* dib, std::size_t size, const win::RECT& dest,
                    StretchMode mode) override {
        m_memory->StretchDib(dib, size, dest, mode);
    }
    void AlphaTint(const win::RECT& rect, win::COLORREF color, std::uint8_t alpha) override {
        m_memory->AlphaTint(rect, color, alpha);
    }
    void FillMask(const std::uint8_t* mask, int width, int height, int stride, int x, int y,
                  win::COLORREF color) override {
        m_memory->FillMask(mask, width, height, stride, x, y, color);
    }
    bool ReadRgb(int x, int y, int width, int height, std::uint8_t* rgb) override {
        return m_memory->ReadRgb(x, y, width, height, rgb);
    }
    std::unique_ptr<Canvas> CreateCompatible(int width, int height) override {
        return m_memory->CreateCompatible(width, height);
    }

private:
    HWND m_hwnd;
    PAINTSTRUCT m_paint;
    std::unique_ptr<GdiCanvas> m_memory;
};

}  // namespace

bool IsSubclassedForHandler(HWND hwnd) {
    return ::GetWindowLongPtrW(hwnd, GWLP_WNDPROC) ==
           reinterpret_cast<LONG_PTR>(&HandlerSubclassProcedure);
}

Win32WindowSystem::Win32WindowSystem(Win32HostFrame host, HINSTANCE instance)
    : m_host(std::move(host)), m_instance(instance) {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_TAB_CLASSES;
    ::InitCommonControlsEx(&controls);
}

Win32WindowSystem::~Win32WindowSystem() {
    m_fonts.clear();
    for (const std::wstring& name : m_classes)
        ::UnregisterClassW(name.c_str(), m_instance);
}

HostWindow* Win32WindowSystem::HostFrame() {
    return ToHost(m_host.frame);
}

HostWindow* Win32WindowSystem::DockedCommandLine() {
    return ToHost(m_host.commandLine);
}

HostWindow* Win32WindowSystem::FindChild(HostWindow* parent, const std::wstring& className,
                                         const std::wstring& title) {
    return ToHost(::FindWindowExW(ToHwnd(parent), nullptr, className.c_str(), title.c_str()));
}

HostWindow* Win32WindowSystem::Parent(HostWindow* window) {
    HWND hwnd = ToHwnd(window);
    if (!::IsWindow(hwnd) || !IsChild(hwnd))
        return nullptr;  // a top-level window's GetParent is its owner
    return ToHost(::GetParent(hwnd));
}

bool Win32WindowSystem::IsWindow(HostWindow* window) {
    return window != nullptr && ::IsWindow(ToHwnd(window)) != FALSE;
}

HostWindow* Win32WindowSystem::CreateChild(HostWindow* parent, const std::wstring& className,
                                           const win::RECT& rect, unsigned style) {
    ChildWindowSpec spec;
    spec.parent = parent;
    spec.className = className;
    spec.rect = rect;
    spec.style = style;
    return CreateChild(spec);
}

void Win32WindowSystem::EnsureClass(const std::wstring& className) {
    WNDCLASSEXW known{};
    known.cbSize = sizeof known;
    if (::GetClassInfoExW(m_instance, className.c_str(), &known) ||
        ::GetClassInfoExW(nullptr, className.c_str(), &known))
        return;
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = &HandlerWindowProcedure;
    wc.hInstance = m_instance;
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.lpszClassName = className.c_str();
    if (::RegisterClassExW(&wc) != 0)
        m_classes.push_back(className);
}

HostWindow* Win32WindowSystem::CreateChild(const ChildWindowSpec& spec) {
    HWND parent = ToHwnd(spec.parent);
    if (parent != nullptr && !::IsWindow(parent))
        return nullptr;
    EnsureClass(spec.className);
    PendingCreation pending;
    pending.spec = &spec;
    pending.ownClass =
        std::find(m_classes.begin(), m_classes.end(), spec.className) != m_classes.end();
    pending.hook = ::SetWindowsHookExW(WH_CBT, &CreationHook, nullptr, ::GetCurrentThreadId());
    PendingCreation* outer = std::exchange(t_pPending, &pending);
    // A window without a parent is owned by the frame, so that it stays above it.
    HWND made = ::CreateWindowExW(
        0, spec.className.c_str(), spec.title.c_str(), spec.style, spec.rect.left, spec.rect.top,
        spec.rect.Width(), spec.rect.Height(), parent != nullptr ? parent : m_host.frame,
        (spec.style & WS_CHILD) != 0 ? reinterpret_cast<HMENU>(static_cast<INT_PTR>(spec.id))
                                     : nullptr,
        m_instance, nullptr);
    t_pPending = outer;
    if (pending.hook != nullptr)
        ::UnhookWindowsHookEx(pending.hook);
    if (made == nullptr && spec.attach != nullptr)
        *spec.attach = nullptr;
    return ToHost(made);
}

void Win32WindowSystem::Destroy(HostWindow* window) {
    if (IsWindow(window))
        ::DestroyWindow(ToHwnd(window));
    ForgetDeadFonts();
}

win::RECT Win32WindowSystem::RectInParent(HostWindow* window) {
    HWND hwnd = ToHwnd(window);
    RECT rect{};
    ::GetWindowRect(hwnd, &rect);
    if (IsChild(hwnd))
        ::MapWindowPoints(nullptr, ::GetParent(hwnd), reinterpret_cast<POINT*>(&rect), 2);
    return ToCore(rect);
}

win::RECT Win32WindowSystem::ScreenRect(HostWindow* window) {
    RECT rect{};
    ::GetWindowRect(ToHwnd(window), &rect);
    return ToCore(rect);
}

void Win32WindowSystem::Move(HostWindow* window, const win::RECT& rect, bool repaint) {
    ::MoveWindow(ToHwnd(window), rect.left, rect.top, rect.Width(), rect.Height(), repaint);
}

void Win32WindowSystem::Redraw(HostWindow* window, unsigned flags) {
    ::RedrawWindow(ToHwnd(window), nullptr, nullptr, flags);
}

void Win32WindowSystem::RedrawRect(HostWindow* window, const win::RECT& rect, unsigned flags) {
    const RECT area{rect.left, rect.top, rect.right, rect.bottom};
    ::RedrawWindow(ToHwnd(window), &area, nullptr, flags);
}

void Win32WindowSystem::RecalcLayout(HostWindow* frame) {
    HWND hwnd = ToHwnd(frame);
    if (!::IsWindow(hwnd))
        return;
    if (m_host.recalcLayout) {
        m_host.recalcLayout(hwnd);
        return;
    }
    RECT client{};
    ::GetClientRect(hwnd, &client);
    ::SendMessageW(hwnd, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
}

void Win32WindowSystem::Show(HostWindow* window, bool show) {
    ::ShowWindow(ToHwnd(window), show ? SW_SHOW : SW_HIDE);
}

bool Win32WindowSystem::IsVisible(HostWindow* window) {
    return ::IsWindowVisible(ToHwnd(window)) != FALSE;
}

bool Win32WindowSystem::IsZoomed(HostWindow* window) {
    return ::IsZoomed(ToHwnd(window)) != FALSE;
}

void Win32WindowSystem::Maximize(HostWindow* window) {
    ::ShowWindow(ToHwnd(window), SW_MAXIMIZE);
}

void Win32WindowSystem::CenterInScreen(HostWindow* window) {
    HWND hwnd = ToHwnd(window);
    RECT rect{};
    ::GetWindowRect(hwnd, &rect);
    RECT work{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    POINT corner{work.left + (work.right - work.left - width) / 2,
                 work.top + (work.bottom - work.top - height) / 2};
    if (IsChild(hwnd))
        ::ScreenToClient(::GetParent(hwnd), &corner);
    ::SetWindowPos(hwnd, nullptr, corner.x, corner.y, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

unsigned Win32WindowSystem::Style(HostWindow* window) {
    return static_cast<unsigned>(::GetWindowLongPtrW(ToHwnd(window), GWL_STYLE));
}

void Win32WindowSystem::ModifyStyle(HostWindow* window, unsigned remove, unsigned add) {
    HWND hwnd = ToHwnd(window);
    const auto style = static_cast<unsigned>(::GetWindowLongPtrW(hwnd, GWL_STYLE));
    ::SetWindowLongPtrW(hwnd, GWL_STYLE, static_cast<LONG_PTR>((style & ~remove) | add));
}

void Win32WindowSystem::SetParent(HostWindow* window, HostWindow* parent) {
    ::SetParent(ToHwnd(window), ToHwnd(parent));
}

win::RECT Win32WindowSystem::MdiClientRoom(HostWindow* frame) {
    HWND hwnd = ToHwnd(frame);
    if (m_host.mdiClientRoom)
        return ToCore(m_host.mdiClientRoom(hwnd));
    RECT client{};
    ::GetClientRect(hwnd, &client);
    return ToCore(client);
}

int Win32WindowSystem::SystemMetric(int index) {
    return ::GetSystemMetrics(index);
}

void Win32WindowSystem::SetMessageHandler(HostWindow* window, WindowHandler* handler) {
    HWND hwnd = ToHwnd(window);
    if (!::IsWindow(hwnd))
        return;
    const auto procedure = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(hwnd, GWLP_WNDPROC));
    if (procedure == &HandlerWindowProcedure)
        SetWindowHandler(hwnd, handler);
    else if (handler != nullptr || IsSubclassedForHandler(hwnd))
        SubclassForHandler(hwnd, handler);
}

void Win32WindowSystem::SetTimer(HostWindow* window, unsigned id, unsigned ms) {
    ::SetTimer(ToHwnd(window), id, ms, nullptr);
}

void Win32WindowSystem::KillTimer(HostWindow* window, unsigned id) {
    ::KillTimer(ToHwnd(window), id);
}

void Win32WindowSystem::ForgetDeadFonts() {
    std::erase_if(m_fonts, [](const auto& held) { return ::IsWindow(held.first) == FALSE; });
}

void Win32WindowSystem::SetFont(HostWindow* window, const win::LOGFONTW& font, bool redraw) {
    HWND hwnd = ToHwnd(window);
    if (!::IsWindow(hwnd))
        return;
    ForgetDeadFonts();
    FontHandle made = MakeFont(font);
    if (!made)
        return;
    ::SendMessageW(hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(made.Get()), redraw ? TRUE : FALSE);
    // The window has let go of the font it had: it may go now.
    m_fonts[hwnd] = std::move(made);
}

void Win32WindowSystem::SetCapture(HostWindow* window) {
    ::SetCapture(ToHwnd(window));
}

void Win32WindowSystem::ReleaseCapture() {
    ::ReleaseCapture();
}

HostWindow* Win32WindowSystem::Capture() {
    return ToHost(::GetCapture());
}

HostCursor* Win32WindowSystem::StandardCursor(int id) {
    // A shared cursor of the system: never destroyed.
    return reinterpret_cast<HostCursor*>(
        ::LoadCursorW(nullptr, MAKEINTRESOURCEW(static_cast<WORD>(id))));
}

void Win32WindowSystem::SetCursor(HostCursor* cursor) {
    ::SetCursor(reinterpret_cast<HCURSOR>(cursor));
}

win::POINT Win32WindowSystem::CursorPos() {
    POINT point{-1, -1};
    ::GetCursorPos(&point);
    return {point.x, point.y};
}

win::POINT Win32WindowSystem::ScreenToClient(HostWindow* window, win::POINT point) {
    POINT native{point.x, point.y};
    ::ScreenToClient(ToHwnd(window), &native);
    return {native.x, native.y};
}

std::unique_ptr<Canvas> Win32WindowSystem::BeginPaint(HostWindow* window) {
    HWND hwnd = ToHwnd(window);
    PAINTSTRUCT paint{};
    if (::BeginPaint(hwnd, &paint) == nullptr)
        return nullptr;
    RECT client{};
    ::GetClientRect(hwnd, &client);
    std::unique_ptr<GdiCanvas> memory = GdiCanvas::Create(client.right, client.bottom, paint.hdc);
    if (memory == nullptr) {
        // Nothing to paint on: the frame is skipped, and the paint still ends.
        ::EndPaint(hwnd, &paint);
        return nullptr;
    }
    return std::make_unique<PaintScopeCanvas>(hwnd, paint, std::move(memory));
}

static_assert(sif::kRange == SIF_RANGE && sif::kPage == SIF_PAGE && sif::kPos == SIF_POS &&
              sif::kDisableNoScroll == SIF_DISABLENOSCROLL && sbs::kVert == SBS_VERT);

int Win32WindowSystem::SetScrollInfo(HostWindow* bar, const ScrollInfo& info, bool redraw) {
    SCROLLINFO si{sizeof(si), info.mask, info.min, info.max, info.page, info.pos, 0};
    return ::SetScrollInfo(ToHwnd(bar), SB_CTL, &si, redraw ? TRUE : FALSE);
}

ScrollInfo Win32WindowSystem::GetScrollInfo(HostWindow* bar) {
    SCROLLINFO si{sizeof(si), SIF_RANGE | SIF_PAGE | SIF_POS, 0, 0, 0, 0, 0};
    ::GetScrollInfo(ToHwnd(bar), SB_CTL, &si);
    return ScrollInfo{sif::kRange | sif::kPage | sif::kPos, si.nMin, si.nMax, si.nPage, si.nPos};
}

int Win32WindowSystem::SetScrollPos(HostWindow* bar, int pos, bool redraw) {
    return ::SetScrollPos(ToHwnd(bar), SB_CTL, pos, redraw ? TRUE : FALSE);
}

#include "platform/sim/sim_window_system.h"

#include <algorithm>
#include <stdexcept>

#include "ports/window_messages.h"

SimWindowSystem::SimWindowSystem() {
    // A maximised frame on a full-HD screen: MDI client above a docked command line.
    m_frame = Make(nullptr, L"HostFrame", win::RECT{0, 0, 1920, 1040}, ws::kVisible);
    m_mdiClient = Make(m_frame, L"MDIClient", win::RECT{0, 60, 1920, 880},
                       ws::kChild | ws::kVisible | ws::kClipChildren);
    m_cmdContainer = Make(m_frame, L"CommandBar", win::RECT{0, 880, 1920, 1020},
                          ws::kChild | ws::kVisible | ws::kClipChildren);
    m_cmdWnd = Make(m_cmdContainer, L"CommandWindow", win::RECT{0, 0, 1920, 140},
                    ws::kChild | ws::kVisible);
    m_cmdLine =
        Make(m_cmdWnd, L"CommandLine", win::RECT{0, 0, 1920, 140}, ws::kChild | ws::kVisible);
}

HostWindow* SimWindowSystem::Make(HostWindow* parent, const std::wstring& className,
                                  const win::RECT& rect, unsigned style) {
    auto window = std::make_unique<SimWindow>();
    window->className = className;
    window->parent = parent;
    window->rect = rect;
    window->style = style;
    window->procedure = &m_default;
    window->serial = ++m_serial;
    window->zOrder = ++m_nextZ;
    auto* handle = reinterpret_cast<HostWindow*>(window.get());
    m_windows[handle] = std::move(window);
    return handle;
}

SimWindow& SimWindowSystem::Window(HostWindow* window) {
    auto it = m_windows.find(window);
    if (it == m_windows.end())
        throw std::logic_error("no such window");
    return *it->second;
}

HostWindow* SimWindowSystem::FindChild(HostWindow* parent, const std::wstring& className,
                                       const std::wstring& title) {
    for (auto& [handle, window] : m_windows) {
        if (window->parent == parent && window->className == className && window->title == title) {
            return handle;
        }
    }
    return nullptr;
}

HostWindow* SimWindowSystem::Parent(HostWindow* window) {
    return IsWindow(window) ? Window(window).parent : nullptr;
}

bool SimWindowSystem::IsWindow(HostWindow* window) {
    return m_windows.count(window) != 0;
}

HostWindow* SimWindowSystem::CreateChild(HostWindow* parent, const std::wstring& className,
                                         const win::RECT& rect, unsigned style) {
    if (parent != nullptr && !IsWindow(parent))
        return nullptr;
    if ((style & ws::kChild) != 0 || parent == nullptr)
        return Make(parent, className, rect, style);
    HostWindow* popup = Make(nullptr, className, rect, style);
    Window(popup).owner = parent;
    return popup;
}

HostWindow* SimWindowSystem::CreateChild(const ChildWindowSpec& spec) {
    HostWindow* window = CreateChild(spec.parent, spec.className, spec.rect, spec.style);
    if (window == nullptr)
        return nullptr;
    SimWindow& w = Window(window);
    w.title = spec.title;
    w.id = spec.id;
    w.handler = spec.handler;
    if (spec.attach != nullptr)
        *spec.attach = window;
    if (Send(window, wm::kCreate, 0, 0) == -1) {
        if (spec.attach != nullptr)
            *spec.attach = nullptr;
        Destroy(window);
        return nullptr;
    }
    return window;
}

void SimWindowSystem::Destroy(HostWindow* window) {
    if (!IsWindow(window) || Window(window).dying)
        return;
    Window(window).dying = true;
    // Owned popups go first; then WM_DESTROY reaches the window before its children.
    const auto related = [this](HostWindow* window, HostWindow* SimWindow::*link) {
        std::vector<HostWindow*> found;
        for (auto& [handle, w] : m_windows) {
            if ((*w).*link == window)
                found.push_back(handle);
        }
        return found;
    };
    for (HostWindow* owned : related(window, &SimWindow::owner))
        Destroy(owned);
    Send(window, wm::kDestroy, 0, 0);
    for (HostWindow* child : related(window, &SimWindow::parent))
        Destroy(child);
    // The last message a window gets; it is still a window while it handles it.
    Send(window, wm::kNcDestroy, 0, 0);
    if (m_capture == window)
        m_capture = nullptr;
    m_windows.erase(window);
}

win::RECT SimWindowSystem::RectInParent(HostWindow* window) {
    return Window(window).rect;
}

win::RECT SimWindowSystem::ScreenRect(HostWindow* window) {
    win::RECT rect = Window(window).rect;
    for (HostWindow* p = Window(window).parent; p != nullptr; p = Window(p).parent) {
        const win::RECT& outer = Window(p).rect;
        rect.left += outer.left;
        rect.right += outer.left;
        rect.top += outer.top;
        rect.bottom += outer.top;
    }
    return rect;
}

void SimWindowSystem::Move(HostWindow* window, const win::RECT& rect, bool repaint) {
    SimWindow& w = Window(window);
    win::WINDOWPOS pos;
    pos.hwnd = window;
    pos.x = rect.left;
    pos.y = rect.top;
    pos.cx = rect.Width();
    pos.cy = rect.Height();
    if (!m_positioning.empty() && m_positioning.back() != window &&
        !WithinSiblingOf(window, m_positioning.back()))
        m_misplaced.push_back(window);
    // Whatever the window's procedure (and the hooks in front of it) made of the position is
    // where the window goes.
    m_positioning.push_back(window);
    try {
        Send(window, wm::kWindowPosChanging, 0, reinterpret_cast<std::intptr_t>(&pos));
    } catch (...) {
        m_positioning.pop_back();
        throw;
    }
    m_positioning.pop_back();
    if (!IsWindow(window))
        return;
    const win::RECT before = w.rect;
    w.rect = win::RECT{pos.x, pos.y, pos.x + pos.cx, pos.y + pos.cy};
    m_moves.push_back(MoveRecord{window, w.rect, repaint});
    // A window without a frame: its client area is its whole rectangle.
    if (w.rect.Width() != before.Width() || w.rect.Height() != before.Height()) {
        const auto size = (static_cast<std::uint32_t>(w.rect.Height() & 0xFFFF) << 16) |
                          static_cast<std::uint32_t>(w.rect.Width() & 0xFFFF);
        Send(window, wm::kSize, 0, static_cast<std::intptr_t>(size));
        if (!IsWindow(window))
            return;
    }
    LayOutChildren(window);
}

bool SimWindowSystem::WithinSiblingOf(HostWindow* window, HostWindow* other) {
    // A sibling, or a window inside one, which lays out its own children in its own coordinates.
    HostWindow* parent = Parent(other);
    for (HostWindow* w = window; w != nullptr; w = Window(w).parent) {
        if (Window(w).parent == parent)
            return true;
    }
    return false;
}

void SimWindowSystem::LayOutChildren(HostWindow* window) {
    if (window == m_frame) {
        // Control bars first: the command line's container along the bottom, above the status
        // bar, at its own height; then the MDI client in the room that is left.
        const win::RECT& frame = Window(m_frame).rect;
        if (IsWindow(m_cmdContainer) && (Style(m_cmdContainer) & ws::kVisible)) {
            int height = Window(m_cmdContainer).rect.Height();
            int bottom = frame.Height() - kStatusBarHeight;
            Move(m_cmdContainer, win::RECT{0, bottom - height, frame.Width(), bottom}, true);
        }
        if (IsWindow(m_mdiClient))
            Move(m_mdiClient, MdiClientRoom(m_frame), true);
    } else if (window == m_mdiClient) {
        // The drawings' views stand maximised: the MDI client sizes them itself, and nothing
        // hooks them, so no message goes with it.
        const win::RECT& client = Window(m_mdiClient).rect;
        for (auto& [handle, w] : m_windows) {
            if (w->parent == m_mdiClient && w->className == L"AfxFrameOrView")
                w->rect = win::RECT{0, 0, client.Width(), client.Height()};
        }
    } else if (window == m_cmdContainer && IsWindow(m_cmdWnd)) {
        const win::RECT& container = Window(m_cmdContainer).rect;
        Move(m_cmdWnd, win::RECT{0, 0, container.Width(), container.Height()}, true);
    } else if (window == m_cmdWnd && IsWindow(m_cmdLine)) {
        const win::RECT& cmdWnd = Window(m_cmdWnd).rect;
        Move(m_cmdLine, win::RECT{0, 0, cmdWnd.Width(), cmdWnd.Height()}, true);
    }
}

void SimWindowSystem::Redraw(HostWindow* window, unsigned) {
    ++Window(window).redraws;
}

void SimWindowSystem::RedrawRect(HostWindow* window, const win::RECT& rect, unsigned) {
    Window(window).redrawnRects.push_back(rect);
}

void SimWindowSystem::RecalcLayout(HostWindow* frame) {
    if (IsWindow(frame))
        LayOutChildren(frame);
}

void SimWindowSystem::Show(HostWindow* window, bool show) {
    SimWindow& w = Window(window);
    w.style = show ? (w.style | ws::kVisible) : (w.style & ~ws::kVisible);
}

bool SimWindowSystem::IsVisible(HostWindow* window) {
    for (HostWindow* p = window; p != nullptr; p = Window(p).parent) {
        if ((Window(p).style & ws::kVisible) == 0)
            return false;
    }
    return true;
}

bool SimWindowSystem::IsZoomed(HostWindow* window) {
    return Window(window).zoomed;
}

void SimWindowSystem::Maximize(HostWindow* window) {
    Window(window).zoomed = true;
    Show(window, true);
}

void SimWindowSystem::CenterInScreen(HostWindow* window) {
    SimWindow& w = Window(window);
    int width = w.rect.Width();
    int height = w.rect.Height();
    int left = (kScreen.Width() - width) / 2;
    int top = (kScreen.Height() - height) / 2;
    Move(window, win::RECT{left, top, left + width, top + height}, true);
}

unsigned SimWindowSystem::Style(HostWindow* window) {
    return Window(window).style;
}

void SimWindowSystem::ModifyStyle(HostWindow* window, unsigned remove, unsigned add) {
    SimWindow& w = Window(window);
    w.style = (w.style & ~remove) | add;
}

OldWindowProcedure* SimWindowSystem::Replace(HostWindow* window, WindowProcedure procedure) {
    if (!IsWindow(window))
        return nullptr;
    // One record per function, kept for the window system's life: what Replace handed out
    // stays callable after it has been put back.
    SimProcedure* record = nullptr;
    for (auto& known : m_procedures) {
        if (known->function == procedure)
            record = known.get();
    }
    if (record == nullptr) {
        m_procedures.push_back(std::make_unique<SimProcedure>(SimProcedure{procedure}));
        record = m_procedures.back().get();
    }
    SimWindow& w = Window(window);
    SimProcedure* old = w.procedure;
    w.procedure = record;
    return reinterpret_cast<OldWindowProcedure*>(old);
}

void SimWindowSystem::Restore(HostWindow* window, OldWindowProcedure* procedure) {
    if (IsWindow(window) && procedure != nullptr)
        Window(window).procedure = reinterpret_cast<SimProcedure*>(procedure);
}

std::intptr_t SimWindowSystem::CallOld(OldWindowProcedure* procedure, HostWindow* window,
                                       unsigned message, std::uintptr_t wParam,
                                       std::intptr_t lParam) {
    return Call(reinterpret_cast<SimProcedure*>(procedure), window, message, wParam, lParam);
}

std::intptr_t SimWindowSystem::Send(HostWindow* window, unsigned message, std::uintptr_t wParam,
                                    std::intptr_t lParam) {
    if (!IsWindow(window))
        return 0;
    return Call(Window(window).procedure, window, message, wParam, lParam);
}

std::intptr_t SimWindowSystem::Call(SimProcedure* procedure, HostWindow* window, unsigned message,
                                    std::uintptr_t wParam, std::intptr_t lParam) {
    if (procedure == nullptr || procedure->function == nullptr)
        return DefaultProcedure(window, message, wParam, lParam);
    return procedure->function(window, message, wParam, lParam);
}

namespace {
win::POINT PointOf(std::intptr_t lParam);
}  // namespace

std::intptr_t SimWindowSystem::DefaultProcedure(HostWindow* window, unsigned message,
                                                std::uintptr_t wParam, std::intptr_t lParam) {
    if (!IsWindow(window))
        return 0;
    if (WindowHandler* handler = Window(window).handler) {
        // Nothing crosses back into the window system: a failure is taken as "not handled".
        try {
            const MsgResult result = Dispatch(*handler, message, wParam, lParam);
            if (result.IsHandled())
                return result.Value();
        } catch (...) {
        }
    }
    // What the window system does itself: a window left unpainted gets its class's look; a
    // child's cursor is its parent's to set first, then the class cursor (an arrow for every
    // class here); a right button's release asks the window for its context menu at the
    // screen point, which a child that has none hands to its parent; a position change is
    // accepted as it stands; a modeless dialog ends (hides) on Enter's IDOK and Esc's
    // IDCANCEL; every other message is answered 0.
    if (message == wm::kPaint)
        PaintOwn(window);
    if (message == wm::kNcActivate)
        Window(window).captionActive = wParam != 0;
    if (message == wm::kCommand && Window(window).className == ws::kDialogClass &&
        (wParam == 1 || wParam == 2))
        Show(window, false);
    if (message == wm::kLButtonDown && Window(window).className == L"ScrollBar")
        PressScrollBar(window, PointOf(lParam));
    if (message == wm::kRButtonUp) {
        const win::POINT screen = ClientToScreen(window, PointOf(lParam));
        Send(window, wm::kContextMenu, reinterpret_cast<std::uintptr_t>(window),
             static_cast<std::intptr_t>((static_cast<std::uint32_t>(screen.x) & 0xFFFF) |
                                        ((static_cast<std::uint32_t>(screen.y) & 0xFFFF) << 16)));
    }
    if (message == wm::kContextMenu) {
        if (HostWindow* parent = Window(window).parent;
            parent != nullptr && (Window(window).style & ws::kChild) != 0)
            return Send(parent, message, wParam, lParam);
    }
    if (message == wm::kSetCursor) {
        if (HostWindow* parent = Window(window).parent;
            parent != nullptr && (Window(window).style & ws::kChild) != 0 &&
            Send(parent, message, wParam, lParam) != 0)
            return 1;
        SetCursor(StandardCursor(idc::kArrow));
    }
    return 0;
}

namespace {

unsigned LowWord(std::uintmax_t value) {
    return static_cast<unsigned>(value & 0xFFFF);
}

unsigned HighWord(std::uintmax_t value) {
    return static_cast<unsigned>((value >> 16) & 0xFFFF);
}

// Coordinates are signed 16-bit halves: left of or above a window they are negative.
win::POINT PointOf(std::intptr_t lParam) {
    return win::POINT{static_cast<std::int16_t>(LowWord(static_cast<std::uintptr_t>(lParam))),
                      static_cast<std::int16_t>(HighWord(static_cast<std::uintptr_t>(lParam)))};
}

HostWindow* WindowOf(std::uintmax_t value) {
    return reinterpret_cast<HostWindow*>(static_cast<std::uintptr_t>(value));
}

}  // namespace

MsgResult SimWindowSystem::Dispatch(WindowHandler& handler, unsigned message,
                                    std::uintptr_t wParam, std::intptr_t lParam) {
    const auto lWord = static_cast<std::uintptr_t>(lParam);
    switch (message) {
        case wm::kCreate: return handler.OnCreate();
        case wm::kDestroy: return handler.OnDestroy();
        case wm::kNcDestroy: return handler.OnNcDestroy();
        case wm::kClose: return handler.OnClose();
        case wm::kNcActivate: return handler.OnNcActivate(wParam != 0);
        case wm::kSizing:
            if (lParam == 0)
                return MsgResult::NotHandled();
            return handler.OnSizing(static_cast<unsigned>(wParam),
                                    *reinterpret_cast<win::RECT*>(lParam));
        case wm::kExitSizeMove: return handler.OnExitSizeMove();
        case wm::kSize:
            return handler.OnSize(static_cast<unsigned>(wParam),
                                  win::SIZE{static_cast<std::int32_t>(LowWord(lWord)),
                                            static_cast<std::int32_t>(HighWord(lWord))});
        case wm::kPaint: return handler.OnPaint();
        case wm::kEraseBkgnd: return handler.OnEraseBkgnd();
        case wm::kSetCursor:
            return handler.OnSetCursor(WindowOf(wParam), LowWord(lWord), HighWord(lWord));
        case wm::kMouseMove: return handler.OnMouseMove(PointOf(lParam), LowWord(wParam));
        case wm::kLButtonDown: return handler.OnLButtonDown(PointOf(lParam), LowWord(wParam));
        case wm::kLButtonUp: return handler.OnLButtonUp(PointOf(lParam), LowWord(wParam));
        case wm::kLButtonDblClk: return handler.OnLButtonDblClk(PointOf(lParam), LowWord(wParam));
        case wm::kTimer: return handler.OnTimer(static_cast<unsigned>(wParam));
        case wm::kWindowPosChanging:
            if (lParam == 0)
                return MsgResult::NotHandled();
            return handler.OnWindowPosChanging(*reinterpret_cast<win::WINDOWPOS*>(lParam));
        case wm::kContextMenu: return handler.OnContextMenu(WindowOf(wParam), PointOf(lParam));
        case wm::kMenuSelect: return handler.OnMenuSelect(LowWord(wParam), HighWord(wParam));
        case wm::kCommand:
            return handler.OnCommand(LowWord(wParam), HighWord(wParam), WindowOf(lWord));
        case wm::kNotify:
            if (lParam == 0)
                return MsgResult::NotHandled();
            return handler.OnNotify(*reinterpret_cast<const win::NMHDR*>(lParam));
        case wm::kHScroll:
            return handler.OnHScroll(LowWord(wParam), static_cast<std::int16_t>(HighWord(wParam)),
                                     WindowOf(lWord));
        case wm::kVScroll:
            return handler.OnVScroll(LowWord(wParam), static_cast<std::int16_t>(HighWord(wParam)),
                                     WindowOf(lWord));
        case wm::kAcadKeepFocus: return handler.OnKeepFocus();
        default:
            if (message >= wm::kUser)
                return handler.OnUserMessage(message, wParam, lParam);
            return MsgResult::NotHandled();
    }
}

void SimWindowSystem::SetParent(HostWindow* window, HostWindow* parent) {
    if (!IsWindow(window) || (parent != nullptr && !IsWindow(parent)))
        return;
    // A window can't become its own ancestor.
    for (HostWindow* p = parent; p != nullptr; p = Window(p).parent) {
        if (p == window)
            return;
    }
    Window(window).parent = parent;
}

win::RECT SimWindowSystem::MdiClientRoom(HostWindow* frame) {
    const win::RECT& outer = Window(frame).rect;
    win::RECT room{0, kToolbarsHeight, outer.Width(), outer.Height() - kStatusBarHeight};
    // The docked command line is a control bar of the frame: it takes the bottom of the room.
    if (frame == m_frame && IsWindow(m_cmdContainer) && (Style(m_cmdContainer) & ws::kVisible))
        room.bottom -= Window(m_cmdContainer).rect.Height();
    return room;
}

int SimWindowSystem::SystemMetric(int index) {
    switch (index) {
    case ws::kSmCyCaption:
        return 23;
    case ws::kSmCxFrame:
        return 4;
    case ws::kSmCxMaxTrack:
        return kScreen.Width();
    case ws::kSmCyMaxTrack:
        return kScreen.Height();
    default:
        return 0;
    }
}

void SimWindowSystem::SetMessageHandler(HostWindow* window, WindowHandler* handler) {
    Window(window).handler = handler;
}

void SimWindowSystem::SetTimer(HostWindow* window, unsigned id, unsigned ms) {
    Window(window).timers[id] = SimWindow::Timer{ms, m_now + ms};
}

void SimWindowSystem::KillTimer(HostWindow* window, unsigned id) {
    if (IsWindow(window))
        Window(window).timers.erase(id);
}

void SimWindowSystem::BringToTop(HostWindow* window) {
    Window(window).zOrder = ++m_nextZ;
}

namespace {

// The paint scope: a canvas of the client area that becomes the window's picture when it goes,
// unless the window went first.
class SimPaintScope : public SoftwareCanvas {
public:
    SimPaintScope(SimWindowSystem& system, HostWindow* window, int width, int height)
        : SoftwareCanvas(width, height), m_system(system), m_window(window) {}
    ~SimPaintScope() override {
        if (!m_system.IsWindow(m_window))
            return;
        SimWindow& w = m_system.Window(m_window);
        w.pictureWidth = Width();
        w.pictureHeight = Height();
        w.picture = Pixels();
        ++w.paints;
    }
    SimPaintScope(const SimPaintScope&) = delete;
    SimPaintScope& operator=(const SimPaintScope&) = delete;

private:
    SimWindowSystem& m_system;
    HostWindow* m_window;  // not owned
};

win::RECT Intersection(const win::RECT& a, const win::RECT& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

// The host's windows in the colours of a classic desktop.
constexpr win::COLORREF kFace = 0xF0F0F0;
constexpr win::COLORREF kShadow = 0xA0A0A0;
constexpr win::COLORREF kWorkspace = 0xABABAB;
constexpr win::COLORREF kWindow = 0xFFFFFF;
constexpr win::COLORREF kText = 0x000000;
constexpr win::COLORREF kModelSpace = 0x302B26;

win::LOGFONTW HostFont() {
    win::LOGFONTW font;
    font.lfHeight = -12;
    font.lfWeight = 400;
    const char16_t face[] = u"MS Shell Dlg";
    for (std::size_t i = 0; i < sizeof face / sizeof face[0]; ++i)
        font.lfFaceName[i] = face[i];
    return font;
}

// The frame's toolbars as rows of buttons, its status bar with a line of text.
void PaintFrame(Canvas& canvas, int toolbars, int statusBar) {
    const int width = canvas.Width();
    const int height = canvas.Height();
    canvas.FillRect({0, 0, width, height}, kFace);
    for (int row = 0; row + 28 <= toolbars; row += 30) {
        for (int x = 4; x + 24 < width; x += 28)
            canvas.Draw3dRect({x, row + 3, x + 24, row + 27}, kWindow, kShadow);
    }
    canvas.Draw3dRect({0, height - statusBar, width, height}, kShadow, kWindow);
    canvas.DrawText(L"Ready", {6, height - statusBar, width, height}, HostFont(), kText,
                    kTextLeft | kTextVCenter | kTextSingleLine);
}

}  // namespace

std::unique_ptr<Canvas> SimWindowSystem::BeginPaint(HostWindow* window) {
    if (!IsWindow(window))
        return nullptr;
    const win::RECT& rect = Window(window).rect;
    return std::make_unique<SimPaintScope>(*this, window, rect.Width(), rect.Height());
}

void SimWindowSystem::PaintOwn(HostWindow* window) {
    std::unique_ptr<Canvas> canvas = BeginPaint(window);
    if (canvas == nullptr)
        return;
    const std::wstring& kind = Window(window).className;
    const win::RECT all{0, 0, canvas->Width(), canvas->Height()};
    if (window == m_frame) {
        PaintFrame(*canvas, kToolbarsHeight, kStatusBarHeight);
    } else if (kind == L"MDIClient") {
        canvas->FillRect(all, kWorkspace);
    } else if (kind == L"AfxFrameOrView") {
        canvas->FillRect(all, kModelSpace);
    } else if (kind == L"ScrollBar") {
        PaintScrollBar(window, *canvas);
    } else if (kind == L"CommandLine") {
        canvas->FillRect(all, kWindow);
        canvas->Draw3dRect(all, kShadow, kShadow);
        const int line = 16;
        const win::RECT last{4, all.bottom - line - 2, all.right - 4, all.bottom - 2};
        canvas->DrawText(L"Command:", last, HostFont(), kText, kTextLeft | kTextSingleLine);
        canvas->DrawText(L"Regenerating model.", last.Offset(0, -line), HostFont(), kText,
                         kTextLeft | kTextSingleLine);
    } else {
        canvas->FillRect(all, kFace);
    }
}

void SimWindowSystem::PaintTree(HostWindow* window, SoftwareCanvas& screen,
                                const win::RECT& clip) {
    if (!IsWindow(window) || (Style(window) & ws::kVisible) == 0)
        return;
    Send(window, wm::kEraseBkgnd, 0, 0);
    Send(window, wm::kPaint, 0, 0);
    if (!IsWindow(window))
        return;
    const win::RECT frame = ScreenRect(m_frame);
    const win::RECT place = ScreenRect(window).Offset(-frame.left, -frame.top);
    const SimWindow& w = Window(window);
    const win::RECT shown = Intersection(
        Intersection(clip, place),
        {place.left, place.top, place.left + w.pictureWidth, place.top + w.pictureHeight});
    if (!shown.IsEmpty()) {
        const std::size_t first =
            (static_cast<std::size_t>(shown.top - place.top) * w.pictureWidth +
             static_cast<std::size_t>(shown.left - place.left)) * 3;
        screen.BlitRgb(w.picture.data() + first, shown.Width(), shown.Height(),
                       w.pictureWidth * 3, shown.left, shown.top);
    }
    // Children bottom to top; a child shows only inside its parent.
    std::vector<std::pair<long long, HostWindow*>> children;
    for (auto& [handle, child] : m_windows) {
        if (child->parent == window)
            children.emplace_back(child->zOrder, handle);
    }
    std::sort(children.begin(), children.end());
    const win::RECT inside = Intersection(clip, place);
    for (const auto& [z, child] : children)
        PaintTree(child, screen, inside);
}

std::unique_ptr<SoftwareCanvas> SimWindowSystem::PaintScreen() {
    const win::RECT frame = Window(m_frame).rect;
    auto screen = std::make_unique<SoftwareCanvas>(frame.Width(), frame.Height());
    const win::RECT all{0, 0, frame.Width(), frame.Height()};
    PaintTree(m_frame, *screen, all);
    // Windows of their own (the floating bar) over the frame.
    std::vector<std::pair<long long, HostWindow*>> owned;
    for (auto& [handle, w] : m_windows) {
        if (w->parent == nullptr && handle != m_frame)
            owned.emplace_back(w->zOrder, handle);
    }
    std::sort(owned.begin(), owned.end());
    for (const auto& [z, window] : owned)
        PaintTree(window, *screen, all);
    return screen;
}

void SimWindowSystem::Elapse(unsigned ms) {
    const long long end = m_now + ms;
    for (;;) {
        // The next timer to fall due anywhere; a handler may set, kill or destroy timers.
        HostWindow* next = nullptr;
        unsigned nextId = 0;
        long long due = end + 1;
        for (auto& [handle, w] : m_windows) {
            for (auto& [id, timer] : w->timers) {
                if (timer.due < due) {
                    due = timer.due;
                    next = handle;
                    nextId = id;
                }
            }
        }
        if (next == nullptr)
            break;
        m_now = due;
        SimWindow& w = Window(next);
        w.timers[nextId].due = due + std::max(1u, w.timers[nextId].period);
        Send(next, wm::kTimer, nextId, 0);
    }
    m_now = end;
}

void SimWindowSystem::SetFont(HostWindow* window, const win::LOGFONTW& font, bool redraw) {
    SimWindow& w = Window(window);
    w.fontValue = font;
    w.font = &w.fontValue;
    if (redraw)
        ++w.redraws;
}

void SimWindowSystem::SetCapture(HostWindow* window) {
    if (IsWindow(window))
        m_capture = window;
}

void SimWindowSystem::ReleaseCapture() {
    m_capture = nullptr;
}

HostCursor* SimWindowSystem::StandardCursor(int id) {
    return reinterpret_cast<HostCursor*>(static_cast<std::uintptr_t>(id));
}

void SimWindowSystem::SetCursor(HostCursor* cursor) {
    m_cursor = static_cast<int>(reinterpret_cast<std::uintptr_t>(cursor));
}

win::POINT SimWindowSystem::ClientToScreen(HostWindow* window, win::POINT point) {
    const win::RECT screen = ScreenRect(window);
    return win::POINT{point.x + screen.left, point.y + screen.top};
}

win::POINT SimWindowSystem::ScreenToClient(HostWindow* window, win::POINT point) {
    const win::RECT screen = ScreenRect(window);
    return win::POINT{point.x - screen.left, point.y - screen.top};
}

HostWindow* SimWindowSystem::WindowAt(HostWindow* parent, win::POINT screen) {
    HostWindow* found = nullptr;
    long long zOrder = 0;
    for (auto& [handle, w] : m_windows) {
        if (w->parent != parent || (w->style & ws::kVisible) == 0 || w->zOrder < zOrder)
            continue;
        const win::RECT r = ScreenRect(handle);
        if (screen.x >= r.left && screen.x < r.right && screen.y >= r.top && screen.y < r.bottom) {
            found = handle;
            zOrder = w->zOrder;
        }
    }
    if (found == nullptr)
        return nullptr;
    HostWindow* inner = WindowAt(found, screen);
    return inner != nullptr ? inner : found;
}

HostWindow* SimWindowSystem::Mouse(unsigned message, win::POINT screen, unsigned keys) {
    m_cursorPos = screen;
    HostWindow* target = m_capture != nullptr ? m_capture : WindowAt(nullptr, screen);
    if (target == nullptr)
        return nullptr;
    if (m_capture == nullptr) {
        Send(target, wm::kSetCursor, reinterpret_cast<std::uintptr_t>(target),
             static_cast<std::intptr_t>((message << 16) | ws::kHtClient));
    }
    if (!IsWindow(target))
        return nullptr;
    const win::POINT client = ScreenToClient(target, screen);
    const auto packed = (static_cast<std::uint32_t>(client.y & 0xFFFF) << 16) |
                        static_cast<std::uint32_t>(client.x & 0xFFFF);
    const HostMessage posted{target, message, keys, static_cast<std::intptr_t>(packed)};
    if (m_loop)
        m_loop(posted);
    if (!IsWindow(target))
        return nullptr;
    Send(target, message, keys, static_cast<std::intptr_t>(packed));
    return target;
}

#include "host_session.h"

#include "host/tabrow_app.h"
#include "platform/win32/gdi_canvas.h"
#include "platform/win32/unique_handle.h"

namespace {

constexpr wchar_t kSettingsKey[] = L"Software\\Harvane\\Tabrow\\2.0 - R17";

}  // namespace

HostSession::HostSession(int width, int height)
    : m_frame(HostFrame::Events{[this](const std::wstring& line) { Type(line); },
                                [this](HWND view) { ViewActivated(view); }},
              width, height),
      m_windows(HostWindows()) {
    m_host.AddDocManagerReactor(this);
    m_host.SetAppLoader([this] {
        m_module = std::make_unique<ModuleAdapters>(HostWindows());
        acrxEntryPoint(kInitAppMsg, Packet());
    });
}

HostSession::~HostSession() {
    if (IsLoaded())
        Unload();
    m_host.RemoveDocManagerReactor(this);
}

Win32HostFrame HostSession::HostWindows() {
    return Win32HostFrame{m_frame.Frame(), m_frame.CommandLine(),
                          [this](HWND) { return m_frame.MdiClientRoom(); },
                          [this](HWND) { m_frame.LayOut(); }};
}

void HostSession::StoreSetting(const std::wstring& name, std::uint32_t value) {
    m_host.Registry().CreateKey(RegHive::CurrentUser, kSettingsKey);
    RegValue dword{
        reg::kDword,
        {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
         static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 24)}};
    m_host.Registry().SetValue(RegHive::CurrentUser, kSettingsKey, name, dword);
}

bool HostSession::Load() {
    if (IsLoaded())
        return false;
    // Each load maps the module afresh, as the host does.
    MapModule();
    Type(L"APPLOAD");
    Pump();
    return IsLoaded();
}

void HostSession::Unload() {
    if (!IsLoaded())
        return;
    acrxEntryPoint(kUnloadAppMsg, Packet());
    m_module.reset();
    Pump();
}

void HostSession::Type(const std::wstring& command) {
    m_host.Type(command);
    m_frame.SetHistory(m_host.CommandLine());
}

void HostSession::Pump() {
    MSG msg{};
    while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
        Dispatch(msg);
}

void HostSession::Dispatch(const MSG& msg) {
    const HostMessage seen{reinterpret_cast<HostWindow*>(msg.hwnd), msg.message, msg.wParam,
                           msg.lParam};
    // A watcher may take itself off while it runs.
    const std::vector<HostMessageWatcher> watchers = m_host.MessageWatchers();
    for (HostMessageWatcher watcher : watchers)
        watcher(seen);
    ::TranslateMessage(&msg);
    ::DispatchMessageW(&msg);
}

HWND HostSession::ViewOf(HostDocument* doc) const {
    const auto it = m_views.find(doc);
    return it != m_views.end() ? it->second.window : nullptr;
}

void HostSession::documentCreated(HostDocument* doc) {
    View& view = m_views[doc];
    view.window = m_frame.AddDrawing(m_host.Document(doc).title);
    // Its first paint is queued, so the painter is in place before it.
    view.painter = std::make_unique<SimDrawingView>(
        m_windows, reinterpret_cast<HostWindow*>(view.window), m_host.Document(doc).title);
    SetWindowHandler(view.window, view.painter.get());
}

void HostSession::documentToBeDestroyed(HostDocument* doc) {
    const auto it = m_views.find(doc);
    if (it == m_views.end())
        return;
    m_frame.RemoveDrawing(it->second.window);
    m_views.erase(it);
}

void HostSession::documentActivated(HostDocument* doc) {
    if (HWND view = ViewOf(doc))
        m_frame.ActivateDrawing(view);
}

void HostSession::ViewActivated(HWND view) {
    for (const auto& [doc, held] : m_views) {
        if (held.window == view) {
            m_host.Activate(doc);
            return;
        }
    }
}

namespace {

// A window's client area as the screen shows it now, or null.
std::unique_ptr<GdiCanvas> CopyFromScreen(HWND window) {
    RECT client{};
    if (window == nullptr || !::GetClientRect(window, &client) || client.right <= 0 ||
        client.bottom <= 0)
        return nullptr;
    POINT corner{0, 0};
    ::ClientToScreen(window, &corner);
    const WindowDc screen = GetWindowDc(nullptr);
    std::unique_ptr<GdiCanvas> canvas =
        GdiCanvas::Create(client.right, client.bottom, screen.Get());
    if (canvas != nullptr && !::BitBlt(canvas->Dc(), 0, 0, client.right, client.bottom,
                                       screen.Get(), corner.x, corner.y, SRCCOPY))
        canvas = nullptr;
    return canvas;
}

class CanvasScreenShot : public HostScreenShot {
public:
    explicit CanvasScreenShot(GdiCanvas& canvas)
        : m_width(canvas.Width()), m_height(canvas.Height()),
          m_bgr(static_cast<std::size_t>(m_width) * m_height * 3) {
        std::vector<std::uint8_t> rgb(m_bgr.size());
        canvas.ReadRgb(0, 0, m_width, m_height, rgb.data());
        for (std::size_t i = 0; i < rgb.size(); i += 3) {
            m_bgr[i] = rgb[i + 2];
            m_bgr[i + 1] = rgb[i + 1];
            m_bgr[i + 2] = rgb[i];
        }
    }
    int Width() const override { return m_width; }
    int Height() const override { return m_height; }
    const std::uint8_t* Pixels() const override { return m_bgr.data(); }
    std::size_t Stride() const override { return static_cast<std::size_t>(m_width) * 3; }

private:
    int m_width, m_height;
    std::vector<std::uint8_t> m_bgr;
};

}  // namespace

bool ViewGraphics::HasGsView(int viewport) {
    return m_session.Host().Graphics().HasGsView(viewport);
}

std::vector<int> ViewGraphics::ViewportVisualStyles() {
    return m_session.Host().Graphics().ViewportVisualStyles();
}

std::unique_ptr<HostScreenShot> ViewGraphics::ScreenShot(int viewport) {
    if (viewport != 0)
        return nullptr;
    std::unique_ptr<GdiCanvas> copy = CopyFromScreen(m_session.ActiveView());
    return copy != nullptr ? std::make_unique<CanvasScreenShot>(*copy) : nullptr;
}

std::unique_ptr<Canvas> ViewGraphics::CopyClientArea(HostWindow* view) {
    // The simulated host names the active drawing's view; the real one is its MDI child.
    return view != nullptr ? CopyFromScreen(m_session.ActiveView()) : nullptr;
}

HostDrawingColors ViewGraphics::CurrentColors() {
    return m_session.Host().Graphics().CurrentColors();
}

HWND HostSession::ActiveView() {
    return ViewOf(m_host.MdiActiveDocument());
}

HostPicture HostSession::Screenshot() {
    ::RedrawWindow(m_frame.Frame(), nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    Pump();
    HostPicture picture;
    const std::unique_ptr<GdiCanvas> canvas = CopyFromScreen(m_frame.Frame());
    if (canvas == nullptr)
        return picture;
    picture.width = canvas->Width();
    picture.height = canvas->Height();
    picture.rgb.resize(static_cast<std::size_t>(picture.width) * picture.height * 3);
    if (!canvas->ReadRgb(0, 0, picture.width, picture.height, picture.rgb.data()))
        picture = {};
    return picture;
}

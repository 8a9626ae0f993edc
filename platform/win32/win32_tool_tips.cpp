#include "platform/win32/win32_tool_tips.h"

#include <commctrl.h>

#include <string>

#include "ports/window_messages.h"

namespace {

HWND Hwnd(const void* handle) {
    return static_cast<HWND>(const_cast<void*>(handle));
}

// The record of one tool, sized as the first version of the control knows it, so that the
// control answers whichever version of the common controls the host has loaded.
TTTOOLINFOW ToolInfo(HWND window, UINT id) {
    TTTOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.hwnd = window;
    info.uId = id;
    return info;
}

}  // namespace

HostToolTip* Win32ToolTips::Create(HostWindow* owner) {
    if (!::IsWindow(Hwnd(owner)))
        return nullptr;
    HWND tip = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                 WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                                 CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, Hwnd(owner), nullptr,
                                 ::GetModuleHandleW(nullptr), nullptr);
    if (tip == nullptr)
        return nullptr;
    m_owners[tip] = Hwnd(owner);
    ::SetWindowSubclass(Hwnd(owner), OwnerProc, reinterpret_cast<UINT_PTR>(tip),
                        reinterpret_cast<DWORD_PTR>(this));
    return reinterpret_cast<HostToolTip*>(tip);
}

Win32ToolTips::~Win32ToolTips() {
    while (!m_owners.empty())
        Destroy(reinterpret_cast<HostToolTip*>(m_owners.begin()->first));
}

LRESULT CALLBACK Win32ToolTips::OwnerProc(HWND owner, UINT message, WPARAM wParam,
                                          LPARAM lParam, UINT_PTR tip, DWORD_PTR self) {
    if (message == WM_DESTROY)
        reinterpret_cast<Win32ToolTips*>(self)->Destroy(reinterpret_cast<HostToolTip*>(tip));
    return ::DefSubclassProc(owner, message, wParam, lParam);
}

void Win32ToolTips::Destroy(HostToolTip* tip) {
    if (const auto owner = m_owners.find(Hwnd(tip)); owner != m_owners.end()) {
        ::RemoveWindowSubclass(owner->second, OwnerProc, reinterpret_cast<UINT_PTR>(tip));
        m_owners.erase(owner);
    }
    if (::IsWindow(Hwnd(tip)))
        ::DestroyWindow(Hwnd(tip));
    std::erase_if(m_sources, [tip](const auto& entry) { return std::get<0>(entry.first) == Hwnd(tip); });
}

void Win32ToolTips::Activate(HostToolTip* tip, bool active) {
    ::SendMessageW(Hwnd(tip), TTM_ACTIVATE, active ? TRUE : FALSE, 0);
}

void Win32ToolTips::SetDelayTime(HostToolTip* tip, int which, int ms) {
    ::SendMessageW(Hwnd(tip), TTM_SETDELAYTIME, static_cast<WPARAM>(which),
                   MAKELPARAM(static_cast<WORD>(ms), 0));
}

void Win32ToolTips::SetMaxTipWidth(HostToolTip* tip, int width) {
    ::SendMessageW(Hwnd(tip), TTM_SETMAXTIPWIDTH, 0, width);
}

bool Win32ToolTips::AddTool(HostToolTip* tip, const ToolTipTool& tool) {
    HWND window = Hwnd(tool.window);
    if (!::IsWindow(Hwnd(tip)) || !::IsWindow(window))
        return false;
    TTTOOLINFOW info = ToolInfo(window, tool.id);
    if (::SendMessageW(Hwnd(tip), TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&info)) != 0)
        return false;  // there already
    info = ToolInfo(window, tool.id);
    info.uFlags = tool.tracking ? TTF_TRACK | TTF_ABSOLUTE : 0;
    info.rect = RECT{tool.rect.left, tool.rect.top, tool.rect.right, tool.rect.bottom};
    std::wstring text = tool.textSource != nullptr ? L" " : tool.text;
    info.lpszText = text.data();
    if (::SendMessageW(Hwnd(tip), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info)) == 0)
        return false;
    if (tool.textSource != nullptr)
        m_sources[{Hwnd(tip), window, tool.id}] = tool.textSource;
    return true;
}

void Win32ToolTips::DelTool(HostToolTip* tip, HostWindow* window, unsigned id) {
    TTTOOLINFOW info = ToolInfo(Hwnd(window), id);
    ::SendMessageW(Hwnd(tip), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
    m_sources.erase({Hwnd(tip), Hwnd(window), id});
}

bool Win32ToolTips::SetToolRect(HostToolTip* tip, HostWindow* window, unsigned id,
                                const win::RECT& rect) {
    TTTOOLINFOW info = ToolInfo(Hwnd(window), id);
    if (::SendMessageW(Hwnd(tip), TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&info)) == 0)
        return false;
    info = ToolInfo(Hwnd(window), id);
    info.rect = RECT{rect.left, rect.top, rect.right, rect.bottom};
    ::SendMessageW(Hwnd(tip), TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&info));
    return true;
}

bool Win32ToolTips::SetToolText(HostToolTip* tip, HostWindow* window, unsigned id,
                                const std::wstring& text) {
    TTTOOLINFOW info = ToolInfo(Hwnd(window), id);
    if (::SendMessageW(Hwnd(tip), TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&info)) == 0)
        return false;
    m_sources.erase({Hwnd(tip), Hwnd(window), id});
    info = ToolInfo(Hwnd(window), id);
    std::wstring copy = text;
    info.lpszText = copy.data();
    ::SendMessageW(Hwnd(tip), TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
    return true;
}

int Win32ToolTips::ToolCount(HostToolTip* tip) {
    return static_cast<int>(::SendMessageW(Hwnd(tip), TTM_GETTOOLCOUNT, 0, 0));
}

void Win32ToolTips::AskSource(HWND tip, HWND window, POINT point) {
    TTHITTESTINFOW hit{};
    hit.hwnd = window;
    hit.pt = point;
    hit.ti.cbSize = TTTOOLINFOW_V2_SIZE;
    if (::SendMessageW(tip, TTM_HITTESTW, 0, reinterpret_cast<LPARAM>(&hit)) == 0)
        return;
    auto source = m_sources.find({tip, window, static_cast<UINT>(hit.ti.uId)});
    if (source == m_sources.end())
        return;
    std::wstring text = source->second->ToolTipText(reinterpret_cast<HostWindow*>(window),
                                                    static_cast<unsigned>(hit.ti.uId));
    TTTOOLINFOW info = ToolInfo(window, static_cast<UINT>(hit.ti.uId));
    info.lpszText = text.data();
    ::SendMessageW(tip, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
}

void Win32ToolTips::RelayEvent(HostToolTip* tip, const HostMessage& message) {
    HWND window = Hwnd(message.window);
    MSG msg{};
    msg.hwnd = window;
    msg.message = message.message;
    msg.wParam = message.wParam;
    msg.lParam = message.lParam;
    msg.time = static_cast<DWORD>(::GetMessageTime());
    ::GetCursorPos(&msg.pt);
    if (message.message == WM_MOUSEMOVE && !m_sources.empty())
        AskSource(Hwnd(tip), window,
                  POINT{static_cast<short>(LOWORD(message.lParam)),
                        static_cast<short>(HIWORD(message.lParam))});
    ::SendMessageW(Hwnd(tip), TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&msg));
}

void Win32ToolTips::Pop(HostToolTip* tip) {
    ::SendMessageW(Hwnd(tip), TTM_POP, 0, 0);
}

void Win32ToolTips::TrackPosition(HostToolTip* tip, win::POINT screen) {
    ::SendMessageW(Hwnd(tip), TTM_TRACKPOSITION, 0,
                   MAKELPARAM(static_cast<WORD>(screen.x), static_cast<WORD>(screen.y)));
}

void Win32ToolTips::TrackActivate(HostToolTip* tip, HostWindow* window, unsigned id,
                                  bool activate) {
    TTTOOLINFOW info = ToolInfo(Hwnd(window), id);
    ::SendMessageW(Hwnd(tip), TTM_TRACKACTIVATE, activate ? TRUE : FALSE,
                   reinterpret_cast<LPARAM>(&info));
}

win::SIZE Win32ToolTips::BubbleSize(HostToolTip* tip, HostWindow* window, unsigned id) {
    TTTOOLINFOW info = ToolInfo(Hwnd(window), id);
    const LRESULT size =
        ::SendMessageW(Hwnd(tip), TTM_GETBUBBLESIZE, 0, reinterpret_cast<LPARAM>(&info));
    return {LOWORD(size), HIWORD(size)};
}

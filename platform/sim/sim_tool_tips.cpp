#include "platform/sim/sim_tool_tips.h"

#include <algorithm>

#include "platform/sim/canvas/software_canvas.h"
#include "platform/sim/sim_window_system.h"
#include "ports/port.h"
#include "ports/system_look.h"
#include "ports/window_messages.h"

namespace {

constexpr win::COLORREF kInfoBk = 0xE1FFFF;
constexpr win::COLORREF kInfoText = 0x000000;
constexpr win::COLORREF kBorder = 0x767676;
constexpr int kMargin = 4;         // between the border and the text
constexpr int kBelowCursor = 20;   // the tip stands below the cursor's picture

win::LOGFONTW TipFont() {
    if (IsInstalled<SystemLook>())
        return Use<SystemLook>().DefaultGuiFont();
    win::LOGFONTW font;
    font.lfHeight = -12;
    return font;
}

// The text's lines, each line broken between words where it would pass `width` (none when
// `width` is negative).
std::vector<std::wstring> WrapLines(Canvas& measure, const std::wstring& text, int width,
                                    const win::LOGFONTW& font) {
    std::vector<std::wstring> lines;
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = text.find(L'\n', start);
        const std::wstring line = text.substr(start, end - start);
        std::wstring current;
        std::size_t word = 0;
        while (word <= line.size()) {
            std::size_t next = line.find(L' ', word);
            if (next == std::wstring::npos)
                next = line.size();
            const std::wstring piece = line.substr(word, next - word);
            const std::wstring joined = current.empty() ? piece : current + L' ' + piece;
            if (width >= 0 && !current.empty() && measure.MeasureText(joined, font).cx > width) {
                lines.push_back(current);
                current = piece;
            } else {
                current = joined;
            }
            word = next + 1;
        }
        lines.push_back(current);
        if (end == std::wstring::npos)
            return lines;
        start = end + 1;
    }
}

win::POINT PointOf(std::intptr_t lParam) {
    const auto value = static_cast<std::uintptr_t>(lParam);
    return win::POINT{static_cast<std::int16_t>(value & 0xFFFF),
                      static_cast<std::int16_t>((value >> 16) & 0xFFFF)};
}

bool Contains(const win::RECT& rect, win::POINT point) {
    return point.x >= rect.left && point.x < rect.right && point.y >= rect.top &&
           point.y < rect.bottom;
}

}  // namespace

// The box: its timers go back to the controls, its paint shows the lines laid out at Show.
class SimToolTips::Popup : public WindowHandler {
public:
    Popup(SimToolTips& tips, HostToolTip* tip) : m_tips(tips), m_tip(tip) {}

    MsgResult OnTimer(unsigned id) override {
        m_tips.OnTimer(m_tip, id);
        return MsgResult::Handled();
    }
    MsgResult OnPaint() override {
        std::unique_ptr<Canvas> canvas = m_tips.m_windows.BeginPaint(m_window);
        if (canvas == nullptr)
            return MsgResult::Handled();
        const win::RECT all{0, 0, canvas->Width(), canvas->Height()};
        canvas->FillRect(all, kInfoBk);
        canvas->Draw3dRect(all, kBorder, kBorder);
        int y = kMargin - 1;
        for (const std::wstring& line : m_lines) {
            canvas->DrawText(line, {kMargin, y, all.right - kMargin + 1, y + m_lineHeight}, m_font,
                             kInfoText, kTextLeft | kTextSingleLine);
            y += m_lineHeight;
        }
        return MsgResult::Handled();
    }
    MsgResult OnEraseBkgnd() override { return MsgResult::Handled(1); }
    // The owner took the box with it.
    MsgResult OnNcDestroy() override {
        m_tips.Forget(m_tip);
        return MsgResult::NotHandled();
    }

    HostWindow* m_window = nullptr;
    std::vector<std::wstring> m_lines;
    win::LOGFONTW m_font;
    int m_lineHeight = 0;

private:
    SimToolTips& m_tips;
    HostToolTip* m_tip;
};

SimToolTips::SimToolTips(SimWindowSystem& windows) : m_windows(windows) {}

SimToolTips::~SimToolTips() {
    std::vector<HostWindow*> popups;
    for (auto& [handle, control] : m_controls)
        popups.push_back(control->popup);
    for (HostWindow* popup : popups)
        m_windows.Destroy(popup);
}

const SimToolTip* SimToolTips::Find(HostToolTip* tip) const {
    auto it = m_controls.find(tip);
    return it == m_controls.end() ? nullptr : it->second.get();
}

std::vector<HostToolTip*> SimToolTips::OwnedBy(HostWindow* owner) const {
    std::vector<HostToolTip*> found;
    for (const auto& [handle, control] : m_controls) {
        if (control->owner == owner)
            found.push_back(handle);
    }
    return found;
}

std::wstring SimToolTips::ShownText(HostToolTip* tip) const {
    const SimToolTip* control = Find(tip);
    return control == nullptr ? std::wstring() : control->shownText;
}

void SimToolTips::Refuse(const char* call, const std::wstring& why) {
    m_refusals.push_back(std::wstring(call, call + std::char_traits<char>::length(call)) + why);
}

SimToolTip* SimToolTips::Live(HostToolTip* tip, const char* call) {
    auto it = m_controls.find(tip);
    if (it != m_controls.end())
        return it->second.get();
    Refuse(call, L" on a tip control that doesn't exist");
    return nullptr;
}

ToolTipTool* SimToolTips::FindTool(SimToolTip& control, HostWindow* window, unsigned id) {
    auto it = std::find_if(control.tools.begin(), control.tools.end(),
                           [&](const ToolTipTool& t) { return t.window == window && t.id == id; });
    return it == control.tools.end() ? nullptr : &*it;
}

ToolTipTool* SimToolTips::LiveTool(HostToolTip* tip, HostWindow* window, unsigned id,
                                   const char* call) {
    SimToolTip* control = Live(tip, call);
    ToolTipTool* tool = control == nullptr ? nullptr : FindTool(*control, window, id);
    if (control != nullptr && tool == nullptr)
        Refuse(call, L" of a tool that isn't there");
    return tool;
}

HostToolTip* SimToolTips::Create(HostWindow* owner) {
    if (!m_windows.IsWindow(owner)) {
        Refuse("Create", L" with an owner that doesn't exist");
        return nullptr;
    }
    auto* handle = reinterpret_cast<HostToolTip*>(++m_nextHandle);
    auto popup = std::make_unique<Popup>(*this, handle);
    ChildWindowSpec spec;
    spec.parent = owner;  // a popup: its owner
    spec.className = L"tooltips_class32";
    spec.style = 0;  // a popup, hidden until a tip shows
    spec.handler = popup.get();
    spec.attach = &popup->m_window;
    if (m_windows.CreateChild(spec) == nullptr)
        return nullptr;
    auto control = std::make_unique<SimToolTip>();
    control->owner = owner;
    control->popup = popup->m_window;
    m_controls[handle] = std::move(control);
    m_popups.push_back(std::move(popup));
    return handle;
}

void SimToolTips::Destroy(HostToolTip* tip) {
    if (SimToolTip* control = Live(tip, "Destroy"))
        m_windows.Destroy(control->popup);
}

void SimToolTips::Forget(HostToolTip* tip) {
    m_controls.erase(tip);
}

void SimToolTips::Activate(HostToolTip* tip, bool active) {
    SimToolTip* control = Live(tip, "Activate");
    if (control == nullptr)
        return;
    control->active = active;
    if (!active)
        Hide(*control);
}

void SimToolTips::SetDelayTime(HostToolTip* tip, int which, int ms) {
    SimToolTip* control = Live(tip, "SetDelayTime");
    if (control == nullptr)
        return;
    const int value = ms & 0xFFFF;  // the message carries 16 bits
    switch (which) {
        case ttdt::kInitial: control->initial = value; break;
        case ttdt::kAutoPop: control->autoPop = value; break;
        case ttdt::kReshow: control->reshow = value; break;
        case ttdt::kAutomatic:
            // One time sets all three in the system's proportions.
            control->initial = value;
            control->autoPop = value * 10;
            control->reshow = value / 5;
            break;
        default: break;
    }
}

void SimToolTips::SetMaxTipWidth(HostToolTip* tip, int width) {
    if (SimToolTip* control = Live(tip, "SetMaxTipWidth"))
        control->maxWidth = width;
}

bool SimToolTips::AddTool(HostToolTip* tip, const ToolTipTool& tool) {
    SimToolTip* control = Live(tip, "AddTool");
    if (control == nullptr)
        return false;
    if (!m_windows.IsWindow(tool.window)) {
        Refuse("AddTool", L" on a window that doesn't exist");
        return false;
    }
    if (FindTool(*control, tool.window, tool.id) != nullptr) {
        Refuse("AddTool", L" of a tool that is there already");
        return false;
    }
    control->tools.push_back(tool);
    return true;
}

void SimToolTips::DelTool(HostToolTip* tip, HostWindow* window, unsigned id) {
    SimToolTip* control = Live(tip, "DelTool");
    if (control == nullptr)
        return;
    if (control->hot == std::pair{window, id}) {
        Hide(*control);
        control->hot.reset();
    }
    std::erase_if(control->tools,
                  [&](const ToolTipTool& t) { return t.window == window && t.id == id; });
}

bool SimToolTips::SetToolRect(HostToolTip* tip, HostWindow* window, unsigned id,
                              const win::RECT& rect) {
    ToolTipTool* tool = LiveTool(tip, window, id, "SetToolRect");
    if (tool != nullptr)
        tool->rect = rect;
    return tool != nullptr;
}

bool SimToolTips::SetToolText(HostToolTip* tip, HostWindow* window, unsigned id,
                              const std::wstring& text) {
    ToolTipTool* tool = LiveTool(tip, window, id, "SetToolText");
    if (tool != nullptr) {
        tool->text = text;
        tool->textSource = nullptr;
    }
    return tool != nullptr;
}

int SimToolTips::ToolCount(HostToolTip* tip) {
    SimToolTip* control = Live(tip, "ToolCount");
    return control == nullptr ? 0 : static_cast<int>(control->tools.size());
}

void SimToolTips::RelayEvent(HostToolTip* tip, const HostMessage& message) {
    SimToolTip* control = Live(tip, "RelayEvent");
    if (control == nullptr || message.message < wm::kMouseMove ||
        message.message > wm::kMouseWheel || !m_windows.IsWindow(message.window))
        return;
    if (message.message != wm::kMouseMove) {
        // A press or a release takes the tip away until the mouse leaves the tool.
        Hide(*control);
        m_windows.KillTimer(control->popup, kShowTimer);
        control->popped = true;
        return;
    }
    const win::POINT point = PointOf(message.lParam);
    std::optional<std::pair<HostWindow*, unsigned>> found;
    for (const ToolTipTool& tool : control->tools) {
        if (!tool.tracking && tool.window == message.window && Contains(tool.rect, point)) {
            found = std::pair{tool.window, tool.id};
            break;
        }
    }
    if (found == control->hot)
        return;
    // From one tool to another a tip that showed a moment ago comes back after the short delay.
    const bool recent = !control->shownText.empty() ||
                        (control->hiddenAt >= 0 &&
                         m_windows.Now() - control->hiddenAt <= control->reshow);
    Hide(*control);
    m_windows.KillTimer(control->popup, kShowTimer);
    control->popped = false;
    control->hot = found;
    if (found && control->active)
        m_windows.SetTimer(control->popup, kShowTimer,
                           static_cast<unsigned>(recent ? control->reshow : control->initial));
}

void SimToolTips::OnTimer(HostToolTip* tip, unsigned id) {
    SimToolTip* control = Live(tip, "a timer");
    if (control == nullptr)
        return;
    m_windows.KillTimer(control->popup, id);
    if (id == kPopTimer) {
        Hide(*control);
        control->popped = true;
        return;
    }
    ToolTipTool* tool =
        control->hot ? FindTool(*control, control->hot->first, control->hot->second) : nullptr;
    if (tool == nullptr || !control->active || control->popped)
        return;
    const win::POINT cursor = m_windows.CursorPos();
    Show(*control, *tool, {cursor.x, cursor.y + kBelowCursor});
    if (!control->shownText.empty())
        m_windows.SetTimer(control->popup, kPopTimer, static_cast<unsigned>(control->autoPop));
}

void SimToolTips::Show(SimToolTip& control, const ToolTipTool& tool, win::POINT screen) {
    const std::wstring text =
        tool.textSource != nullptr ? tool.textSource->ToolTipText(tool.window, tool.id) : tool.text;
    if (text.empty() || !m_windows.IsWindow(control.popup))
        return;  // a tool without a text shows nothing
    auto popup = std::find_if(m_popups.begin(), m_popups.end(),
                              [&](const auto& p) { return p->m_window == control.popup; });
    Popup& box = **popup;
    SoftwareCanvas measure(1, 1);
    box.m_font = TipFont();
    const int wrap = control.maxWidth < 0 ? -1 : std::max(0, control.maxWidth - 2 * kMargin);
    box.m_lines = WrapLines(measure, text, wrap, box.m_font);
    box.m_lineHeight = measure.MeasureText(L"Ag", box.m_font).cy;
    int width = 0;
    for (const std::wstring& line : box.m_lines)
        width = std::max(width, static_cast<int>(measure.MeasureText(line, box.m_font).cx));
    const int height = box.m_lineHeight * static_cast<int>(box.m_lines.size());
    m_windows.Move(control.popup,
                   {screen.x, screen.y, screen.x + width + 2 * kMargin,
                    screen.y + height + 2 * kMargin - 1},
                   false);
    m_windows.BringToTop(control.popup);
    m_windows.Show(control.popup, true);
    control.shownText = text;
}

void SimToolTips::Hide(SimToolTip& control) {
    m_windows.KillTimer(control.popup, kPopTimer);
    if (control.shownText.empty())
        return;
    m_windows.Show(control.popup, false);
    control.shownText.clear();
    control.hiddenAt = m_windows.Now();
}

void SimToolTips::Pop(HostToolTip* tip) {
    if (SimToolTip* control = Live(tip, "Pop")) {
        Hide(*control);
        control->popped = true;
    }
}

void SimToolTips::TrackPosition(HostToolTip* tip, win::POINT screen) {
    SimToolTip* control = Live(tip, "TrackPosition");
    if (control == nullptr)
        return;
    control->trackPosition = screen;
    if (!control->shownText.empty()) {
        const win::RECT r = m_windows.ScreenRect(control->popup);
        m_windows.Move(control->popup,
                       {screen.x, screen.y, screen.x + r.Width(), screen.y + r.Height()}, false);
    }
}

void SimToolTips::TrackActivate(HostToolTip* tip, HostWindow* window, unsigned id,
                                bool activate) {
    SimToolTip* control = Live(tip, "TrackActivate");
    ToolTipTool* tool = control == nullptr ? nullptr : FindTool(*control, window, id);
    if (tool == nullptr || !tool->tracking) {
        if (control != nullptr)
            Refuse("TrackActivate", L" of a tool that isn't a tracking tool");
        return;
    }
    Hide(*control);
    if (activate && control->active)
        Show(*control, *tool, control->trackPosition);
}

win::SIZE SimToolTips::BubbleSize(HostToolTip* tip, HostWindow* window, unsigned id) {
    SimToolTip* control = Live(tip, "BubbleSize");
    const ToolTipTool* tool = control == nullptr ? nullptr : FindTool(*control, window, id);
    if (tool == nullptr || !tool->tracking || control->shownText.empty())
        return {};
    const win::RECT r = m_windows.ScreenRect(control->popup);
    return {r.Width(), r.Height()};
}

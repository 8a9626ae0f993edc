#pragma once
// Tool tips of the simulated window system. Each control is a hidden popup window owned by its
// owner, so it dies with it. Relayed mouse moves find the tool under the mouse; after the
// initial delay (the reshow delay when a tip was showing a moment ago) the popup shows the
// tool's text in a box placed below the cursor, wrapped at the maximum width, and hides again
// after the auto-pop delay, on a button press, or when the mouse leaves the tool. A tracking
// tool shows at its track position while it is activated.
//
// What the real control refuses is refused here too, and each such call is written down for a
// test to read: a call on a control that is gone or was never made (a relay before the control
// exists), a tool on a window that doesn't exist, a tool added twice, a tool that isn't there.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ports/tool_tips.h"

class SimWindowSystem;

struct SimToolTip {
    HostWindow* owner = nullptr;
    HostWindow* popup = nullptr;  // the box; hidden while no tip shows
    bool active = true;
    int initial = 500;  // the system's defaults, from a double-click time of 500 ms
    int autoPop = 5000;
    int reshow = 100;
    int maxWidth = -1;
    std::vector<ToolTipTool> tools;
    std::optional<std::pair<HostWindow*, unsigned>> hot;  // the tool under the mouse
    bool popped = false;  // a press or the auto-pop hid the hot tool's tip until it is left
    std::wstring shownText;          // what the box shows, empty while hidden
    long long hiddenAt = -1;         // when the last tip went, on the window system's clock
    win::POINT trackPosition;
};

class SimToolTips : public ToolTips {
public:
    explicit SimToolTips(SimWindowSystem& windows);
    ~SimToolTips() override;
    SimToolTips(const SimToolTips&) = delete;
    SimToolTips& operator=(const SimToolTips&) = delete;

    // The control behind a handle, or null when it is gone.
    const SimToolTip* Find(HostToolTip* tip) const;
    // The controls made for an owner that still live.
    std::vector<HostToolTip*> OwnedBy(HostWindow* owner) const;
    // The text of the tip that shows, empty when none does.
    std::wstring ShownText(HostToolTip* tip) const;
    const std::vector<std::wstring>& Refusals() const { return m_refusals; }

    HostToolTip* Create(HostWindow* owner) override;
    void Destroy(HostToolTip* tip) override;
    void Activate(HostToolTip* tip, bool active) override;
    void SetDelayTime(HostToolTip* tip, int which, int ms) override;
    void SetMaxTipWidth(HostToolTip* tip, int width) override;
    bool AddTool(HostToolTip* tip, const ToolTipTool& tool) override;
    void DelTool(HostToolTip* tip, HostWindow* window, unsigned id) override;
    bool SetToolRect(HostToolTip* tip, HostWindow* window, unsigned id,
                     const win::RECT& rect) override;
    bool SetToolText(HostToolTip* tip, HostWindow* window, unsigned id,
                     const std::wstring& text) override;
    int ToolCount(HostToolTip* tip) override;
    void RelayEvent(HostToolTip* tip, const HostMessage& message) override;
    void Pop(HostToolTip* tip) override;
    void TrackPosition(HostToolTip* tip, win::POINT screen) override;
    void TrackActivate(HostToolTip* tip, HostWindow* window, unsigned id, bool activate) override;
    win::SIZE BubbleSize(HostToolTip* tip, HostWindow* window, unsigned id) override;

    // The popup's timers.
    static constexpr unsigned kShowTimer = 1;
    static constexpr unsigned kPopTimer = 2;

private:
    class Popup;
    void Refuse(const char* call, const std::wstring& why);
    SimToolTip* Live(HostToolTip* tip, const char* call);
    ToolTipTool* LiveTool(HostToolTip* tip, HostWindow* window, unsigned id, const char* call);
    static ToolTipTool* FindTool(SimToolTip& control, HostWindow* window, unsigned id);
    void Show(SimToolTip& control, const ToolTipTool& tool, win::POINT screen);
    void OnTimer(HostToolTip* tip, unsigned id);
    void Hide(SimToolTip& control);
    void Forget(HostToolTip* tip);

    SimWindowSystem& m_windows;
    std::map<HostToolTip*, std::unique_ptr<SimToolTip>> m_controls;
    std::vector<std::unique_ptr<Popup>> m_popups;  // kept while the window system may call them
    std::vector<std::wstring> m_refusals;
    std::uintptr_t m_nextHandle = 0;
};

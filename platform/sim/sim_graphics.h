#pragma once
// The simulated host's graphics system. Its screen shows each drawing as the drawing's view
// window paints it, so both ways of taking a picture (the graphics system's screen shot and a
// copy of the view window's client area) hand exactly that picture, painted afresh as a real
// screen would show it now. Which viewports the graphics system draws, and the visual styles of
// a layout's viewports, are set per drawing (SimDocument::gsViewports, viewportStyles).

#include <map>
#include <memory>
#include <vector>

#include "ports/host_graphics.h"

class SimHost;

// The grabs that a test can make fail one at a time, as the host's fail: no picture.
enum class SimGraphicsCall { ScreenShot, CopyClientArea };

class SimGraphics : public HostGraphics {
public:
    explicit SimGraphics(SimHost& host) : m_host(host) {}

    // Only the next call of this kind gives nothing; every other goes through.
    void FailCall(SimGraphicsCall call) { ++m_failures[call]; }
    // Pictures handed out so far, by either way.
    int Grabs() const { return m_grabs; }
    void SetCurrentColors(const HostDrawingColors& colors) { m_colors = colors; }

    bool HasGsView(int viewport) override;
    std::vector<int> ViewportVisualStyles() override;
    // Only viewport 0, the whole view of the active drawing, has a screen shot.
    std::unique_ptr<HostScreenShot> ScreenShot(int viewport) override;
    std::unique_ptr<Canvas> CopyClientArea(HostWindow* view) override;
    HostDrawingColors CurrentColors() override { return m_colors; }

private:
    bool Fails(SimGraphicsCall call);
    // The view painted now; null when it is no window.
    const std::vector<std::uint8_t>* PaintView(HostWindow* view, int& width, int& height);

    SimHost& m_host;
    std::map<SimGraphicsCall, int> m_failures;
    int m_grabs = 0;
    HostDrawingColors m_colors{0x000000, 0xFFFFFF};
};

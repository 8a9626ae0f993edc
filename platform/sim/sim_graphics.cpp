#include "platform/sim/sim_graphics.h"

#include <algorithm>

#include "platform/sim/sim_host.h"

namespace {

SimDocument* ActiveDocument(SimHost& host) {
    HostDocument* doc = host.MdiActiveDocument();
    return doc != nullptr ? &host.Document(doc) : nullptr;
}

// The view's picture as the graphics system keeps it: blue, green, red.
class SimScreenShot : public HostScreenShot {
public:
    SimScreenShot(const std::vector<std::uint8_t>& rgb, int width, int height)
        : m_bgr(rgb), m_nWidth(width), m_nHeight(height) {
        for (std::size_t i = 0; i + 2 < m_bgr.size(); i += 3)
            std::swap(m_bgr[i], m_bgr[i + 2]);
    }
    int Width() const override { return m_nWidth; }
    int Height() const override { return m_nHeight; }
    const std::uint8_t* Pixels() const override { return m_bgr.data(); }
    std::size_t Stride() const override { return static_cast<std::size_t>(m_nWidth) * 3; }

private:
    std::vector<std::uint8_t> m_bgr;
    int m_nWidth;
    int m_nHeight;
};

}  // namespace

bool SimGraphics::Fails(SimGraphicsCall call) {
    auto it = m_failures.find(call);
    if (it == m_failures.end())
        return false;
    if (--it->second == 0)
        m_failures.erase(it);
    return true;
}

bool SimGraphics::HasGsView(int viewport) {
    const SimDocument* doc = ActiveDocument(m_host);
    return doc != nullptr && std::find(doc->gsViewports.begin(), doc->gsViewports.end(),
                                       viewport) != doc->gsViewports.end();
}

std::vector<int> SimGraphics::ViewportVisualStyles() {
    const SimDocument* doc = ActiveDocument(m_host);
    return doc != nullptr ? doc->viewportStyles : std::vector<int>{};
}

const std::vector<std::uint8_t>* SimGraphics::PaintView(HostWindow* view, int& width,
                                                        int& height) {
    SimWindowSystem& windows = m_host.Windows();
    if (!windows.IsWindow(view))
        return nullptr;
    windows.Send(view, wm::kPaint, 0, 0);
    const SimWindow& w = windows.Window(view);
    width = w.pictureWidth;
    height = w.pictureHeight;
    ++m_grabs;
    return &w.picture;
}

std::unique_ptr<HostScreenShot> SimGraphics::ScreenShot(int viewport) {
    if (Fails(SimGraphicsCall::ScreenShot) || viewport != 0)
        return nullptr;
    int width = 0;
    int height = 0;
    const std::vector<std::uint8_t>* rgb = PaintView(m_host.ActiveDwgView(), width, height);
    if (rgb == nullptr)
        return nullptr;
    return std::make_unique<SimScreenShot>(*rgb, width, height);
}

std::unique_ptr<Canvas> SimGraphics::CopyClientArea(HostWindow* view) {
    if (Fails(SimGraphicsCall::CopyClientArea))
        return nullptr;
    int width = 0;
    int height = 0;
    const std::vector<std::uint8_t>* rgb = PaintView(view, width, height);
    if (rgb == nullptr)
        return nullptr;
    auto bitmap = std::make_unique<SoftwareCanvas>(width, height);
    bitmap->BlitRgb(rgb->data(), width, height, width * 3, 0, 0);
    return bitmap;
}

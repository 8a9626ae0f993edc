#pragma once
// Pictures of the simulated host's whole window with the bar in it: a session in a small frame,
// the screen painted and saved beside the test program, and the looks that tests compare it by.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "bar/document_session.h"
#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "platform/sim/canvas/freetype_font_rasteriser.h"
#include "support/png_writer.h"
#include "tools/dwgthumb/png_codec.h"

// Text may rasterise a little differently from one font library release to the next: a
// channel may be off by kChannelTolerance, and one pixel in kOutlierShare may be off by more.
inline constexpr int kChannelTolerance = 8;
inline constexpr int kOutlierShare = 200;

inline ::testing::AssertionResult LooksLike(const SoftwareCanvas& screen,
                                            const std::string& reference,
                                            const std::string& saved) {
    const std::string path = std::string(TABROW_BAR_PICTURES) + "/" + reference;
    const std::optional<DecodedPng> expected = ReadPngFile(path);
    if (!expected || expected->width != screen.Width() || expected->height != screen.Height())
        return ::testing::AssertionFailure() << "no reference picture of the size at " << path;
    const std::vector<std::uint8_t>& actual = screen.Pixels();
    const std::vector<std::uint8_t>& want = expected->rgb;
    auto off = [&](std::size_t i) { return std::abs(actual[i] - want[i]) > kChannelTolerance; };
    std::size_t outliers = 0;
    for (std::size_t i = 0; i < actual.size(); i += 3)
        outliers += off(i) || off(i + 1) || off(i + 2) ? 1 : 0;
    if (outliers * kOutlierShare > actual.size() / 3)
        return ::testing::AssertionFailure() << outliers << " pixels of " << saved << " differ";
    return ::testing::AssertionSuccess();
}

inline win::COLORREF Tinted(win::COLORREF under, win::COLORREF color, std::uint8_t alpha) {
    SoftwareCanvas pixel(1, 1);
    pixel.FillRect({0, 0, 1, 1}, under);
    pixel.AlphaTint({0, 0, 1, 1}, color, alpha);
    return pixel.PixelAt(0, 0);
}

class BarPictures : public DocumentSession {
protected:
    // The bar docked at `side`, in tab mode unless told, in a frame small enough to look at
    // whole.
    void Start(int side, bool tabs = true) {
        Store(L"DockSide", static_cast<std::uint32_t>(side));
        Store(L"TabMode", tabs ? 1 : 0);
        Store(L"HideOnSingle", 0);
        host.Windows().Move(host.Windows().HostFrame(), {0, 0, 800, 480}, true);
        Load();
        RefreshHostLayout(g_hwndFrame);
    }
    void Paint(const std::string& name) {
        screen = host.Windows().PaintScreen();
        SavePng(BesideProgram(name), screen->Pixels().data(), screen->Width(), screen->Height(),
                screen->Width() * 3);
    }
    win::RECT Place(HostWindow* window) { return host.Windows().ScreenRect(window); }
    int Count(const win::RECT& area, win::COLORREF color) {
        int n = 0;
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x)
                n += screen->PixelAt(x, y) == color ? 1 : 0;
        return n;
    }
    // The bounds of the pixels of `area` that are darker than half.
    win::RECT DarkBounds(const win::RECT& area) {
        win::RECT bounds{area.right, area.bottom, area.left, area.top};
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x)
                if (win::GreenOf(screen->PixelAt(x, y)) < 0x80)
                    bounds = {std::min(bounds.left, x), std::min(bounds.top, y),
                              std::max(bounds.right, x + 1), std::max(bounds.bottom, y + 1)};
        return bounds;
    }

    FreeTypeFontRasteriser fonts;
    ScopedPort<FontRasteriser> fontsPort{fonts};
    std::unique_ptr<SoftwareCanvas> screen;
};

// Thumbnails of the open drawings in a user's session: what is grabbed and how, when a record
// is renewed, and the picture itself, byte for byte against the image operations.

#include <gtest/gtest.h>

#include "bar/document_session.h"
#include "ports/window_messages.h"
#include "settings/reg_impl.h"
#include "views/image_ops.h"

namespace {

class PreviewSession : public DocumentSession {
protected:
    static constexpr int kExtent = 120;

    HvDwgPalette& Previews() { return Bar().m_palette; }
    // What the palette's paint does for the active drawing.
    void Paint() {
        Previews().m_nThumbExtent = kExtent;
        Previews().UpdatePreview(nullptr);
    }
    // The thumbnail of the view's last picture as the image operations make it.
    DibBlock Expected(HostDocument* doc, int width, int height, double gamma, int sharpness) {
        const SimWindow& view = host.Windows().Window(host.Document(doc).view);
        std::vector<std::uint8_t> target(static_cast<std::size_t>(width) * height * 3);
        const UINT stride = static_cast<UINT>(width) * 3;
        EXPECT_EQ(IS40_ResizeImage({view.picture.data(), UINT(view.pictureWidth),
                                    UINT(view.pictureHeight), UINT(view.pictureWidth) * 3,
                                    target.data(), UINT(width), UINT(height), stride}),
                  1);
        if (gamma != 0.0)
            IS40_AdjustGamma(target.data(), width, height, 3, stride, gamma, 0);
        std::vector<std::uint8_t> sharp(target.size());
        if (sharpness > 0 && IS40_SharpenImage(target.data(), width, height, 3, stride,
                                               sharp.data(), stride, sharpness, 7) != 0)
            target = sharp;
        return IS40_RGBToDIB(target.data(), width, height, stride, 0);
    }
    void Wheel() {
        host.PumpMessage(HostMessage{g_hwndDwgView, wm::kMouseWheel, 0, 0});
        host.Windows().Elapse(HvDwgPalette::kTimerDelay);
    }
};

// Which way the picture is taken, on which background, and what the adjustments of that
// background make of it; every byte of the DIB against the image operations' own.
TEST_F(PreviewSession, TheThumbnailIsTheViewReducedAndAdjustedForItsBackground) {
    struct Case {
        bool layout;
        const wchar_t* cvport;
        std::vector<int> gsViewports;
        std::vector<int> styles;
        HostDrawingColors colors;
        std::optional<double> storedGamma;  // nothing: the default
        std::optional<int> storedSharpness;
        bool fromView, dark;
        double gamma;
        int sharpness;
    };
    const Case cases[] = {
        {false, L"2", {}, {}, {0x3F3F3F, 0xFFFFFF}, {}, {}, false, true, 2.5, 20},
        {false, L"2", {2}, {}, {0x000040, 0x000000}, {}, {}, true, false, 0.0, 20},
        {false, L"2", {}, {}, {0x000000, 0}, 0.0, 0, false, true, 0.0, 0},
        {false, L"2", {}, {}, {0xFFFFFF, 0}, 1.8, -5, false, false, 1.8, 0},
        {true, L"1", {1}, {4, 4}, {0x000000, 0xFFFFFF}, {}, {}, false, false, 0.0, 20},
        {true, L"1", {}, {4, 6}, {0xFFFFFF, 0x303030}, {}, {}, true, true, 2.5, 20},
        {true, L"3", {3}, {}, {0x000000, 0xFFFFFF}, {}, {}, true, false, 0.0, 20},
    };
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    const win::RECT view = host.Windows().RectInParent(host.Document(plan).view);
    Previews().m_dAspect = double(view.Width()) / view.Height();
    const int height = kExtent * view.Height() / view.Width();
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - cases));
        HvRegImpl store(kKey);
        const wchar_t* section = c.dark ? L"BlackBack" : L"WhiteBack";
        store.SetDouble(section, L"Gamma", c.storedGamma.value_or(c.dark ? 2.5 : 0.0));
        store.SetInt(section, L"Sharpness", c.storedSharpness.value_or(20));
        host.DatabaseOf(plan).SetTilemode(!c.layout);
        host.SetVariable(L"CVPORT", c.cvport);
        host.Document(plan).gsViewports = c.gsViewports;
        host.Document(plan).viewportStyles = c.styles;
        host.SetCurrentColors(c.colors);
        Previews().UpdateColors();
        Item(plan)->bDirty = true;  // marked without a redraw: Paint() grabs
        Paint();
        TrDocItem& item = *Item(plan);
        EXPECT_FALSE(item.bDirty);
        EXPECT_EQ(item.bPaperSpace, c.layout);
        EXPECT_EQ(item.bFromView, c.fromView);
        EXPECT_EQ(item.bDarkBack, c.dark);
        EXPECT_EQ(item.nImageWidth, kExtent);
        EXPECT_EQ(item.nImageHeight, height);
        EXPECT_TRUE(item.hImage == Expected(plan, kExtent, height, c.gamma, c.sharpness));
    }
}

// With automatic updates off only the first picture and the forced ones are taken; a locked
// record is never taken and keeps its picture.
TEST_F(PreviewSession, OnlyDirtyUnlockedRecordsOfTheActiveDrawingAreGrabbed) {
    HvRegImpl(kKey).SetInt(L"Previews", L"AutoUpdatePreviews", 0);
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    HostDocument* site = host.OpenDrawing(L"C:\\jobs\\site.dwg");
    Load();
    Paint();  // the first picture of each drawing, though nothing renews it
    host.Activate(plan);
    Paint();
    host.Activate(site);
    host.Modify(site);
    host.Type(L"LINE");
    Wheel();
    EXPECT_FALSE(Item(site)->bDirty);
    EXPECT_FALSE(Item(plan)->bDirty);
    Bar().m_pMenuDoc = site;
    Bar().OnRefreshPreview();
    EXPECT_TRUE(Item(site)->bDirty);
    Bar().m_pMenuDoc = plan;  // not active: activated for the refresh, and back
    Bar().OnRefreshPreview();
    EXPECT_TRUE(Item(plan)->bDirty);
    EXPECT_EQ(host.MdiActiveDocument(), site);

    Paint();
    const DibBlock first = Item(site)->hImage;
    Previews().ToggleLock(site);
    Previews().m_dAspect = 2.0;  // the view changes under the lock
    Bar().OnRefreshPreviews();
    Paint();
    EXPECT_EQ(Item(site)->hImage, first);
    Previews().ToggleLock(site);
    EXPECT_TRUE(Item(site)->bDirty);
    Paint();
    EXPECT_NE(Item(site)->hImage, first);
    EXPECT_TRUE(host.MessageBoxesShown().empty());
}

TEST_F(PreviewSession, AFailedGrabKeepsTheRecordAndACellBelowAPixelDropsThePicture) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    Load();
    Paint();
    const DibBlock first = Item(plan)->hImage;
    ASSERT_FALSE(first.empty());
    for (SimGraphicsCall call : {SimGraphicsCall::ScreenShot, SimGraphicsCall::CopyClientArea}) {
        host.Document(plan).gsViewports = {call == SimGraphicsCall::CopyClientArea ? 2 : 0};
        host.Graphics().FailCall(call);
        Item(plan)->bDirty = true;
        Paint();
        EXPECT_TRUE(Item(plan)->bDirty);
        EXPECT_EQ(Item(plan)->hImage, first);
    }
    Previews().m_dAspect = 500.0;  // 120 / 500 rounds to no row at all
    Paint();
    EXPECT_FALSE(Item(plan)->bDirty);
    EXPECT_TRUE(Item(plan)->hImage.empty());
}

// A picture taken from the window waits for the host to paint the view before the next grab.
TEST_F(PreviewSession, ActivatingAWindowGrabbedDrawingRedrawsAgainAfterTheDelay) {
    HostDocument* plan = host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    HostDocument* site = host.OpenDrawing(L"C:\\jobs\\site.dwg");
    Load();
    host.Document(plan).gsViewports = {2};
    host.Activate(plan);
    Paint();
    ASSERT_TRUE(Item(plan)->bFromView);
    host.Activate(site);
    const int redraws = host.Windows().Window(Palette()).redraws;
    host.Activate(plan);
    EXPECT_TRUE(Item(plan)->bDirty);
    EXPECT_EQ(host.Windows().Window(Palette()).redraws, redraws + 1);
    host.Windows().Elapse(HvDwgPalette::kTimerDelay);
    EXPECT_EQ(host.Windows().Window(Palette()).redraws, redraws + 2);

    // Renewing every drawing grabs each in turn, save the locked one.
    Previews().ToggleLock(plan);
    const int grabs = host.Graphics().Grabs();
    Previews().RefreshPreviews();
    EXPECT_EQ(host.Graphics().Grabs(), grabs + 1);
    EXPECT_FALSE(Item(site)->bDirty);
    EXPECT_EQ(host.MdiActiveDocument(), plan);
    Bar().OnRefreshPreviews();  // the menu's: forced, locked or not, and back to the first
    EXPECT_TRUE(Item(site)->bDirty && Item(plan)->bDirty);
    EXPECT_EQ(host.MdiActiveDocument(), plan);
}

TEST_F(PreviewSession, AnAutomationFailureOfRefreshPreviewIsShownWithItsCode) {
    host.OpenDrawing(L"C:\\jobs\\plan.dwg");
    HostDocument* site = host.OpenDrawing(L"C:\\jobs\\site.dwg");
    Load();
    host.Activate(host.Documents().front());
    Bar().m_pMenuDoc = site;
    host.FailAutomationCall(SimAutomationCall::Activate, hr::kFail, L"Unspecified error");
    Bar().OnRefreshPreview();
    ASSERT_EQ(host.MessageBoxesShown().size(), 1u);
    EXPECT_EQ(host.MessageBoxesShown()[0].text, L"Error [0x80004005]\nUnspecified error");
}

}  // namespace

// The preview reader over DWG-shaped files of every version: what becomes the picture, what the
// status and error texts say, palette fitting, cut and lying files, painting, the preview pane
// of several files, and the sample drawings when they are there.

#include "views/dwg_preview.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "foundation/text_encoding.h"
#include "platform/sim/sim_shell_pictures.h"
#include "platform/sim/canvas/software_canvas.h"
#include "ports/port.h"
#include "support/test_files.h"
#include "tools/dwgsamples/dwg_sample_writer.h"
#include "views/dwg_version.h"
#include "views/preview_static.h"
#include "views_test_support.h"

namespace {

const std::wstring kPath = L"/dwg/a.dwg";

class DwgPreviewTest : public testing::Test {
protected:
    // Writes the file and reads it into `preview`.
    int ReadInto(TrDwgPreview& preview, const std::string& bytes) {
        files.files[kPath] = bytes;
        return preview.Read(kPath, true);
    }

    // Paints the file at kPath with a new holder on `back` into `rect` of a black canvas.
    SoftwareCanvas Painted(win::COLORREF back, const win::RECT& rect, int width, int height) {
        TrDwgPreview preview(back, false, false);
        preview.SetFile(kPath);
        SoftwareCanvas canvas(width, height);
        preview.Draw(&canvas, rect, win::LOGFONTW{});
        return canvas;
    }

    MemoryFileSystem files;
    ScopedPort<FileSystem> port{files};
};

DwgSampleSpec ThreeRecords(const std::string& version, const std::string& dib) {
    DwgSampleSpec spec;
    spec.version = version;
    spec.records = {{1, std::string(80, 'h')}, {2, dib}, {3, std::string(120, 'w')}};
    return spec;
}

// A 256-colour DIB whose entries 225 and 245 are chosen.
std::string PaletteDib(win::COLORREF at225, win::COLORREF at245) {
    DibSpec spec;
    spec.palette.resize(256);
    spec.palette[225] = at225;
    spec.palette[245] = at245;
    return MakeDib(spec);
}

}  // namespace

TEST_F(DwgPreviewTest, EveryVersionOfTheTableAndNewerOnesGivesItsPictureAndKeepsAllRecords) {
    const DibSpec dibSpec = SizedDib(40, 24, 8);
    const std::string dib = MakeDib(dibSpec);
    for (const std::string& version : KnownDwgVersions()) {
        TrDwgPreview preview;
        ASSERT_EQ(ReadInto(preview, MakeDwg(ThreeRecords(version, dib))), 1) << version;
        EXPECT_EQ(preview.m_nVersion, GetDwgVersionCode(version.c_str()));
        ASSERT_EQ(preview.m_records.size(), 3u);
        EXPECT_EQ(preview.m_records[0]->type, 1);
        EXPECT_EQ(preview.m_records[2]->data, std::vector<std::uint8_t>(120, 'w'));
        ASSERT_EQ(preview.m_hDib.size(), dib.size() + 1) << version;
        EXPECT_EQ(preview.m_hDib.back(), 0);
        EXPECT_EQ(preview.GetImageSize(), (win::SIZE{40, 24}));
        EXPECT_EQ(preview.m_rcImage, (win::RECT{0, 0, 40, 24}));
        EXPECT_EQ(preview.m_strStatus, L"Loading...");
        EXPECT_TRUE(preview.m_bRead);
    }
}

TEST_F(DwgPreviewTest, OnlyTheSecondRecordQualifiesFor2007AndALaterPictureWinsForOthers) {
    const std::string small = MakeDib(SizedDib(8, 8, 4));
    const std::string large = MakeDib(SizedDib(16, 12, 24));
    DwgSampleSpec first;
    first.version = "AC1021";
    first.records = {{2, small}, {1, "x"}};
    TrDwgPreview preview;
    EXPECT_EQ(ReadInto(preview, MakeDwg(first)), 1);
    EXPECT_TRUE(preview.m_hDib.empty());
    EXPECT_EQ(preview.m_strStatus, L"No Preview");

    for (const char* version : {"AC1018", "AC1024"}) {
        DwgSampleSpec two;
        two.version = version;
        two.records = {{2, small}, {2, large}};
        TrDwgPreview later;
        EXPECT_EQ(ReadInto(later, MakeDwg(two)), 1);
        EXPECT_EQ(later.GetImageSize(), (win::SIZE{16, 12})) << version;
    }
}

TEST_F(DwgPreviewTest, ACountOfNoneOrAbove127ReadsNoRecords) {
    for (int count : {0, 128, 200, 255}) {
        DwgSampleSpec spec = ThreeRecords("AC1015", MakeDib(DibSpec()));
        spec.countByte = static_cast<std::uint8_t>(count);
        TrDwgPreview preview;
        EXPECT_EQ(ReadInto(preview, MakeDwg(spec)), 1);
        EXPECT_TRUE(preview.m_records.empty());
        EXPECT_EQ(preview.m_strStatus, L"No Preview");
    }
}

TEST_F(DwgPreviewTest, WithoutTheSentinelTheStatusStaysLoading) {
    DwgSampleSpec spec = ThreeRecords("AC1015", MakeDib(DibSpec()));
    spec.withPreview = false;
    TrDwgPreview preview;
    EXPECT_EQ(ReadInto(preview, MakeDwg(spec)), 0);
    EXPECT_EQ(preview.m_strStatus, L"Loading...");
    EXPECT_TRUE(preview.m_strError.empty());

    TrDwgPreview tiny;
    EXPECT_EQ(ReadInto(tiny, "AC1015\0\0\0"), 0);
    EXPECT_EQ(tiny.m_nPreviewAddress, 0u);
    EXPECT_EQ(tiny.m_strStatus, L"Loading...");

    TrDwgPreview none;
    EXPECT_EQ(none.Read(L"", true), 0);
    EXPECT_FALSE(none.m_bRead);
}

TEST_F(DwgPreviewTest, FilesThatCantBeOpenedOrSeekBeforeTheStartGiveFileErrorTexts) {
    TrDwgPreview missing;
    EXPECT_EQ(missing.Read(L"/dwg/none.dwg", true), 0);
    EXPECT_EQ(missing.m_strError, L"File Error\nfileNotFound");
    EXPECT_TRUE(missing.m_bRead);

    files.files[L"/dwg/locked.dwg"] = "AC1015";
    files.locked[L"/dwg/locked.dwg"] = true;
    TrDwgPreview locked;
    EXPECT_EQ(locked.Read(L"/dwg/locked.dwg", true), 0);
    EXPECT_EQ(locked.m_strError, L"File Error\naccessDenied");

    DwgSampleSpec spec = ThreeRecords("AC1015", MakeDib(DibSpec()));
    spec.records[1].address = -5;
    TrDwgPreview negative;
    EXPECT_EQ(ReadInto(negative, MakeDwg(spec)), 0);
    EXPECT_EQ(negative.m_strError, L"File Error\nbadSeek");
    EXPECT_EQ(negative.m_records.size(), 2u);  // kept until the next clear
    EXPECT_TRUE(negative.m_hDib.empty());
}

TEST_F(DwgPreviewTest, AClaimOfFourGigabytesTakesOnlyWhatTheFileHolds) {
    const std::string dib = MakeDib(SizedDib(20, 10, 8));
    DwgSampleSpec spec = ThreeRecords("AC1015", dib);
    spec.bodyBytes = 0x10100;  // offsets past 64 KiB, so that their third byte counts
    spec.records[1].claimedSize = 0xFFFFFFFFu;
    spec.records[2].address = 0x7FFFFFF0;
    TrDwgPreview preview;
    EXPECT_EQ(ReadInto(preview, MakeDwg(spec)), 1);
    EXPECT_EQ(preview.m_records[1]->size, 0xFFFFFFFFu);
    EXPECT_EQ(preview.m_records[1]->data.size(), dib.size() + 120);
    EXPECT_TRUE(preview.m_records[2]->data.empty());
    EXPECT_EQ(preview.GetImageSize(), (win::SIZE{20, 10}));
}

TEST_F(DwgPreviewTest, AFileCutAtAnyOffsetGivesADefinedOutcomeAndDrawsSafely) {
    const std::string whole = MakeDwg(ThreeRecords("AC1018", MakeDib(SizedDib(12, 9, 8))));
    SoftwareCanvas canvas(30, 20);
    const win::LOGFONTW font;
    for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
        TrDwgPreview preview(0xFFFFFF, true, false);
        const int result = ReadInto(preview, whole.substr(0, cut));
        EXPECT_TRUE(preview.m_strError.empty()) << cut;
        if (result == 0) {
            EXPECT_EQ(preview.m_strStatus, L"Loading...") << cut;
        } else if (preview.m_hDib.empty()) {
            EXPECT_EQ(preview.m_strStatus, L"No Preview") << cut;
        }
        preview.Draw(&canvas, {0, 0, 30, 20}, font);
        std::vector<std::uint8_t> rgb;
        int w = 0, h = 0;
        DibToRgb(preview.m_hDib.data(), preview.m_hDib.size(), rgb, w, h);
    }
}

// The file ends four rows into the picture's pixels: the missing upper rows show colour
// entry 0, as they would from the zero-filled block the picture is copied into.
TEST_F(DwgPreviewTest, AnIndexedPictureCutShortShowsColourEntryZeroWhereItsPixelsAreMissing) {
    DibSpec spec = SizedDib(8, 8, 8);
    spec.palette = {win::COLORREF{0x123456}};
    DwgSampleSpec drawing;
    drawing.records = {{2, MakeDib(spec)}};
    const std::string whole = MakeDwg(drawing);
    files.files[kPath] = whole.substr(0, whole.size() - 4 * 8);
    const SoftwareCanvas canvas = Painted(0x00336699, {0, 0, 8, 8}, 8, 8);
    for (int x = 0; x < 8; ++x) {
        EXPECT_EQ(canvas.PixelAt(x, 3), 0x123456u) << x;
        EXPECT_EQ(canvas.PixelAt(x, 4), DibPatternPixel(spec, x, 4)) << x;
    }
}

TEST_F(DwgPreviewTest, TheSentinelEntryIs225AfterRelease14And245Before) {
    for (auto [version, entry, palette] :
         {std::tuple{"AC1015", 0xFFFFFFu, 15}, {"AC1014", 0x123456u, 14}}) {
        TrDwgPreview preview;
        ReadInto(preview, MakeDwg(ThreeRecords(version, PaletteDib(0xFFFFFF, 0x123456))));
        EXPECT_EQ(preview.m_crSentinelEntry, entry) << version;
        EXPECT_EQ(preview.m_nPaletteVersion, palette) << version;
    }

    DwgSampleSpec spec = ThreeRecords("AC1018", PaletteDib(0, 0));
    for (auto [writer, expected] : {std::pair{27, 17}, {25, 16}, {23, 15}, {0, 15}}) {
        spec.writerByte = static_cast<std::uint8_t>(writer);
        TrDwgPreview preview;
        ReadInto(preview, MakeDwg(spec));
        EXPECT_EQ(preview.m_nPaletteVersion, expected) << writer;
    }
}

TEST_F(DwgPreviewTest, PaletteFittingFollowsVersionWriterAndSentinel) {
    const win::COLORREF back = 0x00336699;
    struct Row {
        const char* version;
        int writer;
        bool sentinel;
        std::vector<unsigned> toBack;
        std::vector<unsigned> toFore;
    };
    const Row rows[] = {
        {"AC1015", 0, true, {0, 164}, {226, 245, 255}},
        {"AC1018", 25, false, {226, 0, 164}, {245, 255}},
        {"AC1021", 27, true, {245, 0, 164}, {226, 255}},
        {"AC1014", 0, false, {0}, {225, 255}},
        {"AC1032", 0, true, {225}, {0, 255}},
    };
    for (const Row& row : rows) {
        // The sentinel entry is 225 from release 15 on and 245 before and for unknown codes.
        const bool reads225 = GetDwgVersionCode(row.version) > 14;
        const win::COLORREF white = 0xFFFFFF;
        const win::COLORREF other = 0x010203;
        const std::string dib = reads225 ? PaletteDib(row.sentinel ? white : other, other)
                                         : PaletteDib(other, row.sentinel ? white : other);
        DwgSampleSpec spec;
        spec.version = row.version;
        spec.writerByte = static_cast<std::uint8_t>(row.writer);
        spec.records = {{1, "h"}, {2, dib}};
        TrDwgPreview preview(back, true, false);
        ReadInto(preview, MakeDwg(spec));
        for (unsigned entry : row.toBack)
            EXPECT_EQ(DibGetPaletteEntry(preview.m_hDib, entry), back)
                << row.version << " " << entry;
        for (unsigned entry : row.toFore)
            EXPECT_EQ(DibGetPaletteEntry(preview.m_hDib, entry), 0u) << row.version << " " << entry;
        EXPECT_EQ(
            DibGetPaletteEntry(preview.m_hDib, 100),
            DibGetPaletteEntry(reinterpret_cast<const std::uint8_t*>(dib.data()), dib.size(), 100));
    }

    // A black background gets a white foreground; a change of background refits.
    TrDwgPreview preview(0x10, true, false);
    ReadInto(preview, MakeDwg(ThreeRecords("AC1015", PaletteDib(0, 0))));
    preview.SetBackColor(0);
    EXPECT_EQ(DibGetPaletteEntry(preview.m_hDib, 255), 0xFFFFFFu);
    EXPECT_EQ(DibGetPaletteEntry(preview.m_hDib, 0), 0u);
}

// The picture keeps its shape (32:20) inside the rectangle, centred across the side that is
// too long for it: a wide rectangle is fitted by its height, a tall one by its width.
TEST_F(DwgPreviewTest, DrawFitsThePictureToTheRectangleOnTheBackground) {
    const DibSpec spec = SizedDib(32, 20, 24);
    files.files[kPath] = MakeDwg(ThreeRecords("AC1015", MakeDib(spec)));
    struct Case {
        win::RECT rect;
        win::RECT picture;
    };
    const Case cases[] = {
        {{10, 5, 110, 55}, {20, 5, 100, 55}},  // 50 * 1.6 = 80 wide, from 10 + (100 - 80) / 2
        {{0, 0, 100, 100}, {0, 19, 100, 81}},  // 100 / 1.6 = 62 high, from (100 - 62) / 2
    };
    for (const Case& c : cases) {
        const SoftwareCanvas canvas = Painted(0x00204060, c.rect, 120, 110);
        const win::RECT& p = c.picture;
        EXPECT_EQ(canvas.PixelAt(p.left, p.top), DibPatternPixel(spec, 0, 0)) << p.top;
        EXPECT_EQ(canvas.PixelAt(p.right - 1, p.bottom - 1), DibPatternPixel(spec, 31, 19));
        const bool byHeight = p.top == c.rect.top;
        const int midX = (p.left + p.right) / 2;
        const int midY = (p.top + p.bottom) / 2;
        EXPECT_EQ(byHeight ? canvas.PixelAt(p.left - 1, midY) : canvas.PixelAt(midX, p.top - 1),
                  0x00204060u);
        EXPECT_EQ(byHeight ? canvas.PixelAt(p.right, midY) : canvas.PixelAt(midX, p.bottom),
                  0x00204060u);
        EXPECT_EQ(canvas.PixelAt(c.rect.right + 1, c.rect.bottom + 1), 0u);  // nothing outside
    }
}

// Halving a picture combines each 2 by 2 block: ORed on black, ANDed on white, and on any other
// background the block's first pixel stands for it.
TEST_F(DwgPreviewTest, DrawPicksTheStretchModeByTheBackground) {
    const DibSpec spec = SizedDib(4, 2, 24);
    files.files[kPath] = MakeDwg(ThreeRecords("AC1015", MakeDib(spec)));
    win::COLORREF ored = 0;
    win::COLORREF anded = 0xFFFFFF;
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 2; ++x) {
            ored |= DibPatternPixel(spec, x, y);
            anded &= DibPatternPixel(spec, x, y);
        }
    const win::COLORREF first = DibPatternPixel(spec, 0, 0);
    ASSERT_TRUE(ored != anded && ored != first && anded != first);
    const std::pair<win::COLORREF, win::COLORREF> cases[] = {
        {0x000000, ored}, {0xFFFFFF, anded}, {0x00336699, first}};
    for (const auto& [back, expected] : cases)
        EXPECT_EQ(Painted(back, {0, 0, 2, 1}, 2, 1).PixelAt(0, 0), expected) << std::hex << back;
}

TEST_F(DwgPreviewTest, AMissingFileShowsItsErrorInRedLinesCentredInTheRectangle) {
    BoxFontRasteriser fonts;
    SoftwareCanvas canvas(200, 100, &fonts);
    TrDwgPreview preview(0xFFFFFF, false, false);
    preview.SetFile(L"/dwg/gone.dwg");
    win::LOGFONTW font;
    font.lfHeight = -16;
    preview.Draw(&canvas, {0, 0, 200, 100}, font);
    ASSERT_EQ(preview.m_strError, L"File Error\nfileNotFound");
    // Two lines of 16 + 3 pixels: the block starts at (100 - 38) / 2 = 31.
    int firstRed = -1;
    int lastRed = -1;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 200; ++x) {
            const win::COLORREF c = canvas.PixelAt(x, y);
            if (c == 0x0000FF) {
                firstRed = firstRed < 0 ? y : firstRed;
                lastRed = y;
            } else {
                ASSERT_EQ(c, 0xFFFFFFu) << x << "," << y;
            }
        }
    EXPECT_GE(firstRed, 31);
    EXPECT_LT(lastRed, 31 + 38);
    EXPECT_LT(firstRed, 31 + 19);
    EXPECT_GE(lastRed, 31 + 19);  // the second line is drawn too
}

TEST_F(DwgPreviewTest, ABackgroundReadFillsTheHolderAndClearsItsFlag) {
    files.files[kPath] = MakeDwg(ThreeRecords("AC1018", MakeDib(SizedDib(10, 10, 8))));
    TrDwgPreview preview;
    preview.SetFile(kPath);
    preview.m_bBackground = true;
    bool notified = false;
    preview.m_hWndNotify = [&notified](const win::RECT&) { notified = true; };
    SoftwareCanvas canvas(20, 20);
    preview.Draw(&canvas, {0, 0, 20, 20}, win::LOGFONTW{});
    preview.m_pThread.join();
    EXPECT_FALSE(preview.m_bThreadRunning);
    EXPECT_TRUE(notified);
    EXPECT_EQ(preview.GetImageSize(), (win::SIZE{10, 10}));
}

TEST_F(DwgPreviewTest, HolderKeepsItsFileAndMakesBitmaps) {
    files.files[kPath] = MakeDwg(ThreeRecords("AC1015", MakeDib(SizedDib(6, 4, 24))));
    TrDwgPreview preview;
    EXPECT_FALSE(preview.IsFile(kPath));
    ASSERT_EQ(preview.Read(kPath, true), 1);
    EXPECT_TRUE(preview.IsFile(L"/DWG/A.DWG"));
    SoftwareCanvas screen(10, 10);
    const std::unique_ptr<Canvas> bitmap = preview.CreateBitmap(&screen);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->Width(), 6);
    SoftwareScreen screenDevice(10, 10);
    const ScopedPort<ScreenDevice> screenPort(screenDevice);
    const std::unique_ptr<Canvas> forScreen = preview.CreateBitmap();
    ASSERT_NE(forScreen, nullptr);
    EXPECT_EQ(forScreen->Height(), 4);
    preview.Clear();
    EXPECT_EQ(preview.CreateBitmap(&screen), nullptr);
    EXPECT_EQ(preview.CreateBitmap(), nullptr);
    EXPECT_EQ(preview.GetImageSize(), (win::SIZE{0, 0}));
    // A new file starts from the state before any read: version 16, no image, not read.
    preview.SetFile(L"/dwg/b.dwg");
    EXPECT_EQ(preview.m_nVersion, 16);
    EXPECT_EQ(preview.m_rcImage, (win::RECT{}));
    EXPECT_FALSE(preview.m_bRead);
}

// A 24-bit DIB of one colour, rows padded to four bytes.
std::vector<std::uint8_t> SolidDib(int width, int height, win::COLORREF color) {
    const std::string dib = MakeDib(SizedDib(width, height, 24));
    std::vector<std::uint8_t> bytes(dib.begin(), dib.end());
    const int stride = (width * 3 + 3) & ~3;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint8_t* pixel = &bytes[40 + static_cast<std::size_t>(y * stride + x * 3)];
            pixel[0] = win::BlueOf(color);
            pixel[1] = win::GreenOf(color);
            pixel[2] = win::RedOf(color);
        }
    }
    return bytes;
}

TEST_F(DwgPreviewTest, ThePreviewPaneStacksSquaresAndShellPicturesUntilItIsFull) {
    files.files[kPath] = MakeDwg(ThreeRecords("AC1015", MakeDib(DibSpec())));
    files.files[L"/dwg/A.DWG"] = files.files[kPath];
    SimShellPictures shell;
    ScopedPort<ShellPictures> shellPort{shell};
    constexpr win::COLORREF kRed = 0x0000FF;
    shell.SetPicture(L"/doc/wide.png", SolidDib(40, 10, kRed));
    // The square's width comes from the pane; a file without a shell picture keeps its place
    // in the list and adds no height.
    const auto items = LoadPreviewItems(
        {kPath, L"/doc/none.txt", L"/doc/wide.png", L"/dwg/A.DWG", kPath}, 50);
    ASSERT_EQ(items.size(), 5u);
    EXPECT_EQ((std::vector<int>{items[0]->bShellImage, items[1]->bShellImage,
                                items[2]->bShellImage, items[3]->bShellImage}),
              (std::vector<int>{0, 1, 1, 0}));
    EXPECT_TRUE(items[1]->bitmap.empty());
    EXPECT_EQ(shell.Requests(), (std::vector<std::pair<std::wstring, int>>{
                                    {L"/doc/none.txt", 50}, {L"/doc/wide.png", 50}}));
    EXPECT_FALSE(items[0]->preview.m_hDib.empty());  // read at once, on this thread
    SoftwareCanvas pane(54, 150);
    constexpr PreviewPaneColors kColors{0x808080, 0xE0E0E0, 0xC0C0C0};
    PaintPreviewPane(pane, items, kColors, win::LOGFONTW{});
    EXPECT_EQ(pane.PixelAt(0, 0), kColors.shadow);
    EXPECT_EQ(pane.PixelAt(53, 149), kColors.light);
    // A square from 2 to 52; the wide picture 50 by trunc(50 * 10 / 40) = 12 below it; then
    // the next square from 64, the last from 114, cut by the pane's edge.
    EXPECT_NE(pane.PixelAt(27, 51), kRed);
    EXPECT_EQ(pane.PixelAt(27, 52), kRed);
    EXPECT_EQ(pane.PixelAt(27, 63), kRed);
    EXPECT_NE(pane.PixelAt(27, 64), kRed);
    EXPECT_NE(pane.PixelAt(27, 148), kColors.face);
    // Fewer files leave the face below the last one.
    PaintPreviewPane(pane, {}, kColors, win::LOGFONTW{});
    EXPECT_EQ(pane.PixelAt(27, 100), kColors.face);
}

TEST(DwgVersionTable, TextsAndCodesAreSeparateTablesMatchedExactly) {
    EXPECT_EQ(GetDwgVersionText("AC1021"), L"AutoCAD 2007");
    EXPECT_EQ(GetDwgVersionCode("AC1021"), 17);
    EXPECT_EQ(GetDwgVersionCode("AC402b"), 16);
    EXPECT_EQ(GetDwgVersionCode("AC1004"), 9);
    EXPECT_EQ(GetDwgVersionText("AC1003"), L"Version 2.60");
    EXPECT_EQ(GetDwgVersionCode("AC1003"), 0);
    EXPECT_EQ(GetDwgVersionText("MC0.0"), L"Version 1.0");
    EXPECT_EQ(GetDwgVersionText("ac1015"), L"Unknown");
    EXPECT_EQ(GetDwgVersionText("AC1027"), L"Unknown");
    EXPECT_EQ(GetDwgVersionCode("AC1032"), 0);
    EXPECT_EQ(GetDwgVersionText(""), L"Unknown");
}

TEST_F(DwgPreviewTest, FileVersionFunctionsReadTheFirstSevenBytes) {
    files.files[L"/v.dwg"] = "AC1014\0rest";
    EXPECT_EQ(GetFileDwgVersionCode(L"/v.dwg"), 14);
    std::wstring text = L"kept";
    EXPECT_TRUE(GetFileDwgVersionText(L"/v.dwg", text));
    EXPECT_EQ(text, L"Release 14");
    text = L"kept";
    EXPECT_FALSE(GetFileDwgVersionText(L"/none.dwg", text));
    EXPECT_EQ(text, L"kept");
    EXPECT_EQ(GetFileDwgVersionCode(L"/none.dwg"), 0);
}

// The sample drawings and what their manifest says the reader makes of each.
TEST(DwgSampleDrawings, ReadAsTheManifestSays) {
    const std::filesystem::path root = SampleDataFolder();
    if (root.empty() || !std::filesystem::exists(root / "dwg" / "manifest.tsv"))
        GTEST_SKIP() << "no sample drawings";
    MemoryFileSystem files;
    ScopedPort<FileSystem> port(files);
    std::istringstream manifest(ReadBytes(root / "dwg" / "manifest.tsv"));
    std::string line;
    std::getline(manifest, line);  // the column names
    int checked = 0;
    while (std::getline(manifest, line)) {
        if (line.empty())
            continue;
        std::vector<std::string> cells;
        std::istringstream row(line);
        for (std::string cell; std::getline(row, cell, '\t');)
            cells.push_back(cell);
        ASSERT_GE(cells.size(), 6u) << line;
        const std::wstring path = L"/samples/" + FromUtf8(cells[0]);
        files.files[path] = ReadBytes(root / "dwg" / cells[0]);
        char head[7] = {};
        files.files[path].copy(head, 7);
        EXPECT_EQ(DwgVersionString(head), cells[1]) << cells[0];
        EXPECT_EQ(ToUtf8(GetDwgVersionText(cells[1].c_str())), cells[2]) << cells[0];
        EXPECT_EQ(GetFileDwgVersionCode(path), std::stoi(cells[3])) << cells[0];

        TrDwgPreview preview;
        const int result = preview.Read(path, true);
        EXPECT_EQ(result, std::stoi(cells[5])) << cells[0];
        const std::string& outcome = cells[4];
        if (outcome.rfind("picture ", 0) == 0) {
            unsigned index = 0, width = 0, height = 0, bits = 0;
            ASSERT_EQ(
                std::sscanf(outcome.c_str(), "picture %u %ux%u %u", &index, &width, &height, &bits),
                4);
            ASSERT_GT(preview.m_records.size(), index) << cells[0];
            EXPECT_EQ(preview.m_records[index]->type, 2);
            std::vector<std::uint8_t> expected = preview.m_records[index]->data;
            expected.push_back(0);
            EXPECT_EQ(preview.m_hDib, expected) << cells[0];
            EXPECT_EQ(preview.GetImageSize(),
                      (win::SIZE{static_cast<int>(width), static_cast<int>(height)}))
                << cells[0];
            EXPECT_EQ(DibBitCount(preview.m_hDib.data(), preview.m_hDib.size()), bits) << cells[0];
        } else {
            EXPECT_TRUE(preview.m_hDib.empty()) << cells[0];
            EXPECT_EQ(ToUtf8(preview.m_strStatus), outcome) << cells[0];
        }
        ++checked;
    }
    EXPECT_GT(checked, 0);
}

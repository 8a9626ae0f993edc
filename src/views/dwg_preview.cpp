#include "views/dwg_preview.h"

#include <algorithm>
#include <cstring>

#include "foundation/no_case.h"
#include "ports/file_system.h"
#include "ports/port.h"
#include "views/dwg_version.h"
#include "views/image_ops.h"

const std::uint8_t kDwgPreviewSentinel[16] = {0x1F, 0x25, 0x6D, 0x07, 0xD4, 0x36, 0x28, 0x28,
                                              0x9D, 0x57, 0xCA, 0x3F, 0x9D, 0x44, 0x10, 0x2B};

namespace {

// The causes a file error carries, numbered as the platform's file exceptions number them.
enum FileErrorCause {
    kFileNotFound = 2,
    kAccessDenied = 5,
    kBadSeek = 9,
};

struct DwgFileError {
    int cause;
};

std::wstring FileErrorText(int cause) {
    // "ooManyOpenFiles" has always lacked its t; users' reports quote it so.
    static const wchar_t* const kCauses[] = {
        L"generic",      L"fileNotFound", L"badPath",          L"ooManyOpenFiles",
        L"accessDenied", L"invalidFile",  L"removeCurrentDir", L"directoryFull",
        L"badSeek",      L"hardIO",       L"sharingViolation", L"lockViolation",
        L"diskFull",     L"endOfFile"};
    if (cause < 1 || cause > 14)
        return L"Unknown Error\nLoading Preview";
    return std::wstring(L"File Error\n") + kCauses[cause - 1];
}

std::uint32_t Le32(const std::uint8_t (&b)[4]) {
    return static_cast<std::uint32_t>(b[0]) | (static_cast<std::uint32_t>(b[1]) << 8) |
           (static_cast<std::uint32_t>(b[2]) << 16) | (static_cast<std::uint32_t>(b[3]) << 24);
}

}  // namespace

// A read position over the file port with the platform file's rules: reads past the end come
// back short, a seek before the start is an error, and every operation on a file that could
// not be opened raises the error of the failed open.
class DwgFileCursor {
public:
    DwgFileCursor(std::unique_ptr<InputFile> file, int openCause)
        : m_file(std::move(file)), m_nOpenCause(openCause) {}

    std::size_t Read(void* buffer, std::size_t count) {
        Check();
        if (count == 0)
            return 0;
        const std::size_t got = count <= kWindow ? ReadThroughWindow(buffer, count)
                                                 : m_file->ReadAt(m_nPosition, buffer, count);
        m_nPosition += got;
        return got;
    }
    void Seek(std::int64_t position) {
        Check();
        if (position < 0)
            throw DwgFileError{kBadSeek};
        m_nPosition = static_cast<std::uint64_t>(position);
    }
    std::uint64_t Position() const { return m_nPosition; }
    std::uint64_t Size() const { return m_file != nullptr ? m_file->Size() : 0; }

private:
    // The head and the record table are a dozen small reads close together: one read of the
    // file serves them all.
    static constexpr std::size_t kWindow = 4096;

    std::size_t ReadThroughWindow(void* buffer, std::size_t count) {
        const bool inside = m_nPosition >= m_nWindowStart &&
                            m_nPosition + count <= m_nWindowStart + m_window.size();
        if (!inside) {
            m_window.resize(kWindow);
            m_window.resize(m_file->ReadAt(m_nPosition, m_window.data(), kWindow));
            m_nWindowStart = m_nPosition;
        }
        const std::uint64_t skip = m_nPosition - m_nWindowStart;
        const std::size_t got =
            static_cast<std::size_t>(std::min<std::uint64_t>(count, m_window.size() - skip));
        std::memcpy(buffer, m_window.data() + skip, got);
        return got;
    }

    void Check() const {
        if (m_file == nullptr)
            throw DwgFileError{m_nOpenCause};
    }

    std::unique_ptr<InputFile> m_file;
    int m_nOpenCause;
    std::uint64_t m_nPosition = 0;
    std::vector<std::uint8_t> m_window;
    std::uint64_t m_nWindowStart = 0;
};

TrDwgPreview::TrDwgPreview() = default;

TrDwgPreview::TrDwgPreview(win::COLORREF back, bool fitPalette, bool flag)
    : m_bFlag(flag), m_bFitPalette(fitPalette), m_crBack(back) {}

TrDwgPreview::~TrDwgPreview() {
    // The worker writes into this holder; it must be done before the holder goes.
    if (m_pThread.joinable())
        m_pThread.join();
}

void TrDwgPreview::Reset() {
    Clear();
    m_strStatus = L"Loading...";
    m_strError.clear();
    m_nReserved = 0;
    m_rcImage = {};
    m_nVersion = 16;
    m_nPaletteVersion = 0;
    m_nWriterByte = 0;
    m_nPreviewAddress = 0;
    m_crSentinelEntry = 0;
    m_bRead = false;
}

void TrDwgPreview::SetFile(const std::wstring& path) {
    Reset();
    m_fileInfo.SetFile(path);
    m_bRead = false;
}

void TrDwgPreview::Clear() {
    m_hDib.clear();
    m_records.clear();
}

void TrDwgPreview::SetDib(DibBlock dib) {
    m_hDib = std::move(dib);
    m_rcImage = {0, 0, DibWidth(m_hDib), DibHeight(m_hDib)};
}

void TrDwgPreview::SetBackColor(win::COLORREF color) {
    if (color == m_crBack)
        return;
    m_crBack = color;
    FitPalette();
}

bool TrDwgPreview::IsFile(const std::wstring& path) const {
    const std::wstring& mine = m_fileInfo.m_path.m_strPath;
    return !mine.empty() && EqualNoCase(mine, path);
}

win::SIZE TrDwgPreview::GetImageSize() const {
    if (m_hDib.empty())
        return {};
    return {DibWidth(m_hDib), DibHeight(m_hDib)};
}

std::unique_ptr<Canvas> TrDwgPreview::CreateBitmap(Canvas* dc) const {
    if (m_hDib.empty())
        return nullptr;
    return IS40_DIBToHBITMAP(m_hDib.data(), m_hDib.size(), dc);
}

int TrDwgPreview::Read(const std::wstring& path, bool setFile) {
    if (path.empty())
        return 0;
    m_strStatus = L"Loading...";
    if (setFile)
        SetFile(path);
    else
        Clear();
    FileSystem& files = Use<FileSystem>();
    std::unique_ptr<InputFile> input = files.OpenRead(path);
    // The open is not tested here: a file that can't be opened fails at its first read, with
    // the cause of the failed open.
    const int openCause = input != nullptr ? 0 : files.Stat(path) ? kAccessDenied : kFileNotFound;
    DwgFileCursor file(std::move(input), openCause);
    m_bRead = true;

    int result = 0;
    try {
        result = Walk(file) ? 1 : 0;
    } catch (const DwgFileError& error) {
        m_hDib.clear();
        m_strError = FileErrorText(error.cause);
    } catch (...) {
        m_hDib.clear();
        m_strError = L"Unknown Error\nLoading Preview";
    }
    m_bThreadRunning = false;
    if (m_hWndNotify)
        m_hWndNotify(m_rcUpdate);
    return result;
}

bool TrDwgPreview::Walk(DwgFileCursor& file) {
    char head[7] = {};
    file.Read(head, sizeof head);
    m_nVersion = GetDwgVersionCode(DwgVersionString(head).c_str());
    file.Seek(17);
    file.Read(&m_nWriterByte, 1);
    file.Seek(13);
    std::uint8_t address[4] = {};
    file.Read(address, sizeof address);
    m_nPreviewAddress = Le32(address);
    file.Seek(m_nPreviewAddress);
    std::uint8_t sentinel[16] = {};
    file.Read(sentinel, sizeof sentinel);
    // No block where the head points: the read ends quietly and the status text stays.
    if (std::memcmp(sentinel, kDwgPreviewSentinel, sizeof sentinel) != 0)
        return false;

    std::uint8_t overallSize[4] = {};
    file.Read(overallSize, sizeof overallSize);
    std::int8_t count = 0;
    file.Read(&count, 1);
    for (int index = 0; index < count; ++index) {
        auto record = std::make_unique<TrDwgImageRecord>();
        std::uint8_t field[4] = {};
        file.Read(&record->type, 1);
        file.Read(field, sizeof field);
        record->address = static_cast<std::int32_t>(Le32(field));
        std::memset(field, 0, sizeof field);
        file.Read(field, sizeof field);
        record->size = Le32(field);
        m_records.push_back(std::move(record));
        TrDwgImageRecord& current = *m_records.back();

        const std::uint32_t resume = static_cast<std::uint32_t>(file.Position());
        file.Seek(current.address);
        // Only what the file holds is taken: a claim beyond its end costs nothing.
        const std::uint64_t at = static_cast<std::uint32_t>(current.address);
        const std::uint64_t held = file.Size() > at ? file.Size() - at : 0;
        current.data.resize(static_cast<std::size_t>(std::min<std::uint64_t>(current.size, held)));
        file.Read(current.data.data(), current.data.size());

        if (current.type == 2 && (m_nVersion <= 16 || index == 1))
            AdoptPicture(current);
        file.Seek(resume);
    }
    if (m_hDib.empty())
        m_strStatus = L"No Preview";
    return true;
}

void TrDwgPreview::AdoptPicture(const TrDwgImageRecord& record) {
    m_hDib.assign(record.data.begin(), record.data.end());
    m_hDib.push_back(0);  // one zero byte past the picture, as the block was always made
    if (m_nVersion > 14) {
        m_crSentinelEntry = DibGetPaletteEntry(m_hDib, 225);
        m_nPaletteVersion = m_nWriterByte == 27 ? 17 : m_nWriterByte == 25 ? 16 : 15;
    } else {
        m_nPaletteVersion = m_nVersion;
        m_crSentinelEntry = DibGetPaletteEntry(m_hDib, 245);
    }
    if (m_bFitPalette)
        FitPalette();
    m_rcImage.right = DibWidth(m_hDib);
    m_rcImage.bottom = DibHeight(m_hDib);
}

void TrDwgPreview::FitPalette() {
    if (m_hDib.empty())
        return;
    const win::COLORREF back = m_crBack;
    const win::COLORREF fore = back != 0 ? 0x000000 : 0xFFFFFF;
    const bool sentinel = m_crSentinelEntry == 0xFFFFFF;
    auto set = [this](std::initializer_list<unsigned> entries, win::COLORREF color) {
        for (unsigned entry : entries)
            DibSetPaletteEntry(m_hDib, entry, color);
    };
    if (m_nVersion >= 15 && m_nVersion <= 17) {
        const bool told = m_nWriterByte == 23 || m_nWriterByte == 25 || m_nWriterByte == 27;
        if (!told) {
            set({0, 164}, back);
            set({226, 245, 255}, fore);
        } else if (!sentinel) {
            set({226, 0, 164}, back);
            set({245, 255}, fore);
        } else {
            set({245, 0, 164}, back);
            set({226, 255}, fore);
        }
    } else if (!sentinel) {
        set({0}, back);
        set({225, 255}, fore);
    } else {
        set({225}, back);
        set({0, 255}, fore);
    }
}

void TrDwgPreview::StartBackgroundRead() {
    const std::wstring path = m_fileInfo.m_path.m_strPath;
    if (m_bThreadRunning || path.empty())
        return;
    m_bThreadRunning = true;
    if (m_pThread.joinable())
        m_pThread.join();  // the last worker has ended: it cleared the flag
    m_pThread = std::thread([this, path] { Read(path, false); });
}

void TrDwgPreview::Draw(Canvas* dc, const win::RECT& rect, const win::LOGFONTW& font) {
    if (dc == nullptr)
        return;
    dc->FillRect(rect, m_crBack);
    if (!m_bRead) {
        if (!m_bBackground)
            Read(m_fileInfo.m_path.m_strPath, false);
        else
            StartBackgroundRead();
    }
    // While a worker reads, the holder's picture is the worker's: paint the status instead.
    if (m_bThreadRunning || m_hDib.empty()) {
        DrawStatusText(dc, rect, font);
        return;
    }
    win::RECT fitted = rect;
    const int imageWidth = DibWidth(m_hDib);
    const int imageHeight = DibHeight(m_hDib);
    if (m_bRead && imageWidth != 0 && imageHeight != 0 && !rect.IsEmpty()) {
        const int rw = rect.Width();
        const int rh = rect.Height();
        const float r = static_cast<float>(rw) / static_cast<float>(rh);
        const float i = static_cast<float>(imageWidth) / static_cast<float>(imageHeight);
        if (r > i) {
            const int w = static_cast<int>(static_cast<float>(rh) * i);
            fitted.left = rect.left + (rw - w) / 2;
            fitted.right = fitted.left + w;
        } else {
            const int h = static_cast<int>(static_cast<float>(rw) / i);
            fitted.top = rect.top + (rh - h) / 2;
            fitted.bottom = fitted.top + h;
        }
    }
    const StretchMode mode = m_crBack == 0          ? StretchMode::kWhiteOnBlack
                             : m_crBack == 0xFFFFFF ? StretchMode::kBlackOnWhite
                                                    : StretchMode::kColorOnColor;
    dc->StretchDib(m_hDib.data(), m_hDib.size(), fitted, mode);
}

void TrDwgPreview::DrawStatusText(Canvas* dc, const win::RECT& rect, const win::LOGFONTW& font) {
    const win::COLORREF red = 0x0000FF;
    const std::wstring& text = m_strError.empty() ? m_strStatus : m_strError;
    const int lineHeight = dc->MeasureText(text, font).cy + 3;
    std::vector<std::wstring> lines;
    std::wstring::size_type start = 0;
    while (!text.empty()) {
        const std::wstring::size_type end = text.find(L'\n', start);
        lines.push_back(text.substr(start, end == std::wstring::npos ? end : end - start));
        if (end == std::wstring::npos)
            break;
        start = end + 1;
    }
    int top = rect.top + (rect.Height() - static_cast<int>(lines.size()) * lineHeight) / 2;
    for (const std::wstring& line : lines) {
        dc->DrawText(line, {rect.left, top, rect.right, top + lineHeight}, font, red,
                     kTextCenter | kTextVCenter | kTextSingleLine);
        top += lineHeight;
    }
}

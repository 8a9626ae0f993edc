#include "tools/dwgthumb/drawing_thumbnail.h"

#include <fstream>

#include "foundation/text_encoding.h"
#include "tools/dwgthumb/png_codec.h"
#include "views/dib.h"
#include "views/dwg_preview.h"
#include "views/dwg_version.h"

namespace {

// Drawings of 2013 and later keep their picture as a PNG in a record of this type.
constexpr std::int8_t kPngRecord = 6;

std::string OneLine(const std::wstring& text) {
    std::string line = ToUtf8(text);
    for (std::size_t at = line.find('\n'); at != std::string::npos; at = line.find('\n', at))
        line.replace(at, 1, ": ");
    return line;
}

bool WriteFile(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out.flush());
}

void WritePicture(const TrDwgPreview& preview, const TrDwgImageRecord* png,
                  const std::filesystem::path& drawing, ThumbOptions& options,
                  ThumbResult& result) {
    if (options.outputFolder.empty())
        return;
    std::string bytes;
    std::string extension = ".png";
    if (!preview.m_hDib.empty() && options.bmp) {
        bytes = BmpFileOf(preview.m_hDib.data(), preview.m_hDib.size() - 1);
        extension = ".bmp";
    } else if (!preview.m_hDib.empty()) {
        std::vector<std::uint8_t> rgb;
        int width = 0;
        int height = 0;
        if (DibToRgb(preview.m_hDib.data(), preview.m_hDib.size(), rgb, width, height))
            bytes = EncodePng(rgb, width, height);
    } else if (png != nullptr) {
        bytes.assign(png->data.begin(), png->data.end());
    }
    if (bytes.empty())
        return;
    std::filesystem::path target = options.outputFolder / (drawing.stem().string() + extension);
    for (int n = 2; options.written.count(target) != 0; ++n)
        target =
            options.outputFolder / (drawing.stem().string() + "-" + std::to_string(n) + extension);
    options.written.insert(target);
    if (!WriteFile(target, bytes)) {
        result.readFailed = true;
        result.failure = "cannot write " + target.string();
        return;
    }
    result.written = target;
}

}  // namespace

std::string NewerReleaseName(const std::string& version) {
    if (version == "AC1024")
        return "Release 2010";
    if (version == "AC1027")
        return "Release 2013";
    if (version == "AC1032")
        return "Release 2018";
    return {};
}

std::string BmpFileOf(const std::uint8_t* dib, std::size_t size) {
    std::size_t offset = 14 + DibBitsOffset(dib, size);
    const bool bitfields = size >= 20 && dib[0] == 40 && dib[16] == 3;
    if (bitfields)
        offset += 12;
    std::string out(14, '\0');
    auto put32 = [&out](std::size_t at, std::uint64_t value) {
        for (int i = 0; i < 4; ++i)
            out[at + static_cast<std::size_t>(i)] = static_cast<char>((value >> (8 * i)) & 0xFF);
    };
    out[0] = 'B';
    out[1] = 'M';
    put32(2, 14 + size);
    put32(10, offset);
    out.append(reinterpret_cast<const char*>(dib), size);
    return out;
}

ThumbResult MakeThumbnail(const std::filesystem::path& drawing, ThumbOptions& options) {
    ThumbResult result;
    const std::wstring path = FromUtf8(drawing.string());
    TrDwgPreview preview(options.background.value_or(0xFFFFFF), options.background.has_value(),
                         false);
    const int read = preview.Read(path, true);

    char head[7] = {};
    std::ifstream(drawing, std::ios::binary).read(head, sizeof head);
    result.version = DwgVersionString(head);
    result.versionText = ToUtf8(GetDwgVersionText(result.version.c_str()));
    if (result.versionText == "Unknown" && !NewerReleaseName(result.version).empty())
        result.versionText = NewerReleaseName(result.version);
    result.versionCode = GetDwgVersionCode(result.version.c_str());

    if (!preview.m_strError.empty()) {
        result.readFailed = true;
        result.outcome = OneLine(preview.m_strError);
        result.failure = result.outcome;
        return result;
    }
    const TrDwgImageRecord* png = nullptr;
    for (const auto& record : preview.m_records) {
        if (record->type == kPngRecord &&
            ReadPngHeader(std::string(record->data.begin(), record->data.end())))
            png = record.get();
    }
    if (!preview.m_hDib.empty()) {
        const win::SIZE size = preview.GetImageSize();
        result.outcome = std::to_string(size.cx) + "x" + std::to_string(size.cy) + " " +
                         std::to_string(DibBitCount(preview.m_hDib.data(), preview.m_hDib.size())) +
                         "-bit";
    } else if (png != nullptr) {
        const PngHeader header = *ReadPngHeader(std::string(png->data.begin(), png->data.end()));
        result.outcome =
            "PNG " + std::to_string(header.width) + "x" + std::to_string(header.height);
    } else if (read == 0) {
        result.outcome = "No preview block";
    } else {
        result.outcome = OneLine(preview.m_strStatus);
    }
    WritePicture(preview, png, drawing, options, result);
    return result;
}

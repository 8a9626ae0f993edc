// The preview reader over any bytes, then the picture it finds converted to RGB and drawn.

#include <cstring>

#include "platform/sim/canvas/software_canvas.h"
#include "ports/file_system.h"
#include "ports/port.h"
#include "views/dib.h"
#include "views/dwg_preview.h"

namespace {

class BytesFile : public InputFile {
public:
    BytesFile(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    std::uint64_t Size() const override { return m_size; }
    std::size_t ReadAt(std::uint64_t offset, void* buffer, std::size_t count) override {
        if (offset >= m_size || count == 0)
            return 0;
        const std::size_t n = std::min<std::uint64_t>(count, m_size - offset);
        std::memcpy(buffer, m_data + offset, n);
        return n;
    }

private:
    const std::uint8_t* m_data;  // not owned
    std::size_t m_size;
};

// Every path is the one input.
class OneFileSystem : public FileSystem {
public:
    OneFileSystem(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    wchar_t Separator() const override { return L'/'; }
    std::vector<FoundFile> Find(const std::wstring&) override { return {FoundFile{L"x.dwg"}}; }
    std::optional<FoundFile> Stat(const std::wstring&) override { return FoundFile{L"x.dwg"}; }
    std::unique_ptr<InputFile> OpenRead(const std::wstring&) override {
        return std::make_unique<BytesFile>(m_data, m_size);
    }
    std::optional<std::string> ReadAll(const std::wstring&, std::uint64_t) override {
        return std::string(reinterpret_cast<const char*>(m_data), m_size);
    }
    bool WriteAtomic(const std::wstring&, const std::string&) override { return false; }
    bool Rename(const std::wstring&, const std::wstring&) override { return false; }
    bool CreateFolder(const std::wstring&) override { return false; }
    bool Remove(const std::wstring&) override { return false; }
    std::wstring CreateUniqueFile(const std::wstring&, const std::wstring&) override { return {}; }
    std::wstring ModulePath() override { return L"/fuzz"; }
    std::wstring UserName() override { return L"fuzz"; }
    std::wstring UserDataFolder() override { return L"/"; }
    std::wstring TempFolder() override { return L"/"; }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    OneFileSystem files(data, size);
    ScopedPort<FileSystem> port(files);
    TrDwgPreview preview(0xFFFFFF, true, false);
    preview.Read(L"/x.dwg", true);
    std::vector<std::uint8_t> rgb;
    int width = 0;
    int height = 0;
    DibToRgb(preview.m_hDib.data(), preview.m_hDib.size(), rgb, width, height);
    SoftwareCanvas canvas(64, 48);
    preview.Draw(&canvas, {0, 0, 64, 48}, win::LOGFONTW{});
    return 0;
}

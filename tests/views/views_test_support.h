#pragma once
// Fakes the views' tests share: a file system over a map of files in memory, and a font of
// box-shaped glyphs whose every pixel is known.

#include <map>
#include <string>

#include "ports/file_system.h"
#include "ports/font_rasteriser.h"

class MemoryFileSystem : public FileSystem {
public:
    std::map<std::wstring, std::string> files;
    std::map<std::wstring, bool> locked;  // present but can't be opened

    wchar_t Separator() const override { return L'/'; }
    std::vector<FoundFile> Find(const std::wstring& pattern) override;
    std::optional<FoundFile> Stat(const std::wstring& path) override;
    std::unique_ptr<InputFile> OpenRead(const std::wstring& path) override;
    std::optional<std::string> ReadAll(const std::wstring& path, std::uint64_t limit) override;
    bool WriteAtomic(const std::wstring& path, const std::string& bytes) override;
    bool CreateFolder(const std::wstring&) override { return true; }
    bool Remove(const std::wstring& path) override { return files.erase(path) != 0; }
    std::wstring CreateUniqueFile(const std::wstring&, const std::wstring&) override { return {}; }
    std::wstring ModulePath() override { return L"/module"; }
    std::wstring UserName() override { return L"user"; }
    std::wstring UserDataFolder() override { return L"/data/"; }
    std::wstring TempFolder() override { return L"/tmp/"; }
};

// Glyphs are boxes: a character cell is half the line height wide; every character but a blank
// covers its cell less a one-pixel border. The line height is |lfHeight|, or 16 for 0.
class BoxFontRasteriser : public FontRasteriser {
public:
    static int Height(const win::LOGFONTW& font);
    int LineHeight(const win::LOGFONTW& font) override { return Height(font); }
    int TextWidth(const std::wstring& text, const win::LOGFONTW& font) override;
    bool DrawLine(const std::wstring& text, const win::LOGFONTW& font, int x, int top,
                  const win::RECT& clip, MonoBitmap& target) override;
};

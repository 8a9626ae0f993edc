// dwgthumb: the stored preview pictures of drawing files, and their versions.
//
//   dwgthumb [options] PATH...
//
// Each PATH is a drawing or a folder (searched for *.dwg below it). One line per drawing:
// path, version string, version text, code and what the preview holds.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "platform/posix/posix_file_system.h"
#include "ports/port.h"
#include "tools/dwgthumb/drawing_thumbnail.h"

#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr const char* kUsage =
    "usage: dwgthumb [options] PATH...\n"
    "  PATH                a drawing file, or a folder searched for *.dwg\n"
    "  -o DIR              write each preview picture into DIR (PNG unless --bmp)\n"
    "  --bmp               write BMP files instead of PNG (PNG-only previews stay PNG)\n"
    "  --background COLOR  fit the palette to this background, 0xBBGGRR\n"
    "  -h, --help          show this text\n";

struct Arguments {
    ThumbOptions options;
    std::vector<fs::path> paths;
};

bool IsDrawing(const fs::path& path) {
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ".dwg";
}

// Parses the command line; on an error returns false with the message in `error`.
bool Parse(int argc, char** argv, Arguments& args, std::string& error) {
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "-o" || arg == "--background") {
            if (i + 1 >= argc) {
                error = arg + " needs a value";
                return false;
            }
            const std::string value = argv[++i];
            if (arg == "-o") {
                args.options.outputFolder = value;
                continue;
            }
            char* end = nullptr;
            const unsigned long color = std::strtoul(value.c_str(), &end, 0);
            if (value.empty() || *end != '\0' || color > 0xFFFFFF) {
                error = "--background wants a colour 0xBBGGRR, not \"" + value + "\"";
                return false;
            }
            args.options.background = static_cast<win::COLORREF>(color);
        } else if (arg == "--bmp") {
            args.options.bmp = true;
        } else if (arg == "-h" || arg == "--help") {
            std::cout << kUsage;
            std::exit(0);
        } else if (!arg.empty() && arg[0] == '-' && arg != "-") {
            error = "unknown option " + arg;
            return false;
        } else {
            args.paths.emplace_back(arg);
        }
    }
    if (args.paths.empty()) {
        error = "no drawing or folder given";
        return false;
    }
    return true;
}

// The drawings named: files as given, folders searched, in a stable order.
std::vector<fs::path> CollectDrawings(const std::vector<fs::path>& paths, int& missing) {
    std::vector<fs::path> drawings;
    for (const fs::path& path : paths) {
        std::error_code code;
        if (fs::is_directory(path, code)) {
            std::vector<fs::path> found;
            for (auto it = fs::recursive_directory_iterator(path, code);
                 !code && it != fs::recursive_directory_iterator(); it.increment(code)) {
                if (it->is_regular_file(code) && IsDrawing(it->path()))
                    found.push_back(it->path());
            }
            std::sort(found.begin(), found.end());
            drawings.insert(drawings.end(), found.begin(), found.end());
        } else if (fs::exists(path, code)) {
            drawings.push_back(path);
        } else {
            std::cerr << "dwgthumb: " << path.string() << ": no such file or folder\n";
            ++missing;
        }
    }
    return drawings;
}

class Progress {
public:
    explicit Progress(std::size_t total) : m_total(total), m_bTerminal(isatty(2) != 0) {}
    void Step(std::size_t done) const {
        if (m_total < 20)
            return;
        if (m_bTerminal)
            std::fprintf(stderr, "\r%zu/%zu drawings", done, m_total);
        else if (done % 100 == 0 || done == m_total)
            std::fprintf(stderr, "%zu/%zu drawings\n", done, m_total);
        if (m_bTerminal && done == m_total)
            std::fprintf(stderr, "\n");
    }

private:
    std::size_t m_total;
    bool m_bTerminal;
};

}  // namespace

int main(int argc, char** argv) {
    Arguments args;
    std::string error;
    if (!Parse(argc, argv, args, error)) {
        std::cerr << "dwgthumb: " << error << "\n" << kUsage;
        return 2;
    }
    if (!args.options.outputFolder.empty()) {
        std::error_code code;
        fs::create_directories(args.options.outputFolder, code);
        if (!fs::is_directory(args.options.outputFolder)) {
            std::cerr << "dwgthumb: cannot make the folder " << args.options.outputFolder.string()
                      << "\n";
            return 2;
        }
    }
    PosixFileSystem files;
    ScopedPort<FileSystem> port(files);

    int failures = 0;
    const std::vector<fs::path> drawings = CollectDrawings(args.paths, failures);
    const Progress progress(drawings.size());
    for (std::size_t i = 0; i < drawings.size(); ++i) {
        const ThumbResult result = MakeThumbnail(drawings[i], args.options);
        std::cout << drawings[i].string() << '\t' << result.version << '\t' << result.versionText
                  << '\t' << result.versionCode << '\t' << result.outcome << '\n';
        if (result.readFailed) {
            std::cout.flush();
            std::cerr << "dwgthumb: cannot read " << drawings[i].string() << ": " << result.failure
                      << "\n";
            ++failures;
        }
        progress.Step(i + 1);
    }
    std::cout.flush();
    return failures == 0 ? 0 : 1;
}

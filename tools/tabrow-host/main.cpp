// tabrow-host: a host frame of real windows for trying the bar by hand and for pictures of it.
//
//   tabrow-host [--dock SIDE] [--previews] [--drawings N] [--screenshots FOLDER]
//
// Opens N drawings (three by default), loads the module and runs until the frame is closed.
// Commands are typed into the command line at the bottom (TROFF, TRON, CLOSE, SAVE...). With
// --screenshots it docks the bar on each of the six sides in turn instead, writes the frame's
// picture of each as dock-SIDE.png into FOLDER and ends.

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "host_session.h"
#include "settings/settings_keys.h"
#include "support/png_writer.h"

namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 720;
constexpr int kFirstSide = 59419;
constexpr int kLastSide = 59425;

struct Options {
    int dockSide = kFirstSide;
    bool previews = false;
    int drawings = 3;
    std::filesystem::path screenshots;
};

Options Parse(int argc, wchar_t** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::wstring arg = argv[i];
        const bool hasValue = i + 1 < argc;
        if (arg == L"--dock" && hasValue)
            options.dockSide = std::wcstol(argv[++i], nullptr, 10);
        else if (arg == L"--drawings" && hasValue)
            options.drawings = std::wcstol(argv[++i], nullptr, 10);
        else if (arg == L"--screenshots" && hasValue)
            options.screenshots = argv[++i];
        else if (arg == L"--previews")
            options.previews = true;
    }
    return options;
}

void OpenDrawings(HostSession& session, int count) {
    for (int i = 1; i <= count; ++i)
        session.Host().OpenDrawing(L"C:\\jobs\\tower\\level-" + std::to_wstring(i) + L".dwg");
}

int Screenshots(const Options& options) {
    std::filesystem::create_directories(options.screenshots);
    int failures = 0;
    for (int side = kFirstSide; side <= kLastSide; ++side) {
        if (side == kFirstSide + 4)
            continue;  // 59423 is no side
        HostSession session(kWidth, kHeight);
        session.StoreSetting(keys::kDockSide, static_cast<std::uint32_t>(side));
        session.StoreSetting(keys::kTabMode, options.previews ? 0 : 1);
        OpenDrawings(session, options.drawings);
        session.Load();
        const HostPicture picture = session.Screenshot();
        const auto file = options.screenshots / ("dock-" + std::to_string(side) + ".png");
        const bool saved =
            SavePng(file, picture.rgb.data(), picture.width, picture.height, picture.width * 3);
        std::printf("%s %s\n", saved ? "wrote" : "could not write", file.string().c_str());
        failures += saved ? 0 : 1;
    }
    return failures == 0 ? 0 : 1;
}

int Interactive(const Options& options) {
    HostSession session(kWidth, kHeight);
    session.StoreSetting(keys::kDockSide, static_cast<std::uint32_t>(options.dockSide));
    session.StoreSetting(keys::kTabMode, options.previews ? 0 : 1);
    OpenDrawings(session, options.drawings);
    session.Load();
    MSG msg{};
    while (::GetMessageW(&msg, nullptr, 0, 0) > 0)
        session.Dispatch(msg);
    return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const Options options = Parse(argc, argv);
    return options.screenshots.empty() ? Interactive(options) : Screenshots(options);
}

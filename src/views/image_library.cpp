#include "views/image_library.h"

#include <cstdio>
#include <ctime>

namespace {

constexpr std::size_t kLogKeeps = 50;
constexpr std::size_t kMessageLimit = 1000;

std::string LocalTimeText() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", local.tm_hour, local.tm_min, local.tm_sec);
    return text;
}

}  // namespace

ImageLibraryState& ImageLibrary() {
    thread_local ImageLibraryState state;
    return state;
}

void ReportImageError(std::uint32_t code, const char* function, const char* detail) {
    ImageLibraryState& state = ImageLibrary();
    if (state.suppressDepth > 0)
        return;
    if (code != 0) {
        const char* name = function != nullptr ? function : "(unspecified function)";
        std::string message =
            "Error " + std::to_string(code) + " in " + name + " (" + LocalTimeText() + ")";
        if (detail != nullptr)
            message += std::string(" [") + detail + "]";
        if (message.size() > kMessageLimit)
            message.resize(kMessageLimit);
        while (state.errorLog.size() > kLogKeeps)
            state.errorLog.pop_front();
        state.errorLog.push_back({std::move(message), code, 3});
    }
    state.lastError = code;
}

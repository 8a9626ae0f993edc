#pragma once
// The image library's per-thread state and its error report, shared by every IS40_ operation.

#include <cstdint>
#include <deque>
#include <string>

struct ImageErrorEntry {
    std::string message;
    std::uint32_t code = 0;
    int level = 3;
};

// Codes the operations report.
enum ImageErrorCode : std::uint32_t {
    kImageOk = 0,
    kImageOutOfMemory = 1,
    kImageBadArgument = 5,
    kImageNoDevice = 10,
    kImageCancelled = 14,
    kImageNoFont = 18,
    kImageNoCapability = 26,
    kImageBlitFailed = 29,
    kImageCreateBitmapFailed = 35,
    kImageWrongBitmap = 37,
};

// One block per thread, made at the first operation on it and never shared.
struct ImageLibraryState {
    std::uint32_t lastError = 0;
    std::deque<ImageErrorEntry> errorLog;  // at most 50 entries plus the newest
    std::int32_t nestingDepth = 0;
    std::int32_t suppressDepth = 0;
    double opacity = 1.0;
    bool createDibSection = false;
    void* progressCallback = nullptr;
};

ImageLibraryState& ImageLibrary();

// Ends an operation: logs a non-zero code unless reports are suppressed, and sets lastError.
// `function` may be null ("(unspecified function)"); `detail` may be null.
void ReportImageError(std::uint32_t code, const char* function, const char* detail = nullptr);

// Counts an operation in progress on this thread for as long as it lives.
class ImageOperationScope {
public:
    ImageOperationScope() { ++ImageLibrary().nestingDepth; }
    ~ImageOperationScope() { --ImageLibrary().nestingDepth; }
    ImageOperationScope(const ImageOperationScope&) = delete;
    ImageOperationScope& operator=(const ImageOperationScope&) = delete;
};

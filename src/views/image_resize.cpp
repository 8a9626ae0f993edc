#include <new>

#include "views/area_reduction.h"
#include "views/image_library.h"
#include "views/image_ops.h"

int IS40_ResizeImage(const ResizeRequest& r) {
    static const char* const kName = "IS40_ResizeImage";
    ImageOperationScope scope;
    const bool valid =
        r.source != nullptr && r.target != nullptr && r.bytesPerPixel != 0 &&
        r.bytesPerPixel <= 8 && r.mode == 15 && r.targetWidth != 0 && r.targetHeight != 0 &&
        r.targetWidth <= r.sourceWidth && r.targetHeight <= r.sourceHeight &&
        r.sourceStride >= static_cast<std::uint64_t>(r.sourceWidth) * r.bytesPerPixel &&
        r.targetStride >= static_cast<std::uint64_t>(r.targetWidth) * r.bytesPerPixel;
    if (!valid) {
        ReportImageError(kImageBadArgument, kName);
        return 0;
    }
    const ImageView source{r.source, r.sourceWidth, r.sourceHeight, r.sourceStride};
    const ImageTarget target{r.target, r.targetWidth, r.targetHeight, r.targetStride};
    try {
        if (r.sourceWidth % r.targetWidth == 0 && r.sourceHeight % r.targetHeight == 0)
            ReduceByWholeBlocks(source, target, r.bytesPerPixel);
        else
            ReduceByArea(source, target, r.bytesPerPixel);
    } catch (const std::bad_alloc&) {
        ReportImageError(kImageOutOfMemory, kName);
        return 0;
    }
    ReportImageError(kImageOk, kName);
    return 1;
}

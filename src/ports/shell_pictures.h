#pragma once
// The picture the system's shell makes of a file that isn't a drawing (a document's or an
// image's thumbnail), at a given size, as a packed 24-bit DIB.

#include <cstdint>
#include <string>
#include <vector>

class ShellPictures {
public:
    virtual ~ShellPictures() = default;
    // Empty when the shell has no picture for the file: no extractor for its type, or any
    // step of the extraction failed.
    virtual std::vector<std::uint8_t> Extract(const std::wstring& path, int size) = 0;
};

#pragma once
// Conversions between the wide strings of the core and the bytes of files and file names.
// Malformed input never fails: each bad byte or lone surrogate becomes U+FFFD.

#include <string>
#include <string_view>

std::string ToUtf8(std::wstring_view text);
std::wstring FromUtf8(std::string_view bytes);
// Little-endian UTF-16 bytes (without the byte order mark); an odd last byte is dropped.
std::wstring FromUtf16Le(std::string_view bytes);

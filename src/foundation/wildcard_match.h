#pragma once
// Matching of file name patterns with '*' (any run of characters) and '?' (any one character).

#include <string_view>

bool WildcardMatch(std::wstring_view pattern, std::wstring_view text, bool matchCase);

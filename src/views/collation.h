#pragma once
// The two orders in which the bar sorts drawings.
//
// CompareNoCase is the plain one of the tab control: character by character after folding to
// lower case, a shorter text before its own extensions.
//
// CollateNoCase is the palette's, a dictionary order as a user's locale sorts words: letters
// compare by their base letter first (accents and case count for nothing there; "ß", "æ", "œ",
// "ĳ" and "þ" count as two letters), hyphens and apostrophes are passed over, and symbols come
// before digits, digits before letters. Where the base letters are the same, a plain letter
// goes before an accented one, and then a word without hyphens before one with. Case never
// decides: "Plan" and "plan" compare equal.

#include <string_view>

int CompareNoCase(std::wstring_view a, std::wstring_view b);
int CollateNoCase(std::wstring_view a, std::wstring_view b);

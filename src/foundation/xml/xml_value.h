#pragma once
// Values of attributes and text as they stand in the document's text, and back.

#include <string>
#include <string_view>

// Replaces character references ("&#65;", "&#x41;") and the five named entities; any other
// '&' stands as itself.
std::wstring DecodeXmlValue(std::wstring_view value);

// Escapes for the inside of a quoted attribute (all five characters) or for element text
// ('<', '&' and '>' only).
std::wstring EncodeXmlAttributeValue(std::wstring_view value);
std::wstring EncodeXmlText(std::wstring_view value);

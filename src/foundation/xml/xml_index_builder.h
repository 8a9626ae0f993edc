#pragma once
// Builds the element index of a document's text.

#include <string>
#include <string_view>

#include "foundation/xml/xml_element_index.h"

// Fills `index` with the elements of `text` (shorter than 2^31 characters). On failure the
// index holds only the document record, with no root, and `error` says why; a few failures
// leave `error` empty.
bool BuildXmlIndex(std::wstring_view text, XmlElementIndex& index, std::wstring& error);

#pragma once
// The text of a drawing's tool tip: its full path or its file name and, when asked for, the
// summary properties the drawing carries, one labelled line each.

#include <string>

struct DrawingSummary;
struct HostDocument;

// A new line, a label and the value for each property that has a value, the fixed ones first
// in their order, then the custom ones by index.
std::wstring SummaryTipLines(const DrawingSummary& summary);

// The summary is read from the drawing's database each time; a drawing whose database gives
// none shows just its name.
std::wstring DrawingTipText(HostDocument* doc, bool bFullPath, bool bWithProperties);

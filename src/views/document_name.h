#pragma once
// What the bar calls a drawing: its document's path name, or for a drawing that was never saved
// (and so has no path name) the file name the host gave it.

#include <string>

struct HostDocument;

// The path name, or the host's file name when the path name is empty.
std::wstring DocumentPath(HostDocument* doc);
// The whole path with `bFullPath`, else the file's title (no folder, no extension).
std::wstring GetDocumentName(HostDocument* doc, bool bFullPath);

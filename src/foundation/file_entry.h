#pragma once
// One file to open: a path and whether to open it read-only. Work sets, sheet sets, the recent
// drawings and the reference rows all hand files to the opener in this form.

#include <string>

#include "foundation/file_path.h"

class TrFileEntry : public CFilePath {
public:
    using CFilePath::CFilePath;
    bool m_bReadOnly = false;
};

// The "path,flag" text form. The last comma-separated piece is the flag (read-only only when it
// reads exactly 1) and is taken off the path even when it is no flag: a path holding a comma
// loses what stands behind its last comma. The work set files rely on this form as it is.
TrFileEntry ParseFileEntry(const std::wstring& text);

#pragma once
// The table of DWG version strings: the text a user reads and the code the program tests.
// Nothing newer than "AC1021" is known: such files have the text "Unknown" and the code 0.

#include <string>

int GetDwgVersionCode(const char* str);
std::wstring GetDwgVersionText(const char* str);

// The same for the first 7 bytes of a file; the code is 0 and the text is left as it was when
// the file can't be opened.
int GetFileDwgVersionCode(const std::wstring& path);
bool GetFileDwgVersionText(const std::wstring& path, std::wstring& text);

// The version string at the start of a file's first 7 bytes (up to the first NUL).
std::string DwgVersionString(const char (&head)[7]);

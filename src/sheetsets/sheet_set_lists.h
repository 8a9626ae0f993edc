#pragma once
// The two lists of sheet sets the menu offers: those the host's manager opened recently, as its
// profile file records them, and the ".dst" files of the search folder.

#include <string>
#include <vector>

// The host's recent list in its profile file "Support\Profiles\FixedProfile.aws" below the
// host's roaming folder, in file order. Nothing when there is no folder or file, or when an
// element on the way is missing.
std::vector<std::wstring> ReadRecentSheetSets(const std::wstring& roamingFolder);
// The same from the file's text.
std::vector<std::wstring> RecentSheetSetsFromXml(const std::wstring& text);

// The ".dst" files directly in `folder`, with their full paths, in the folder walk's order.
std::vector<std::wstring> FindSheetSets(const std::wstring& folder);

#pragma once
// The summary properties a drawing carries in its database (the host's drawing properties):
// a fixed set of texts and a list of custom ones, read whole.

#include <string>
#include <utility>
#include <vector>

struct HostDatabase;

struct DrawingSummary {
    std::wstring author;
    std::wstring title;
    std::wstring subject;
    std::wstring keywords;
    std::wstring comments;
    std::wstring lastSavedBy;
    std::wstring revisionNumber;
    std::wstring hyperlinkBase;
    std::vector<std::pair<std::wstring, std::wstring>> custom;  // key and value, in order
};

class DrawingSummaries {
public:
    virtual ~DrawingSummaries() = default;
    // False when the database has no summary record to give.
    virtual bool Read(HostDatabase* db, DrawingSummary& summary) = 0;
};

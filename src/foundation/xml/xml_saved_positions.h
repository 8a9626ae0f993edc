#pragma once
// Named positions of an XML document: the parent, current and child indexes stored under a name,
// kept in seven buckets chosen by the sum of the name's code units.

#include <array>
#include <string>
#include <string_view>
#include <vector>

struct XmlPosition {
    int parent = 0;
    int current = 0;
    int child = 0;
};

class XmlSavedPositions {
public:
    static constexpr int kBuckets = 7;

    // Stores `position` under `name` (compared case-sensitively), replacing what was there.
    void Mark(std::wstring_view name, const XmlPosition& position);
    // The position stored under `name`, or false when there is none.
    bool Find(std::wstring_view name, XmlPosition& position) const;

    // Capacity of the bucket that `name` falls into (for tests of the growth rule).
    std::size_t BucketCapacity(std::wstring_view name) const;
    static int BucketOf(std::wstring_view name);

private:
    enum : unsigned { kCurrent = 1, kChild = 2, kUsed = 4, kLast = 8 };
    struct Entry {
        std::wstring name;
        int index = 0;
        unsigned flags = 0;
    };
    using Bucket = std::vector<Entry>;

    static void Store(Bucket& bucket, std::wstring_view name, int index, unsigned flags);
    static Bucket NewBucket(std::size_t entries);

    std::array<Bucket, kBuckets> m_buckets;
};

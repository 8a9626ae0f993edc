#include "foundation/xml/xml_saved_positions.h"

namespace {

constexpr std::size_t kFirstBucketSize = 2;

}  // namespace

int XmlSavedPositions::BucketOf(std::wstring_view name) {
    unsigned long long sum = 0;
    for (const wchar_t c : name)
        sum += static_cast<unsigned>(c);
    return static_cast<int>(sum % kBuckets);
}

XmlSavedPositions::Bucket XmlSavedPositions::NewBucket(std::size_t entries) {
    Bucket bucket(entries);
    bucket.back().flags = kLast;
    return bucket;
}

std::size_t XmlSavedPositions::BucketCapacity(std::wstring_view name) const {
    return m_buckets[BucketOf(name)].size();
}

void XmlSavedPositions::Mark(std::wstring_view name, const XmlPosition& position) {
    Bucket& bucket = m_buckets[BucketOf(name)];
    for (Entry& entry : bucket) {
        if ((entry.flags & kUsed) && entry.name == name) {
            entry.flags &= kLast;
            entry.name.clear();
        }
    }
    Store(bucket, name, position.parent, 0);
    Store(bucket, name, position.current, kCurrent);
    Store(bucket, name, position.child, kChild);
}

void XmlSavedPositions::Store(Bucket& bucket, std::wstring_view name, int index, unsigned flags) {
    if (bucket.empty())
        bucket = NewBucket(kFirstBucketSize);
    Entry* slot = nullptr;
    for (Entry& entry : bucket) {
        if (!(entry.flags & kUsed)) {
            slot = &entry;
            break;
        }
    }
    if (slot == nullptr) {
        // A full bucket is replaced by one of twice its used entries plus twelve.
        Bucket larger = NewBucket(bucket.size() * 2 + 12);
        std::size_t used = 0;
        for (Entry& entry : bucket) {
            larger[used].name = std::move(entry.name);
            larger[used].index = entry.index;
            larger[used].flags = (entry.flags & ~kLast) | (larger[used].flags & kLast);
            ++used;
        }
        bucket = std::move(larger);
        slot = &bucket[used];
    }
    slot->name.assign(name);
    slot->index = index;
    slot->flags = (slot->flags & kLast) | kUsed | flags;
}

bool XmlSavedPositions::Find(std::wstring_view name, XmlPosition& position) const {
    XmlPosition found;
    bool any = false;
    for (const Entry& entry : m_buckets[BucketOf(name)]) {
        if (!(entry.flags & kUsed) || entry.name != name)
            continue;
        any = true;
        if (entry.flags & kCurrent)
            found.current = entry.index;
        else if (entry.flags & kChild)
            found.child = entry.index;
        else
            found.parent = entry.index;
    }
    if (any)
        position = found;
    return any;
}

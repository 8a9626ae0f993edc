#pragma once
// The holder of an automation document: a call through automation hands its caller one
// reference, and the holder is where it is given back.

#include <type_traits>
#include <utility>

struct HostAutoDocument;

// One reference to a drawing's automation document, given back however the scope ends.
class AutoDocumentPtr {
public:
    AutoDocumentPtr() = default;
    explicit AutoDocumentPtr(HostAutoDocument* doc) : m_pDoc(doc) {}
    ~AutoDocumentPtr() { Reset(); }
    AutoDocumentPtr(AutoDocumentPtr&& other) noexcept
        : m_pDoc(std::exchange(other.m_pDoc, nullptr)) {}
    AutoDocumentPtr& operator=(AutoDocumentPtr&& other) noexcept;
    HostAutoDocument* Get() const { return m_pDoc; }
    void Reset();

private:
    HostAutoDocument* m_pDoc = nullptr;  // owns one reference
};
static_assert(!std::is_copy_constructible_v<AutoDocumentPtr>, "one owner per reference");

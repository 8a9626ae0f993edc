#pragma once
// One reference to a host automation object (a document, a view, a viewport), released however
// the scope ends. A call through automation hands its caller one reference; the holder is where
// it is given back.

#include <type_traits>
#include <utility>

#include "ports/host_automation.h"
#include "ports/port.h"

template <class Object>
class AutoRef {
public:
    AutoRef() = default;
    explicit AutoRef(Object* object) : m_pObj(object) {}
    ~AutoRef() { Reset(); }
    AutoRef(AutoRef&& other) noexcept : m_pObj(std::exchange(other.m_pObj, nullptr)) {}
    AutoRef& operator=(AutoRef&& other) noexcept {
        if (this != &other) {
            Reset();
            m_pObj = std::exchange(other.m_pObj, nullptr);
        }
        return *this;
    }
    Object* Get() const { return m_pObj; }
    void Reset() {
        if (m_pObj != nullptr)
            Use<HostAutomation>().Release(std::exchange(m_pObj, nullptr));
    }

private:
    Object* m_pObj = nullptr;  // owns one reference, or null
};

using AutoDocumentPtr = AutoRef<HostAutoDocument>;
static_assert(!std::is_copy_constructible_v<AutoDocumentPtr>, "one owner per reference");

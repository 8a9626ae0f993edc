#pragma once
// One reference to a host automation object (a document, a view, a viewport), released however
// the scope ends.

#include "ports/host_automation.h"
#include "ports/port.h"

template <class Object>
class AutoRef {
public:
    explicit AutoRef(Object* object) : m_pObj(object) {}
    ~AutoRef() {
        if (m_pObj != nullptr)
            Use<HostAutomation>().Release(m_pObj);
    }
    AutoRef(const AutoRef&) = delete;
    AutoRef& operator=(const AutoRef&) = delete;
    Object* Get() const { return m_pObj; }

private:
    Object* m_pObj;  // owns one reference, or null
};

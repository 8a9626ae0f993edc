#include "bar/auto_document_ptr.h"

#include "ports/host_automation.h"
#include "ports/port.h"

AutoDocumentPtr& AutoDocumentPtr::operator=(AutoDocumentPtr&& other) noexcept {
    if (this != &other) {
        Reset();
        m_pDoc = std::exchange(other.m_pDoc, nullptr);
    }
    return *this;
}

void AutoDocumentPtr::Reset() {
    if (m_pDoc != nullptr)
        Use<HostAutomation>().Release(std::exchange(m_pDoc, nullptr));
}

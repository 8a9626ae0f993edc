#pragma once
// Where the core finds the adapters behind its ports.
//
// The platform layer installs one object per port when the module loads (and tests install
// theirs for the length of a test); the core asks for it with Use<Port>(). This is the one
// process-wide state of the core besides what the system itself names as global.

#include <stdexcept>
#include <string>
#include <typeinfo>

template <class Port>
struct PortSlot {
    static inline Port* installed = nullptr;
};

template <class Port>
Port& Use() {
    Port* port = PortSlot<Port>::installed;
    if (port == nullptr) {
        throw std::logic_error(std::string("no adapter installed for port ") + typeid(Port).name());
    }
    return *port;
}

template <class Port>
bool IsInstalled() {
    return PortSlot<Port>::installed != nullptr;
}

// Installs `port` for the lifetime of this object and puts back what was there before.
template <class Port>
class ScopedPort {
public:
    explicit ScopedPort(Port& port) : m_pPrevious(PortSlot<Port>::installed) {
        PortSlot<Port>::installed = &port;
    }
    ~ScopedPort() { PortSlot<Port>::installed = m_pPrevious; }
    ScopedPort(const ScopedPort&) = delete;
    ScopedPort& operator=(const ScopedPort&) = delete;

private:
    Port* m_pPrevious;  // not owned
};

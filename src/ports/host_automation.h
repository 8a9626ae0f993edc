#pragma once
// The host's automation application object. A failed call throws ComError.

struct HostApplication;

class HostAutomation {
public:
    virtual ~HostAutomation() = default;
    // The application object with one reference held for the caller; throws ComError, with
    // hr::kNoInterface when the host offers none.
    virtual HostApplication* QueryApplication() = 0;
    virtual void Release(HostApplication* app) = 0;
};

#pragma once
// Brings the host's document events to the bar's two lists, and takes the bar's room away when
// a close leaves the one drawing that HideOnSingle hides it for.

#include <string>

#include "ports/host_reactors.h"

class HvTabrow;

class HvTrDocManagerReactor : public DocManagerReactor {
public:
    // Attaches to the host's document manager when there is one.
    explicit HvTrDocManagerReactor(HvTabrow* pTabrow);
    ~HvTrDocManagerReactor() override;
    HvTrDocManagerReactor(const HvTrDocManagerReactor&) = delete;
    HvTrDocManagerReactor& operator=(const HvTrDocManagerReactor&) = delete;

    void documentCreated(HostDocument* doc) override;
    void documentToBeDestroyed(HostDocument* doc) override;
    void documentDestroyed(const std::wstring& fileName) override;
    void documentActivated(HostDocument* doc) override;

    HvTabrow* m_pTabrow = nullptr;  // not owned: the bar owns this reactor

private:
    bool m_bAttached = false;
};

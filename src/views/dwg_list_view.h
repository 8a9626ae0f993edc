#pragma once
// What the bar asks of each of its two views of the open drawings. Both hear every document
// event, whichever of them shows, so that a change of view needs no rebuild.

#include <functional>
#include <string>

struct HostDocument;

class DwgListView {
public:
    virtual ~DwgListView() = default;
    virtual void AddDocument(HostDocument* doc) = 0;
    virtual void RemoveDocument(HostDocument* doc) = 0;
    virtual void SetActive(HostDocument* doc) = 0;
    // A save gave the drawing a new name.
    virtual void SetDocumentPath(HostDocument* doc, const std::wstring& path) = 0;
    virtual void SetDocumentModified(HostDocument* doc, bool bModified) = 0;
    // After a change of the sort order.
    virtual void Rebuild() = 0;

    // A double click on the view goes to the bar with the keys held (mk:: flags); the view's
    // own default handling runs after it.
    std::function<void(unsigned keys)> m_onDoubleClick;

protected:
    void ForwardDoubleClick(unsigned keys) {
        if (m_onDoubleClick)
            m_onDoubleClick(keys);
    }
};

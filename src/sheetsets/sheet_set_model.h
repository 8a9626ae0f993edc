#pragma once
// A read-only picture of one sheet set, as the host's sheet set manager holds it: the sheet set,
// its subsets (one level), its sheets and its resource folders. Every object copies what it reads
// when it is made, so the tree can be walked without further calls, and keeps its own reference
// to the host's object, given back when it goes. Each constructor takes over the reference it
// is given; one that fails throws ComError and leaves nothing behind.

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ports/sheet_sets.h"

// One reference to a sheet set object of the host, released however the scope ends.
class SmRef {
public:
    SmRef() = default;
    explicit SmRef(HostSmObject* object) : m_pObj(object) {}
    ~SmRef() { Reset(); }
    SmRef(const SmRef&) = delete;
    SmRef& operator=(const SmRef&) = delete;
    SmRef(SmRef&& other) noexcept : m_pObj(std::exchange(other.m_pObj, nullptr)) {}
    SmRef& operator=(SmRef&& other) noexcept;
    HostSmObject* Get() const { return m_pObj; }
    void Reset();

private:
    HostSmObject* m_pObj = nullptr;  // owns one reference, or null
};

class CAcSmFileReference {
public:
    explicit CAcSmFileReference(SmRef object);
    virtual ~CAcSmFileReference() = default;

    SmRef m_spFileReference;
    std::wstring m_strFileName;  // a resource's folder
};

class CAcSmAcDbLayoutReference {
public:
    explicit CAcSmAcDbLayoutReference(SmRef object);
    virtual ~CAcSmAcDbLayoutReference() = default;

    SmRef m_spLayoutReference;
    std::wstring m_strFileName;  // the drawing that holds the layout
};

class CAcSmResources {
public:
    explicit CAcSmResources(SmRef object);
    virtual ~CAcSmResources() = default;

    SmRef m_spResources;
    std::vector<std::unique_ptr<CAcSmFileReference>> m_fileReferences;
};

class CAcSmSheet {
public:
    // A null sheet throws ComError (hr::kPointer).
    explicit CAcSmSheet(SmRef sheet);
    virtual ~CAcSmSheet() = default;

    SmRef m_spSheet;
    CAcSmAcDbLayoutReference m_layout;  // its file is what opening the sheet opens
    std::wstring m_strName;
    std::wstring m_strNumber;
    std::wstring m_strTitle;
    std::wstring m_strDesc;
};

class CAcSmSubset {
public:
    explicit CAcSmSubset(SmRef object);
    virtual ~CAcSmSubset() = default;

    SmRef m_spSubset;
    std::vector<std::unique_ptr<CAcSmSheet>> m_sheets;
    std::wstring m_strDesc;
    std::wstring m_strName;
};

class CAcSmSheetSet {
public:
    explicit CAcSmSheetSet(SmRef object);
    virtual ~CAcSmSheetSet() = default;

    // Its own sheets and those of its subsets.
    std::size_t SheetCount() const;

    SmRef m_spSheetSet;
    std::unique_ptr<CAcSmResources> m_resources;
    std::vector<std::unique_ptr<CAcSmSubset>> m_subsets;
    std::vector<std::unique_ptr<CAcSmSheet>> m_sheets;
    std::wstring m_strName;
};

// Opens the file's database through the manager, reads its sheet set and releases the
// database. Throws ComError as the manager does; a null manager is hr::kPointer.
std::unique_ptr<CAcSmSheetSet> LoadSheetSet(HostSheetSetManager* manager, const std::wstring& path);

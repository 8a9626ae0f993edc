#pragma once
// The host's sheet set manager: opens a sheet set file (".dst") and reads its tree of subsets,
// sheets and resource folders. Every object comes with one reference held for the caller, who
// gives it back with Release. A failed call throws ComError.

#include <string>

#include "ports/com_error.h"

struct HostSheetSetManager;  // the manager object, made through HostAutomation
struct HostSmObject;         // a database, sheet set, subset, sheet, enumerator or reference

// The type names a component reports.
inline constexpr wchar_t kSmSubsetType[] = L"AcSmSubset";
inline constexpr wchar_t kSmSheetType[] = L"AcSmSheet";

class SheetSets {
public:
    virtual ~SheetSets() = default;

    // The file's database, kept open until released.
    virtual HostSmObject* OpenDatabase(HostSheetSetManager* manager, const std::wstring& path,
                                       bool failIfAlreadyOpen) = 0;
    virtual HostSmObject* GetSheetSet(HostSmObject* database) = 0;

    // The components directly under a sheet set or a subset, in the host's order; Next gives
    // null after the last. Next also walks the file references of a resource enumerator.
    virtual HostSmObject* GetSheetEnumerator(HostSmObject* container) = 0;
    virtual HostSmObject* Next(HostSmObject* enumerator) = 0;
    // kSmSubsetType, kSmSheetType or another host type; throws ComError with hr::kNoInterface
    // for a component that has no common component interface.
    virtual std::wstring GetTypeName(HostSmObject* component) = 0;
    // The component as a sheet or a subset, or null when it is none.
    virtual HostSmObject* QuerySheet(HostSmObject* component) = 0;
    virtual HostSmObject* QuerySubset(HostSmObject* component) = 0;

    virtual std::wstring GetName(HostSmObject* component) = 0;
    virtual void SetName(HostSmObject* component, const std::wstring& name) = 0;
    virtual std::wstring GetDesc(HostSmObject* component) = 0;
    virtual std::wstring GetNumber(HostSmObject* sheet) = 0;
    virtual std::wstring GetTitle(HostSmObject* sheet) = 0;
    // The sheet's layout reference; its file name is the drawing that holds the layout.
    virtual HostSmObject* GetLayout(HostSmObject* sheet) = 0;
    virtual HostSmObject* GetSheetViews(HostSmObject* sheet) = 0;

    virtual HostSmObject* GetResources(HostSmObject* sheetSet) = 0;
    virtual HostSmObject* GetResourceEnumerator(HostSmObject* resources) = 0;
    // A layout's drawing or a resource's folder.
    virtual std::wstring GetFileName(HostSmObject* reference) = 0;

    virtual void Release(HostSmObject* object) = 0;
};

#include "sheetsets/sheet_set_model.h"

#include <optional>

#include "ports/port.h"

SmRef& SmRef::operator=(SmRef&& other) noexcept {
    if (this != &other) {
        Reset();
        m_pObj = std::exchange(other.m_pObj, nullptr);
    }
    return *this;
}

void SmRef::Reset() {
    if (m_pObj != nullptr)
        Use<SheetSets>().Release(std::exchange(m_pObj, nullptr));
}

namespace {

// Each object the enumerator gives, in the host's order, with its reference.
template <class Visit>
void ForEachComponent(HostSmObject* enumerator, Visit visit) {
    SmRef walk(enumerator);
    while (HostSmObject* next = Use<SheetSets>().Next(walk.Get()))
        visit(SmRef(next));
}

// A component asked for an interface it lacks comes back null; using it is the host's
// "invalid pointer".
SmRef Required(SmRef object) {
    if (object.Get() == nullptr)
        throw ComError(hr::kPointer, L"Invalid pointer");
    return object;
}

// The component's type, or nothing for one without the common component interface, which is
// passed over.
std::optional<std::wstring> TypeName(HostSmObject* component) {
    try {
        return Use<SheetSets>().GetTypeName(component);
    } catch (const ComError& e) {
        if (e.Error() != hr::kNoInterface)
            throw;
        return std::nullopt;
    }
}

}  // namespace

CAcSmFileReference::CAcSmFileReference(SmRef object)
    : m_spFileReference(std::move(object)),
      m_strFileName(Use<SheetSets>().GetFileName(m_spFileReference.Get())) {}

CAcSmAcDbLayoutReference::CAcSmAcDbLayoutReference(SmRef object)
    : m_spLayoutReference(std::move(object)),
      m_strFileName(Use<SheetSets>().GetFileName(m_spLayoutReference.Get())) {}

CAcSmResources::CAcSmResources(SmRef object) : m_spResources(Required(std::move(object))) {
    SheetSets& sets = Use<SheetSets>();
    ForEachComponent(sets.GetResourceEnumerator(m_spResources.Get()), [this](SmRef reference) {
        m_fileReferences.push_back(std::make_unique<CAcSmFileReference>(std::move(reference)));
    });
}

CAcSmSheet::CAcSmSheet(SmRef sheet)
    : m_spSheet(Required(std::move(sheet))),
      m_layout(SmRef(Use<SheetSets>().GetLayout(m_spSheet.Get()))),
      m_strName(Use<SheetSets>().GetName(m_spSheet.Get())),
      m_strNumber(Use<SheetSets>().GetNumber(m_spSheet.Get())),
      m_strTitle(Use<SheetSets>().GetTitle(m_spSheet.Get())),
      m_strDesc(Use<SheetSets>().GetDesc(m_spSheet.Get())) {
    // Read as the host's own tools read a sheet; the views themselves are not kept.
    SmRef views(Use<SheetSets>().GetSheetViews(m_spSheet.Get()));
}

CAcSmSubset::CAcSmSubset(SmRef object)
    : m_spSubset(Required(std::move(object))),
      m_strDesc(Use<SheetSets>().GetDesc(m_spSubset.Get())),
      m_strName(Use<SheetSets>().GetName(m_spSubset.Get())) {
    // Every component is taken for a sheet: a subset inside a subset gives no sheet and fails
    // the whole sheet set. Only one level of subsets is read, on purpose.
    SheetSets& sets = Use<SheetSets>();
    ForEachComponent(sets.GetSheetEnumerator(m_spSubset.Get()), [this, &sets](SmRef component) {
        m_sheets.push_back(std::make_unique<CAcSmSheet>(SmRef(sets.QuerySheet(component.Get()))));
    });
}

CAcSmSheetSet::CAcSmSheetSet(SmRef object)
    : m_spSheetSet(Required(std::move(object))),
      m_strName(Use<SheetSets>().GetName(m_spSheetSet.Get())) {
    SheetSets& sets = Use<SheetSets>();
    ForEachComponent(sets.GetSheetEnumerator(m_spSheetSet.Get()), [this, &sets](SmRef component) {
        const std::optional<std::wstring> type = TypeName(component.Get());
        if (type == kSmSubsetType)
            m_subsets.push_back(
                std::make_unique<CAcSmSubset>(SmRef(sets.QuerySubset(component.Get()))));
        else if (type == kSmSheetType)
            m_sheets.push_back(
                std::make_unique<CAcSmSheet>(SmRef(sets.QuerySheet(component.Get()))));
    });
    m_resources = std::make_unique<CAcSmResources>(SmRef(sets.GetResources(m_spSheetSet.Get())));
}

std::size_t CAcSmSheetSet::SheetCount() const {
    std::size_t count = m_sheets.size();
    for (const auto& subset : m_subsets)
        count += subset->m_sheets.size();
    return count;
}

std::unique_ptr<CAcSmSheetSet> LoadSheetSet(HostSheetSetManager* manager,
                                            const std::wstring& path) {
    if (manager == nullptr)
        throw ComError(hr::kPointer, L"Invalid pointer");
    SheetSets& sets = Use<SheetSets>();
    // The database stays open while the model is read; the model's objects keep their own
    // references after it closes.
    SmRef database(sets.OpenDatabase(manager, path, false));
    return std::make_unique<CAcSmSheetSet>(SmRef(sets.GetSheetSet(database.Get())));
}

#pragma once
// The host's sheet set manager, simulated: it opens sheet set files that tests write in a small
// text form of their own, hands out a reference for every object it gives, and insists that
// each is released once. The sheet selection dialog is answered from a queue.
//
// The file, one item a line (blank lines and lines starting with "#" are skipped):
//   name <sheet set name>
//   sheet <name>|<number>|<title>|<description>|<drawing>
//   subset <name>|<description>      the items up to its "end" are its own
//   end
//   resource <folder>
//   component <type name>            a component of another kind, passed over by its readers
//   opaque                           a component without the common component interface
// Any other line makes the file unreadable, and opening it fails as a damaged file does.

#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ports/com_error.h"
#include "ports/sheet_selection.h"
#include "ports/sheet_sets.h"

// The calls that a test can make fail one at a time.
enum class SimSheetSetCall {
    OpenDatabase,
    GetSheetSet,
    GetSheetEnumerator,
    Next,
    GetTypeName,
    GetName,
    GetDesc,
    GetNumber,
    GetTitle,
    GetLayout,
    GetSheetViews,
    GetResources,
    GetFileName,
};

class SimSheetSets : public SheetSets, public SheetSelectionDialog {
public:
    // `managers` counts the manager objects the host made and has not yet released.
    explicit SimSheetSets(const int& managers) : m_managers(managers) {}
    ~SimSheetSets() override;
    SimSheetSets(const SimSheetSets&) = delete;
    SimSheetSets& operator=(const SimSheetSets&) = delete;

    // Only the next call of this kind throws.
    void FailCall(SimSheetSetCall call, HRESULT code, const std::wstring& description);
    // References handed out and not yet released.
    std::size_t OpenReferences() const { return m_objects.size(); }
    // The files whose databases were opened, in order.
    const std::vector<std::wstring>& Opened() const { return m_opened; }

    // The sheet selection: the ticks of the next runs (places in what is offered), nothing for
    // Cancel; an empty queue is Cancel. Each run's offer is kept.
    void QueueTicks(std::optional<std::vector<std::size_t>> ticks) {
        m_ticks.push_back(std::move(ticks));
    }
    const std::vector<std::vector<std::wstring>>& Offers() const { return m_offers; }

    // The command line's -OPENSHEETSET "<path>": the manager's palette shows the sheet set.
    // False for any other line.
    bool OpenInManager(const std::wstring& line);
    const std::vector<std::wstring>& InManager() const { return m_inManager; }

    // --- SheetSets ---
    HostSmObject* OpenDatabase(HostSheetSetManager* manager, const std::wstring& path,
                               bool failIfAlreadyOpen) override;
    HostSmObject* GetSheetSet(HostSmObject* database) override;
    HostSmObject* GetSheetEnumerator(HostSmObject* container) override;
    HostSmObject* Next(HostSmObject* enumerator) override;
    std::wstring GetTypeName(HostSmObject* component) override;
    HostSmObject* QuerySheet(HostSmObject* component) override;
    HostSmObject* QuerySubset(HostSmObject* component) override;
    std::wstring GetName(HostSmObject* component) override;
    void SetName(HostSmObject* component, const std::wstring& name) override;
    std::wstring GetDesc(HostSmObject* component) override;
    std::wstring GetNumber(HostSmObject* sheet) override;
    std::wstring GetTitle(HostSmObject* sheet) override;
    HostSmObject* GetLayout(HostSmObject* sheet) override;
    HostSmObject* GetSheetViews(HostSmObject* sheet) override;
    HostSmObject* GetResources(HostSmObject* sheetSet) override;
    HostSmObject* GetResourceEnumerator(HostSmObject* resources) override;
    std::wstring GetFileName(HostSmObject* reference) override;
    void Release(HostSmObject* object) override;

    // --- SheetSelectionDialog ---
    std::optional<std::vector<std::size_t>> Run(HostWindow* parent, const std::wstring& title,
                                                const std::vector<std::wstring>& offered) override;

    enum class Kind {
        Database,
        SheetSet,
        Subset,
        Sheet,
        Other,
        Opaque,
        Enumerator,
        Resources,
        Reference,
        Views
    };
    struct Node {
        Kind kind = Kind::Other;
        std::wstring name, number, title, desc, file, type;
        std::vector<std::shared_ptr<Node>> children;
        std::vector<std::wstring> resources;  // a sheet set's folders
    };

private:
    struct Object {
        Kind kind;
        std::shared_ptr<Node> node;
        std::wstring path;                         // a database's file
        std::vector<std::shared_ptr<Node>> items;  // an enumerator's
        std::size_t next = 0;
    };
    void Check(SimSheetSetCall call);
    Object& Live(HostSmObject* object, std::initializer_list<Kind> kinds);
    HostSmObject* Hand(Object object);

    const int& m_managers;
    std::map<HostSmObject*, std::unique_ptr<Object>> m_objects;
    std::map<SimSheetSetCall, ComError> m_failures;
    std::vector<std::wstring> m_opened;
    std::deque<std::optional<std::vector<std::size_t>>> m_ticks;
    std::vector<std::vector<std::wstring>> m_offers;
    std::vector<std::wstring> m_inManager;
};

#pragma once
// The host's automation application object. A failed call throws ComError.

#include <string>

struct HostApplication;
struct HostDatabase;
struct HostAutoDocument;     // a drawing's automation document
struct HostSheetSetManager;  // the host's sheet set manager object
struct HostAutoView;         // a named view of a document's Views collection
struct HostAutoViewport;     // a document's active viewport or paper space viewport

// What a view takes over from a viewport, property by property. Points use x, y and z; a
// height or a width is x alone.
enum class ViewProperty { Center, Direction, Height, Target, Width };
struct ViewValue {
    double x = 0;
    double y = 0;
    double z = 0;
    friend bool operator==(const ViewValue&, const ViewValue&) = default;
};

// Document.ActiveSpace.
namespace space {
constexpr int kPaper = 0;
constexpr int kModel = 1;
}  // namespace space

class HostAutomation {
public:
    virtual ~HostAutomation() = default;
    // The application object with one reference held for the caller; throws ComError, with
    // hr::kNoInterface when the host offers none.
    virtual HostApplication* QueryApplication() = 0;
    virtual void Release(HostApplication* app) = 0;

    // Application.Documents.Count; throws ComError.
    virtual int DocumentCount(HostApplication* app) = 0;

    // The OLE link manager's way from a database to its document: false when the host has no
    // link manager. The document comes with one reference held, or null when the database's
    // object offers no document interface (E_NOINTERFACE); other failures throw ComError.
    virtual bool HasOleLinkManager() = 0;
    virtual HostAutoDocument* DocumentOfDatabase(HostDatabase* db) = 0;
    virtual void Release(HostAutoDocument* doc) = 0;
    // Document.GetVariable of an integer variable; throws ComError.
    virtual int GetIntVariable(HostAutoDocument* doc, const std::wstring& name) = 0;

    // A new sheet set manager object with one reference held; throws ComError when it cannot
    // be made (a host without sheet sets).
    virtual HostSheetSetManager* CreateSheetSetManager() = 0;
    virtual void Release(HostSheetSetManager* manager) = 0;

    // --- opening drawings: the Documents collection ---
    // Documents.Item by zero-based index, with one reference held; throws ComError.
    virtual HostAutoDocument* DocumentItem(HostApplication* app, int index) = 0;
    // Documents.Open(FileName, ReadOnly, Password left out): the opened drawing's document, with
    // one reference held. The host refuses a drawing of a newer release with a failure that is
    // no ComError.
    virtual HostAutoDocument* OpenDocument(HostApplication* app, const std::wstring& path,
                                           bool readOnly) = 0;
    // Documents.Add(template): a new drawing, "" for the host's default template; one reference
    // held.
    virtual HostAutoDocument* AddDocument(HostApplication* app, const std::wstring& templateName) = 0;
    virtual std::wstring FullName(HostAutoDocument* doc) = 0;
    virtual void Activate(HostAutoDocument* doc) = 0;

    // --- named views of a document ---
    // Views.Add: the view of that name, a new one with nothing set, with one reference held.
    virtual HostAutoView* AddView(HostAutoDocument* doc, const std::wstring& name) = 0;
    virtual void Release(HostAutoView* view) = 0;
    virtual int ActiveSpace(HostAutoDocument* doc) = 0;  // space::kModel or space::kPaper
    // ActivePViewport with `paper`, else ActiveViewport; one reference held.
    virtual HostAutoViewport* ActiveViewport(HostAutoDocument* doc, bool paper) = 0;
    virtual void Release(HostAutoViewport* viewport) = 0;
    virtual std::wstring ActiveLayoutName(HostAutoDocument* doc) = 0;  // ActiveLayout.Name
    virtual ViewValue GetViewport(HostAutoViewport* viewport, ViewProperty property) = 0;
    virtual void SetView(HostAutoView* view, ViewProperty property, const ViewValue& value) = 0;

    // --- going to a layout, a view or a layer state from the menu ---
    // Layouts.Item(name).Name: the layout's own name; a name the collection does not hold
    // throws ComError.
    virtual std::wstring LayoutName(HostAutoDocument* doc, const std::wstring& name) = 0;
    // ActiveLayout set to the layout of that name; throws ComError when there is none.
    virtual void SetActiveLayout(HostAutoDocument* doc, const std::wstring& name) = 0;
    virtual void SetActiveSpace(HostAutoDocument* doc, int activeSpace) = 0;
    // Views.Item(name) with one reference held; a name the collection does not hold throws.
    virtual HostAutoView* ViewItem(HostAutoDocument* doc, const std::wstring& name) = 0;
    virtual ViewValue GetView(HostAutoView* view, ViewProperty property) = 0;
    // Viewport.SetView: the viewport shows the view.
    virtual void SetViewportView(HostAutoViewport* viewport, HostAutoView* view) = 0;
    // ActiveViewport set to the viewport, which makes the change show.
    virtual void SetActiveViewport(HostAutoDocument* doc, HostAutoViewport* viewport) = 0;
    // Document.Regen(1): every viewport.
    virtual void RegenAll(HostAutoDocument* doc) = 0;
    // Application.ZoomWindow on the active drawing; z is the centre's.
    virtual void ZoomWindow(HostApplication* app, const ViewValue& lowerLeft,
                            const ViewValue& upperRight) = 0;
};

#pragma once
// The simulated host: documents and their databases, the command stack, system variables, the
// command line, the dynamic linker, the automation application object and message boxes, with
// the host's events fired in the host's order. Constructing a SimHost installs it (and its
// window system and the machine's key/value store) behind the core's ports; destroying it puts back
// what was there.
//
// A test drives it as a CAD user would: open drawings, type commands, save, close, quit.

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/sim/sim_database.h"
#include "platform/sim/sim_database_port.h"
#include "platform/sim/sim_popup_menus.h"
#include "platform/sim/sim_graphics.h"
#include "platform/sim/sim_registry.h"
#include "platform/sim/sim_shell.h"
#include "platform/sim/sim_sheet_sets.h"
#include "platform/sim/sim_shell_pictures.h"
#include "platform/sim/sim_system_look.h"
#include "platform/sim/sim_tab_control.h"
#include "platform/sim/sim_tool_tips.h"
#include "platform/sim/canvas/sim_theme.h"
#include "platform/sim/sim_window_system.h"
#include "ports/com_error.h"
#include "ports/folder_dialog.h"
#include "ports/document_automation.h"
#include "ports/host_automation.h"
#include "ports/host_documents.h"
#include "ports/host_reactors.h"
#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "ports/window_messages.h"

// Why a save of a drawing fails. A file that is read-only on the disk or locked by another
// user is reported by the save command on the command line, and the drawing stays modified; a
// refused save is the host rejecting the automation call that would start it.
enum class SimSaveFailure { None, ReadOnlyFile, LockedElsewhere, Refused };

struct SimDocument {
    std::wstring pathName;  // full path; a new drawing's is its bare name
    std::wstring title;
    bool readOnly = false;
    bool everSaved = false;
    // The host keeps two modified states that usually agree: DBMOD of the database and the
    // document object's own flag (IsModified). Edits set both; a test may set either alone.
    int dbmod = 0;
    bool docModified = false;
    std::unique_ptr<SimDatabase> database;
    HostWindow* view = nullptr;    // the drawing's view window in the MDI client
    std::vector<int> pushedDbmod;  // DBMOD values the host pushed, for popDbmod
    std::wstring templateName;     // what a new drawing was made from, "" for the default
    std::unique_ptr<WindowHandler> viewPainter;  // paints `view`
    // The viewports (CVPORT's numbers) that the graphics system draws: a shaded view.
    std::vector<int> gsViewports;
    // The visual style types of the current layout's viewports that have one.
    std::vector<int> viewportStyles;

    // --- saving and plotting ---
    SimSaveFailure saveFailure = SimSaveFailure::None;
    std::wstring plotDevice = L"Default Printer";  // empty: the device it names is missing
};

// A viewport as automation reads it: the model space one or the active paper space one.
struct SimViewport {
    ViewValue center;
    ViewValue direction{0, 0, 1};
    ViewValue height;
    ViewValue target;
    ViewValue width;
    std::wstring view = {};  // the named view it was last set to
};

// The automation calls that a test can make fail one at a time.
enum class SimAutomationCall {
    QueryApplication,
    DocumentCount,
    DocumentOfDatabase,
    GetVariable,
    CreateSheetSetManager,
    // Opening drawings and named views.
    DocumentItem,
    OpenDocument,
    AddDocument,
    FullName,
    Activate,
    AddView,
    ActiveSpace,
    ActiveViewport,
    ActiveLayoutName,
    GetViewport,
    SetView,
    // Going to a layout, a view or a layer state.
    Layouts,
    Views,
    Regen,
    ZoomWindow,
    // the batch commands' calls
    ActiveDocument,
    ReadOnly,
    SendCommand,
    Close,
    PlotToDevice,
};

// A drawing sent to its plot device, and BACKGROUNDPLOT as it stood while it plotted.
struct SimPlot {
    std::wstring title;
    std::wstring device;
    std::wstring backgroundPlot;
    friend bool operator==(const SimPlot&, const SimPlot&) = default;
};

struct SimMessageBox {
    std::wstring text;
    std::wstring caption;
    unsigned flags = 0;
};

class SimHost : public HostServices,
                public HostDocuments,
                public HostAutomation,
                public DocumentAutomation,
                public HostReactors,
                public MessageBoxes,
                public FolderDialog {
public:
    SimHost();
    ~SimHost() override;
    SimHost(const SimHost&) = delete;
    SimHost& operator=(const SimHost&) = delete;

    // --- the user's session ---
    HostDocument* OpenDrawing(const std::wstring& path, bool readOnly = false);
    HostDocument* NewDrawing();
    void Activate(HostDocument* doc);
    void Modify(HostDocument* doc);  // an edit: DBMOD gets its first bit, the document its flag
    // DBMOD and the document's flag apart, as the host can have them: a variable set from
    // LISP moves DBMOD alone, an undo to the saved state clears it while the flag stays.
    void SetDbmod(HostDocument* doc, int dbmod) { Document(doc).dbmod = dbmod; }
    void SetDocumentFlag(HostDocument* doc, bool modified) { Document(doc).docModified = modified; }
    // Types a command at the command line of the active document. Registered commands run
    // between commandWillStart and commandEnded with CMDNAMES set. The host's own: SAVE, QSAVE
    // and SAVEAS (a drawing never saved, and every SAVEAS, takes its name from the file dialog:
    // QueueFileName; an empty queue is the user cancelling the dialog, and the command with
    // it), CLOSE, APPLOAD (runs the loader a test set), and OPTIONS, CONFIG, PREFERENCES, LINE
    // and REGEN, which change nothing here. A leading "_" or "." is dropped from the name as
    // the host does. Returns false for an unknown name (reported on the command line).
    bool Type(const std::wstring& command);
    // The same command run in `doc` while another drawing stays the MDI-active one (a script
    // or another application driving that drawing): `doc` is the current document meanwhile.
    bool TypeIn(HostDocument* doc, const std::wstring& command);
    // The reactors hear a command's global name in capitals, whatever the user typed. With this
    // set they hear it in the case it was typed instead, so a test can show which comparisons
    // depend on the case.
    void ReportCommandsAsTyped(bool asTyped) { m_reportAsTyped = asTyped; }
    // The user starts a command and stays in it (at a prompt): the document is not quiescent
    // until CancelCommand (Escape: commandCancelled) or EndCommand (commandEnded).
    void StartCommand(const std::wstring& command);
    void CancelCommand();
    void EndCommand();
    // A LISP expression that runs `commands` inside, between lispWillStart and lispEnded, or
    // lispCancelled when `cancelled` (an error or Escape after the commands).
    void RunLisp(const std::wstring& expression, const std::vector<std::wstring>& commands,
                 bool cancelled = false);
    // The background save of the timer: saveComplete with the autosave file's name, announced
    // by no command; DBMOD stays as it is.
    void Autosave(HostDocument* doc);
    // What the next file dialog of a save is answered with.
    void QueueFileName(const std::wstring& path) { m_fileNames.push_back(path); }
    // The host begins to quit: applications are unloaded while its windows still stand. The
    // windows go when the test destroys the frame, as the host does last.
    void Quit() { m_quitting = true; }
    // One message of the main loop: every registered watcher sees it first, then the window.
    // The mouse of the window system (SimWindowSystem::Mouse) comes through the same loop.
    void PumpMessage(const HostMessage& message);

    // --- what a test sets up ---
    void SetBackgroundMode(bool on) { m_backgroundMode = on; }
    void SetHasAutomation(bool has) { m_hasAutomation = has; }
    // The next automation call (and every one after it until cleared) throws this.
    void FailAutomation(HRESULT code, const std::wstring& description);
    void ClearAutomationFailure() { m_automationFailure.reset(); }
    // Only the next call of this one kind throws; every other call goes through.
    void FailAutomationCall(SimAutomationCall call, HRESULT code, const std::wstring& description);
    void QueueAnswer(int answer) { m_answers.push_back(answer); }
    // What APPLOAD does when the user picks the module: the test's loader runs inside the command.
    void SetAppLoader(std::function<void()> loader) { m_appLoader = std::move(loader); }
    void SetMainExecutableYear(int year) { m_mainExecutableYear = year; }
    void SetModuleProductVersion(const std::wstring& text) { m_productVersion = text; }
    void SetCurrentColors(const HostDrawingColors& colors) { m_graphics.SetCurrentColors(colors); }
    // The database's object offers no automation document (E_NOINTERFACE from the query).
    void SetDocumentsHaveNoInterface(bool none) { m_documentsHaveNoInterface = none; }
    // The host without an editor object or a document manager: reactors cannot attach.
    void SetHasEditor(bool has) { m_hasEditor = has; }
    void SetHasDocManager(bool has) { m_hasDocManager = has; }

    // --- opening drawings, templates and views ---
    // The release the host reports and the newest drawing format it reads; Documents.Open
    // refuses a file whose head names a newer one.
    void SetRelease(const std::wstring& release, const std::string& newestFormat);
    // The host profile's template folder: TemplatePath below the profile's "General" key.
    void SetTemplatePath(const std::wstring& folder);
    // What the user types at the next string prompts; an empty queue is Escape.
    void QueueInput(const std::wstring& text) { m_inputs.push_back(text); }
    const std::vector<std::wstring>& Prompts() const { return m_prompts; }
    SimViewport& Viewport(HostDocument* doc, bool paper) { return m_viewports[{doc, paper}]; }
    // What automation set on a named view of the drawing, by property.
    std::map<ViewProperty, ViewValue> ViewValues(HostDocument* doc, const std::wstring& name) const;
    // A value of a named view of the drawing's view table, as automation reads it.
    void SetViewValue(HostDocument* doc, const std::wstring& name, ViewProperty property,
                      const ViewValue& value);
    SimShell& FileShell() { return m_shell; }
    // The host's roaming root folder, where its profile files live; none at first.
    void SetRoamableRootFolder(const std::wstring& folder) { m_roamingFolder = folder; }
    // The sheet set manager's databases and the sheet selection's answers.
    SimSheetSets& SheetSetManager() { return m_sheetSets; }
    // What the next folder chooser is answered with; nothing (or an empty queue) is Cancel.
    void QueueFolder(std::optional<std::wstring> folder) { m_folders.push_back(std::move(folder)); }
    // Title and starting folder of each chooser shown.
    const std::vector<std::pair<std::wstring, std::wstring>>& FolderChoosers() const {
        return m_folderChoosers;
    }

    // --- what a test looks at ---
    SimWindowSystem& Windows() { return m_windows; }
    SimDatabasePort& DatabasePort() { return m_databasePort; }
    SimGraphics& Graphics() { return m_graphics; }
    SimRegistry& Registry() { return m_registry; }
    SimTabControl& TabControl() { return m_tabControls; }
    SimPopupMenus& Menus() { return m_menus; }
    SimToolTips& ToolTipControls() { return m_toolTips; }
    SimShellPictures& ShellPictureMaker() { return m_shellPictures; }
    // The visual styles, on at start; a test turns them off as a user would.
    SimTheme& VisualStyles() { return m_theme; }
    SimDocument& Document(HostDocument* doc);
    SimDatabase& DatabaseOf(HostDocument* doc) { return *Document(doc).database; }
    const std::vector<std::wstring>& CommandLine() const { return m_lines; }
    std::wstring CommandLineText() const;
    const std::vector<SimMessageBox>& MessageBoxesShown() const { return m_boxes; }
    const std::vector<HostCommandRegistration>& Commands() const { return m_commands; }
    bool HasCommand(const std::wstring& name) const;
    bool IsMdiAware(HostAppPacket* pkt) const;
    bool IsUnlocked(HostAppPacket* pkt) const;
    int AutomationReferences() const { return m_automationRefs; }
    int SheetSetManagers() const { return m_sheetSetManagers; }
    int PromptsPosted() const { return m_promptsPosted; }
    const std::vector<HostMessageWatcher>& MessageWatchers() const { return m_watchers; }
    std::size_t ReactorCount() const { return m_editorReactors.size() + m_docReactors.size(); }
    // What escaped a reactor's callback: the host's dispatch catches it and goes on.
    const std::vector<std::string>& ReactorFailures() const { return m_reactorFailures; }

    // --- HostServices ---
    bool IsInBackgroundMode() override { return m_backgroundMode; }
    bool IsQuitting() override { return m_quitting; }
    std::optional<std::wstring> GetVariable(const std::wstring& name) override;
    bool SetVariable(const std::wstring& name, const std::wstring& value) override;
    void Print(const std::wstring& text) override;
    std::wstring ProductKey() override;
    // Below the product key, named by CPROFILE.
    std::wstring ProfileKey() override;
    std::wstring ModuleProductVersion() override { return m_productVersion; }
    std::wstring ComputerName() override { return L"SIMHOST"; }
    int MainExecutableYear() override { return m_mainExecutableYear; }
    bool AddCommand(const HostCommandRegistration& command) override;
    void RemoveGroup(const std::wstring& group) override;
    void PostCommandPrompt() override { ++m_promptsPosted; }
    HostWindow* ActiveDwgView() override;
    void RegisterMessageWatcher(HostMessageWatcher watcher) override;
    void RemoveMessageWatcher(HostMessageWatcher watcher) override;
    void RegisterAppMdiAware(HostAppPacket* pkt) override { m_mdiAware.push_back(pkt); }
    void UnlockApplication(HostAppPacket* pkt) override { m_unlocked.push_back(pkt); }
    std::wstring ReleaseName() override { return m_release; }
    std::wstring RoamableRootFolder() override { return m_roamingFolder; }
    std::optional<std::wstring> GetString(const std::wstring& prompt, bool allowSpaces) override;

    // --- HostDocuments ---
    HostDocument* MdiActiveDocument() override { return m_active; }
    HostDocument* CurDocument() override { return m_current; }
    std::vector<HostDocument*> Documents() override;
    HostDocument* DocumentOf(HostDatabase* db) override;
    void SetCurDocument(HostDocument* doc) override { Activate(doc); }
    void ActivateDocument(HostDocument* doc) override { Activate(doc); }
    std::wstring FileName(HostDocument* doc) override { return Document(doc).pathName; }
    std::wstring PathName(HostDocument* doc) override;
    bool IsQuiescent(HostDocument* doc) override;
    std::wstring Title(HostDocument* doc) override { return Document(doc).title; }
    bool IsReadOnly(HostDocument* doc) override { return Document(doc).readOnly; }
    bool IsModified(HostDocument* doc) override { return Document(doc).docModified; }
    HostDatabase* Database(HostDocument* doc) override { return Document(doc).database->Handle(); }
    void PopDbmod(HostDocument* doc) override;
    void AppContextNewDocument(const std::wstring& templateName) override;

    // --- HostAutomation ---
    HostApplication* QueryApplication() override;
    void Release(HostApplication* app) override;
    int DocumentCount(HostApplication* app) override;
    bool HasOleLinkManager() override { return m_hasAutomation; }
    HostAutoDocument* DocumentOfDatabase(HostDatabase* db) override;
    void Release(HostAutoDocument* doc) override;
    int GetIntVariable(HostAutoDocument* doc, const std::wstring& name) override;
    HostSheetSetManager* CreateSheetSetManager() override;
    void Release(HostSheetSetManager* manager) override;
    HostAutoDocument* DocumentItem(HostApplication* app, int index) override;
    HostAutoDocument* OpenDocument(HostApplication* app, const std::wstring& path,
                                   bool readOnly) override;
    HostAutoDocument* AddDocument(HostApplication* app, const std::wstring& templateName) override;
    std::wstring FullName(HostAutoDocument* doc) override;
    void Activate(HostAutoDocument* doc) override;
    HostAutoView* AddView(HostAutoDocument* doc, const std::wstring& name) override;
    void Release(HostAutoView* view) override;
    int ActiveSpace(HostAutoDocument* doc) override;
    HostAutoViewport* ActiveViewport(HostAutoDocument* doc, bool paper) override;
    void Release(HostAutoViewport* viewport) override;
    std::wstring ActiveLayoutName(HostAutoDocument* doc) override;
    ViewValue GetViewport(HostAutoViewport* viewport, ViewProperty property) override;
    void SetView(HostAutoView* view, ViewProperty property, const ViewValue& value) override;
    // (sim_host_navigation.cpp) Each change is written to AutomationLog() as well:
    // "ActiveLayout <name> <title>", "ActiveSpace <n> <title>", "SetView <view>",
    // "ActiveViewport <title>", "Regen <title>", "ZoomWindow <x1>,<y1> <x2>,<y2> <title>".
    std::wstring LayoutName(HostAutoDocument* doc, const std::wstring& name) override;
    void SetActiveLayout(HostAutoDocument* doc, const std::wstring& name) override;
    void SetActiveSpace(HostAutoDocument* doc, int activeSpace) override;
    HostAutoView* ViewItem(HostAutoDocument* doc, const std::wstring& name) override;
    ViewValue GetView(HostAutoView* view, ViewProperty property) override;
    void SetViewportView(HostAutoViewport* viewport, HostAutoView* view) override;
    void SetActiveViewport(HostAutoDocument* doc, HostAutoViewport* viewport) override;
    void RegenAll(HostAutoDocument* doc) override;
    void ZoomWindow(HostApplication* app, const ViewValue& lowerLeft,
                    const ViewValue& upperRight) override;

    // --- DocumentAutomation (sim_host_batch.cpp) ---
    // Every call is written to AutomationLog() as "Call" or "Call title": the order in which
    // the batch commands visit, activate, zoom, send, close and plot.
    const std::vector<std::wstring>& AutomationLog() const { return m_automationLog; }
    const std::vector<SimPlot>& Plots() const { return m_plots; }
    void SendModelessOperationStart(const std::wstring& name) override;
    void SendModelessOperationEnded(const std::wstring& name) override;
    HostAutoDocument* ActiveDocument(HostApplication* app) override;
    void ZoomExtents(HostApplication* app) override;
    void ZoomAll(HostApplication* app) override;
    void Quit(HostApplication* app) override;
    bool IsReadOnly(HostAutoDocument* doc) override;
    // Each complete line is typed in the drawing (PSPACE leaves a viewport: CVPORT 1); text
    // after the last "\n" waits for more input and does nothing.
    void SendCommand(HostAutoDocument* doc, const std::wstring& text) override;
    // A missing SaveChanges on a modified drawing asks "Save changes to <title>?" (Yes, No,
    // Cancel) as the host does; Yes saves, and a save that leaves the drawing modified or a
    // Cancel keeps it open and fails the call.
    void Close(HostAutoDocument* doc, std::optional<bool> saveChanges) override;
    void RefreshPlotDeviceInfo(HostAutoDocument* doc) override;
    bool PlotToDevice(HostAutoDocument* doc) override;

    // --- HostReactors: fired in the order they were added ---
    bool HasEditor() override { return m_hasEditor; }
    bool HasDocManager() override { return m_hasDocManager; }
    void AddEditorReactor(EditorReactor* reactor) override;
    void RemoveEditorReactor(EditorReactor* reactor) override;
    void AddDocManagerReactor(DocManagerReactor* reactor) override;
    void RemoveDocManagerReactor(DocManagerReactor* reactor) override;

    // --- MessageBoxes: answered from the queue, kIdOk when it is empty ---
    int Show(const std::wstring& text, const std::wstring& caption, unsigned flags) override;

    // --- FolderDialog: answered from its queue ---
    std::optional<std::wstring> Choose(void* parent, const std::wstring& title,
                                       const std::wstring& start, unsigned flags) override;

private:
    HostDocument* AddDocument(std::unique_ptr<SimDocument> doc);
    void CloseDocument(HostDocument* doc);
    void CheckAutomation(SimAutomationCall call);
    void SaveDocument(HostDocument* doc, const std::wstring& command);
    // The disk's answer to a save under the drawing's own name: false when it fails, after the
    // save command has said why on the command line.
    bool DiskTakesSave(const SimDocument& d, const std::wstring& path);
    HostDocument* Automated(HostAutoDocument* doc, SimAutomationCall call);
    HostAutoDocument* Referenced(HostDocument* doc);
    void Log(const std::wstring& call, HostDocument* doc = nullptr);
    void RunCommand(const std::wstring& name, const std::function<void()>& body);
    void FinishCommand(bool cancelled);
    static std::wstring GlobalName(const std::wstring& typed);
    std::wstring ReportedName(const std::wstring& typed) const;
    void Report(const char* what);
    // Each reactor in the order added; a reactor may remove itself, and what it throws ends at
    // the dispatch.
    template <class Reactor, class Fire>
    void FireAll(const std::vector<Reactor*>& list, Fire fire) {
        auto reactors = list;
        for (Reactor* r : reactors) {
            try {
                fire(*r);
            } catch (const std::exception& e) {
                Report(e.what());
            } catch (...) {
                Report("unknown exception");
            }
        }
    }
    template <class Fire>
    void FireEditor(Fire fire) {
        FireAll(m_editorReactors, fire);
    }
    template <class Fire>
    void FireDocs(Fire fire) {
        FireAll(m_docReactors, fire);
    }

    void RunWatchers(const HostMessage& message);

    SimWindowSystem m_windows;
    SimDatabasePort m_databasePort;
    SimRegistry m_registry;
    SimSystemLook m_look;
    SimTabControl m_tabControls{m_windows};
    SimPopupMenus m_menus{m_windows};
    SimToolTips m_toolTips{m_windows};
    SimShellPictures m_shellPictures;
    SimTheme m_theme;
    std::vector<std::unique_ptr<SimDocument>> m_documents;
    HostDocument* m_active = nullptr;   // the MDI-active document
    HostDocument* m_current = nullptr;  // the one commands and variables go to
    int m_newDrawings = 0;
    DbObjectId m_nextDatabaseBase = 1;
    std::map<std::wstring, std::wstring> m_variables;
    std::wstring m_partialLine;
    std::vector<std::wstring> m_lines;
    std::vector<HostCommandRegistration> m_commands;
    std::vector<HostAppPacket*> m_mdiAware;
    std::vector<HostAppPacket*> m_unlocked;
    std::vector<EditorReactor*> m_editorReactors;
    std::vector<DocManagerReactor*> m_docReactors;
    std::vector<std::string> m_reactorFailures;
    bool m_hasEditor = true;
    bool m_hasDocManager = true;
    std::deque<std::wstring> m_fileNames;
    std::wstring m_runningCommand;   // a command started and not yet over, its global name
    std::wstring m_reportedCommand;  // its name as the reactors hear it
    HostDocument* m_commandDocument = nullptr;
    std::function<void()> m_appLoader;
    std::deque<int> m_answers;
    std::vector<SimMessageBox> m_boxes;
    std::optional<ComError> m_automationFailure;
    std::map<SimAutomationCall, ComError> m_callFailures;
    bool m_reportAsTyped = false;
    bool m_hasAutomation = true;
    int m_automationRefs = 0;
    int m_sheetSetManagers = 0;
    int m_promptsPosted = 0;
    bool m_documentsHaveNoInterface = false;
    std::vector<HostMessageWatcher> m_watchers;
    bool m_backgroundMode = false;
    bool m_quitting = false;
    int m_mainExecutableYear = 2006;
    std::wstring m_productVersion = L"2, 0, 0, 97";
    // saving, closing and plotting
    std::vector<std::wstring> m_automationLog;
    std::vector<SimPlot> m_plots;

    // Opening drawings, templates and views.
    struct SimView {
        HostDocument* doc = nullptr;
        std::wstring name;
        std::map<ViewProperty, ViewValue> values;
    };
    HostDocument* AutoDocument(HostAutoDocument* doc);
    SimView& NamedView(HostDocument* doc, const std::wstring& name);
    void CheckApplication(HostApplication* app) const;
    HostDocument* NewDrawingFrom(const std::wstring& templateName);
    SimShell m_shell;
    std::wstring m_release = L"17.0s (LMS Tech)";
    std::string m_newestFormat = "AC1021";
    std::deque<std::wstring> m_inputs;
    std::vector<std::wstring> m_prompts;
    std::map<std::pair<HostDocument*, bool>, SimViewport> m_viewports;
    std::vector<std::unique_ptr<SimView>> m_views;
    std::deque<std::optional<std::wstring>> m_folders;
    std::vector<std::pair<std::wstring, std::wstring>> m_folderChoosers;

    ScopedPort<HostServices> m_servicesPort;
    ScopedPort<HostDocuments> m_documentsPort;
    ScopedPort<HostAutomation> m_automationPort;
    ScopedPort<DocumentAutomation> m_documentAutomationPort;
    ScopedPort<HostReactors> m_reactorsPort;
    ScopedPort<TabControls> m_tabControlsPort;
    ScopedPort<MessageBoxes> m_messageBoxPort;
    ScopedPort<WindowSystem> m_windowPort;
    ScopedPort<WindowProcedures> m_proceduresPort;
    ScopedPort<HostDatabasePort> m_databasePortSlot;
    ScopedPort<KeyValueStore> m_registryPort;
    ScopedPort<SystemLook> m_lookPort;
    ScopedPort<Shell> m_shellPort{m_shell};
    ScopedPort<PopupMenus> m_menusPort{m_menus};
    ScopedPort<FolderDialog> m_folderDialogPort{*this};
    ScopedPort<Theme> m_themePort;
    SimGraphics m_graphics{*this};
    ScopedPort<HostGraphics> m_graphicsPort{m_graphics};
    ScopedPort<ToolTips> m_toolTipsPort{m_toolTips};
    ScopedPort<DrawingSummaries> m_summariesPort{m_databasePort};
    ScopedPort<ShellPictures> m_shellPicturesPort{m_shellPictures};
    std::wstring m_roamingFolder;
    SimSheetSets m_sheetSets{m_sheetSetManagers};
    ScopedPort<SheetSets> m_sheetSetsPort{m_sheetSets};
    ScopedPort<SheetSelectionDialog> m_sheetSelectionPort{m_sheetSets};
    ScopedPort<ScrollBars> m_scrollBarsPort{m_windows};
};

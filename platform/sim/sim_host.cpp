#include "platform/sim/sim_host.h"

#include <algorithm>
#include <cwctype>
#include <stdexcept>

#include "foundation/no_case.h"
#include "platform/sim/sim_drawing_view.h"
#include "ports/file_system.h"

namespace {

std::wstring TitleOf(const std::wstring& path) {
    std::size_t cut = path.find_last_of(L"\\/");
    return cut == std::wstring::npos ? path : path.substr(cut + 1);
}

std::wstring Upper(std::wstring text) {
    for (wchar_t& c : text)
        c = static_cast<wchar_t>(std::towupper(c));
    return text;
}

// What a save's file dialog does when the user cancels it: the command is cancelled.
struct CommandCancelled {};

// Ids of different databases never meet: each database gets its own range.
constexpr DbObjectId kIdsPerDatabase = 1u << 24;

}  // namespace

SimHost::SimHost()
    : m_servicesPort(*this),
      m_documentsPort(*this),
      m_automationPort(*this),
      m_documentAutomationPort(*this),
      m_reactorsPort(*this),
      m_tabControlsPort(m_tabControls),
      m_messageBoxPort(*this),
      m_windowPort(m_windows),
      m_proceduresPort(m_windows),
      m_databasePortSlot(m_databasePort),
      m_registryPort(m_registry),
      m_lookPort(m_look),
      m_themePort(m_theme) {
    m_variables = {{L"CMDNAMES", L""},
                   {L"CVPORT", L"2"},
                   {L"CPROFILE", L"<<Unnamed Profile>>"},
                   {L"SSMAUTOOPEN", L"1"},
                   {L"BACKGROUNDPLOT", L"2"}};
    m_windows.SetMessageLoop([this](const HostMessage& message) { RunWatchers(message); });
}

SimHost::~SimHost() = default;

// --- the session ---

HostDocument* SimHost::AddDocument(std::unique_ptr<SimDocument> doc) {
    doc->database = std::make_unique<SimDatabase>(m_nextDatabaseBase);
    m_nextDatabaseBase += kIdsPerDatabase;
    m_databasePort.Register(doc->database.get());
    win::RECT client = m_windows.RectInParent(m_windows.MdiClient());
    doc->view = m_windows.CreateChild(m_windows.MdiClient(), L"AfxFrameOrView",
                                      win::RECT{0, 0, client.Width(), client.Height()},
                                      ws::kChild | ws::kVisible);
    doc->viewPainter = std::make_unique<SimDrawingView>(m_windows, doc->view, doc->title);
    m_windows.SetMessageHandler(doc->view, doc->viewPainter.get());
    auto* handle = reinterpret_cast<HostDocument*>(doc.get());
    const bool opened = doc->everSaved;
    const std::wstring path = doc->pathName;
    m_documents.push_back(std::move(doc));
    // The file is read before the document exists, as the host opens a drawing.
    if (opened)
        FireEditor([&](EditorReactor& r) { r.endDwgOpen(path); });
    FireDocs([&](DocManagerReactor& r) { r.documentCreated(handle); });
    Activate(handle);
    return handle;
}

HostDocument* SimHost::OpenDrawing(const std::wstring& path, bool readOnly) {
    auto doc = std::make_unique<SimDocument>();
    doc->pathName = path;
    doc->title = TitleOf(path);
    doc->readOnly = readOnly;
    doc->everSaved = true;
    return AddDocument(std::move(doc));
}

HostDocument* SimHost::NewDrawing() {
    auto doc = std::make_unique<SimDocument>();
    doc->pathName = L"Drawing" + std::to_wstring(++m_newDrawings) + L".dwg";
    doc->title = doc->pathName;
    return AddDocument(std::move(doc));
}

void SimHost::Activate(HostDocument* doc) {
    SimDocument& d = Document(doc);
    if (m_active == doc)
        return;
    m_active = doc;
    m_current = doc;
    m_windows.BringToTop(d.view);
    m_databasePort.SetWorkingDatabase(d.database.get());
    FireDocs([&](DocManagerReactor& r) { r.documentActivated(doc); });
}

void SimHost::Modify(HostDocument* doc) {
    SimDocument& d = Document(doc);
    d.dbmod |= 1;
    d.docModified = true;
}

SimDocument& SimHost::Document(HostDocument* doc) {
    for (auto& d : m_documents) {
        if (reinterpret_cast<HostDocument*>(d.get()) == doc)
            return *d;
    }
    throw std::logic_error("no such document");
}

void SimHost::SaveDocument(HostDocument* doc, const std::wstring& command) {
    SimDocument& d = Document(doc);
    std::wstring path = d.pathName;
    // A drawing that was never saved, and every SAVEAS, asks for a name first.
    if (command == L"SAVEAS" || !d.everSaved) {
        if (m_fileNames.empty())
            throw CommandCancelled();
        path = m_fileNames.front();
        m_fileNames.pop_front();
    }
    if (d.readOnly && path == d.pathName) {
        Print(L"\nDrawing is read-only; it cannot be saved under its own name.\n");
        return;
    }
    if (!DiskTakesSave(d, path))
        return;
    d.pathName = path;
    d.title = TitleOf(path);
    d.readOnly = false;
    d.dbmod = 0;
    d.docModified = false;
    d.everSaved = true;
    FireEditor([&](EditorReactor& r) { r.saveComplete(d.database->Handle(), path); });
}

void SimHost::CloseDocument(HostDocument* doc) {
    FireDocs([&](DocManagerReactor& r) { r.documentToBeDestroyed(doc); });
    auto it = std::find_if(m_documents.begin(), m_documents.end(), [doc](const auto& d) {
        return reinterpret_cast<HostDocument*>(d.get()) == doc;
    });
    const std::wstring fileName = (*it)->pathName;
    m_windows.Destroy((*it)->view);
    m_databasePort.Unregister((*it)->database.get());
    m_documents.erase(it);
    const bool wasActive = m_active == doc;
    if (wasActive) {
        m_active = nullptr;
        m_databasePort.SetWorkingDatabase(nullptr);
    }
    if (m_current == doc)
        m_current = m_active;
    FireDocs([&](DocManagerReactor& r) { r.documentDestroyed(fileName); });
    if (wasActive && !m_documents.empty())
        Activate(reinterpret_cast<HostDocument*>(m_documents.back().get()));
}

std::wstring SimHost::GlobalName(const std::wstring& typed) {
    std::wstring name = Upper(typed);
    std::size_t prefix = name.find_first_not_of(L"_.");
    return prefix == std::wstring::npos ? std::wstring() : name.substr(prefix);
}

std::wstring SimHost::ReportedName(const std::wstring& typed) const {
    if (!m_reportAsTyped)
        return GlobalName(typed);
    std::size_t prefix = typed.find_first_not_of(L"_.");
    return prefix == std::wstring::npos ? std::wstring() : typed.substr(prefix);
}

bool SimHost::TypeIn(HostDocument* doc, const std::wstring& command) {
    Document(doc);  // must exist
    m_current = doc;
    bool known = false;
    try {
        known = Type(command);
    } catch (...) {
        m_current = m_active;
        throw;
    }
    m_current = m_active;
    return known;
}

bool SimHost::Type(const std::wstring& command) {
    if (!m_runningCommand.empty())
        throw std::logic_error("a command is still running: cancel or end it first");
    const std::wstring name = GlobalName(command);
    auto registered = std::find_if(m_commands.begin(), m_commands.end(), [&](const auto& c) {
        return EqualNoCase(c.globalName, name) || EqualNoCase(c.localName, name);
    });
    static const std::wstring kSaves[] = {L"SAVE", L"QSAVE", L"SAVEAS"};
    static const std::wstring kInert[] = {L"OPTIONS", L"CONFIG", L"PREFERENCES", L"LINE", L"REGEN"};
    const bool save = std::find(std::begin(kSaves), std::end(kSaves), name) != std::end(kSaves);
    const bool inert = std::find(std::begin(kInert), std::end(kInert), name) != std::end(kInert);
    const bool builtIn = save || inert || name == L"CLOSE" || (name == L"APPLOAD" && m_appLoader);
    if (registered == m_commands.end() && !builtIn) {
        Print(L"Unknown command \"" + name + L"\".  Press F1 for help.\n");
        return false;
    }
    HostDocument* doc = m_current;
    StartCommand(command);
    bool cancelled = false;
    try {
        if (registered != m_commands.end()) {
            HostCommandFunction function = registered->function;  // the command may unregister
            function();
        } else if (name == L"APPLOAD") {
            auto loader = m_appLoader;
            loader();
        } else if (save && doc != nullptr) {
            SaveDocument(doc, name);
        }
    } catch (const CommandCancelled&) {
        cancelled = true;
    }
    FinishCommand(cancelled);
    // CLOSE ends its command before the document goes, as the host does.
    if (name == L"CLOSE" && registered == m_commands.end() && doc != nullptr)
        CloseDocument(doc);
    return true;
}

void SimHost::StartCommand(const std::wstring& command) {
    m_runningCommand = GlobalName(command);
    m_commandDocument = m_current;
    m_variables[L"CMDNAMES"] = m_runningCommand;
    const std::wstring name = ReportedName(command);
    m_reportedCommand = name;
    FireEditor([&](EditorReactor& r) { r.commandWillStart(name); });
}

void SimHost::FinishCommand(bool cancelled) {
    if (m_runningCommand.empty())
        throw std::logic_error("no command is running");
    const std::wstring name = m_reportedCommand;
    if (cancelled)
        FireEditor([&](EditorReactor& r) { r.commandCancelled(name); });
    else
        FireEditor([&](EditorReactor& r) { r.commandEnded(name); });
    m_variables[L"CMDNAMES"] = L"";
    m_runningCommand.clear();
    m_commandDocument = nullptr;
}

void SimHost::CancelCommand() {
    FinishCommand(true);
}

void SimHost::EndCommand() {
    FinishCommand(false);
}

void SimHost::RunLisp(const std::wstring& expression, const std::vector<std::wstring>& commands,
                      bool cancelled) {
    FireEditor([&](EditorReactor& r) { r.lispWillStart(expression); });
    for (const std::wstring& command : commands)
        Type(command);
    if (cancelled)
        FireEditor([](EditorReactor& r) { r.lispCancelled(); });
    else
        FireEditor([](EditorReactor& r) { r.lispEnded(); });
}

void SimHost::Autosave(HostDocument* doc) {
    SimDocument& d = Document(doc);
    const std::wstring name = L"C:\\Temp\\" + d.title + L"_1_1_0001.sv$";
    FireEditor([&](EditorReactor& r) { r.saveComplete(d.database->Handle(), name); });
}

void SimHost::Report(const char* what) {
    m_reactorFailures.emplace_back(what);
}

// --- HostReactors ---

void SimHost::AddEditorReactor(EditorReactor* reactor) {
    m_editorReactors.push_back(reactor);
}

void SimHost::RemoveEditorReactor(EditorReactor* reactor) {
    std::erase(m_editorReactors, reactor);
}

void SimHost::AddDocManagerReactor(DocManagerReactor* reactor) {
    m_docReactors.push_back(reactor);
}

void SimHost::RemoveDocManagerReactor(DocManagerReactor* reactor) {
    std::erase(m_docReactors, reactor);
}

HostWindow* SimHost::ActiveDwgView() {
    return m_active != nullptr ? Document(m_active).view : nullptr;
}

void SimHost::FailAutomation(HRESULT code, const std::wstring& description) {
    m_automationFailure.emplace(code, description);
}

void SimHost::FailAutomationCall(SimAutomationCall call, HRESULT code,
                                 const std::wstring& description) {
    m_callFailures.insert_or_assign(call, ComError(code, description));
}

std::wstring SimHost::CommandLineText() const {
    std::wstring text;
    for (const auto& line : m_lines)
        text += line + L"\n";
    return text + m_partialLine;
}

bool SimHost::HasCommand(const std::wstring& name) const {
    return std::any_of(m_commands.begin(), m_commands.end(),
                       [&](const auto& c) { return EqualNoCase(c.globalName, name); });
}

bool SimHost::IsMdiAware(HostAppPacket* pkt) const {
    return std::find(m_mdiAware.begin(), m_mdiAware.end(), pkt) != m_mdiAware.end();
}

bool SimHost::IsUnlocked(HostAppPacket* pkt) const {
    return std::find(m_unlocked.begin(), m_unlocked.end(), pkt) != m_unlocked.end();
}

// --- HostServices ---

std::optional<std::wstring> SimHost::GetVariable(const std::wstring& name) {
    std::wstring key = Upper(name);
    // Variables of a drawing are those of the current document, which a command running in
    // another drawing makes current.
    if (key == L"DBMOD") {
        return std::to_wstring(m_current ? Document(m_current).dbmod : 0);
    }
    if (key == L"TILEMODE") {
        return std::wstring(m_current && !DatabaseOf(m_current).Tilemode() ? L"0" : L"1");
    }
    auto it = m_variables.find(key);
    if (it == m_variables.end())
        return std::nullopt;
    return it->second;
}

bool SimHost::SetVariable(const std::wstring& name, const std::wstring& value) {
    std::wstring key = Upper(name);
    // Read-only variables refuse as the host does.
    if (key == L"CMDNAMES" || key == L"DBMOD")
        return false;
    if (key == L"TILEMODE") {
        if (m_current == nullptr)
            return false;
        DatabaseOf(m_current).SetTilemode(value != L"0");
        return true;
    }
    m_variables[key] = value;
    return true;
}

void SimHost::Print(const std::wstring& text) {
    for (wchar_t c : text) {
        if (c == L'\n') {
            m_lines.push_back(m_partialLine);
            m_partialLine.clear();
        } else {
            m_partialLine += c;
        }
    }
}

std::wstring SimHost::ProductKey() {
    return L"Software\\SimHost\\R17.0\\SIM-5001:409";
}

std::wstring SimHost::ProfileKey() {
    return ProductKey() + L"\\Profiles\\" + m_variables[L"CPROFILE"];
}

bool SimHost::AddCommand(const HostCommandRegistration& command) {
    if (HasCommand(command.globalName))
        return false;
    m_commands.push_back(command);
    return true;
}

void SimHost::RemoveGroup(const std::wstring& group) {
    std::erase_if(m_commands, [&](const auto& c) { return EqualNoCase(c.group, group); });
}

void SimHost::RegisterMessageWatcher(HostMessageWatcher watcher) {
    m_watchers.push_back(watcher);
}

void SimHost::RemoveMessageWatcher(HostMessageWatcher watcher) {
    std::erase(m_watchers, watcher);
}

void SimHost::RunWatchers(const HostMessage& message) {
    auto watchers = m_watchers;  // a watcher may remove itself
    for (HostMessageWatcher watcher : watchers)
        watcher(message);
}

void SimHost::PumpMessage(const HostMessage& message) {
    RunWatchers(message);
    m_windows.Send(message.window, message.message, message.wParam, message.lParam);
}

// --- HostDocuments ---

std::wstring SimHost::PathName(HostDocument* doc) {
    SimDocument& d = Document(doc);
    return d.everSaved ? d.pathName : std::wstring();
}

// Only the drawing that a command runs in is busy; the others are quiescent meanwhile.
bool SimHost::IsQuiescent(HostDocument* doc) {
    return m_runningCommand.empty() || doc != m_commandDocument;
}

std::vector<HostDocument*> SimHost::Documents() {
    std::vector<HostDocument*> docs;
    for (auto& d : m_documents)
        docs.push_back(reinterpret_cast<HostDocument*>(d.get()));
    return docs;
}

HostDocument* SimHost::DocumentOf(HostDatabase* db) {
    for (auto& d : m_documents) {
        if (d->database->Handle() == db)
            return reinterpret_cast<HostDocument*>(d.get());
    }
    return nullptr;
}

// --- HostAutomation ---

void SimHost::CheckAutomation(SimAutomationCall call) {
    if (m_automationFailure)
        throw *m_automationFailure;
    auto single = m_callFailures.find(call);
    if (single != m_callFailures.end()) {
        ComError failure = single->second;
        m_callFailures.erase(single);
        throw failure;
    }
}

HostApplication* SimHost::QueryApplication() {
    CheckAutomation(SimAutomationCall::QueryApplication);
    if (!m_hasAutomation)
        throw ComError(hr::kNoInterface, L"No such interface supported");
    ++m_automationRefs;
    return reinterpret_cast<HostApplication*>(this);
}

void SimHost::Release(HostApplication* app) {
    if (app != reinterpret_cast<HostApplication*>(this) || m_automationRefs == 0) {
        throw std::logic_error("automation object released more often than obtained");
    }
    --m_automationRefs;
}

int SimHost::DocumentCount(HostApplication* app) {
    CheckAutomation(SimAutomationCall::DocumentCount);
    if (app != reinterpret_cast<HostApplication*>(this) || m_automationRefs == 0)
        throw std::logic_error("automation object used without a reference");
    return static_cast<int>(m_documents.size());
}

HostAutoDocument* SimHost::DocumentOfDatabase(HostDatabase* db) {
    CheckAutomation(SimAutomationCall::DocumentOfDatabase);
    HostDocument* doc = DocumentOf(db);
    if (doc == nullptr)
        throw ComError(hr::kFail, L"Unspecified error");
    if (m_documentsHaveNoInterface)
        return nullptr;
    ++m_automationRefs;
    return reinterpret_cast<HostAutoDocument*>(doc);
}

void SimHost::Release(HostAutoDocument* doc) {
    if (doc == nullptr || m_automationRefs == 0)
        throw std::logic_error("automation document released more often than obtained");
    --m_automationRefs;
}

int SimHost::GetIntVariable(HostAutoDocument* doc, const std::wstring& name) {
    CheckAutomation(SimAutomationCall::GetVariable);
    SimDocument& d = Document(reinterpret_cast<HostDocument*>(doc));
    std::wstring key = Upper(name);
    if (key == L"DBMOD")
        return d.dbmod;
    if (key == L"TILEMODE")
        return d.database->Tilemode() ? 1 : 0;
    auto it = m_variables.find(key);
    if (it == m_variables.end())
        throw ComError(hr::kFail, L"Error getting system variable");
    return std::stoi(it->second);
}

HostSheetSetManager* SimHost::CreateSheetSetManager() {
    CheckAutomation(SimAutomationCall::CreateSheetSetManager);
    ++m_sheetSetManagers;
    return reinterpret_cast<HostSheetSetManager*>(&m_sheetSetManagers);
}

void SimHost::Release(HostSheetSetManager* manager) {
    if (manager == nullptr || m_sheetSetManagers == 0)
        throw std::logic_error("sheet set manager released more often than made");
    --m_sheetSetManagers;
}

// --- MessageBoxes ---

int SimHost::Show(const std::wstring& text, const std::wstring& caption, unsigned flags) {
    m_boxes.push_back(SimMessageBox{text, caption, flags});
    if (m_answers.empty())
        return mb::kIdOk;
    int answer = m_answers.front();
    m_answers.pop_front();
    return answer;
}

// --- opening drawings, templates and views ---

void SimHost::SetRelease(const std::wstring& release, const std::string& newestFormat) {
    m_release = release;
    m_newestFormat = newestFormat;
}

void SimHost::SetTemplatePath(const std::wstring& folder) {
    const std::wstring general = ProfileKey() + L"\\General";
    m_registry.CreateKey(RegHive::CurrentUser, general);
    m_registry.SetValue(RegHive::CurrentUser, general, L"TemplatePath",
                        RegValue{reg::kSz, reg::StringBytes(folder)});
}

std::optional<std::wstring> SimHost::GetString(const std::wstring& prompt, bool allowSpaces) {
    m_prompts.push_back(prompt);
    Print(prompt);
    if (m_inputs.empty())
        return std::nullopt;  // Escape
    std::wstring text = m_inputs.front();
    m_inputs.pop_front();
    Print(text + L"\n");
    // Without spaces allowed, the space ends the input as Enter does.
    if (!allowSpaces)
        text = text.substr(0, text.find(L' '));
    return text;
}

void SimHost::PopDbmod(HostDocument* doc) {
    SimDocument& d = Document(doc);
    if (d.pushedDbmod.empty())
        return;
    d.dbmod = d.pushedDbmod.back();
    d.pushedDbmod.pop_back();
}

void SimHost::CheckApplication(HostApplication* app) const {
    if (app != reinterpret_cast<const HostApplication*>(this) || m_automationRefs == 0)
        throw std::logic_error("automation object used without a reference");
}

HostDocument* SimHost::AutoDocument(HostAutoDocument* doc) {
    auto* handle = reinterpret_cast<HostDocument*>(doc);
    Document(handle);  // must still be open
    return handle;
}

HostAutoDocument* SimHost::DocumentItem(HostApplication* app, int index) {
    CheckAutomation(SimAutomationCall::DocumentItem);
    CheckApplication(app);
    if (index < 0 || static_cast<std::size_t>(index) >= m_documents.size())
        throw ComError(static_cast<HRESULT>(0x80070057), L"The parameter is incorrect.");
    ++m_automationRefs;
    return reinterpret_cast<HostAutoDocument*>(m_documents[static_cast<std::size_t>(index)].get());
}

HostAutoDocument* SimHost::OpenDocument(HostApplication* app, const std::wstring& path,
                                        bool readOnly) {
    CheckAutomation(SimAutomationCall::OpenDocument);
    CheckApplication(app);
    std::unique_ptr<InputFile> file = Use<FileSystem>().OpenRead(path);
    if (!file)
        throw ComError(hr::kFail, L"Error opening file");
    char head[6] = {};
    file->ReadAt(0, head, sizeof head);
    // The host refuses a newer format with an error of its own kind, not an automation error.
    const std::string format(head, sizeof head);
    if (format.compare(0, 2, "AC") == 0 && format > m_newestFormat)
        throw std::runtime_error("drawing file was created by a newer release");
    HostDocument* doc = OpenDrawing(path, readOnly);
    // A drawing opened through automation comes up with DBMOD set, its value before pushed:
    // the caller pops it.
    SimDocument& d = Document(doc);
    d.pushedDbmod.push_back(d.dbmod);
    d.dbmod |= 1;
    ++m_automationRefs;
    return reinterpret_cast<HostAutoDocument*>(doc);
}

std::wstring SimHost::FullName(HostAutoDocument* doc) {
    CheckAutomation(SimAutomationCall::FullName);
    return Document(AutoDocument(doc)).pathName;
}

void SimHost::Activate(HostAutoDocument* doc) {
    CheckAutomation(SimAutomationCall::Activate);
    HostDocument* handle = AutoDocument(doc);
    Log(L"Activate", handle);
    Activate(handle);
}

HostAutoView* SimHost::AddView(HostAutoDocument* doc, const std::wstring& name) {
    CheckAutomation(SimAutomationCall::AddView);
    HostDocument* handle = AutoDocument(doc);
    SimDatabase& db = DatabaseOf(handle);
    if (db.FindView(name) == 0)
        db.AddView(name);
    ++m_automationRefs;
    return reinterpret_cast<HostAutoView*>(&NamedView(handle, name));
}

SimHost::SimView& SimHost::NamedView(HostDocument* doc, const std::wstring& name) {
    for (auto& view : m_views) {
        if (view->doc == doc && EqualNoCase(view->name, name))
            return *view;
    }
    m_views.push_back(std::make_unique<SimView>(SimView{doc, name, {}}));
    return *m_views.back();
}

void SimHost::Release(HostAutoView* view) {
    if (view == nullptr || m_automationRefs == 0)
        throw std::logic_error("view released more often than obtained");
    --m_automationRefs;
}

int SimHost::ActiveSpace(HostAutoDocument* doc) {
    CheckAutomation(SimAutomationCall::ActiveSpace);
    return DatabaseOf(AutoDocument(doc)).Tilemode() ? space::kModel : space::kPaper;
}

HostAutoViewport* SimHost::ActiveViewport(HostAutoDocument* doc, bool paper) {
    CheckAutomation(SimAutomationCall::ActiveViewport);
    ++m_automationRefs;
    return reinterpret_cast<HostAutoViewport*>(&Viewport(AutoDocument(doc), paper));
}

void SimHost::Release(HostAutoViewport* viewport) {
    if (viewport == nullptr || m_automationRefs == 0)
        throw std::logic_error("viewport released more often than obtained");
    --m_automationRefs;
}

std::wstring SimHost::ActiveLayoutName(HostAutoDocument* doc) {
    CheckAutomation(SimAutomationCall::ActiveLayoutName);
    SimDatabase& db = DatabaseOf(AutoDocument(doc));
    return db.Object(db.Object(db.CurrentSpaceId()).layoutId).name;
}

ViewValue SimHost::GetViewport(HostAutoViewport* viewport, ViewProperty property) {
    CheckAutomation(SimAutomationCall::GetViewport);
    const auto& vp = *reinterpret_cast<SimViewport*>(viewport);
    switch (property) {
        case ViewProperty::Center:
            return vp.center;
        case ViewProperty::Direction:
            return vp.direction;
        case ViewProperty::Height:
            return vp.height;
        case ViewProperty::Target:
            return vp.target;
        case ViewProperty::Width:
            return vp.width;
    }
    throw std::logic_error("no such viewport property");
}

void SimHost::SetView(HostAutoView* view, ViewProperty property, const ViewValue& value) {
    CheckAutomation(SimAutomationCall::SetView);
    auto& v = *reinterpret_cast<SimView*>(view);
    v.values[property] = value;
    if (property != ViewProperty::Center)
        return;
    SimDatabase& db = DatabaseOf(v.doc);
    if (DbObjectId id = db.FindView(v.name))
        db.Object(id).center = DbPoint2d{value.x, value.y};
}

std::map<ViewProperty, ViewValue> SimHost::ViewValues(HostDocument* doc,
                                                      const std::wstring& name) const {
    for (const auto& view : m_views) {
        if (view->doc == doc && EqualNoCase(view->name, name))
            return view->values;
    }
    return {};
}

// A new drawing from a template: the default one, or a file that must be there.
HostDocument* SimHost::NewDrawingFrom(const std::wstring& templateName) {
    if (!templateName.empty() && !Use<FileSystem>().Stat(templateName))
        throw ComError(hr::kFail, L"Error opening template file");
    HostDocument* doc = NewDrawing();
    Document(doc).templateName = templateName;
    return doc;
}

HostAutoDocument* SimHost::AddDocument(HostApplication* app, const std::wstring& templateName) {
    CheckAutomation(SimAutomationCall::AddDocument);
    CheckApplication(app);
    HostDocument* doc = NewDrawingFrom(templateName);
    ++m_automationRefs;
    return reinterpret_cast<HostAutoDocument*>(doc);
}

void SimHost::AppContextNewDocument(const std::wstring& templateName) {
    try {
        NewDrawingFrom(templateName);
    } catch (const ComError& e) {
        Print(e.Description() + L"\n");  // the host reports it and makes nothing
    }
}

std::optional<std::wstring> SimHost::Choose(void*, const std::wstring& title,
                                            const std::wstring& start, unsigned) {
    m_folderChoosers.emplace_back(title, start);
    if (m_folders.empty())
        return std::nullopt;
    std::optional<std::wstring> folder = m_folders.front();
    m_folders.pop_front();
    return folder;
}

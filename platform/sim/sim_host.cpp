#include "platform/sim/sim_host.h"

#include <algorithm>
#include <cwctype>
#include <stdexcept>

#include "foundation/no_case.h"

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

// Ids of different databases never meet: each database gets its own range.
constexpr DbObjectId kIdsPerDatabase = 1u << 24;

}  // namespace

SimHost::SimHost()
    : m_servicesPort(*this),
      m_documentsPort(*this),
      m_automationPort(*this),
      m_messageBoxPort(*this),
      m_windowPort(m_windows),
      m_proceduresPort(m_windows),
      m_databasePortSlot(m_databasePort),
      m_registryPort(m_registry) {
    m_variables = {{L"CMDNAMES", L""},
                   {L"CVPORT", L"2"},
                   {L"CPROFILE", L"<<Unnamed Profile>>"},
                   {L"SSMAUTOOPEN", L"1"},
                   {L"BACKGROUNDPLOT", L"2"}};
}

SimHost::~SimHost() = default;

// --- the session ---

HostDocument* SimHost::AddDocument(std::unique_ptr<SimDocument> doc) {
    doc->database = std::make_unique<SimDatabase>(m_nextDatabaseBase);
    m_nextDatabaseBase += kIdsPerDatabase;
    m_databasePort.Register(doc->database.get());
    auto* handle = reinterpret_cast<HostDocument*>(doc.get());
    m_documents.push_back(std::move(doc));
    Notify([&](SimHostListener& l) { l.DocumentCreated(handle); });
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
    m_databasePort.SetWorkingDatabase(d.database.get());
    Notify([&](SimHostListener& l) { l.DocumentActivated(doc); });
}

void SimHost::Modify(HostDocument* doc) {
    Document(doc).dbmod |= 1;
}

SimDocument& SimHost::Document(HostDocument* doc) {
    for (auto& d : m_documents) {
        if (reinterpret_cast<HostDocument*>(d.get()) == doc)
            return *d;
    }
    throw std::logic_error("no such document");
}

void SimHost::SaveDocument(HostDocument* doc) {
    SimDocument& d = Document(doc);
    if (d.readOnly) {
        Print(L"\nDrawing is read-only; it cannot be saved under its own name.\n");
        return;
    }
    d.dbmod = 0;
    d.everSaved = true;
    Notify([&](SimHostListener& l) { l.SaveComplete(d.database->Handle(), d.pathName); });
}

void SimHost::CloseDocument(HostDocument* doc) {
    Notify([&](SimHostListener& l) { l.DocumentToBeDestroyed(doc); });
    auto it = std::find_if(m_documents.begin(), m_documents.end(), [doc](const auto& d) {
        return reinterpret_cast<HostDocument*>(d.get()) == doc;
    });
    m_databasePort.Unregister((*it)->database.get());
    m_documents.erase(it);
    if (m_active == doc) {
        m_active = nullptr;
        m_databasePort.SetWorkingDatabase(nullptr);
        if (!m_documents.empty())
            Activate(reinterpret_cast<HostDocument*>(m_documents.back().get()));
    }
}

bool SimHost::Type(const std::wstring& command) {
    std::wstring name = Upper(command);
    auto registered = std::find_if(m_commands.begin(), m_commands.end(), [&](const auto& c) {
        return EqualNoCase(c.globalName, name) || EqualNoCase(c.localName, name);
    });
    bool builtIn = name == L"SAVE" || name == L"QSAVE" || name == L"CLOSE" ||
                   (name == L"APPLOAD" && m_appLoader);
    if (registered == m_commands.end() && !builtIn) {
        Print(L"Unknown command \"" + name + L"\".  Press F1 for help.\n");
        return false;
    }
    HostDocument* doc = m_active;
    m_variables[L"CMDNAMES"] = name;
    Notify([&](SimHostListener& l) { l.CommandWillStart(name); });
    if (registered != m_commands.end()) {
        HostCommandFunction function = registered->function;  // the command may unregister
        function();
    } else if (name == L"APPLOAD") {
        auto loader = m_appLoader;
        loader();
    } else if (doc != nullptr && name != L"CLOSE") {
        SaveDocument(doc);
    }
    Notify([&](SimHostListener& l) { l.CommandEnded(name); });
    m_variables[L"CMDNAMES"] = L"";
    // CLOSE ends its command before the document goes, as the host does.
    if (builtIn && name == L"CLOSE" && doc != nullptr)
        CloseDocument(doc);
    return true;
}

void SimHost::RemoveListener(SimHostListener* listener) {
    std::erase(m_listeners, listener);
}

void SimHost::FailAutomation(HRESULT code, const std::wstring& description) {
    m_automationFailure.emplace(code, description);
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
    if (key == L"DBMOD") {
        return std::to_wstring(m_active ? Document(m_active).dbmod : 0);
    }
    if (key == L"TILEMODE") {
        return std::wstring(m_active && !DatabaseOf(m_active).Tilemode() ? L"0" : L"1");
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
        if (m_active == nullptr)
            return false;
        DatabaseOf(m_active).SetTilemode(value != L"0");
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

void SimHost::PumpMessage(const HostMessage& message) {
    auto watchers = m_watchers;  // a watcher may remove itself
    for (HostMessageWatcher watcher : watchers)
        watcher(message);
    m_windows.Send(message.window, message.message, message.wParam, message.lParam);
}

// --- HostDocuments ---

std::wstring SimHost::PathName(HostDocument* doc) {
    SimDocument& d = Document(doc);
    return d.everSaved ? d.pathName : std::wstring();
}

bool SimHost::IsQuiescent(HostDocument*) {
    return m_variables[L"CMDNAMES"].empty();
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

void SimHost::CheckAutomation() const {
    if (m_automationFailure)
        throw *m_automationFailure;
}

HostApplication* SimHost::QueryApplication() {
    CheckAutomation();
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
    CheckAutomation();
    if (app != reinterpret_cast<HostApplication*>(this) || m_automationRefs == 0)
        throw std::logic_error("automation object used without a reference");
    return static_cast<int>(m_documents.size());
}

HostAutoDocument* SimHost::DocumentOfDatabase(HostDatabase* db) {
    CheckAutomation();
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
    CheckAutomation();
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

// --- MessageBoxes ---

int SimHost::Show(const std::wstring& text, const std::wstring& caption, unsigned flags) {
    m_boxes.push_back(SimMessageBox{text, caption, flags});
    if (m_answers.empty())
        return mb::kIdOk;
    int answer = m_answers.front();
    m_answers.pop_front();
    return answer;
}

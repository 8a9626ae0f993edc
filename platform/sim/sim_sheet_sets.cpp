#include "platform/sim/sim_sheet_sets.h"

#include <algorithm>
#include <stdexcept>

#include "foundation/split.h"
#include "foundation/text_encoding.h"
#include "ports/file_system.h"
#include "ports/port.h"

namespace {

using Kind = SimSheetSets::Kind;
using Node = SimSheetSets::Node;

constexpr std::uint64_t kLargestFile = 1 << 20;

// `count` fields separated by "|", missing ones empty.
std::vector<std::wstring> Fields(const std::wstring& text, std::size_t count) {
    std::vector<std::wstring> fields = CSplit(text, L"|").m_pieces;
    fields.resize(count);
    return fields;
}

// The sheet set a test described, or null when a line is not understood or a subset is left
// open.
std::shared_ptr<Node> ParseSheetSet(const std::wstring& text) {
    auto root = std::make_shared<Node>();
    root->kind = Kind::SheetSet;
    std::vector<Node*> open{root.get()};
    CSplit lines(text, L"\n");
    lines.Trim(L" \t\r", true, true);
    for (const std::wstring& line : lines.m_pieces) {
        if (line.empty() || line[0] == L'#')
            continue;
        const std::size_t space = line.find(L' ');
        const std::wstring word = line.substr(0, space);
        const std::wstring rest = space == std::wstring::npos ? L"" : line.substr(space + 1);
        auto node = std::make_shared<Node>();
        if (word == L"name") {
            root->name = rest;
            continue;
        } else if (word == L"resource") {
            root->resources.push_back(rest);
            continue;
        } else if (word == L"end") {
            if (open.size() == 1)
                return nullptr;
            open.pop_back();
            continue;
        } else if (word == L"sheet") {
            const auto f = Fields(rest, 5);
            *node = Node{Kind::Sheet, f[0], f[1], f[2], f[3], f[4], kSmSheetType, {}, {}};
        } else if (word == L"subset") {
            const auto f = Fields(rest, 2);
            *node = Node{Kind::Subset, f[0], L"", L"", f[1], L"", kSmSubsetType, {}, {}};
        } else if (word == L"component") {
            node->kind = Kind::Other;
            node->type = rest;
        } else if (word == L"opaque") {
            node->kind = Kind::Opaque;
        } else {
            return nullptr;
        }
        open.back()->children.push_back(node);
        if (node->kind == Kind::Subset)
            open.push_back(node.get());
    }
    return open.size() == 1 ? root : nullptr;
}

}  // namespace

SimSheetSets::~SimSheetSets() = default;

void SimSheetSets::FailCall(SimSheetSetCall call, HRESULT code, const std::wstring& description) {
    m_failures.insert_or_assign(call, ComError(code, description));
}

void SimSheetSets::Check(SimSheetSetCall call) {
    auto it = m_failures.find(call);
    if (it == m_failures.end())
        return;
    ComError failure = it->second;
    m_failures.erase(it);
    throw failure;
}

SimSheetSets::Object& SimSheetSets::Live(HostSmObject* object, std::initializer_list<Kind> kinds) {
    auto it = m_objects.find(object);
    if (it == m_objects.end())
        throw std::logic_error("sheet set object used that was never given or was released");
    if (std::find(kinds.begin(), kinds.end(), it->second->kind) == kinds.end())
        throw std::logic_error("sheet set object asked for an interface it does not have");
    return *it->second;
}

HostSmObject* SimSheetSets::Hand(Object object) {
    auto owned = std::make_unique<Object>(std::move(object));
    auto* handle = reinterpret_cast<HostSmObject*>(owned.get());
    m_objects.emplace(handle, std::move(owned));
    return handle;
}

HostSmObject* SimSheetSets::OpenDatabase(HostSheetSetManager* manager, const std::wstring& path,
                                         bool failIfAlreadyOpen) {
    if (manager == nullptr || m_managers == 0)
        throw std::logic_error("sheet set database opened without a manager");
    Check(SimSheetSetCall::OpenDatabase);
    const bool open = std::any_of(m_objects.begin(), m_objects.end(), [&](const auto& entry) {
        return entry.second->kind == Kind::Database && entry.second->path == path;
    });
    if (failIfAlreadyOpen && open)
        throw ComError(hr::kFail, L"The sheet set is open already");
    std::optional<std::string> bytes = Use<FileSystem>().ReadAll(path, kLargestFile);
    std::shared_ptr<Node> root = bytes ? ParseSheetSet(FromUtf8(*bytes)) : nullptr;
    if (!root)
        throw ComError(hr::kFail, L"Unable to open the sheet set file " + path);
    m_opened.push_back(path);
    return Hand(Object{Kind::Database, root, path, {}, 0});
}

HostSmObject* SimSheetSets::GetSheetSet(HostSmObject* database) {
    Object& db = Live(database, {Kind::Database});
    Check(SimSheetSetCall::GetSheetSet);
    return Hand(Object{Kind::SheetSet, db.node, L"", {}, 0});
}

HostSmObject* SimSheetSets::GetSheetEnumerator(HostSmObject* container) {
    Object& parent = Live(container, {Kind::SheetSet, Kind::Subset});
    Check(SimSheetSetCall::GetSheetEnumerator);
    return Hand(Object{Kind::Enumerator, parent.node, L"", parent.node->children, 0});
}

HostSmObject* SimSheetSets::Next(HostSmObject* enumerator) {
    Object& walk = Live(enumerator, {Kind::Enumerator});
    Check(SimSheetSetCall::Next);
    if (walk.next >= walk.items.size())
        return nullptr;
    const std::shared_ptr<Node>& item = walk.items[walk.next++];
    return Hand(Object{item->kind, item, L"", {}, 0});
}

std::wstring SimSheetSets::GetTypeName(HostSmObject* component) {
    Object& object = Live(component, {Kind::Subset, Kind::Sheet, Kind::Other, Kind::Opaque});
    Check(SimSheetSetCall::GetTypeName);
    if (object.kind == Kind::Opaque)
        throw ComError(hr::kNoInterface, L"No such interface supported");
    return object.node->type;
}

HostSmObject* SimSheetSets::QuerySheet(HostSmObject* component) {
    Object& object = Live(component, {Kind::Subset, Kind::Sheet, Kind::Other, Kind::Opaque});
    return object.kind == Kind::Sheet ? Hand(Object{Kind::Sheet, object.node, L"", {}, 0})
                                      : nullptr;
}

HostSmObject* SimSheetSets::QuerySubset(HostSmObject* component) {
    Object& object = Live(component, {Kind::Subset, Kind::Sheet, Kind::Other, Kind::Opaque});
    return object.kind == Kind::Subset ? Hand(Object{Kind::Subset, object.node, L"", {}, 0})
                                       : nullptr;
}

std::wstring SimSheetSets::GetName(HostSmObject* component) {
    Object& object = Live(component, {Kind::SheetSet, Kind::Subset, Kind::Sheet, Kind::Other});
    Check(SimSheetSetCall::GetName);
    return object.node->name;
}

void SimSheetSets::SetName(HostSmObject* component, const std::wstring& name) {
    Live(component, {Kind::SheetSet, Kind::Subset, Kind::Sheet, Kind::Other}).node->name = name;
}

std::wstring SimSheetSets::GetDesc(HostSmObject* component) {
    Object& object = Live(component, {Kind::SheetSet, Kind::Subset, Kind::Sheet, Kind::Other});
    Check(SimSheetSetCall::GetDesc);
    return object.node->desc;
}

std::wstring SimSheetSets::GetNumber(HostSmObject* sheet) {
    Object& object = Live(sheet, {Kind::Sheet});
    Check(SimSheetSetCall::GetNumber);
    return object.node->number;
}

std::wstring SimSheetSets::GetTitle(HostSmObject* sheet) {
    Object& object = Live(sheet, {Kind::Sheet});
    Check(SimSheetSetCall::GetTitle);
    return object.node->title;
}

HostSmObject* SimSheetSets::GetLayout(HostSmObject* sheet) {
    Object& object = Live(sheet, {Kind::Sheet});
    Check(SimSheetSetCall::GetLayout);
    return Hand(Object{Kind::Reference, object.node, L"", {}, 0});
}

HostSmObject* SimSheetSets::GetSheetViews(HostSmObject* sheet) {
    Object& object = Live(sheet, {Kind::Sheet});
    Check(SimSheetSetCall::GetSheetViews);
    return Hand(Object{Kind::Views, object.node, L"", {}, 0});
}

HostSmObject* SimSheetSets::GetResources(HostSmObject* sheetSet) {
    Object& object = Live(sheetSet, {Kind::SheetSet});
    Check(SimSheetSetCall::GetResources);
    return Hand(Object{Kind::Resources, object.node, L"", {}, 0});
}

HostSmObject* SimSheetSets::GetResourceEnumerator(HostSmObject* resources) {
    Object& object = Live(resources, {Kind::Resources});
    std::vector<std::shared_ptr<Node>> references;
    for (const std::wstring& folder : object.node->resources) {
        auto reference = std::make_shared<Node>();
        reference->kind = Kind::Reference;
        reference->file = folder;
        references.push_back(reference);
    }
    return Hand(Object{Kind::Enumerator, object.node, L"", references, 0});
}

std::wstring SimSheetSets::GetFileName(HostSmObject* reference) {
    Object& object = Live(reference, {Kind::Reference});
    Check(SimSheetSetCall::GetFileName);
    return object.node->file;
}

void SimSheetSets::Release(HostSmObject* object) {
    if (m_objects.erase(object) == 0)
        throw std::logic_error("sheet set object released that was never given or released twice");
}

std::optional<std::vector<std::size_t>> SimSheetSets::Run(
    HostWindow*, const std::wstring&, const std::vector<std::wstring>& offered) {
    m_offers.push_back(offered);
    if (m_ticks.empty())
        return std::nullopt;
    std::optional<std::vector<std::size_t>> ticks = std::move(m_ticks.front());
    m_ticks.pop_front();
    if (ticks && std::any_of(ticks->begin(), ticks->end(),
                             [&](std::size_t i) { return i >= offered.size(); }))
        throw std::logic_error("a sheet ticked that the selection does not offer");
    return ticks;
}

bool SimSheetSets::OpenInManager(const std::wstring& line) {
    constexpr std::wstring_view kCommand = L"-OPENSHEETSET \"";
    if (line.size() <= kCommand.size() || !line.starts_with(kCommand) || line.back() != L'"')
        return false;
    m_inManager.push_back(line.substr(kCommand.size(), line.size() - kCommand.size() - 1));
    return true;
}

// The one way the bar opens a file: anything but a drawing goes to the shell, a drawing that is
// open already comes to the front, any other drawing is opened by the host and recorded as
// recent.

#include "bar/open_file.h"

#include "bar/auto_ref.h"
#include "bar/command_edge.h"
#include "bar/hv_tabrow.h"
#include "foundation/no_case.h"
#include "ports/host_automation.h"
#include "ports/host_documents.h"
#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/port.h"
#include "ports/shell.h"
#include "views/dwg_version.h"

namespace {

constexpr int kShowNormal = 5;  // the shell shows the opened file's window as it is

// What the command line says when the host refused to open a drawing without an automation
// error: a drawing newer than the host is named by its release.
void ReportRefusedOpen(const std::wstring& path, double hostVersion) {
    std::wstring release;
    if (GetFileDwgVersionCode(path) > hostVersion && GetFileDwgVersionText(path, release)) {
        Use<HostServices>().Print(L"Cannot open a " + release +
                                  L" drawing in this version of AutoCAD!\n");
        return;
    }
    Use<HostServices>().Print(L"Unknown error in HvTabrow::OpenFile()!\n");
}

}  // namespace

bool IsDrawingOpen(HostApplication* app, const std::wstring& path, bool bWarn) {
    try {
        HostAutomation& automation = Use<HostAutomation>();
        for (int i = automation.DocumentCount(app) - 1; i >= 0; --i) {
            AutoRef<HostAutoDocument> doc(automation.DocumentItem(app, i));
            if (doc.Get() == nullptr || !EqualNoCase(automation.FullName(doc.Get()), path))
                continue;
            automation.Activate(doc.Get());
            if (bWarn)
                Use<MessageBoxes>().Show(path + L" is already open!\n", L"", mb::kOk);
            return true;
        }
    } catch (...) {
    }
    return false;
}

void HvTabrow::OpenFile(const TrFileEntry& entry, bool bWarn, bool bPopDbmod) {
    const std::wstring path = entry.GetPath();
    if (!FileExists(path)) {
        if (bWarn)
            Use<MessageBoxes>().Show(L"Specified file path does not exist -\n" + path, L"",
                                     mb::kOk);
        return;
    }
    try {
        if (!EqualNoCase(entry.GetExtension(), L".dwg")) {
            Use<Shell>().Open(path, kShowNormal);
            return;
        }
        // The read-only flag is not looked at for a drawing that is open already.
        if (IsDrawingOpen(m_pHostApp, path, bWarn))
            return;
        // The host's open pumps messages: the reactors run inside it and may add the drawing
        // to the recent list before this does.
        AutoRef<HostAutoDocument> opened(
            Use<HostAutomation>().OpenDocument(m_pHostApp, path, entry.m_bReadOnly));
        if (bPopDbmod) {
            if (HostDocument* current = Use<HostDocuments>().CurDocument())
                Use<HostDocuments>().PopDbmod(current);
        }
        AddRecentFile(path);
    } catch (const ComError& e) {
        const std::wstring text = ComErrorText(e);
        Use<HostServices>().Print(text + L"\n");
        Use<MessageBoxes>().Show(text, L"", mb::kOk | mb::kIconError);
    } catch (...) {
        ReportRefusedOpen(path, m_dHostVersion);
    }
}

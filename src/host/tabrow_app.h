#pragma once
// The module's entry, its start-up and shut-down order, its commands, and the globals every
// other part of the system reads.

#include <cstdint>

#include "host/hv_app.h"
#include "layout/host_windows.h"
#include "layout/relayout.h"
#include "sheetsets/sheet_set_manager.h"

class HvTabrow;
class HvTrMdiClientWnd;
struct HostApplication;
struct HostAppPacket;
struct HostSheetSetManager;
struct HostWindow;

// The host's messages to the entry point; every other message is ignored.
constexpr int kInitAppMsg = 1;
constexpr int kUnloadAppMsg = 2;
constexpr int kRetOK = 0;

extern HvApp theApp;
extern HvTabrow* g_pTabrow;  // owned; null until created and after a failed start
extern HostApplication* g_pHostApp;   // one reference held
extern HvTrMdiClientWnd* g_pMdiClientHook;  // owned
extern HvTrMdiClientWnd* g_pCmdWndHook;     // owned

int acrxEntryPoint(int msg, HostAppPacket* pkt);
void OnLoad(HostAppPacket* pkt);
void OnUnload();

// The six commands' functions.
void TrOptions();
void TrAbout();
void TrOff();
void TrOn();
void TrCenter();
void TrCmdCenter();

// What mapping the module does: every static back to its initial value. The host maps the
// module afresh for each load; a process that loads it more than once (a test) calls this.
void MapModule();

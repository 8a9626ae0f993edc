#pragma once
// The host's sheet set manager object, made once when the module loads and released when it
// unloads.

struct HostSheetSetManager;

// One reference held by the application; null when the host could not make it, and then no
// sheet set can be read.
extern HostSheetSetManager* g_pSheetSetMgr;

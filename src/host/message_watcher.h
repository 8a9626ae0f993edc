#pragma once
// The watcher of the host's main loop: the bar's messages go to its tip controls first; pan and
// zoom end on the drawing view with a middle button release or a wheel step, and the palette
// renews the active drawing's preview 800 ms after the last of them.

struct HostMessage;

void TabrowMessageWatcher(const HostMessage& message);

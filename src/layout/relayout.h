#pragma once
// Making the host send the position changes that the bar's hook waits for.

struct HostWindow;

// Makes the host lay out its frame again: shrink by 10 on every side without repainting, grow
// back with repainting, redraw. The double move is what makes the frame lay out its children.
void RefreshHostLayout(HostWindow* hwnd);
// Moves the MDI client into the room that the frame's control bars leave, without repainting.
void RelayoutMdiClient();
// Moves the command window back to the rectangle the host last wanted for it, without
// repainting.
void RelayoutCmdWnd();

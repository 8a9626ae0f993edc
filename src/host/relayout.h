#pragma once
// Making the host send the position changes that the bar's hook waits for.

// Moves the MDI client into the room that the frame's control bars leave, without repainting.
void RelayoutMdiClient();
// Moves the command window back to the rectangle the host last wanted for it, without
// repainting.
void RelayoutCmdWnd();

#pragma once
// Saving the view on screen under a name the user types. A view saved in paper space takes the
// active paper space viewport's geometry and is marked with its layout, so that restoring it
// later goes back to that layout.

struct HostDocument;

// The menu's "Save..." for the drawing under the mouse. Failures end at the command's edge;
// a view already added stays, half filled, when a later step fails.
void OnSaveView(HostDocument* doc);

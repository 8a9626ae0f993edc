#pragma once
// The edge between a command's body and the host: an automation failure is shown in a message
// box with its code, anything else becomes one line on the command line naming the function.
// Nothing passes into the host.

#include <functional>

#include "ports/com_error.h"

// "Error [0x%08X]\n%s", the text of an automation failure's box.
std::wstring ComErrorText(const ComError& error);

// `function` is the handler's qualified name with its parentheses, "HvTabrow::OnSaveAll()":
// anything but an automation failure prints "Unknown error in HvTabrow::OnSaveAll()!".
void RunAtCommandEdge(const char* function, const std::function<void()>& body);

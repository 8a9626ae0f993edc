#include "bar/command_edge.h"

#include <cstdio>

#include "ports/host_services.h"
#include "ports/message_box.h"
#include "ports/port.h"

std::wstring ComErrorText(const ComError& error) {
    wchar_t code[16];
    std::swprintf(code, 16, L"%08X", static_cast<unsigned>(error.Error()));
    return L"Error [0x" + std::wstring(code) + L"]\n" + error.Description();
}

void RunAtCommandEdge(const char* function, const std::function<void()>& body) {
    try {
        body();
    } catch (const ComError& e) {
        Use<MessageBoxes>().Show(ComErrorText(e), L"", mb::kOk | mb::kIconError);
    } catch (...) {
        std::wstring name(function, function + std::char_traits<char>::length(function));
        Use<HostServices>().Print(L"Unknown error in " + name + L"!\n");
    }
}

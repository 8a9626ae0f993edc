#include "test_window.h"

#include <stdexcept>

namespace {

constexpr wchar_t kClassName[] = L"TabrowTestWindow";

LRESULT CALLBACK LoggingProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= TestWindow::kFirstTestMessage)
        TestWindow::Log().push_back("class:" +
                                    std::to_string(message - TestWindow::kFirstTestMessage));
    if (message == WM_NCDESTROY)
        TestWindow::Log().push_back("class:ncdestroy");
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

void RegisterOnce() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &LoggingProcedure;
    windowClass.hInstance = ::GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClassName;
    if (!::RegisterClassW(&windowClass) && ::GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
        throw std::runtime_error("cannot register the test window class");
}

}  // namespace

TestWindow::TestWindow() {
    RegisterOnce();
    m_hwnd = ::CreateWindowExW(0, kClassName, L"test", WS_OVERLAPPEDWINDOW, 100, 100, 400, 300,
                               nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    if (m_hwnd == nullptr)
        throw std::runtime_error("cannot create a window (is there a display?)");
}

TestWindow::~TestWindow() {
    Destroy();
}

void TestWindow::Destroy() {
    if (m_hwnd != nullptr && ::IsWindow(m_hwnd))
        ::DestroyWindow(m_hwnd);
    m_hwnd = nullptr;
}

WNDPROC TestWindow::ClassProcedure() {
    return &LoggingProcedure;
}

std::vector<std::string>& TestWindow::Log() {
    static std::vector<std::string> log;
    return log;
}

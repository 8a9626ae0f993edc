#pragma once
// A real top-level window of a class of its own for tests of window procedures. The class's
// procedure writes each message it sees (of the numbers a test asks about) into a log shared by
// the test, then behaves as the default procedure.

#include <windows.h>

#include <string>
#include <vector>

struct HostWindow;

class TestWindow {
public:
    // Messages at or above this number are the ones tests send; the class procedure logs them.
    static constexpr UINT kFirstTestMessage = WM_APP + 1;

    TestWindow();
    ~TestWindow();
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    HWND Hwnd() const { return m_hwnd; }
    HostWindow* Host() const { return reinterpret_cast<HostWindow*>(m_hwnd); }
    // Destroys the window now; the destructor then has nothing to do.
    void Destroy();

    static WNDPROC ClassProcedure();
    // What the procedures under test wrote, in order; each test clears it.
    static std::vector<std::string>& Log();

private:
    HWND m_hwnd = nullptr;
};

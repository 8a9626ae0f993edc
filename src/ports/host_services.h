#pragma once
// What the core asks of the host process itself: its modes, its system variables, its command
// line, its command stack and dynamic linker, and where its product keeps its settings.

#include <functional>
#include <optional>
#include <string>

// The application handle the host passes to the entry point; the core only hands it back.
struct HostAppPacket;
struct HostMessage;
struct HostWindow;

// Sees each message of the host's main loop before it is dispatched.
using HostMessageWatcher = void (*)(const HostMessage& message);

using HostCommandFunction = std::function<void()>;

struct HostCommandRegistration {
    std::wstring group;
    std::wstring globalName;
    std::wstring localName;
    unsigned flags = 0;
    HostCommandFunction function;
};

class HostServices {
public:
    virtual ~HostServices() = default;

    virtual bool IsInBackgroundMode() = 0;
    virtual bool IsQuitting() = 0;

    // A system variable as text (integers in decimal); nullopt when the host has no such name.
    virtual std::optional<std::wstring> GetVariable(const std::wstring& name) = 0;
    virtual bool SetVariable(const std::wstring& name, const std::wstring& value) = 0;

    // Text for the command line, already formatted; "\n" ends a line.
    virtual void Print(const std::wstring& text) = 0;

    // The host's registry key below the user hive, without the hive ("Software\\...\\R17.0\\...").
    virtual std::wstring ProductKey() = 0;
    // The registry key of the host's current profile, with or without the hive's name at its
    // front; empty when the host cannot name it.
    virtual std::wstring ProfileKey() = 0;

    // The module's "ProductVersion" text ("2, 0, 0, 97") and the machine's name.
    virtual std::wstring ModuleProductVersion() = 0;
    virtual std::wstring ComputerName() = 0;

    // The year the host's main program file was last modified (the banner's credit line).
    virtual int MainExecutableYear() = 0;

    // The command stack. Returns false when the host refuses (a name already taken).
    virtual bool AddCommand(const HostCommandRegistration& command) = 0;
    virtual void RemoveGroup(const std::wstring& group) = 0;

    // Redraws the command prompt after a relayout wiped it.
    virtual void PostCommandPrompt() = 0;
    // The view window of the active drawing (acedGetAcadDwgView), or null.
    virtual HostWindow* ActiveDwgView() = 0;

    // acedRegisterWatchWinMsg and its removal.
    virtual void RegisterMessageWatcher(HostMessageWatcher watcher) = 0;
    virtual void RemoveMessageWatcher(HostMessageWatcher watcher) = 0;

    // The dynamic linker.
    virtual void RegisterAppMdiAware(HostAppPacket* pkt) = 0;
    virtual void UnlockApplication(HostAppPacket* pkt) = 0;

    // The host's roaming root folder (where its "Support" folder for the user lives), with a
    // trailing separator; empty when it has none.
    virtual std::wstring RoamableRootFolder() = 0;
    // The host's release text ("17.0s (LMS Tech)"); its leading number is the host's version.
    virtual std::wstring ReleaseName() = 0;
    // A string typed at the command line after `prompt`, spaces allowed or not; nothing when the
    // user cancels or the input is not a normal one.
    virtual std::optional<std::wstring> GetString(const std::wstring& prompt,
                                                  bool allowSpaces) = 0;
};

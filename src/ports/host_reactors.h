#pragma once
// The host's two event sources as the core subscribes to them: the editor (commands, LISP,
// saves, opens) and the document manager. Every callback has an empty default, as the host's
// reactor classes do; a reactor overrides what it follows.

#include <string>

struct HostDocument;
struct HostDatabase;

class EditorReactor {
public:
    virtual ~EditorReactor() = default;
    virtual void saveComplete(HostDatabase*, const std::wstring& /*actualName*/) {}
    virtual void commandWillStart(const std::wstring& /*command*/) {}
    virtual void commandEnded(const std::wstring& /*command*/) {}
    virtual void commandCancelled(const std::wstring& /*command*/) {}
    virtual void commandFailed(const std::wstring& /*command*/) {}
    virtual void lispWillStart(const std::wstring& /*firstLine*/) {}
    virtual void lispEnded() {}
    virtual void lispCancelled() {}
    virtual void endDwgOpen(const std::wstring& /*fileName*/) {}
};

class DocManagerReactor {
public:
    virtual ~DocManagerReactor() = default;
    virtual void documentCreated(HostDocument*) {}
    virtual void documentToBeDestroyed(HostDocument*) {}
    virtual void documentDestroyed(const std::wstring& /*fileName*/) {}
    virtual void documentLockModeChanged(HostDocument*) {}
    virtual void documentActivated(HostDocument*) {}
};

class HostReactors {
public:
    virtual ~HostReactors() = default;
    // False when the host has no editor object or no document manager (reactors then stay
    // unattached).
    virtual bool HasEditor() = 0;
    virtual bool HasDocManager() = 0;
    virtual void AddEditorReactor(EditorReactor* reactor) = 0;  // not owned
    virtual void RemoveEditorReactor(EditorReactor* reactor) = 0;
    virtual void AddDocManagerReactor(DocManagerReactor* reactor) = 0;
    virtual void RemoveDocManagerReactor(DocManagerReactor* reactor) = 0;
};

#pragma once
// Follows the host's commands for the bar: which command runs, whether the active drawing is
// modified when one ends, and what a save named the drawing. A LISP expression can be made one
// silent stretch (AvoidSaveasInLisp), inside which commands are not followed and saves rename
// nothing.

#include <cstdint>
#include <string>

#include "ports/host_reactors.h"

class HvTabrow;

class HvTrEditorReactor : public EditorReactor {
public:
    // Attaches to the host's editor when there is one; `pTabrow` is the bar being built.
    explicit HvTrEditorReactor(HvTabrow* pTabrow);
    ~HvTrEditorReactor() override;
    HvTrEditorReactor(const HvTrEditorReactor&) = delete;
    HvTrEditorReactor& operator=(const HvTrEditorReactor&) = delete;

    void saveComplete(HostDatabase* db, const std::wstring& actualName) override;
    void commandWillStart(const std::wstring& command) override;
    void commandEnded(const std::wstring& command) override;
    void commandCancelled(const std::wstring& command) override;
    void commandFailed(const std::wstring& command) override;
    void lispWillStart(const std::wstring& firstLine) override;
    void lispEnded() override;
    void lispCancelled() override;
    void endDwgOpen(const std::wstring& fileName) override;

    // The modified mark of the active drawing brought up to date; `name` only has to be
    // non-empty. Automation failures other than a missing document interface pass to the
    // caller (the host's dispatch).
    void OnCommandFinished(const std::wstring& name);

    HvTabrow* m_pTabrow = nullptr;  // not owned: the bar owns this reactor
    std::wstring m_strCommand;      // the command in progress, empty when none
    std::uint8_t m_bInLisp = 0;
    std::int32_t m_nAvoidSaveasInLisp = 0;

private:
    bool m_bAttached = false;
};

#pragma once
// Message boxes that answer OK and keep each text with its flags, for tests that check what a
// user is told.

#include <string>
#include <utility>
#include <vector>

#include "ports/message_box.h"

struct RecordingMessageBoxes : MessageBoxes {
    std::vector<std::pair<std::wstring, unsigned>> shown;

    int Show(const std::wstring& text, const std::wstring&, unsigned flags) override {
        shown.emplace_back(text, flags);
        return mb::kIdOk;
    }
};

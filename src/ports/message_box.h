#pragma once
// Modal message boxes. The button and icon flags and the answers carry the window system's own
// values, so that adapters pass them through unchanged.

#include <string>

namespace mb {
// Buttons (low nibble) and icons.
constexpr unsigned kOk = 0x00;
constexpr unsigned kOkCancel = 0x01;
constexpr unsigned kYesNoCancel = 0x03;
constexpr unsigned kYesNo = 0x04;
constexpr unsigned kIconError = 0x10;
constexpr unsigned kIconQuestion = 0x20;
constexpr unsigned kIconWarning = 0x30;
constexpr unsigned kIconInformation = 0x40;
// Answers.
constexpr int kIdOk = 1;
constexpr int kIdCancel = 2;
constexpr int kIdYes = 6;
constexpr int kIdNo = 7;
}  // namespace mb

class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    // Shows `text` with `caption` (empty: the application's name) and returns the answer.
    virtual int Show(const std::wstring& text, const std::wstring& caption, unsigned flags) = 0;
};

#pragma once
// The failure of an automation call: the host's result code and its description. The core
// catches it at a command's edge and shows "Error [0x%08X]\n%s".

#include <cstdint>
#include <stdexcept>
#include <string>

using HRESULT = std::int32_t;

namespace hr {
constexpr HRESULT kOk = 0;
constexpr HRESULT kNoInterface = static_cast<HRESULT>(0x80004002);
constexpr HRESULT kPointer = static_cast<HRESULT>(0x80004003);  // a null interface pointer used
constexpr HRESULT kFail = static_cast<HRESULT>(0x80004005);
constexpr HRESULT kCallRejected = static_cast<HRESULT>(0x80010001);
}  // namespace hr

class ComError : public std::runtime_error {
public:
    ComError(HRESULT code, std::wstring description)
        : std::runtime_error("automation call failed"),
          m_code(code),
          m_description(std::move(description)) {}
    HRESULT Error() const { return m_code; }
    const std::wstring& Description() const { return m_description; }

private:
    HRESULT m_code;
    std::wstring m_description;
};

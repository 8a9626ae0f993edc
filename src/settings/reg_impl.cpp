#include "settings/reg_impl.h"

#include <cstring>
#include <cwchar>
#include <utility>

#include "ports/port.h"
#include "ports/window_system.h"
#include "settings/registry_key.h"
#include "settings/window_placement.h"

namespace {

std::optional<RegValue> ReadValue(const HvRegImpl& regImpl, const std::wstring& section,
                                  const std::wstring& key) {
    CRegistryKey sectionKey(RegHive::CurrentUser, regImpl.SectionPath(section), true,
                            regImpl.m_strKeyClass);
    return sectionKey.QueryValue(key);
}

bool WriteValue(const HvRegImpl& regImpl, const std::wstring& section, const std::wstring& key,
                const RegValue& value) {
    CRegistryKey sectionKey(RegHive::CurrentUser, regImpl.SectionPath(section), true,
                            regImpl.m_strKeyClass);
    return sectionKey.SetValue(key, value);
}

}  // namespace

HvRegImpl::HvRegImpl(std::wstring baseKey, std::wstring keyClass)
    : m_strBaseKey(std::move(baseKey)), m_strKeyClass(std::move(keyClass)) {}

HvRegImpl::~HvRegImpl() = default;

void HvRegImpl::SetRegistryRoot(const std::wstring& baseKey, const std::wstring& keyClass) {
    m_strBaseKey = baseKey;
    m_strKeyClass = keyClass;
}

std::wstring HvRegImpl::SectionPath(const std::wstring& section) const {
    return m_strBaseKey + L'\\' + section;
}

int HvRegImpl::GetInt(const std::wstring& section, const std::wstring& key, int nDefault) const {
    // Four bytes are asked for and the type is not looked at: a shorter value lands over the
    // default's low bytes, a longer one does not fit and leaves the default.
    std::optional<RegValue> value = ReadValue(*this, section, key);
    if (!value || value->data.size() > 4)
        return nDefault;
    auto bits = static_cast<std::uint32_t>(nDefault);
    for (std::size_t i = 0; i < value->data.size(); ++i) {
        bits &= ~(0xFFu << (8 * i));
        bits |= static_cast<std::uint32_t>(value->data[i]) << (8 * i);
    }
    return static_cast<int>(bits);
}

bool HvRegImpl::SetInt(const std::wstring& section, const std::wstring& key, int value) {
    auto bits = static_cast<std::uint32_t>(value);
    RegValue stored{reg::kDword, {}};
    for (int shift = 0; shift < 32; shift += 8) {
        stored.data.push_back(static_cast<std::uint8_t>((bits >> shift) & 0xFF));
    }
    return WriteValue(*this, section, key, stored);
}

double HvRegImpl::GetDouble(const std::wstring& section, const std::wstring& key,
                            double dDefault) const {
    std::wstring text = GetString(section, key, {});
    if (text.empty())
        return dDefault;
    return std::wcstod(text.c_str(), nullptr);
}

bool HvRegImpl::SetDouble(const std::wstring& section, const std::wstring& key, double value) {
    wchar_t text[64];
    std::swprintf(text, sizeof text / sizeof text[0], L"%g", value);
    return SetString(section, key, text);
}

std::wstring HvRegImpl::GetString(const std::wstring& section, const std::wstring& key,
                                  const std::wstring& strDefault) const {
    std::optional<RegValue> value = ReadValue(*this, section, key);
    if (!value)
        return strDefault;
    std::wstring text = reg::StringText(value->data);
    return text.empty() ? strDefault : text;
}

bool HvRegImpl::SetString(const std::wstring& section, const std::wstring& key,
                          const std::wstring& value) {
    return WriteValue(*this, section, key, RegValue{reg::kSz, reg::StringBytes(value)});
}

bool HvRegImpl::GetBinary(const std::wstring& section, const std::wstring& key, void* buffer,
                          std::size_t size) const {
    std::optional<RegValue> value = ReadValue(*this, section, key);
    if (!value || value->type != reg::kBinary || value->data.size() != size)
        return false;
    if (size > 0)
        std::memcpy(buffer, value->data.data(), size);
    return true;
}

bool HvRegImpl::SetBinary(const std::wstring& section, const std::wstring& key, const void* data,
                          std::size_t size) {
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    return WriteValue(*this, section, key,
                      RegValue{reg::kBinary, std::vector<std::uint8_t>(bytes, bytes + size)});
}

bool HvRegImpl::GetFont(const std::wstring& section, const std::wstring& key,
                        win::LOGFONTW& font) const {
    return GetBinary(section, key, &font, sizeof font);
}

bool HvRegImpl::SetFont(const std::wstring& section, const std::wstring& key,
                        const win::LOGFONTW& font) {
    return SetBinary(section, key, &font, sizeof font);
}

bool HvRegImpl::LoadWindowPlacement(const std::wstring& section, const std::wstring& key,
                                    HostWindow* window) const {
    std::optional<WindowPlacement> placement = ParseWindowPlacement(GetString(section, key, {}));
    if (!placement)
        return false;
    WindowSystem& windows = Use<WindowSystem>();
    if (!windows.IsWindow(window))
        return false;
    if (placement->maximized) {
        windows.Maximize(window);
    } else {
        // No check that the rectangle is on a screen: a placement is restored as it was saved.
        windows.Move(window, placement->rect, true);
    }
    return true;
}

void HvRegImpl::SaveWindowPlacement(const std::wstring& section, const std::wstring& key,
                                    HostWindow* window) {
    WindowSystem& windows = Use<WindowSystem>();
    if (!windows.IsWindow(window))
        return;
    SetString(section, key,
              FormatWindowPlacement({windows.ScreenRect(window), windows.IsZoomed(window)}));
}

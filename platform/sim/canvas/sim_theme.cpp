#include "platform/sim/canvas/sim_theme.h"

#include "foundation/no_case.h"
#include "ports/canvas.h"

namespace {

class SimTabThemeData : public ThemeData {
public:
    explicit SimTabThemeData(std::shared_ptr<bool> active) : m_pActive(std::move(active)) {}

    bool DrawBackground(Canvas& canvas, int part, int state, const win::RECT& rect) override {
        if (!*m_pActive || rect.IsEmpty())
            return false;
        if (part == tab_theme::kPane) {
            canvas.FillRect(rect, SimTheme::kPaneFill);
            canvas.Draw3dRect(rect, SimTheme::kBorder, SimTheme::kBorder);
            return true;
        }
        if (part != tab_theme::kTabItem || state < tab_theme::kStateNormal ||
            state > tab_theme::kStateSelected)
            return false;
        static constexpr win::COLORREF kFills[] = {SimTheme::kNormalFill, SimTheme::kHotFill,
                                                   SimTheme::kSelectedFill};
        static constexpr win::COLORREF kAccents[] = {SimTheme::kNormalAccent, SimTheme::kHotAccent,
                                                     SimTheme::kSelectedAccent};
        const int i = state - tab_theme::kStateNormal;
        canvas.FillRect(rect, kFills[i]);
        canvas.FillRect(
            {rect.left + 1, rect.top + 1, rect.right - 1, rect.top + 1 + SimTheme::kAccentRows},
            kAccents[i]);
        canvas.FillRect({rect.left, rect.top, rect.right, rect.top + 1}, SimTheme::kBorder);
        canvas.FillRect({rect.left, rect.top, rect.left + 1, rect.bottom}, SimTheme::kBorder);
        canvas.FillRect({rect.right - 1, rect.top, rect.right, rect.bottom}, SimTheme::kBorder);
        return true;
    }

private:
    std::shared_ptr<bool> m_pActive;
};

}  // namespace

std::unique_ptr<ThemeData> SimTheme::Open(const std::wstring& classList) {
    if (!*m_pActive || !EqualNoCase(classList, L"TAB"))
        return nullptr;
    return std::make_unique<SimTabThemeData>(m_pActive);
}

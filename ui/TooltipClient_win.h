#pragma once
// Lumora's side of tooltip.dll: balloon help on the controls of one window.
#include <windows.h>

#include <map>
#include <string>
#include <string_view>

#include "ui/tooltip/Tooltip.h"

namespace lumora {

class TooltipClient {
public:
    TooltipClient() = default;
    ~TooltipClient();
    TooltipClient(const TooltipClient&) = delete;
    TooltipClient& operator=(const TooltipClient&) = delete;

    // False when the component cannot be created (not registered, or its file is gone): the
    // program then runs without balloon help.
    bool Attach(HWND owner);
    // The control's text goes to the component only when it differs from the one it has.
    void Set(HWND control, std::string_view text);
    void SetColors(COLORREF background, COLORREF text);
    void Enable(bool on);
    // A balloon with a title pointing at `at` (screen pixels) for `ms` milliseconds.
    void ShowBalloon(POINT at, std::string_view title, std::string_view text, unsigned ms);

private:
    ITooltip* tip_ = nullptr;
    // The text each control's tool has: a control listed here has a tool, later texts only replace it.
    std::map<HWND, std::string> texts_;
};

}  // namespace lumora

#pragma once
// Lumora's side of tooltip.dll: balloon help on the controls of one window.
#include <windows.h>

#include <set>
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
    void Set(HWND control, std::string_view text);
    void SetColors(COLORREF background, COLORREF text);
    void Enable(bool on);

private:
    ITooltip* tip_ = nullptr;
    std::set<HWND> added_;  // controls that already have a tool: later texts only replace it
};

}  // namespace lumora

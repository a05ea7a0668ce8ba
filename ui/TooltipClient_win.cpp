#include "ui/TooltipClient_win.h"


#include "platform/WinText_win.h"

namespace lumora {

TooltipClient::~TooltipClient() {
    if (tip_) tip_->Release();
}

bool TooltipClient::Attach(HWND owner) {
    if (tip_) return true;
    void* raw = nullptr;
    if (FAILED(CoCreateInstance(kTooltipClsid, nullptr, CLSCTX_INPROC_SERVER, kTooltipIid, &raw)) || !raw) return false;
    tip_ = static_cast<ITooltip*>(raw);
    if (FAILED(tip_->Create(reinterpret_cast<LONG_PTR>(owner)))) {
        tip_->Release();
        tip_ = nullptr;
        return false;
    }
    return true;
}

void TooltipClient::Set(HWND control, std::string_view text) {
    if (!tip_ || !control) return;
    BSTR b = SysAllocString(Widen(text).c_str());
    if (added_.insert(control).second) {
        tip_->AddTool(reinterpret_cast<LONG_PTR>(control), b);
    } else {
        tip_->SetText(reinterpret_cast<LONG_PTR>(control), b);
    }
    SysFreeString(b);
}

void TooltipClient::SetColors(COLORREF background, COLORREF text) {
    if (tip_) tip_->SetColors(static_cast<LONG>(background), static_cast<LONG>(text));
}

void TooltipClient::Enable(bool on) {
    if (tip_) tip_->Enable(on ? VARIANT_TRUE : VARIANT_FALSE);
}

}  // namespace lumora

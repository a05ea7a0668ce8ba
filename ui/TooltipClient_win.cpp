#include "ui/TooltipClient_win.h"

#include "app/Startup.h"
#include "platform/FileSystem_win.h"
#include "platform/WinText_win.h"

namespace lumora {
namespace {

// A portable copy registers nothing: the component is then taken straight from tooltip.dll beside the
// program, which stays loaded for the program's life.
HRESULT CreateFromProgramFolder(void** raw) {
    static HMODULE dll = LoadLibraryW(Widen(ProgramFolder() + "\\" + std::string(kTooltipFile)).c_str());
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto get =
        dll ? reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(dll, "DllGetClassObject")))
            : nullptr;
    IClassFactory* factory = nullptr;
    if (!get || FAILED(get(kTooltipClsid, IID_IClassFactory, reinterpret_cast<void**>(&factory))) || !factory) {
        return E_FAIL;
    }
    const HRESULT hr = factory->CreateInstance(nullptr, kTooltipIid, raw);
    factory->Release();
    return hr;
}

}  // namespace

TooltipClient::~TooltipClient() {
    if (tip_) tip_->Release();
}

bool TooltipClient::Attach(HWND owner) {
    if (tip_) return true;
    void* raw = nullptr;
    if ((FAILED(CoCreateInstance(kTooltipClsid, nullptr, CLSCTX_INPROC_SERVER, kTooltipIid, &raw)) || !raw) &&
        (FAILED(CreateFromProgramFolder(&raw)) || !raw)) {
        return false;
    }
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
    const auto [it, added] = texts_.try_emplace(control, text);
    if (!added && it->second == text) return;
    it->second = text;
    BSTR b = SysAllocString(Widen(text).c_str());
    if (added) {
        tip_->AddTool(reinterpret_cast<LONG_PTR>(control), b);
    } else {
        tip_->SetText(reinterpret_cast<LONG_PTR>(control), b);
    }
    SysFreeString(b);
}

void TooltipClient::ShowBalloon(POINT at, std::string_view title, std::string_view text, unsigned ms) {
    if (!tip_) return;
    BSTR t = SysAllocString(Widen(title).c_str());
    BSTR b = SysAllocString(Widen(text).c_str());
    tip_->ShowBalloon(at.x, at.y, t, b, static_cast<LONG>(ms));
    SysFreeString(b);
    SysFreeString(t);
}

void TooltipClient::SetColors(COLORREF background, COLORREF text) {
    if (tip_) tip_->SetColors(static_cast<LONG>(background), static_cast<LONG>(text));
}

void TooltipClient::Enable(bool on) {
    if (tip_) tip_->Enable(on ? VARIANT_TRUE : VARIANT_FALSE);
}

}  // namespace lumora

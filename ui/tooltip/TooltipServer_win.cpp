// tooltip.dll: the balloon-tip component. One class, "TT.Tooltip", apartment-threaded.
#include <windows.h>
#include <commctrl.h>
#include <olectl.h>

#include <new>

#include "ui/TipGuard_win.h"
#include "ui/tooltip/Tooltip.h"

namespace {

HINSTANCE gModule = nullptr;
LONG gObjects = 0;
LONG gLocks = 0;

// The owner's DPI: GetDpiForWindow where the system has it (Windows 10 1607), else the screen's.
int DpiOf(HWND window) {
    using GetDpiForWindowFn = UINT(WINAPI*)(HWND);
    const auto get = reinterpret_cast<GetDpiForWindowFn>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    if (get && window && get(window) > 0) return static_cast<int>(get(window));
    HDC screen = GetDC(nullptr);
    const int dpi = screen ? GetDeviceCaps(screen, LOGPIXELSY) : 96;
    if (screen) ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : 96;
}

// The balloon's time is up: it goes, and its timer with it.
void CALLBACK HideBalloonWhenDue(HWND balloon, UINT, UINT_PTR timer, DWORD) {
    KillTimer(balloon, timer);
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.hwnd = GetWindow(balloon, GW_OWNER);
    info.uId = lumora::kBalloonToolId;
    SendMessageW(balloon, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&info));
}

constexpr UINT_PTR kBalloonTimer = 1;

class Tooltip final : public lumora::ITooltip {
public:
    Tooltip() { InterlockedIncrement(&gObjects); }
    ~Tooltip() {
        if (tip_) DestroyWindow(tip_);
        if (balloon_) DestroyWindow(balloon_);
        InterlockedDecrement(&gObjects);
    }

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
        if (!out) return E_POINTER;
        if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch) ||
            IsEqualIID(riid, lumora::kTooltipIid)) {
            *out = static_cast<lumora::ITooltip*>(this);
            AddRef();
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&refs_)); }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG n = InterlockedDecrement(&refs_);
        if (n == 0) delete this;
        return static_cast<ULONG>(n);
    }

    // IDispatch, without a type library: names map to the dispatch ids.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count) *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        static const struct {
            const wchar_t* name;
            DISPID id;
        } kNames[] = {{L"Create", lumora::kDispCreate},          {L"AddTool", lumora::kDispAddTool},
                      {L"SetText", lumora::kDispSetText},        {L"SetColors", lumora::kDispSetColors},
                      {L"Enable", lumora::kDispEnable},          {L"ShowBalloon", lumora::kDispShowBalloon},
                      {L"HideBalloon", lumora::kDispHideBalloon}};
        HRESULT hr = S_OK;
        for (UINT i = 0; i < count; ++i) {
            ids[i] = DISPID_UNKNOWN;
            for (const auto& n : kNames) {
                if (i == 0 && lstrcmpiW(names[0], n.name) == 0) ids[0] = n.id;
            }
            if (ids[i] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
        }
        return hr;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                                     UINT* argErr) override {
        if (!(flags & DISPATCH_METHOD) || !params) return DISP_E_MEMBERNOTFOUND;
        // Arguments arrive last first.
        auto arg = [&](UINT index, VARTYPE type, VARIANT& out) -> HRESULT {
            if (index >= params->cArgs) return DISP_E_BADPARAMCOUNT;
            VariantInit(&out);
            const HRESULT hr = VariantChangeType(&out, &params->rgvarg[params->cArgs - 1 - index], 0, type);
            if (FAILED(hr) && argErr) *argErr = params->cArgs - 1 - index;
            return hr;
        };
        VARIANT a{}, b{}, c{}, d{}, e{};
        HRESULT hr = DISP_E_MEMBERNOTFOUND;
        switch (id) {
            case lumora::kDispCreate:
                if (SUCCEEDED(hr = arg(0, VT_I8, a))) hr = Create(static_cast<LONG_PTR>(a.llVal));
                break;
            case lumora::kDispAddTool:
            case lumora::kDispSetText:
                if (SUCCEEDED(hr = arg(0, VT_I8, a)) && SUCCEEDED(hr = arg(1, VT_BSTR, b))) {
                    hr = id == lumora::kDispAddTool ? AddTool(static_cast<LONG_PTR>(a.llVal), b.bstrVal)
                                                    : SetText(static_cast<LONG_PTR>(a.llVal), b.bstrVal);
                }
                break;
            case lumora::kDispSetColors:
                if (SUCCEEDED(hr = arg(0, VT_I4, a)) && SUCCEEDED(hr = arg(1, VT_I4, b))) hr = SetColors(a.lVal, b.lVal);
                break;
            case lumora::kDispEnable:
                if (SUCCEEDED(hr = arg(0, VT_BOOL, a))) hr = Enable(a.boolVal);
                break;
            case lumora::kDispShowBalloon:
                if (SUCCEEDED(hr = arg(0, VT_I4, a)) && SUCCEEDED(hr = arg(1, VT_I4, b)) &&
                    SUCCEEDED(hr = arg(2, VT_BSTR, c)) && SUCCEEDED(hr = arg(3, VT_BSTR, d)) &&
                    SUCCEEDED(hr = arg(4, VT_I4, e))) {
                    hr = ShowBalloon(a.lVal, b.lVal, c.bstrVal, d.bstrVal, e.lVal);
                }
                break;
            case lumora::kDispHideBalloon:
                hr = HideBalloon();
                break;
        }
        for (VARIANT* v : {&a, &b, &c, &d, &e}) VariantClear(v);
        return hr;
    }

    // ITooltip
    HRESULT STDMETHODCALLTYPE Create(LONG_PTR owner) override {
        if (tip_) return S_FALSE;
        owner_ = reinterpret_cast<HWND>(owner);
        tip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                               WS_POPUP | TTS_BALLOON | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                               CW_USEDEFAULT, CW_USEDEFAULT, owner_, nullptr, gModule, nullptr);
        if (!tip_) return HRESULT_FROM_WIN32(GetLastError());
        lumora::GuardTip(tip_);
        // Room for the two-line help texts (360 pixels at 96 DPI); line breaks in a text start new lines.
        SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, MulDiv(360, DpiOf(owner_), 96));
        SendMessageW(tip_, TTM_SETDELAYTIME, TTDT_AUTOPOP, 15000);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE AddTool(LONG_PTR control, BSTR text) override {
        if (!tip_) return E_UNEXPECTED;
        TOOLINFOW info = Info(control, text);
        return SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info)) ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE SetText(LONG_PTR control, BSTR text) override {
        if (!tip_) return E_UNEXPECTED;
        TOOLINFOW info = Info(control, text);
        SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetColors(LONG background, LONG text) override {
        if (!tip_) return E_UNEXPECTED;
        if (background != -1) SendMessageW(tip_, TTM_SETTIPBKCOLOR, static_cast<WPARAM>(background), 0);
        if (text != -1) SendMessageW(tip_, TTM_SETTIPTEXTCOLOR, static_cast<WPARAM>(text), 0);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Enable(VARIANT_BOOL on) override {
        if (!tip_) return E_UNEXPECTED;
        SendMessageW(tip_, TTM_ACTIVATE, on != VARIANT_FALSE, 0);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE ShowBalloon(LONG x, LONG y, BSTR title, BSTR text, LONG ms) override {
        if (!owner_) return E_UNEXPECTED;
        if (!balloon_ && !MakeBalloon()) return HRESULT_FROM_WIN32(GetLastError());
        TOOLINFOW info = BalloonInfo(text);
        SendMessageW(balloon_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&info));
        // TTI_INFO: the blue "i" beside the title; a balloon without a title shows no icon either.
        SendMessageW(balloon_, TTM_SETTITLEW, title && *title ? 1 : 0, reinterpret_cast<LPARAM>(title ? title : L""));
        SendMessageW(balloon_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
        SendMessageW(balloon_, TTM_TRACKPOSITION, 0, MAKELPARAM(static_cast<short>(x), static_cast<short>(y)));
        SendMessageW(balloon_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&info));
        SetTimer(balloon_, kBalloonTimer, static_cast<UINT>(ms > 0 ? ms : 5000), HideBalloonWhenDue);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE HideBalloon() override {
        if (balloon_) HideBalloonWhenDue(balloon_, 0, kBalloonTimer, 0);
        return S_OK;
    }

private:
    // The balloon is a tip window of its own, tracked by hand: the help tips' window follows the mouse.
    bool MakeBalloon() {
        balloon_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                   WS_POPUP | TTS_BALLOON | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                                   CW_USEDEFAULT, CW_USEDEFAULT, owner_, nullptr, gModule, nullptr);
        if (!balloon_) return false;
        SendMessageW(balloon_, TTM_SETMAXTIPWIDTH, 0, MulDiv(320, DpiOf(owner_), 96));
        TOOLINFOW info = BalloonInfo(nullptr);
        SendMessageW(balloon_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
        return true;
    }
    TOOLINFOW BalloonInfo(BSTR text) const {
        TOOLINFOW info{};
        info.cbSize = TTTOOLINFOW_V2_SIZE;
        info.uFlags = TTF_TRACK;  // without TTF_ABSOLUTE the stem points at the tracking point
        info.hwnd = owner_;
        info.uId = lumora::kBalloonToolId;
        info.lpszText = text ? text : const_cast<wchar_t*>(L"");
        return info;
    }
    TOOLINFOW Info(LONG_PTR control, BSTR text) const {
        TOOLINFOW info{};
        // The size of the version-5.8 structure, so the tips work without visual styles too.
        info.cbSize = TTTOOLINFOW_V2_SIZE;
        info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
        info.hwnd = owner_;
        info.uId = static_cast<UINT_PTR>(control);
        info.lpszText = text ? text : const_cast<wchar_t*>(L"");
        return info;
    }

    LONG refs_ = 1;
    HWND owner_ = nullptr;
    HWND tip_ = nullptr;
    HWND balloon_ = nullptr;  // made at the first balloon
};

class Factory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** out) override {
        if (!out) return E_POINTER;
        if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IClassFactory)) {
            *out = static_cast<IClassFactory*>(this);
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // a static object
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID riid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        auto* tip = new (std::nothrow) Tooltip;
        if (!tip) return E_OUTOFMEMORY;
        const HRESULT hr = tip->QueryInterface(riid, out);
        tip->Release();
        return hr;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        if (lock) {
            InterlockedIncrement(&gLocks);
        } else {
            InterlockedDecrement(&gLocks);
        }
        return S_OK;
    }
};

Factory gFactory;

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        gModule = module;
        DisableThreadLibraryCalls(module);
    }
    return TRUE;
}

__declspec(dllexport) HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID clsid, REFIID riid, void** out) {
    if (!IsEqualCLSID(clsid, lumora::kTooltipClsid)) return CLASS_E_CLASSNOTAVAILABLE;
    return gFactory.QueryInterface(riid, out);
}

__declspec(dllexport) HRESULT STDAPICALLTYPE DllCanUnloadNow() {
    return gObjects == 0 && gLocks == 0 ? S_OK : S_FALSE;
}

}  // extern "C"

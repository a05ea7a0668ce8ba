#pragma once
// The interface of tooltip.dll ("TT.Tooltip"): balloon tips for Lumora's image buttons, as a
// small in-process COM server. Shared by the server and by Lumora, which calls it through the
// vtable; scripts may use the same methods through IDispatch.
#include <windows.h>
#include <oaidl.h>

namespace lumora {

// {F2E3C6F5-2F8F-41F9-BDA5-8E19A020CA7E}
inline constexpr CLSID kTooltipClsid = {0xF2E3C6F5, 0x2F8F, 0x41F9, {0xBD, 0xA5, 0x8E, 0x19, 0xA0, 0x20, 0xCA, 0x7E}};
// {E60ED377-9609-47AD-AC0B-7A7B92A4E657}: the dual interface "_Tooltip".
inline constexpr IID kTooltipIid = {0xE60ED377, 0x9609, 0x47AD, {0xAC, 0x0B, 0x7A, 0x7B, 0x92, 0xA4, 0xE6, 0x57}};

// Dispatch ids, in vtable order.
enum TooltipDispId : DISPID {
    kDispCreate = 1,
    kDispAddTool,
    kDispSetText,
    kDispSetColors,
    kDispEnable,
    kDispShowBalloon,
    kDispHideBalloon,
};

// The balloon's one tool, on the owner window: a caller that reads the balloon's text asks for it.
inline constexpr UINT_PTR kBalloonToolId = 1;

struct ITooltip : public IDispatch {
    // Makes the balloon window for the controls of `owner` (a top-level window).
    virtual HRESULT STDMETHODCALLTYPE Create(LONG_PTR owner) = 0;
    // Shows `text` (UTF-16, line breaks allowed) when the mouse rests on `control`.
    virtual HRESULT STDMETHODCALLTYPE AddTool(LONG_PTR control, BSTR text) = 0;
    virtual HRESULT STDMETHODCALLTYPE SetText(LONG_PTR control, BSTR text) = 0;
    // Colours as COLORREF values; -1 keeps the system's.
    virtual HRESULT STDMETHODCALLTYPE SetColors(LONG background, LONG text) = 0;
    virtual HRESULT STDMETHODCALLTYPE Enable(VARIANT_BOOL on) = 0;
    // A balloon with a title whose stem points at (x, y) on the screen, for `ms` milliseconds; it needs
    // no control under the pointer. A new one replaces the one showing. Added after the first five:
    // the vtable of older callers stays as it was.
    virtual HRESULT STDMETHODCALLTYPE ShowBalloon(LONG x, LONG y, BSTR title, BSTR text, LONG ms) = 0;
    virtual HRESULT STDMETHODCALLTYPE HideBalloon() = 0;
};

}  // namespace lumora

#pragma once
// Hosting of ActiveX player controls in a window, without ATL: a small OLE container site, the
// control in-place active and filling its window, called late-bound through IDispatch.
#include <windows.h>
// (after windows.h)
#include <ole2.h>

#include <optional>
#include <string>

#include "ports/ControlPort.h"

namespace lumora {

class ControlSite;

// One hosted control at a time.
class ActiveXControl {
public:
    ActiveXControl() = default;
    ~ActiveXControl() { Destroy(); }
    ActiveXControl(const ActiveXControl&) = delete;
    ActiveXControl& operator=(const ActiveXControl&) = delete;

    // True when `progId` names a control registered on this system.
    static bool IsRegistered(const wchar_t* progId);

    // Creates the control and activates it in place over the client area of `window`.
    bool Create(const wchar_t* progId, HWND window);
    // Follows the window's new client size.
    void Fit();
    bool PutText(const wchar_t* property, const std::wstring& value);
    bool Call(DISPID id);
    std::optional<double> Number(DISPID id);
    bool PutNumber(DISPID id, double value);
    std::optional<double> NumberByName(const wchar_t* property);
    void Destroy();

private:
    bool Invoke(DISPID id, WORD flags, DISPPARAMS& params, VARIANT* result);
    std::optional<DISPID> IdOf(const wchar_t* name);

    IOleObject* object_ = nullptr;
    IDispatch* dispatch_ = nullptr;
    ControlSite* site_ = nullptr;
    HWND window_ = nullptr;
};

// The player controls as the media engine asks for them.
class WinControls final : public ControlPort {
public:
    bool Available(HostedControl control) override;
    bool Open(HostedControl control, const std::string& path, WindowId window) override;
    bool Call(int dispatchId) override { return control_.Call(dispatchId); }
    std::optional<double> Number(int dispatchId) override { return control_.Number(dispatchId); }
    bool SetNumber(int dispatchId, double value) override { return control_.PutNumber(dispatchId, value); }
    std::optional<double> NumberByName(const std::string& name) override;
    void Close() override { control_.Destroy(); }
    // The video window changed size.
    void Fit() { control_.Fit(); }

private:
    ActiveXControl control_;
};

}  // namespace lumora

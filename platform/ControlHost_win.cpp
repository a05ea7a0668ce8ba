#include "platform/ControlHost_win.h"

#include <oleauto.h>
#include <olectl.h>

#include "platform/WinText_win.h"

namespace lumora {

// The container side every in-place control talks to: it tells the control where it lives and
// keeps it inside the host window. It is its own frame; it has no menus or tool bars to share.
// Some controls (Wine's among them) activate only in a site that speaks IOleInPlaceSiteEx.
class ControlSite final : public IOleClientSite, public IOleInPlaceSiteEx, public IOleInPlaceFrame {
public:
    explicit ControlSite(HWND window) : window_(window) {}

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (riid == IID_IUnknown || riid == IID_IOleClientSite) {
            *out = static_cast<IOleClientSite*>(this);
        } else if (riid == IID_IOleWindow || riid == IID_IOleInPlaceSite || riid == IID_IOleInPlaceSiteEx) {
            *out = static_cast<IOleInPlaceSiteEx*>(this);
        } else if (riid == IID_IOleInPlaceUIWindow || riid == IID_IOleInPlaceFrame) {
            *out = static_cast<IOleInPlaceFrame*>(this);
        } else {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++refs_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --refs_;
        if (left == 0) delete this;
        return left;
    }

    // IOleClientSite
    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer** container) override {
        *container = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleWindow (shared by the site and the frame)
    STDMETHODIMP GetWindow(HWND* window) override {
        *window = window_;
        return S_OK;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

    // IOleInPlaceSite
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnUIActivate() override { return S_OK; }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** doc, LPRECT position, LPRECT clip,
                                  LPOLEINPLACEFRAMEINFO info) override {
        *frame = this;
        AddRef();
        *doc = nullptr;
        GetClientRect(window_, position);
        GetClientRect(window_, clip);
        info->fMDIApp = FALSE;
        info->hwndFrame = window_;
        info->haccel = nullptr;
        info->cAccelEntries = 0;
        return S_OK;
    }
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
    STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; }

    // IOleInPlaceSiteEx
    STDMETHODIMP OnInPlaceActivateEx(BOOL* noRedraw, DWORD) override {
        if (noRedraw) *noRedraw = FALSE;
        return S_OK;
    }
    STDMETHODIMP OnInPlaceDeactivateEx(BOOL) override { return S_OK; }
    STDMETHODIMP RequestUIActivate() override { return S_OK; }

    // IOleInPlaceUIWindow and IOleInPlaceFrame: nothing of ours to share.
    STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) override { return S_OK; }
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return S_OK; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

private:
    ULONG refs_ = 1;
    HWND window_;
};

namespace {

// The control's automation interface: IDispatch itself, or else the default interface its type
// information names (some controls answer only to their own dual interface).
IDispatch* DefaultDispatch(IUnknown* object) {
    IDispatch* dispatch = nullptr;
    if (SUCCEEDED(object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&dispatch)))) return dispatch;
    IProvideClassInfo* info = nullptr;
    if (FAILED(object->QueryInterface(IID_IProvideClassInfo, reinterpret_cast<void**>(&info)))) return nullptr;
    ITypeInfo* coclass = nullptr;
    const HRESULT got = info->GetClassInfo(&coclass);
    info->Release();
    if (FAILED(got)) return nullptr;
    TYPEATTR* attr = nullptr;
    if (SUCCEEDED(coclass->GetTypeAttr(&attr))) {
        for (UINT i = 0; i < attr->cImplTypes && !dispatch; ++i) {
            INT flags = 0;
            HREFTYPE ref = 0;
            ITypeInfo* iface = nullptr;
            if (FAILED(coclass->GetImplTypeFlags(i, &flags)) || (flags & IMPLTYPEFLAG_FDEFAULT) == 0 ||
                (flags & IMPLTYPEFLAG_FSOURCE) != 0 || FAILED(coclass->GetRefTypeOfImplType(i, &ref)) ||
                FAILED(coclass->GetRefTypeInfo(ref, &iface))) {
                continue;
            }
            TYPEATTR* ifaceAttr = nullptr;
            if (SUCCEEDED(iface->GetTypeAttr(&ifaceAttr))) {
                object->QueryInterface(ifaceAttr->guid, reinterpret_cast<void**>(&dispatch));
                iface->ReleaseTypeAttr(ifaceAttr);
            }
            iface->Release();
        }
        coclass->ReleaseTypeAttr(attr);
    }
    coclass->Release();
    return dispatch;
}

}  // namespace

bool ActiveXControl::IsRegistered(const wchar_t* progId) {
    CLSID clsid;
    return SUCCEEDED(CLSIDFromProgID(progId, &clsid));
}

bool ActiveXControl::Create(const wchar_t* progId, HWND window) {
    Destroy();
    CLSID clsid;
    if (FAILED(CLSIDFromProgID(progId, &clsid))) return false;
    if (FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject,
                                reinterpret_cast<void**>(&object_)))) {
        object_ = nullptr;
        return false;
    }
    window_ = window;
    site_ = new ControlSite(window);
    RECT client;
    GetClientRect(window, &client);
    if (FAILED(object_->SetClientSite(site_)) ||
        FAILED(object_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_, 0, window, &client))) {
        Destroy();
        return false;
    }
    dispatch_ = DefaultDispatch(object_);
    if (!dispatch_) {
        Destroy();
        return false;
    }
    return true;
}

void ActiveXControl::Fit() {
    if (!object_) return;
    IOleInPlaceObject* inPlace = nullptr;
    if (FAILED(object_->QueryInterface(IID_IOleInPlaceObject, reinterpret_cast<void**>(&inPlace)))) return;
    RECT client;
    GetClientRect(window_, &client);
    inPlace->SetObjectRects(&client, &client);
    inPlace->Release();
}

bool ActiveXControl::Invoke(DISPID id, WORD flags, DISPPARAMS& params, VARIANT* result) {
    if (!dispatch_) return false;
    EXCEPINFO error{};
    const HRESULT hr = dispatch_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, result, &error, nullptr);
    SysFreeString(error.bstrSource);
    SysFreeString(error.bstrDescription);
    SysFreeString(error.bstrHelpFile);
    return SUCCEEDED(hr);
}

std::optional<DISPID> ActiveXControl::IdOf(const wchar_t* name) {
    if (!dispatch_) return std::nullopt;
    DISPID id;
    LPOLESTR names = const_cast<LPOLESTR>(name);
    if (FAILED(dispatch_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id))) return std::nullopt;
    return id;
}

bool ActiveXControl::PutNumber(DISPID id, double value) {
    VARIANT arg;
    VariantInit(&arg);
    arg.vt = VT_R8;
    arg.dblVal = value;
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{&arg, &named, 1, 1};
    return Invoke(id, DISPATCH_PROPERTYPUT, params, nullptr);
}

std::optional<double> ActiveXControl::NumberByName(const wchar_t* property) {
    const auto id = IdOf(property);
    return id ? Number(*id) : std::nullopt;
}

bool ActiveXControl::PutText(const wchar_t* property, const std::wstring& value) {
    const auto found = IdOf(property);
    if (!found) return false;
    const DISPID id = *found;
    VARIANT arg;
    VariantInit(&arg);
    arg.vt = VT_BSTR;
    arg.bstrVal = SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS params{&arg, &named, 1, 1};
    const bool ok = Invoke(id, DISPATCH_PROPERTYPUT, params, nullptr);
    VariantClear(&arg);
    return ok;
}

bool ActiveXControl::Call(DISPID id) {
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    VARIANT result;
    VariantInit(&result);
    const bool ok = Invoke(id, DISPATCH_METHOD, none, &result);
    VariantClear(&result);
    return ok;
}

std::optional<double> ActiveXControl::Number(DISPID id) {
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    VARIANT result;
    VariantInit(&result);
    if (!Invoke(id, DISPATCH_PROPERTYGET, none, &result)) return std::nullopt;
    VARIANT number;
    VariantInit(&number);
    std::optional<double> out;
    if (SUCCEEDED(VariantChangeType(&number, &result, 0, VT_R8))) out = number.dblVal;
    VariantClear(&number);
    VariantClear(&result);
    return out;
}

void ActiveXControl::Destroy() {
    if (dispatch_) {
        dispatch_->Release();
        dispatch_ = nullptr;
    }
    if (object_) {
        object_->Close(OLECLOSE_NOSAVE);
        object_->SetClientSite(nullptr);
        object_->Release();
        object_ = nullptr;
    }
    if (site_) {
        site_->Release();
        site_ = nullptr;
    }
    window_ = nullptr;
}

namespace {

const wchar_t* ProgIdOf(HostedControl control) {
    return control == HostedControl::Flash ? L"ShockwaveFlash.ShockwaveFlash" : L"MediaPlayer.MediaPlayer.1";
}

}  // namespace

std::optional<double> WinControls::NumberByName(const std::string& name) {
    return control_.NumberByName(Widen(name).c_str());
}

bool WinControls::Available(HostedControl control) { return ActiveXControl::IsRegistered(ProgIdOf(control)); }

bool WinControls::Open(HostedControl control, const std::string& path, WindowId window) {
    HWND hwnd = reinterpret_cast<HWND>(static_cast<UINT_PTR>(window));
    if (!control_.Create(ProgIdOf(control), hwnd)) return false;
    // Both controls start the file as soon as they are given it.
    const bool given = control_.PutText(control == HostedControl::Flash ? L"Movie" : L"FileName", Widen(path));
    if (!given) control_.Destroy();
    return given;
}

}  // namespace lumora

#include "ui/MediaKeys_win.h"

#include <inspectable.h>

#include <iterator>

#include "platform/WinText_win.h"

namespace lumora {
namespace {

constexpr struct {
    int appCommand;
    UINT key;
} kKeys[] = {
    {APPCOMMAND_MEDIA_PLAY_PAUSE, VK_MEDIA_PLAY_PAUSE},
    {APPCOMMAND_MEDIA_STOP, VK_MEDIA_STOP},
    {APPCOMMAND_MEDIA_NEXTTRACK, VK_MEDIA_NEXT_TRACK},
    {APPCOMMAND_MEDIA_PREVIOUSTRACK, VK_MEDIA_PREV_TRACK},
};

}  // namespace

void MediaHotKeys::Hold(HWND window) {
    Release();
    window_ = window;
    for (unsigned i = 0; i < std::size(kKeys); ++i) {
        if (RegisterHotKey(window, kKeys[i].appCommand, 0, kKeys[i].key)) held_ |= 1u << i;
    }
}

void MediaHotKeys::Release() {
    for (unsigned i = 0; i < std::size(kKeys); ++i) {
        if (held_ & (1u << i)) UnregisterHotKey(window_, kKeys[i].appCommand);
    }
    held_ = 0;
}

}  // namespace lumora

namespace lumora {
namespace {

// The Windows Runtime interfaces MinGW-w64's headers lack, in their vtable order.
constexpr GUID kInteropId = {0xddb0472d, 0xc911, 0x4a1f, {0x86, 0xd9, 0xdc, 0x3d, 0x71, 0xa9, 0x5f, 0x5a}};
constexpr GUID kControlsId = {0x99fa3ff4, 0x1742, 0x42a6, {0x90, 0x2e, 0x08, 0x7d, 0x41, 0xf9, 0x65, 0xec}};
constexpr GUID kButtonArgsId = {0xb7f47116, 0xa56f, 0x4dc8, {0x9e, 0x11, 0x92, 0x03, 0x1f, 0x4a, 0x87, 0xc2}};
// TypedEventHandler<SystemMediaTransportControls, SystemMediaTransportControlsButtonPressedEventArgs>
constexpr GUID kButtonHandlerId = {0x0557e996, 0x7b23, 0x5bae, {0xaa, 0x81, 0xea, 0x0d, 0x67, 0x11, 0x43, 0xa4}};
constexpr GUID kAgileId = {0x94ea2b94, 0xe9cc, 0x49e0, {0xc0, 0xff, 0xee, 0x64, 0xca, 0x8f, 0x5b, 0x90}};

struct IControlsInterop : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE GetForWindow(HWND window, REFIID id, void** controls) = 0;
};

struct IMusicProperties : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE get_Title(HSTRING*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Title(HSTRING) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_AlbumArtist(HSTRING*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_AlbumArtist(HSTRING) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Artist(HSTRING*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Artist(HSTRING) = 0;
};

struct IDisplayUpdater : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE get_Type(int*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Type(int) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_AppMediaId(HSTRING*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_AppMediaId(HSTRING) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Thumbnail(IInspectable**) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Thumbnail(IInspectable*) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_MusicProperties(IMusicProperties**) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_VideoProperties(IInspectable**) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_ImageProperties(IInspectable**) = 0;
    virtual HRESULT STDMETHODCALLTYPE CopyFromFileAsync(int, IInspectable*, IInspectable**) = 0;
    virtual HRESULT STDMETHODCALLTYPE ClearAll() = 0;
    virtual HRESULT STDMETHODCALLTYPE Update() = 0;
};

struct IControls : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE get_PlaybackStatus(int*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_PlaybackStatus(int) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_DisplayUpdater(IDisplayUpdater**) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_SoundLevel(int*) = 0;
    // IsEnabled, then IsPlay-, IsStop-, IsPause-, IsRecord-, IsFastForward-, IsRewind-, IsPrevious-,
    // IsNext-, IsChannelUp- and IsChannelDownEnabled: a getter and a setter each.
    virtual HRESULT STDMETHODCALLTYPE get_IsEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsPlayEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsPlayEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsStopEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsStopEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsPauseEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsPauseEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsRecordEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsRecordEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsFastForwardEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsFastForwardEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsRewindEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsRewindEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsPreviousEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsPreviousEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsNextEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsNextEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsChannelUpEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsChannelUpEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IsChannelDownEnabled(unsigned char*) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IsChannelDownEnabled(unsigned char) = 0;
    virtual HRESULT STDMETHODCALLTYPE add_ButtonPressed(IUnknown* handler, long long* token) = 0;
    virtual HRESULT STDMETHODCALLTYPE remove_ButtonPressed(long long token) = 0;
};

struct IButtonArgs : IInspectable {
    virtual HRESULT STDMETHODCALLTYPE get_Button(int*) = 0;
};

// combase.dll's functions, present from Windows 8 on.
struct Combase {
    HRESULT(WINAPI* getFactory)(HSTRING, REFIID, void**) = nullptr;
    HRESULT(WINAPI* createString)(LPCWSTR, UINT32, HSTRING*) = nullptr;
    HRESULT(WINAPI* deleteString)(HSTRING) = nullptr;
};

const Combase& LoadCombase() {
    static const Combase combase = [] {
        Combase c;
        // Kept loaded for the program's life: the controls' objects live in it.
        if (HMODULE dll = LoadLibraryW(L"combase.dll")) {
            c.getFactory = reinterpret_cast<decltype(c.getFactory)>(
                reinterpret_cast<void*>(GetProcAddress(dll, "RoGetActivationFactory")));
            c.createString = reinterpret_cast<decltype(c.createString)>(
                reinterpret_cast<void*>(GetProcAddress(dll, "WindowsCreateString")));
            c.deleteString = reinterpret_cast<decltype(c.deleteString)>(
                reinterpret_cast<void*>(GetProcAddress(dll, "WindowsDeleteString")));
        }
        if (!c.getFactory || !c.createString || !c.deleteString) c = {};
        return c;
    }();
    return combase;
}

class RuntimeString {
public:
    explicit RuntimeString(const std::wstring& text) {
        if (FAILED(LoadCombase().createString(text.c_str(), static_cast<UINT32>(text.size()), &string_))) {
            string_ = nullptr;
        }
    }
    ~RuntimeString() {
        if (string_) LoadCombase().deleteString(string_);
    }
    RuntimeString(const RuntimeString&) = delete;
    RuntimeString& operator=(const RuntimeString&) = delete;
    HSTRING Get() const { return string_; }

private:
    HSTRING string_ = nullptr;
};

// The controls press their buttons on a thread of their own: the press is posted to the window as the
// media key it stands for, and the one UI thread runs it.
class ButtonHandler final : public IUnknown {
public:
    explicit ButtonHandler(HWND window) : window_(window) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!object) return E_POINTER;
        if (IsEqualGUID(id, IID_IUnknown) || IsEqualGUID(id, kButtonHandlerId) || IsEqualGUID(id, kAgileId)) {
            *object = this;
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = InterlockedDecrement(&references_);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }
    virtual HRESULT STDMETHODCALLTYPE Invoke(IInspectable*, IInspectable* args) {
        IButtonArgs* pressed = nullptr;
        if (!args || FAILED(args->QueryInterface(kButtonArgsId, reinterpret_cast<void**>(&pressed)))) return S_OK;
        int button = -1;
        pressed->get_Button(&button);
        pressed->Release();
        // SystemMediaTransportControlsButton: Play 0, Pause 1, Stop 2, Next 6, Previous 7.
        constexpr int kAppCommands[] = {
            APPCOMMAND_MEDIA_PLAY,      APPCOMMAND_MEDIA_PAUSE,        APPCOMMAND_MEDIA_STOP, 0, 0, 0,
            APPCOMMAND_MEDIA_NEXTTRACK, APPCOMMAND_MEDIA_PREVIOUSTRACK};
        if (button >= 0 && button < static_cast<int>(std::size(kAppCommands)) && kAppCommands[button]) {
            PostMessageW(window_, WM_APPCOMMAND, reinterpret_cast<WPARAM>(window_),
                         MAKELPARAM(0, kAppCommands[button]));
        }
        return S_OK;
    }

private:
    ~ButtonHandler() = default;
    HWND window_;
    LONG references_ = 1;
};

IControls* ControlsOf(IInspectable* controls) { return static_cast<IControls*>(controls); }

}  // namespace

SystemMediaControls::~SystemMediaControls() {
    if (controls_) {
        if (handler_) ControlsOf(controls_)->remove_ButtonPressed(token_);
        controls_->Release();
    }
    if (handler_) handler_->Release();
}

void SystemMediaControls::Attach(HWND window) {
    const Combase& combase = LoadCombase();
    if (!combase.getFactory || controls_) return;
    const RuntimeString className(L"Windows.Media.SystemMediaTransportControls");
    IControlsInterop* interop = nullptr;
    if (!className.Get() ||
        FAILED(combase.getFactory(className.Get(), kInteropId, reinterpret_cast<void**>(&interop)))) {
        return;
    }
    IControls* controls = nullptr;
    const HRESULT got = interop->GetForWindow(window, kControlsId, reinterpret_cast<void**>(&controls));
    interop->Release();
    if (FAILED(got) || !controls) return;
    controls_ = controls;
    controls->put_IsPlayEnabled(1);
    controls->put_IsPauseEnabled(1);
    controls->put_IsStopEnabled(1);
    controls->put_IsPreviousEnabled(1);
    controls->put_IsNextEnabled(1);
    auto* handler = new ButtonHandler(window);
    if (SUCCEEDED(controls->add_ButtonPressed(handler, &token_))) {
        handler_ = handler;
    } else {
        handler->Release();
    }
}

void SystemMediaControls::ShowStatus(Status status) {
    if (!controls_ || status == status_) return;
    status_ = status;
    ControlsOf(controls_)->put_IsEnabled(status != Status::Closed);
    ControlsOf(controls_)->put_PlaybackStatus(static_cast<int>(status));
}

void SystemMediaControls::ShowFile(const std::string& title, const std::string& artist) {
    if (!controls_) return;
    IDisplayUpdater* updater = nullptr;
    if (FAILED(ControlsOf(controls_)->get_DisplayUpdater(&updater)) || !updater) return;
    constexpr int kMusic = 1;  // MediaPlaybackType
    IMusicProperties* music = nullptr;
    if (SUCCEEDED(updater->put_Type(kMusic)) && SUCCEEDED(updater->get_MusicProperties(&music)) && music) {
        const RuntimeString titleText(Widen(title)), artistText(Widen(artist));
        music->put_Title(titleText.Get());
        music->put_Artist(artistText.Get());
        music->Release();
        updater->Update();
    }
    updater->Release();
}

}  // namespace lumora

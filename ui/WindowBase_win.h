#pragma once
// The one base of Lumora's windows and dialogs. It keeps `this` with the window from its first
// message (WM_NCCREATE, or WM_INITDIALOG for a dialog) until WM_NCDESTROY, and it is the one place
// where no exception leaves a window procedure: an exception would unwind through user32's frames,
// which Windows either swallows silently or turns into a crash, depending on the version.
#include <windows.h>

#include <exception>

namespace lumora {

// Tells the user once per run that an operation failed inside Lumora; later faults only go to the
// debugger output, so a fault in a timer handler cannot flood the screen with boxes.
void ReportWindowFault(const char* what) noexcept;
// How the first fault is told: a message box unless replaced (the platform tests count instead).
using WindowFaultReporter = void (*)(const char* what);
WindowFaultReporter SetWindowFaultReporter(WindowFaultReporter reporter);

template <typename T>
class WindowBase {
public:
    HWND Handle() const { return hwnd_; }

    // The window procedure of a class registered for T; CreateWindowEx gets `this` as its parameter.
    // T answers `LRESULT OnMessage(UINT, WPARAM, LPARAM)`.
    static LRESULT CALLBACK WndProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
        if (msg == WM_NCCREATE) Attach(hwnd, reinterpret_cast<CREATESTRUCTW*>(lp)->lpCreateParams);
        T* self = From(hwnd);
        if (!self) return DefWindowProcW(hwnd, msg, wp, lp);
        LRESULT result = 0;
        if (!Guard([&] { result = self->OnMessage(msg, wp, lp); })) result = DefWindowProcW(hwnd, msg, wp, lp);
        if (msg == WM_NCDESTROY) self->Detach();
        return result;
    }

    // The dialog procedure for DialogBoxIndirectParam with `this` as its parameter.
    // T answers `INT_PTR OnDialogMessage(UINT, WPARAM, LPARAM)`.
    static INT_PTR CALLBACK DlgProc(HWND dlg, UINT msg, WPARAM wp, LPARAM lp) {
        if (msg == WM_INITDIALOG) Attach(dlg, reinterpret_cast<void*>(lp));
        T* self = From(dlg);
        if (!self) return FALSE;
        INT_PTR result = FALSE;
        Guard([&] { result = self->OnDialogMessage(msg, wp, lp); });
        if (msg == WM_NCDESTROY) self->Detach();
        return result;
    }

protected:
    WindowBase() = default;
    ~WindowBase() = default;
    WindowBase(const WindowBase&) = delete;
    WindowBase& operator=(const WindowBase&) = delete;

    HWND hwnd_ = nullptr;

private:
    static constexpr int kSlot = GWLP_USERDATA;

    static void Attach(HWND hwnd, void* param) {
        auto* self = static_cast<T*>(param);
        if (!self) return;
        self->hwnd_ = hwnd;
        SetWindowLongPtrW(hwnd, kSlot, reinterpret_cast<LONG_PTR>(self));
    }
    static T* From(HWND hwnd) { return reinterpret_cast<T*>(GetWindowLongPtrW(hwnd, kSlot)); }
    void Detach() {
        if (hwnd_) SetWindowLongPtrW(hwnd_, kSlot, 0);
        hwnd_ = nullptr;
    }

    template <typename F>
    static bool Guard(F&& f) noexcept {
        try {
            f();
            return true;
        } catch (const std::exception& e) {
            ReportWindowFault(e.what());
        } catch (...) {
            ReportWindowFault("unknown exception");
        }
        return false;
    }
};

}  // namespace lumora

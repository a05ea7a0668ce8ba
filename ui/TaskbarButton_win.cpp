#include "ui/TaskbarButton_win.h"

#include <shobjidl.h>

#include <iterator>

#include "ui/ControlIds.h"

namespace lumora {
namespace {

using namespace ids;

enum Glyph { kPrevious, kPlay, kPause, kNext };

// The glyphs on a 16-unit grid, filled in the brush selected into `dc`.
void DrawGlyph(HDC dc, Glyph glyph, int size) {
    const auto at = [size](int x, int y) { return POINT{x * size / 16, y * size / 16}; };
    const auto bar = [&](int left, int right) {
        const POINT a = at(left, 3), b = at(right, 13);
        Rectangle(dc, a.x, a.y, b.x + 1, b.y + 1);
    };
    const auto triangle = [&](int tipX, int baseX) {
        const POINT points[] = {at(baseX, 3), at(tipX, 8), at(baseX, 13)};
        Polygon(dc, points, 3);
    };
    switch (glyph) {
        case kPrevious:
            bar(3, 4);
            triangle(5, 13);
            break;
        case kPlay:
            triangle(13, 4);
            break;
        case kPause:
            bar(4, 6);
            bar(10, 12);
            break;
        case kNext:
            triangle(11, 3);
            bar(12, 13);
            break;
    }
}

// A white glyph on a transparent ground: the thumbnail toolbar sits on the dark preview frame.
HICON MakeGlyphIcon(Glyph glyph) {
    const int size = GetSystemMetrics(SM_CXSMICON);
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP color = CreateCompatibleBitmap(screen, size, size);
    HBITMAP mask = CreateBitmap(size, size, 1, 1, nullptr);
    ReleaseDC(nullptr, screen);
    HGDIOBJ oldBitmap = SelectObject(dc, mask);
    HGDIOBJ oldPen = SelectObject(dc, GetStockObject(NULL_PEN));
    HGDIOBJ oldBrush = SelectObject(dc, GetStockObject(BLACK_BRUSH));
    PatBlt(dc, 0, 0, size, size, WHITENESS);  // the mask: white is transparent
    DrawGlyph(dc, glyph, size);
    SelectObject(dc, color);
    SelectObject(dc, GetStockObject(WHITE_BRUSH));
    PatBlt(dc, 0, 0, size, size, BLACKNESS);
    DrawGlyph(dc, glyph, size);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBitmap);
    DeleteDC(dc);
    ICONINFO info{TRUE, 0, 0, mask, color};
    HICON icon = CreateIconIndirect(&info);
    DeleteObject(mask);
    DeleteObject(color);
    return icon;
}

// The tip is the caption of the main window's button that the thumbnail button clicks.
THUMBBUTTON Button(HWND window, UINT id, HICON icon) {
    THUMBBUTTON b{};
    b.dwMask = THB_ICON | THB_TOOLTIP | THB_FLAGS;
    b.iId = id;
    b.hIcon = icon;
    GetDlgItemTextW(window, static_cast<int>(id), b.szTip, static_cast<int>(std::size(b.szTip)));
    b.dwFlags = THBF_ENABLED;
    return b;
}

}  // namespace

TaskbarButton::~TaskbarButton() {
    Release();
    for (HICON icon : icons_) {
        if (icon) DestroyIcon(icon);
    }
}

void TaskbarButton::Release() {
    if (list_) list_->Release();
    list_ = nullptr;
}

void TaskbarButton::Attach(HWND window) {
    window_ = window;
    Release();
    // XP's taskbar answers without this interface; so may Wine's.
    if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3,
                                reinterpret_cast<void**>(&list_)))) {
        list_ = nullptr;
        return;
    }
    if (FAILED(list_->HrInit())) {
        Release();
        return;
    }
    if (!icons_[0]) {
        for (int glyph = kPrevious; glyph <= kNext; ++glyph) icons_[glyph] = MakeGlyphIcon(static_cast<Glyph>(glyph));
    }
    PutButtons(true);
    PutProgress();
}

void TaskbarButton::Show(State state, int permille) {
    const bool playChanged = (state == State::Playing) != (state_ == State::Playing);
    const bool progressChanged = state != state_ || (state != State::Idle && permille != permille_);
    state_ = state;
    permille_ = permille;
    if (!list_) return;
    if (playChanged) PutButtons(false);
    if (progressChanged) PutProgress();
}

void TaskbarButton::PutButtons(bool add) {
    THUMBBUTTON buttons[] = {
        Button(window_, IDC_MAIN_PREVIOUS, icons_[kPrevious]),
        Button(window_, IDC_MAIN_PLAY, icons_[state_ == State::Playing ? kPause : kPlay]),
        Button(window_, IDC_MAIN_NEXT, icons_[kNext]),
    };
    // A button that is already there (both messages came for one taskbar) can only be updated.
    if (!add || FAILED(list_->ThumbBarAddButtons(window_, 3, buttons)))
        list_->ThumbBarUpdateButtons(window_, 3, buttons);
}

void TaskbarButton::PutProgress() {
    switch (state_) {
        case State::Idle:
            list_->SetProgressState(window_, TBPF_NOPROGRESS);
            return;
        case State::Playing:
            list_->SetProgressState(window_, TBPF_NORMAL);
            break;
        case State::Paused:
            list_->SetProgressState(window_, TBPF_PAUSED);
            break;
    }
    list_->SetProgressValue(window_, static_cast<ULONGLONG>(permille_), 1000);
}

}  // namespace lumora

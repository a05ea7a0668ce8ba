#include "ui/DialogTemplate_win.h"

namespace lumora {

DialogTemplate::DialogTemplate(const std::wstring& title, short width, short height, DWORD style) {
    style |= DS_SETFONT;
    words_.push_back(LOWORD(style));
    words_.push_back(HIWORD(style));
    words_.push_back(0);  // extended style
    words_.push_back(0);
    countAt_ = words_.size();
    words_.push_back(0);  // control count
    words_.push_back(0);  // x
    words_.push_back(0);  // y
    words_.push_back(static_cast<WORD>(width));
    words_.push_back(static_cast<WORD>(height));
    words_.push_back(0);  // no menu
    words_.push_back(0);  // default class
    PutText(title);
    words_.push_back(9);  // point size
    PutText(L"MS Shell Dlg");
}

void DialogTemplate::Align() {
    if (words_.size() % 2) words_.push_back(0);  // DLGITEMTEMPLATE starts on a DWORD boundary
}

void DialogTemplate::PutText(const std::wstring& text) {
    for (wchar_t c : text) words_.push_back(static_cast<WORD>(c));
    words_.push_back(0);
}

void DialogTemplate::AddControl(WORD atom, WORD id, const std::wstring& text, short x, short y, short cx, short cy,
                                DWORD style) {
    AddItem(nullptr, atom, id, text, x, y, cx, cy, style);
}

void DialogTemplate::AddControl(const wchar_t* className, WORD id, const std::wstring& text, short x, short y, short cx,
                                short cy, DWORD style) {
    AddItem(className, 0, id, text, x, y, cx, cy, style);
}

void DialogTemplate::AddItem(const wchar_t* className, WORD atom, WORD id, const std::wstring& text, short x, short y,
                             short cx, short cy, DWORD style) {
    Align();
    style |= WS_CHILD | WS_VISIBLE;
    words_.push_back(LOWORD(style));
    words_.push_back(HIWORD(style));
    words_.push_back(0);
    words_.push_back(0);
    words_.push_back(static_cast<WORD>(x));
    words_.push_back(static_cast<WORD>(y));
    words_.push_back(static_cast<WORD>(cx));
    words_.push_back(static_cast<WORD>(cy));
    words_.push_back(id);
    if (className) {
        PutText(className);
    } else {
        words_.push_back(0xFFFF);
        words_.push_back(atom);
    }
    PutText(text);
    words_.push_back(0);  // no creation data
    ++words_[countAt_];
}

}  // namespace lumora

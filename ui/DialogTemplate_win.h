#pragma once
// Builds dialog templates in memory, so Lumora's small dialogs need no resource script.
#include <windows.h>

#include <string>
#include <vector>

namespace lumora {

// The button captions every dialog and box shares.
inline constexpr wchar_t kOkText[] = L"确定";
inline constexpr wchar_t kCancelText[] = L"取消";
inline constexpr wchar_t kCloseText[] = L"关闭";

class DialogTemplate {
public:
    // Sizes in dialog units. The font is the shell dialog font, which Wine and Chinese Windows
    // map to a font with Chinese glyphs.
    DialogTemplate(const std::wstring& title, short width, short height, DWORD style);
    void AddControl(WORD atom, WORD id, const std::wstring& text, short x, short y, short cx, short cy, DWORD style);
    // A control of a registered class named by text (a common control such as the slider).
    void AddControl(const wchar_t* className, WORD id, const std::wstring& text, short x, short y, short cx, short cy,
                    DWORD style);
    const DLGTEMPLATE* Get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

    static constexpr WORD kButton = 0x0080;
    static constexpr WORD kEdit = 0x0081;
    static constexpr WORD kStatic = 0x0082;

private:
    void AddItem(const wchar_t* className, WORD atom, WORD id, const std::wstring& text, short x, short y, short cx,
                 short cy, DWORD style);
    void Align();
    void PutText(const std::wstring& text);

    std::vector<WORD> words_;
    size_t countAt_ = 0;
};

}  // namespace lumora

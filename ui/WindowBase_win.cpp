#include "ui/WindowBase_win.h"

#include <string>

#include "platform/WinText_win.h"

namespace lumora {

void ReportWindowFault(const char* what) noexcept {
    static bool reported = false;
    try {
        const std::wstring detail = Widen(what ? what : "");
        OutputDebugStringW((L"Lumora: " + detail + L"\n").c_str());
        if (reported) return;
        reported = true;
        MessageBoxW(nullptr, (L"Lumora 内部出错，这一操作没有完成，程序继续运行。\n\n" + detail).c_str(), L"Lumora",
                    MB_OK | MB_ICONWARNING | MB_TASKMODAL);
    } catch (...) {
        // Out of memory while reporting: there is nothing more to tell.
    }
}

}  // namespace lumora

#include "ui/WindowBase_win.h"

#include <string>

#include "platform/WinText_win.h"
#include "ui/Boxes_win.h"

namespace lumora {
namespace {

void ShowFaultBox(const char* what) {
    ShowBox(GetActiveWindow(), "Lumora 内部出错，这一操作没有完成，程序继续运行。\n\n" + std::string(what), "Lumora",
            BoxButtons::Ok);
}

WindowFaultReporter gReporter = ShowFaultBox;
bool gReported = false;

}  // namespace

WindowFaultReporter SetWindowFaultReporter(WindowFaultReporter reporter) {
    const WindowFaultReporter before = gReporter;
    gReporter = reporter;
    gReported = false;
    return before;
}

void ReportWindowFault(const char* what) noexcept {
    try {
        what = what ? what : "";
        OutputDebugStringW((L"Lumora: " + Widen(what) + L"\n").c_str());
        if (gReported) return;
        gReported = true;
        gReporter(what);
    } catch (...) {
        // Out of memory while reporting: there is nothing more to tell.
    }
}

}  // namespace lumora

#include "platform/HandOff_win.h"

#include <tlhelp32.h>

#include <string>

namespace lumora {
namespace {

constexpr wchar_t kReceiverClass[] = L"Lumora.HandOff";
// The door of the running instance answers within this, or counts as hung.
constexpr UINT kAnswerMs = 5000;
constexpr UINT kLookInSlot = WM_APP + 1;

HWND FindDoor() { return FindWindowExW(HWND_MESSAGE, nullptr, kReceiverClass, nullptr); }

}  // namespace

HandOffReceiver::~HandOffReceiver() {
    if (window_) DestroyWindow(window_);
}

bool HandOffReceiver::Open(std::function<void(const HandOffMessage&)> receive, std::function<void()> lookInSlot) {
    receive_ = std::move(receive);
    lookInSlot_ = std::move(lookInSlot);
    WNDCLASSW wc{};
    wc.lpfnWndProc = Proc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = kReceiverClass;
    RegisterClassW(&wc);
    window_ = CreateWindowExW(0, kReceiverClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, wc.hInstance, this);
    return window_ != nullptr;
}

LRESULT CALLBACK HandOffReceiver::Proc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        SetWindowLongPtrW(hwnd, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    } else if (message == WM_COPYDATA) {
        auto* self = reinterpret_cast<HandOffReceiver*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
        const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
        if (!self || !data || (data->cbData && !data->lpData)) return FALSE;
        const std::string_view bytes(static_cast<const char*>(data->lpData), data->cbData);
        const auto decoded = DecodeHandOff(static_cast<unsigned>(data->dwData), bytes);
        if (!decoded) return FALSE;
        try {
            if (self->receive_) self->receive_(*decoded);
        } catch (...) {
            return FALSE;  // nothing may leave a window procedure
        }
        return TRUE;
    } else if (message == kLookInSlot) {
        auto* self = reinterpret_cast<HandOffReceiver*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
        try {
            if (self && self->lookInSlot_) self->lookInSlot_();
        } catch (...) {
        }
        return 0;
    }
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

bool SendHandOff(HandOffKind kind, std::string_view argument, DWORD waitMs) {
    HWND door = nullptr;
    for (const DWORD start = GetTickCount();; Sleep(20)) {
        door = FindDoor();
        if (door || GetTickCount() - start >= waitMs) break;
    }
    if (!door) return false;
    const std::string bytes = EncodeHandOff({kind, GetCurrentProcessId(), ThisProcessStartMs(), std::string(argument)});
    COPYDATASTRUCT data{};
    data.dwData = static_cast<ULONG_PTR>(kind);
    data.cbData = static_cast<DWORD>(bytes.size());
    data.lpData = const_cast<char*>(bytes.data());
    DWORD_PTR answer = FALSE;
    return SendMessageTimeoutW(door, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG, kAnswerMs,
                               &answer) != 0 &&
           answer == TRUE;
}

void PointToHandOffSlot() {
    if (HWND door = FindDoor()) PostMessageW(door, kLookInSlot, 0, 0);
}

namespace {

long long Milliseconds(const FILETIME& t) {
    return static_cast<long long>((static_cast<unsigned long long>(t.dwHighDateTime) << 32 | t.dwLowDateTime) / 10000);
}

long long StartOf(HANDLE process) {
    FILETIME created{}, exited{}, kernel{}, user{};
    return GetProcessTimes(process, &created, &exited, &kernel, &user) ? Milliseconds(created) : 0;
}

// The name without its folder: Wine gives a program started by a Unix path a Unix-like module path.
std::wstring FileNameOf(const wchar_t* path) {
    const wchar_t* name = path;
    for (const wchar_t* c = path; *c; ++c) {
        if (*c == L'\\' || *c == L'/') name = c + 1;
    }
    return name;
}

std::wstring OwnFileName() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return FileNameOf(path);
}

}  // namespace

long long HandOffNowMs() {
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    return Milliseconds(now);
}

long long ThisProcessStartMs() { return StartOf(GetCurrentProcess()); }

std::vector<StartedProcess> OtherLumoraStarts() {
    std::vector<StartedProcess> found;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (snapshot == INVALID_HANDLE_VALUE) return found;
    static const std::wstring own = OwnFileName();
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry)) {
        if (entry.th32ProcessID == GetCurrentProcessId() ||
            _wcsicmp(FileNameOf(entry.szExeFile).c_str(), own.c_str()) != 0)
            continue;
        HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, entry.th32ProcessID);
        if (!process) continue;
        // A process that has ended but is still held open by someone is no start on its way. (Waiting on the
        // handle would need SYNCHRONIZE rights as well; the exit code needs only the query right.)
        DWORD code = 0;
        if (GetExitCodeProcess(process, &code) && code == STILL_ACTIVE)
            found.push_back({entry.th32ProcessID, StartOf(process)});
        CloseHandle(process);
    }
    CloseHandle(snapshot);
    return found;
}

}  // namespace lumora

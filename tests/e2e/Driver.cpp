#include "e2e/Driver.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>

#include "platform/Registry_win.h"

namespace lumora::e2e {

constexpr char kSetupKey[] = "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup";

void LumoraProcess::Start(const std::wstring& exe, const std::string& tail) {
    Kill();
    std::wstring cmd = L"\"" + exe + L"\"";
    if (!tail.empty()) cmd += L" " + Widen(tail);
    STARTUPINFOW si{};
    si.cb = sizeof si;
    const std::wstring folder = exe.substr(0, exe.find_last_of(L"\\/"));
    CreateProcessW(exe.c_str(), cmd.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &si, &info_);
}

std::optional<DWORD> LumoraProcess::ExitCode(DWORD ms) const {
    DWORD code = 0;
    if (!info_.hProcess) return code;
    if (WaitForSingleObject(info_.hProcess, ms) != WAIT_OBJECT_0) return std::nullopt;
    GetExitCodeProcess(info_.hProcess, &code);
    return code;
}

void LumoraProcess::Kill() {
    if (!info_.hProcess) return;
    const bool running = !ExitCode(0);
    if (running) TerminateProcess(info_.hProcess, 99);
    WaitForSingleObject(info_.hProcess, kTimeoutMs);
    CloseHandle(info_.hProcess);
    CloseHandle(info_.hThread);
    info_ = {};
    // Under Wine a killed process may hold its instance mutex a while longer; a start before it is
    // gone would hand its argument over and end.
    if (running) {
        WaitFor([] {
            const HANDLE mutex = OpenMutexW(SYNCHRONIZE, FALSE, L"Local\\Lumora.Player.Instance");
            if (mutex) CloseHandle(mutex);
            return mutex == nullptr;
        });
    }
}

std::vector<HWND> AllWindows(const wchar_t* className) {
    std::vector<HWND> all;
    for (HWND w = nullptr; (w = FindWindowExW(nullptr, w, className, nullptr)) != nullptr;) all.push_back(w);
    return all;
}

HWND FindWindowOf(DWORD pid, const wchar_t* className, const std::string& title) {
    for (HWND w : AllWindows(className)) {
        DWORD owner = 0;
        GetWindowThreadProcessId(w, &owner);
        wchar_t text[512] = {};  // read without a message: the window's thread may be busy
        GetWindowTextW(w, text, 512);
        if ((!pid || owner == pid) && (title.empty() || Narrow(text) == title)) return w;
    }
    return nullptr;
}

HWND WaitForWindow(DWORD pid, const wchar_t* className) {
    HWND found = nullptr;
    WaitFor([&] { return (found = FindWindowOf(pid, className)) != nullptr; });
    return found;
}

std::string Text(HWND window) {
    wchar_t buf[4096] = {};
    SendMessageTimeoutW(window, WM_GETTEXT, 4096, reinterpret_cast<LPARAM>(buf), SMTO_ABORTIFHUNG, 5000, nullptr);
    return Narrow(buf);
}

void SetControlText(HWND parent, int id, const std::string& text) {
    SendDlgItemMessageW(parent, id, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Widen(text).c_str()));
}

::testing::AssertionResult Shows(HWND parent, int id, const std::string& expected, DWORD ms) {
    std::string last;
    if (WaitFor([&] { return (last = ControlText(parent, id)) == expected; }, ms)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "shows \"" << last << "\", not \"" << expected << '"';
}

std::string AskInto(HWND window, UINT message, WPARAM wParam, size_t bytes,
                    const std::function<std::string(char* remote)>& fill) {
    DWORD pid = 0;
    GetWindowThreadProcessId(window, &pid);
    std::string out(bytes, '\0');
    HANDLE process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, pid);
    if (!process) return out;
    if (auto* remote = static_cast<char*>(VirtualAllocEx(process, nullptr, bytes, MEM_COMMIT, PAGE_READWRITE))) {
        SIZE_T done = 0;
        if (fill) {
            const std::string in = fill(remote);
            WriteProcessMemory(process, remote, in.data(), std::min(in.size(), bytes), &done);
        }
        SendMessageW(window, message, wParam, reinterpret_cast<LPARAM>(remote));
        ReadProcessMemory(process, remote, out.data(), bytes, &done);
        VirtualFreeEx(process, remote, 0, MEM_RELEASE);
    }
    CloseHandle(process);
    return out;
}

HWND HelpTips(HWND window) {
    HWND tips = nullptr;
    for (HWND w : AllWindows(L"tooltips_class32")) {
        if (GetWindow(w, GW_OWNER) == window &&
            (!tips || SendMessageW(w, TTM_GETTOOLCOUNT, 0, 0) > SendMessageW(tips, TTM_GETTOOLCOUNT, 0, 0)))
            tips = w;
    }
    return tips;
}

std::string ToolText(HWND tips, HWND owner, UINT_PTR id) {
    // The tool's record, then room for its text, which the record points at.
    constexpr size_t kChars = 1024;
    const std::string answer =
        AskInto(tips, TTM_GETTEXTW, kChars, sizeof(TOOLINFOW) + kChars * sizeof(wchar_t), [&](char* remote) {
            TOOLINFOW info{};
            info.cbSize = TTTOOLINFOW_V2_SIZE;
            info.hwnd = owner;
            info.uId = id;
            info.lpszText = reinterpret_cast<wchar_t*>(remote + sizeof(TOOLINFOW));
            return std::string(reinterpret_cast<const char*>(&info), sizeof info);
        });
    // The control ends the text it copies within the room given.
    return Narrow(reinterpret_cast<const wchar_t*>(answer.data() + sizeof(TOOLINFOW)));
}

RECT AskRect(HWND control, UINT message) {
    RECT r{};
    const std::string bytes = AskInto(control, message, 0, sizeof r);
    std::memcpy(&r, bytes.data(), sizeof r);
    return r;
}

HWND PageControl(HWND dialog, int id) {
    for (HWND page = FindWindowExW(dialog, nullptr, L"#32770", nullptr); page;
         page = FindWindowExW(dialog, page, L"#32770", nullptr)) {
        if (HWND control = GetDlgItem(page, id)) return control;
    }
    return nullptr;
}

bool TextFits(HWND control) {
    const std::wstring text = Widen(Text(control));
    HDC dc = GetDC(control);
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    SIZE size{};
    GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(dc, old);
    ReleaseDC(control, dc);
    RECT r;
    GetClientRect(control, &r);
    return size.cx <= r.right && size.cy <= r.bottom;
}

int Seconds(const std::string& hhmmss) {
    int h = 0, m = 0, s = 0;
    if (std::sscanf(hhmmss.c_str(), "%d:%d:%d", &h, &m, &s) != 3) return -1;
    return h * 3600 + m * 60 + s;
}

HWND WaitForBox(const std::string& title) {
    // A dialog has its title from its creation but its texts only once initialised, when it shows.
    HWND box = nullptr;
    WaitFor([&] { return (box = FindWindowOf(0, L"#32770", title)) != nullptr && IsWindowVisible(box); });
    return box && IsWindowVisible(box) ? box : nullptr;
}

std::string CloseBox(const std::string& title, int buttonId) {
    HWND box = WaitForBox(title);
    if (!box) {
        std::string open = "(no box; open:";  // what came instead
        for (HWND w : AllWindows(L"#32770")) open += " [" + Text(w) + ": " + BoxText(w) + "]";
        return open + ")";
    }
    const std::string text = BoxText(box);
    Click(box, buttonId);
    return text;
}

HWND AnswerFileDialog(HWND window, int command, const std::string& title, const std::string& path) {
    HWND dialog = OpenBox(window, command, title);
    if (!dialog) return nullptr;
    // The explorer-style dialog keeps the name in a combo box (cmb13) on newer systems and in an
    // edit control (edt1) on older ones and on Wine.
    for (const int id : {0x47C, 0x480}) SetControlText(dialog, id, path);
    Click(dialog, IDOK);
    return dialog;
}

void StoreOption(const char* name, const char* text) {
    WinRegistry().CreateKey(RegistryRoot::CurrentUser, kSetupKey);
    WinRegistry().WriteBinary(RegistryRoot::CurrentUser, kSetupKey, name, text);
}

void WriteBytes(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string ReadBytes(const std::filesystem::path& path) {
    std::ostringstream s;
    s << std::ifstream(path, std::ios::binary).rdbuf();
    return s.str();
}

std::string SilentWave(int seconds) {
    const std::uint32_t samples = 8000u * static_cast<std::uint32_t>(seconds);
    // A field of that many bytes: little-endian, as Windows always is.
    const auto le = [](std::uint32_t v, int bytes) { return std::string(reinterpret_cast<const char*>(&v), bytes); };
    // PCM, mono, 8000 samples and bytes a second, blocks of one byte, 8 bits.
    return "RIFF" + le(36 + samples, 4) + "WAVEfmt " + le(16, 4) + le(1, 2) + le(1, 2) + le(8000, 4) + le(8000, 4) +
           le(1, 2) + le(8, 2) + "data" + le(samples, 4) + std::string(samples, static_cast<char>(0x80));
}

std::optional<std::string> ReadOption(const char* name, RegistryRoot root) {
    RegistryValue value;
    const long rc = WinRegistry().Read(root, kSetupKey, name, value);
    if (rc != ERROR_SUCCESS || value.kind != RegistryValue::Kind::Binary) return std::nullopt;
    return value.data;
}

void ForgetSettings() {
    for (const auto root : {RegistryRoot::CurrentUser, RegistryRoot::LocalMachine}) {
        WinRegistry().DeleteKey(root, "SOFTWARE\\Tavrinsoft");
    }
    std::filesystem::remove(DefaultListPath());
}

bool WaitFor(const std::function<bool()>& done, DWORD ms) {
    for (const DWORD start = GetTickCount();; Sleep(50)) {
        if (done()) return true;
        if (GetTickCount() - start >= ms) return false;
    }
}

TempFolder::TempFolder(const std::wstring& name) : path_(std::filesystem::temp_directory_path() / name) {
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

bool Session::Start(const std::string& tail, const std::wstring& exe) {
    process.Start(exe, tail);
    main = WaitForWindow(process.Id(), ids::kMainClass);
    list = WaitForWindow(process.Id(), ids::kPlaylistClass);
    return main && list;
}

std::vector<std::string> Session::Lines() const {
    HWND lines = GetDlgItem(list, ids::IDC_PLAYLIST_LINES);
    std::vector<std::string> out;
    for (LRESULT i = 0, count = SendMessageW(lines, LB_GETCOUNT, 0, 0); i < count; ++i) {
        std::wstring line(static_cast<size_t>(SendMessageW(lines, LB_GETTEXTLEN, i, 0)) + 1, L'\0');
        SendMessageW(lines, LB_GETTEXT, i, reinterpret_cast<LPARAM>(line.data()));
        out.push_back(Narrow(line.c_str()));
    }
    return out;
}

std::string Session::Name(size_t i) const {
    const auto lines = Lines();
    return i < lines.size() ? lines[i].substr(5, lines[i].size() - 6) : std::string();
}

void Session::PlayLine(int line) const {
    SendDlgItemMessageW(list, ids::IDC_PLAYLIST_LINES, LB_SETCURSEL, static_cast<WPARAM>(line - 1), 0);
    Command(list, ids::IDM_PLAYLIST_PLAY);
}

}  // namespace lumora::e2e

#pragma once
// The end-to-end driver: starts the real Lumora.exe and works it from outside through window
// messages, as a user would through the mouse and keyboard.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/WinText_win.h"
#include "ports/Registry.h"
#include "ports/TextCodec.h"
#include "ui/Boxes_win.h"
#include "ui/ControlIds.h"

namespace lumora::e2e {

// Every wait polls with a time-out; nothing sleeps a fixed time to "let it happen".
inline constexpr DWORD kTimeoutMs = 15000;

class LumoraProcess {
public:
    LumoraProcess() = default;
    ~LumoraProcess() { Kill(); }
    LumoraProcess(const LumoraProcess&) = delete;

    // Starts `exe` with `tail` as its command tail, after ending the process it started before.
    void Start(const std::wstring& exe, const std::string& tail);
    DWORD Id() const { return info_.dwProcessId; }
    // Its exit code once it has ended, waiting at most `ms`; none while it runs.
    std::optional<DWORD> ExitCode(DWORD ms = kTimeoutMs) const;
    // Ends the process if it still runs, and waits until its instance mutex is gone too, so that the
    // next start is a first start again.
    void Kill();

private:
    PROCESS_INFORMATION info_{};
};

// A top-level window of process `pid` (any Lumora process when 0) with this class and, when not
// empty, this title.
HWND FindWindowOf(DWORD pid, const wchar_t* className, const std::string& title = {});
HWND WaitForWindow(DWORD pid, const wchar_t* className);
// Every top-level window of that class, of any process.
std::vector<HWND> AllWindows(const wchar_t* className);

std::string Text(HWND window);
// Sends `message` to a window of another process with lParam pointing at a buffer of `bytes` in that
// process, first filled by `fill` (given the buffer's address there); returns the buffer afterwards.
std::string AskInto(HWND window, UINT message, WPARAM wParam, size_t bytes,
                    const std::function<std::string(char* remote)>& fill = nullptr);
inline std::string ControlText(HWND parent, int id) { return Text(GetDlgItem(parent, id)); }
void SetControlText(HWND parent, int id, const std::string& text);
// Waits until the control shows `expected`; fails with what it shows in the end.
::testing::AssertionResult Shows(HWND parent, int id, const std::string& expected, DWORD ms = kTimeoutMs);
// The text a tooltip window holds for tool `id` of `owner`; for `control` (a tool added by its window handle).
std::string ToolText(HWND tips, HWND owner, UINT_PTR id);
inline std::string ToolTipText(HWND tips, HWND control) {
    return ToolText(tips, GetParent(control), reinterpret_cast<UINT_PTR>(control));
}
// The balloon-help window of tooltip.dll on `window`: of the tip windows it owns, the one with the most tools.
HWND HelpTips(HWND window);
// A rectangle a control answers into memory (TBM_GETTHUMBRECT, TBM_GETCHANNELRECT).
RECT AskRect(HWND control, UINT message);
// A control of one of the settings dialog's pages (each page is a child dialog of the frame).
HWND PageControl(HWND dialog, int id);
// The control's text fits it (width and height) in the control's own font.
bool TextFits(HWND control);
// "00:01:02" in seconds; -1 for anything else ("-").
int Seconds(const std::string& hhmmss);

inline void Click(HWND parent, int id) {
    PostMessageW(parent, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(parent, id)));
}
inline void Command(HWND window, int id) { PostMessageW(window, WM_COMMAND, MAKEWPARAM(id, 0), 0); }

// Lumora's own message and input boxes are dialogs; found by title.
HWND WaitForBox(const std::string& title);
inline std::string BoxText(HWND box) { return ControlText(box, IDC_BOX_TEXT); }
// Sends `command` to `window` and waits for the box or dialog of that title it opens.
inline HWND OpenBox(HWND window, int command, const std::string& title) {
    Command(window, command);
    return WaitForBox(title);
}
// Waits for the box of that title, answers it with `buttonId` and returns its text; when none came,
// the boxes open instead.
std::string CloseBox(const std::string& title, int buttonId = IDOK);
// Sends `command` to `window` and answers the system's open or save dialog of that title: types
// `path` and presses its OK button. Returns the dialog; null when none came.
HWND AnswerFileDialog(HWND window, int command, const std::string& title, const std::string& path);

// Test set-up.
inline std::string Env(const wchar_t* name) { return _wgetenv(name) ? Narrow(_wgetenv(name)) : std::string(); }
// The Lumora.exe under test, from LUMORA_EXE.
inline std::wstring LumoraExe() { return Widen(Env(L"LUMORA_EXE")); }
// An option as Lumora keeps it: REG_BINARY decimal text in the user's setup key.
void StoreOption(const char* name, const char* text);
inline std::string Cp936(const std::string& utf8) { return Utf8ToCp936(utf8).value_or(std::string()); }
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);
std::string ReadBytes(const std::filesystem::path& path);
// A RIFF WAVE file of `seconds` of silence: 8 kHz, mono, 8 bits, which the movie device plays.
std::string SilentWave(int seconds);
// The binary text Lumora keeps under that name in the setup key (the user's unless asked for another);
// none when the value is missing or of another type.
std::optional<std::string> ReadOption(const char* name, RegistryRoot root = RegistryRoot::CurrentUser);
// The default list in the user's application data: the queue as Lumora keeps it between sessions.
inline std::filesystem::path DefaultListPath() { return Widen(Env(L"APPDATA")) + L"\\Lumora\\zvp3mr.qlb"; }
// Lumora's registry state (the user's and any machine-wide) and default list as on a machine that never ran it.
void ForgetSettings();
// Polls until `done` answers true; false when the time ran out.
bool WaitFor(const std::function<bool()>& done, DWORD ms = kTimeoutMs);
inline std::string Quoted(const std::string& path) { return "\"" + path + "\""; }
inline std::string PathText(const std::filesystem::path& path) { return Narrow(path.wstring()); }

// A fresh folder of that name in the temporary folder, removed again at the end.
class TempFolder {
public:
    explicit TempFolder(const std::wstring& name);
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::wstring& name) const { return path_ / name; }
    std::string Text() const { return PathText(path_); }

private:
    std::filesystem::path path_;
};

// One running Lumora with its main and playlist windows.
struct Session {
    LumoraProcess process;
    HWND main = nullptr;
    HWND list = nullptr;

    // Starts Lumora (or the copy `exe`) and waits for both windows; false when either never came.
    bool Start(const std::string& tail, const std::wstring& exe = LumoraExe());
    // Starts Lumora with one path as its argument.
    bool Open(const std::string& path) { return Start(Quoted(path)); }
    // The list's lines as shown ("001-(name)").
    std::vector<std::string> Lines() const;
    // The file name of the list's entry `i` (from 0), without its number; empty when there is none.
    std::string Name(size_t i) const;
    // Plays the list's entry `line` (from 1) as a double-click on it does.
    void PlayLine(int line) const;
    // Wait until the play button offers to pause, or to play.
    ::testing::AssertionResult Playing() const { return Shows(main, ids::IDC_MAIN_PLAY, "暂停"); }
    ::testing::AssertionResult Stopped() const { return Shows(main, ids::IDC_MAIN_PLAY, "播放"); }
    std::string Title() const { return ControlText(main, ids::IDC_MAIN_TITLE); }
    int Time() const { return Seconds(ControlText(main, ids::IDC_MAIN_TIME)); }  // the time shown, in seconds
    ::testing::AssertionResult WaitForTitle(const std::string& title, DWORD ms = kTimeoutMs) const {
        return Shows(main, ids::IDC_MAIN_TITLE, title, ms);
    }
};

// A test of one Lumora on a machine that never ran it, with a folder for its media.
class SessionTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(LumoraExe().empty()) << "LUMORA_EXE is not set";
        ForgetSettings();
    }
    // Ended before the fixture's folders go, so that it holds none of their files open.
    void TearDown() override { lumora_.process.Kill(); }

    Session lumora_;
    TempFolder media_{L"Lumora E2E 音乐"};
};

}  // namespace lumora::e2e

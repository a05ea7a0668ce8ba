// The floor for playback figures: a program that only opens one file through MCI and plays it.
#include <windows.h>
#include <mmsystem.h>

#include <string>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR args, int) {
    std::wstring path = args;
    if (path.size() >= 2 && path.front() == L'"') path = path.substr(1, path.size() - 2);
    wchar_t shortPath[MAX_PATH] = {};
    GetShortPathNameW(path.c_str(), shortPath, MAX_PATH);
    mciSendStringW((L"open " + std::wstring(shortPath) + L" type MPEGVideo alias floor").c_str(), nullptr, 0, nullptr);
    mciSendStringW(L"play floor", nullptr, 0, nullptr);
    MSG msg;
    while (GetMessageW(&msg, nullptr, 0, 0) > 0) DispatchMessageW(&msg);
    return 0;
}

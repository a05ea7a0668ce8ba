#include "ui/WindowFade_win.h"

#include <algorithm>
#include <map>
#include <vector>

#include "common/Fade.h"
#include "settings/IniFiles.h"

namespace lumora {
namespace {

// The fade's timer: a TIMERPROC of its own, so the windows' procedures never see it.
constexpr UINT_PTR kFadeTimer = 0x4C46;

struct Fade {
    std::vector<int> steps;
    size_t next = 0;
    bool hideAtEnd = false;
};

bool gFades = true;
std::map<HWND, int> gOpacity;  // set by SetWindowOpacity; opaque when not set
std::map<HWND, Fade> gRunning;

int OpacityOf(HWND window) {
    const auto it = gOpacity.find(window);
    return it == gOpacity.end() ? kOpaque : it->second;
}

void ApplyAlpha(HWND window, int alpha) {
    const LONG style = GetWindowLongW(window, GWL_EXSTYLE);
    if (alpha >= kOpaque) {
        // A plain window draws faster and keeps its child windows' own drawing untouched.
        if (style & WS_EX_LAYERED) SetWindowLongW(window, GWL_EXSTYLE, style & ~WS_EX_LAYERED);
        return;
    }
    if (!(style & WS_EX_LAYERED)) SetWindowLongW(window, GWL_EXSTYLE, style | WS_EX_LAYERED);
    SetLayeredWindowAttributes(window, 0, static_cast<BYTE>(alpha), LWA_ALPHA);
}

void Stop(HWND window) {
    if (gRunning.erase(window)) KillTimer(window, kFadeTimer);
}

void CALLBACK FadeTick(HWND window, UINT, UINT_PTR, DWORD) {
    const auto it = gRunning.find(window);
    if (it == gRunning.end() || !IsWindow(window)) {
        KillTimer(window, kFadeTimer);
        gRunning.erase(window);
        return;
    }
    Fade& fade = it->second;
    if (fade.next < fade.steps.size()) {
        ApplyAlpha(window, fade.steps[fade.next++]);
        if (fade.next < fade.steps.size()) return;
    }
    const bool hide = fade.hideAtEnd;
    Stop(window);
    if (hide) ShowWindow(window, SW_HIDE);
    ApplyAlpha(window, OpacityOf(window));
}

void Start(HWND window, int from, int to, bool hideAtEnd) {
    Fade fade{FadeSteps(from, to), 0, hideAtEnd};
    ApplyAlpha(window, from);
    gRunning[window] = std::move(fade);
    SetTimer(window, kFadeTimer, kFadeTickMs, FadeTick);
}

// Where a fade under way has got to.
int CurrentAlpha(HWND window) {
    const auto it = gRunning.find(window);
    if (it == gRunning.end() || it->second.next == 0) return it == gRunning.end() ? OpacityOf(window) : 0;
    return it->second.steps[it->second.next - 1];
}

}  // namespace

void SetWindowFades(bool on) { gFades = on; }

void SetWindowOpacity(HWND window, int alpha) {
    if (!window) return;
    gOpacity[window] = ClampOpacity(alpha);
    const auto it = gRunning.find(window);
    if (it == gRunning.end()) {
        ApplyAlpha(window, gOpacity[window]);
    } else if (!it->second.hideAtEnd) {
        it->second.steps.back() = gOpacity[window];
    }
}

void FadeIn(HWND window, int showCommand) {
    if (!window) return;
    const bool fadingOut = gRunning.count(window) && gRunning[window].hideAtEnd;
    if (IsWindowVisible(window) && !fadingOut) return;
    const int from = fadingOut ? CurrentAlpha(window) : 0;
    Stop(window);
    if (!gFades) {
        ApplyAlpha(window, OpacityOf(window));
        ShowWindow(window, showCommand);
        return;
    }
    Start(window, from, OpacityOf(window), false);
    ShowWindow(window, showCommand);
}

void FadeOut(HWND window) {
    if (!window || !IsWindowVisible(window) || !ShownOrShowing(window)) return;
    const int from = CurrentAlpha(window);
    Stop(window);
    if (!gFades) {
        ShowWindow(window, SW_HIDE);
        return;
    }
    Start(window, from, 0, true);
}

bool ShownOrShowing(HWND window) {
    const auto it = gRunning.find(window);
    return IsWindowVisible(window) && (it == gRunning.end() || !it->second.hideAtEnd);
}

void FadeOutNow(std::initializer_list<HWND> windows) {
    std::vector<std::pair<HWND, int>> fading;
    for (HWND w : windows) {
        if (!w || !ShownOrShowing(w)) continue;
        fading.emplace_back(w, CurrentAlpha(w));
        Stop(w);
    }
    if (gFades) {
        std::vector<std::vector<int>> steps;
        size_t ticks = 0;
        for (const auto& [w, from] : fading) {
            steps.push_back(FadeSteps(from, 0));
            ticks = std::max(ticks, steps.back().size());
        }
        for (size_t i = 0; i < ticks; ++i) {
            for (size_t k = 0; k < fading.size(); ++k) {
                if (i < steps[k].size()) ApplyAlpha(fading[k].first, steps[k][i]);
            }
            GdiFlush();
            Sleep(kFadeTickMs);
        }
    }
    for (const auto& [w, from] : fading) ShowWindow(w, SW_HIDE);
}

}  // namespace lumora

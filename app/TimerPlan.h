#pragma once
// Which of the main window's timers run, from the player's state. A timer that has nothing to do
// does not run: a paused or idle Lumora does not wake at all.
#include <optional>

namespace lumora {

// StartupBalloon and NextBalloon fire once; Chime is set anew each time for the next full hour.
enum class TimerId : unsigned {
    Progress = 1,
    Volume = 2,
    HandOff = 3,
    Display = 4,
    StartupBalloon = 12,
    Chime = 13,
    NextBalloon = 14
};

inline constexpr unsigned kProgressIntervalMs = 250;  // position, texts, lyrics, end of file
inline constexpr unsigned kDisplayIntervalMs = 60;    // the spectrum of decoder 1
inline constexpr unsigned kHandOffIntervalMs = 100;   // while other starts' arguments are collected

struct TimerInputs {
    bool playing = false;
    bool decoder1 = false;        // our MPEG audio player, whose window is the audio display
    bool displayShown = false;    // the audio display window is visible
    bool volumeChanging = false;  // the mixer still moves toward the slider
    std::optional<long long> volumeStepSetting;  // "L53": the delay between two volume steps
    bool displayClosedByUser = false;  // the user closed the audio display since the file opened
};

struct TimerPlan {
    bool progress = false;
    bool display = false;
    bool volume = false;
    unsigned volumeIntervalMs = 0;
    // Decoder 1 plays into the audio display: the window opens with the sound, unless the user
    // closed it; that close holds until the next file.
    bool openDisplay = false;
};

TimerPlan PlanTimers(const TimerInputs& in);

}  // namespace lumora

#include "platform/WaveOutInfo_win.h"

#include <windows.h>
// (mmsystem.h needs windows.h first)
#include <mmsystem.h>

#include <algorithm>
#include <string>

namespace lumora {
namespace {

// The ANSI record holds the name in the system's code page; the inspector reads code page 936, so on any
// other system the name is carried over (what 936 cannot hold becomes "?").
void TakeName(const char (&name)[MAXPNAMELEN], std::array<char, 32>& out) {
    const int length = static_cast<int>(std::find(name, name + MAXPNAMELEN, '\0') - name);
    if (GetACP() == 936 || length == 0) {
        std::copy(name, name + MAXPNAMELEN, out.begin());
        return;
    }
    std::wstring wide(static_cast<size_t>(length), L'\0');
    wide.resize(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, name, length, wide.data(), length)));
    std::string bytes(wide.size() * 2, '\0');
    bytes.resize(
        static_cast<size_t>(WideCharToMultiByte(936, 0, wide.data(), static_cast<int>(wide.size()), bytes.data(),
                                                static_cast<int>(bytes.size()), nullptr, nullptr)));
    std::copy_n(bytes.begin(), std::min(bytes.size(), out.size()), out.begin());
}

}  // namespace

unsigned WinWaveOutInfo::DeviceCount() { return waveOutGetNumDevs(); }

WaveOutCaps WinWaveOutInfo::FirstDeviceCaps() {
    WAVEOUTCAPSA c{};
    WaveOutCaps caps;
    if (waveOutGetDevCapsA(0, &c, sizeof c) != MMSYSERR_NOERROR) return caps;
    caps.manufacturerId = c.wMid;
    caps.productId = c.wPid;
    caps.driverVersion = c.vDriverVersion;
    TakeName(c.szPname, caps.productName);
    caps.formats = c.dwFormats;
    caps.channels = c.wChannels;
    caps.functions = c.dwSupport;
    return caps;
}

}  // namespace lumora

// Lumora's entry point: the splash window's start-up, then the main window's message loop.
#include <windows.h>
#include <commctrl.h>
#include <ole2.h>

#include <memory>

#include "app/App_win.h"
#include "app/Startup.h"
#include "app/Version.h"
#include "platform/FileSystem_win.h"
#include "platform/HandOff_win.h"
#include "platform/Instance_win.h"
#include "platform/MessagePump_win.h"
#include "platform/Registry_win.h"
#include "platform/WinText_win.h"
#include "settings/FileRegistry.h"
#include "settings/IniFiles.h"
#include "settings/RegistryWrapper.h"
#include "settings/UserFirstRegistry.h"
#include "ui/Boxes_win.h"
#include "ui/Prompts_win.h"
#include "ui/SplashWindow_win.h"

namespace {

// How long the splash stays when there is nothing to open.
constexpr unsigned kSplashMs = 1500;

lumora::OsVersion QueryOsVersion() {
    OSVERSIONINFOW info{};
    info.dwOSVersionInfoSize = sizeof info;
    // The answer does not stop start-up: a failed call leaves a version that matches no row.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    GetVersionExW(&info);
#pragma GCC diagnostic pop
    lumora::OsVersion v;
    v.platform = info.dwPlatformId == VER_PLATFORM_WIN32_NT        ? lumora::OsPlatform::NT
                 : info.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS ? lumora::OsPlatform::Win9x
                                                                   : lumora::OsPlatform::Other;
    v.major = info.dwMajorVersion;
    v.minor = info.dwMinorVersion;
    return v;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    OleInitialize(nullptr);
    INITCOMMONCONTROLSEX icc{sizeof icc, ICC_BAR_CLASSES | ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&icc);

    lumora::WinInstanceProbe instances;
    const std::string programFolder = lumora::ProgramFolder();
    const bool portable =
        lumora::WinFileSystem().FileExists(programFolder + "\\" + std::string(lumora::kPortableMarker));
    lumora::WinFileSystem files(portable ? programFolder + "\\" + std::string(lumora::kPortableDataFolder)
                                         : std::string());
    lumora::IniFiles ini(files);
    // The first instance opens its door at once: starts made together with it hand their arguments over
    // while it is still starting, and it opens them with its own.
    lumora::HandOffBatch handOffs;
    lumora::HandOffReceiver door;
    lumora::App* app = nullptr;
    if (!instances.AnotherInstanceRuns()) {
        const auto receive = [&](const lumora::HandOffMessage& message) {
            handOffs.Receive(message, lumora::HandOffNowMs());
            if (app) app->HandOffArrived();
        };
        door.Open(receive, [&] {
            const std::string slot = lumora::ReadScratchValue(ini);
            if (slot.empty()) return;
            lumora::WriteScratchValue(ini, "");
            receive({lumora::HandOffKind::Argument, 0, lumora::HandOffNowMs(), slot});
        });
    }
    lumora::WinRegistry systemRegistry;
    std::unique_ptr<lumora::Registry> ownRegistry;
    std::string registryFile;
    if (portable) {
        // On a medium that cannot be written (no data folder) every save fails with the registry's message.
        const std::string data = files.UserDataFolder();
        registryFile = data.empty() ? data : data + "\\" + std::string(lumora::kPortableRegistryFile);
        ownRegistry = std::make_unique<lumora::FileRegistry>(files, registryFile);
    } else {
        ownRegistry = std::make_unique<lumora::UserFirstRegistry>(systemRegistry);
    }
    lumora::Registry& registry = *ownRegistry;
    lumora::WinPrompts prompts;
    lumora::RegistryWrapper wrapper(registry, prompts);

    lumora::SplashWindow splash;
    if (!splash.Create()) {
        // Without the splash its timer never fires and nothing would ever show: end, and let
        // the instance mutex go with us so that the next start is not handed to a ghost.
        OleUninitialize();
        return 1;
    }
    const std::string tail = lumora::CommandTail(lumora::Narrow(GetCommandLineW()));
    const lumora::StartupResult start = lumora::RunStartup({files, ini, wrapper, instances, portable}, QueryOsVersion(),
                                                           tail, programFolder, [] { lumora::PumpWaitingMessages(); });
    if (start.os) splash.SetOsLabel(start.os->label);
    if (start.outcome != lumora::StartupOutcome::HandedOver) instances.Withdraw();

    switch (start.outcome) {
        case lumora::StartupOutcome::ShowHelp:
            splash.Close();
            lumora::ShowBox(nullptr, lumora::HelpText(lumora::kVersionText), lumora::kHelpTitle,
                            lumora::BoxButtons::Ok);
            OleUninitialize();
            return 0;
        case lumora::StartupOutcome::HandedOver:
            splash.Close();
            OleUninitialize();
            return 0;
        case lumora::StartupOutcome::TooltipMissing:
            splash.Close();
            lumora::ShowBox(nullptr, lumora::StartupErrorText(lumora::kTooltipMissingText, start.marker),
                            lumora::kStartupErrorTitle, lumora::BoxButtons::Ok);
            OleUninitialize();
            return 1;
        case lumora::StartupOutcome::OpenMainWindow: break;
    }

    auto owned = std::make_unique<lumora::App>(
        lumora::AppServices{files, ini, wrapper, prompts, registry, handOffs, systemRegistry, registryFile});
    app = owned.get();
    const std::string osCode = start.os ? start.os->code : std::string();
    bool created = true;
    if (start.showMainWindowNow) {
        created = app->Start(start.argument, osCode);
        splash.Close();
    } else {
        splash.StartTimer(kSplashMs, [&] {
            created = app->Start(start.argument, osCode);
            splash.Close();
            if (!created) PostQuitMessage(1);
        });
    }
    int exitCode = created ? 0 : 1;
    if (created) {
        MSG msg{};
        while (!app->Closed() && GetMessageW(&msg, nullptr, 0, 0) > 0) lumora::DispatchOne(msg);
        if (msg.message == WM_QUIT) exitCode = static_cast<int>(msg.wParam);
    }
    app = nullptr;
    owned.reset();
    OleUninitialize();
    return exitCode;
}

#pragma once
// What start-up decides before any window shows: the operating system, the help request, the
// single-instance hand-off and the checks of the balloon-tip component. Portable: the splash
// window runs it and shows what it returns.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ports/InstanceProbe.h"

namespace lumora {

class FileSystem;
class IniFiles;
class RegistryWrapper;
class SettingsStore;

// ---- Operating system ---------------------------------------------------------------------

enum class OsPlatform { Win9x, NT, Other };

struct OsVersion {
    OsPlatform platform = OsPlatform::Other;
    unsigned major = 0;
    unsigned minor = 0;
};

struct OsIdentity {
    std::string label;  // shown on the splash window
    std::string code;   // "95", "98", "ME", "NT3", "NT4", "2K", "XP"
};

// Empty optional for a version that matches no row (5.2, 6.x and later): the splash keeps its
// label and the program-wide code stays empty.
std::optional<OsIdentity> IdentifyOs(const OsVersion& version);

// On Windows 98 and ME the XP-style menus (opt::kXpMenus) are off whatever the registry holds.
void ApplyOsOverrides(SettingsStore& settings, std::string_view osCode);

// ---- Command line --------------------------------------------------------------------------

inline constexpr std::string_view kHelpTitle = "Lumora （参数帮助）";

bool IsHelpRequest(std::string_view tail);
std::string HelpText(std::string_view version);

// The command tail of a full command line: everything after the program's name, which may be
// quoted, with the blanks before it removed.
std::string CommandTail(std::string_view commandLine);

// ---- Balloon-tip component ------------------------------------------------------------------

inline constexpr std::string_view kTooltipFile = "tooltip.dll";
// An empty file of this name beside the program makes a portable copy: options, lists and records live in
// the folder kPortableDataFolder beside it (the registry's share in kPortableRegistryFile there), and
// nothing goes into the registry or the user's profile.
inline constexpr std::string_view kPortableMarker = "Lumora.portable";
inline constexpr std::string_view kPortableDataFolder = "Data";
inline constexpr std::string_view kPortableRegistryFile = "registry.txt";

struct RegistryEntry {
    std::string key;    // full key path
    std::string name;   // value name; empty for the key's default value
    std::string value;  // text, written as a string value
};

// The keys and values that register the component, in the order they are written; each key is
// created before its values.
std::vector<RegistryEntry> TooltipRegistration(std::string_view programFolder);

// Writes the registration, every start; stops at the first failure (shown by the wrapper).
void RegisterTooltip(RegistryWrapper& registry, std::string_view programFolder);

// ---- The splash window's run ----------------------------------------------------------------

inline constexpr std::string_view kStartupErrorTitle = "Lumora 启动错误";
inline constexpr std::string_view kTooltipMissingText =
    "对不起，找不到本软件的配置文件（TOOLTIP），请重新安装或与作者联系。";

// The start-up error box's body: the failure, the contact lines and where start-up stopped.
std::string StartupErrorText(std::string_view failure, std::string_view marker);

enum class StartupOutcome {
    ShowHelp,        // show HelpText in a box titled kHelpTitle, then end
    HandedOver,      // another instance takes the argument: end silently
    TooltipMissing,  // show the start-up error box, then end
    OpenMainWindow,
};

// The command tail that opens the settings dialog on its file types (the installer runs it).
inline constexpr std::string_view kSettingsArgument = "set";

struct StartupResult {
    StartupOutcome outcome = StartupOutcome::OpenMainWindow;
    std::string marker;               // the step start-up was at
    std::optional<OsIdentity> os;     // empty when the version matched no row
    std::string argument;             // the command tail, spelled as the user typed it
    bool settingsMode = false;        // the tail was exactly "set"
    bool showMainWindowNow = false;   // an argument skips the splash's display time
    std::vector<std::string> markers; // every marker in the order it was set
};

struct StartupPorts {
    FileSystem& files;
    IniFiles& ini;
    RegistryWrapper& registry;
    InstanceProbe& instances;
    // A portable copy registers no component: it loads tooltip.dll from its own folder instead.
    bool portable = false;
};

// Runs the splash window's steps. `pumpMessages` lets pending window messages run where start-up
// waits for them.
StartupResult RunStartup(StartupPorts ports, const OsVersion& version, std::string_view tail,
                         std::string_view programFolder, void (*pumpMessages)() = nullptr);

// ---- Open-argument ----------------------------------------------------------------------------

// Trims the argument, and drops its surrounding quotation marks when only the unquoted form
// exists. The existing file or folder it names, or empty optional.
std::optional<std::string> ResolveArgument(std::string_view argument, FileSystem& fs);

}  // namespace lumora

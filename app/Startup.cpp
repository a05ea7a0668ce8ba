#include "app/Startup.h"

#include <array>

#include "common/Text.h"
#include "ports/FileSystem.h"
#include "settings/IniFiles.h"
#include "settings/OptionNames.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

// Where start-up is, for the error box. "程序是否单一运行-2" is set only after the program
// has already decided to end, so nobody ever sees it; it is kept in the sequence all the same.
constexpr std::string_view kMarkOsInit = "操作系统识别初始化";
constexpr std::string_view kMarkOs = "操作系统识别";
constexpr std::string_view kMarkReadL44 = "读l44注册表";
constexpr std::string_view kMarkSingle = "程序是否单一运行";
constexpr std::string_view kMarkSingle1 = "程序是否单一运行-1";
constexpr std::string_view kMarkSingle2 = "程序是否单一运行-2";
constexpr std::string_view kMarkSingle3 = "程序是否单一运行-3";
constexpr std::string_view kMarkSingle4 = "程序是否单一运行-4";
constexpr std::string_view kMarkArgument = "严正参数";
constexpr std::string_view kMarkDone = "第一初始化完毕";

constexpr std::string_view kContactLines = "电子邮件：support@lumora-player.org\n网站：www.lumora-player.org";

struct OsRow {
    OsPlatform platform;
    unsigned major;
    unsigned minor;
    std::string_view label;
    std::string_view code;
};

constexpr std::array<OsRow, 7> kOsTable{{
    {OsPlatform::Win9x, 4, 0, "Windows`95", "95"},
    {OsPlatform::Win9x, 4, 10, "Windows`98", "98"},
    {OsPlatform::Win9x, 4, 90, "Windows ME", "ME"},
    {OsPlatform::NT, 3, 51, "Windows NT 3.51", "NT3"},
    {OsPlatform::NT, 4, 0, "Windows NT 4.0", "NT4"},
    {OsPlatform::NT, 5, 0, "Windows 2000", "2K"},
    {OsPlatform::NT, 5, 1, "Windows XP", "XP"},
}};

constexpr std::string_view kClsid = "{F2E3C6F5-2F8F-41F9-BDA5-8E19A020CA7E}";
constexpr std::string_view kTypeLib = "{D05692C8-7F34-4772-83F7-14DBBCB0433F}";
constexpr std::string_view kDispatchMarshaller = "{00020420-0000-0000-C000-000000000046}";
constexpr std::string_view kAutomationMarshaller = "{00020424-0000-0000-C000-000000000046}";

}  // namespace

void RegisterTooltip(RegistryWrapper& registry, std::string_view programFolder) {
    auto entries = TooltipRegistration(programFolder);
    // A user without the right to change HKEY_CLASSES_ROOT (any limited account since Vista)
    // registers the component for himself: COM reads HKEY_CURRENT_USER\Software\Classes first.
    constexpr std::string_view kMachine = "HKEY_CLASSES_ROOT";
    if (registry.CreateKeyQuietly(entries.front().key) == regerr::kAccessDenied) {
        for (auto& e : entries) e.key = "HKEY_CURRENT_USER\\Software\\Classes" + e.key.substr(kMachine.size());
    }
    std::string lastKey;
    for (const auto& entry : entries) {
        if (entry.key != lastKey && !registry.CreateKey(entry.key)) return;
        lastKey = entry.key;
        if (!registry.WriteString(entry.key, entry.name, entry.value)) return;
    }
}

std::optional<OsIdentity> IdentifyOs(const OsVersion& version) {
    for (const auto& row : kOsTable) {
        if (row.platform == version.platform && row.major == version.major && row.minor == version.minor) {
            return OsIdentity{std::string(row.label), std::string(row.code)};
        }
    }
    return std::nullopt;
}

void ApplyOsOverrides(SettingsStore& settings, std::string_view osCode) {
    if (osCode == "98" || osCode == "ME") settings.SetText(opt::kXpMenus, "0");
}

bool IsHelpRequest(std::string_view tail) { return tail == "?" || tail == "/?" || tail == "-?"; }

std::string HelpText(std::string_view version) {
    static constexpr std::array<std::string_view, 12> kLines = {
        "注：“ZEV-MP3 Player.EXE”表示主程序文件名；“C:\\Tavrinsoft\\TavrinPlayer”表示软件安装路径。",
        "1、播放媒体文件",
        "格式：主程序路径 播放的文件路径",
        "例：C:\\Tavrinsoft\\TavrinPlayer\\ZEV-MP3 Player.EXE ASD.MP3",
        "2、播放列表文件",
        "格式：主程序路径 播放的列表文件路径",
        "例：C:\\Tavrinsoft\\TavrinPlayer\\ZEV-MP3 Player.EXE ZXC.QLB",
        "3、播放文件夹/驱动器下所有媒体文件",
        "格式：主程序路径 播放的文件夹路径/驱动器",
        "例：C:\\Tavrinsoft\\TavrinPlayer\\ZEV-MP3 Player.EXE C:\\Windows",
        "例：C:\\Tavrinsoft\\TavrinPlayer\\ZEV-MP3 Player.EXE C:\\",
        "",
    };
    std::string text = "版本：" + std::string(version);
    for (const auto line : kLines) {
        if (line.empty()) continue;
        text += "\n";
        text += line;
    }
    return text;
}

std::string CommandTail(std::string_view commandLine) {
    size_t i = 0;
    while (i < commandLine.size() && (commandLine[i] == ' ' || commandLine[i] == '\t')) ++i;
    if (i < commandLine.size() && commandLine[i] == '"') {
        const size_t close = commandLine.find('"', i + 1);
        i = close == std::string_view::npos ? commandLine.size() : close + 1;
    } else {
        while (i < commandLine.size() && commandLine[i] != ' ' && commandLine[i] != '\t') ++i;
    }
    while (i < commandLine.size() && (commandLine[i] == ' ' || commandLine[i] == '\t')) ++i;
    return std::string(commandLine.substr(i));
}

std::vector<RegistryEntry> TooltipRegistration(std::string_view programFolder) {
    std::string folder(programFolder);
    if (folder.empty() || folder.back() != '\\') folder += '\\';
    const std::string clsidKey = "HKEY_CLASSES_ROOT\\CLSID\\" + std::string(kClsid);
    std::vector<RegistryEntry> entries = {
        {"HKEY_CLASSES_ROOT\\TT.Tooltip", "", "TT.Tooltip"},
        {"HKEY_CLASSES_ROOT\\TT.Tooltip\\Clsid", "", std::string(kClsid)},
        {clsidKey, "", "TT.Tooltip"},
        {clsidKey + "\\Implemented Categories\\{40FC6ED5-2438-11CF-A3DB-080036F12502}", "", ""},
        {clsidKey + "\\InprocServer32", "", folder + "Tooltip.dll"},
        {clsidKey + "\\InprocServer32", "ThreadingModel", "Apartment"},
        {clsidKey + "\\ProgID", "", "TT.Tooltip"},
        {clsidKey + "\\Programmable", "", ""},
        {clsidKey + "\\TypeLib", "", std::string(kTypeLib)},
        {clsidKey + "\\VERSION", "", "1.1"},
    };
    struct Interface {
        std::string_view iid;
        std::string_view name;
        std::string_view forward;
        std::string_view marshaller;
    };
    static constexpr std::array<Interface, 3> kInterfaces{{
        {"{E60ED377-9609-47AD-AC0B-7A7B92A4E657}", "_Tooltip", "", kAutomationMarshaller},
        {"{6E48358E-35AC-450B-8200-218C9660CC81}", "Tooltip", "{E60ED377-9609-47AD-AC0B-7A7B92A4E657}",
         kAutomationMarshaller},
        {"{F14B28A2-3ACE-444D-8F47-9C5DC79E411D}", "__Tooltip", "", kDispatchMarshaller},
    }};
    for (const auto& i : kInterfaces) {
        const std::string key = "HKEY_CLASSES_ROOT\\Interface\\" + std::string(i.iid);
        entries.push_back({key, "", std::string(i.name)});
        if (!i.forward.empty()) entries.push_back({key + "\\Forward", "", std::string(i.forward)});
        entries.push_back({key + "\\ProxyStubClsid", "", std::string(i.marshaller)});
        entries.push_back({key + "\\ProxyStubClsid32", "", std::string(i.marshaller)});
        entries.push_back({key + "\\TypeLib", "", std::string(kTypeLib)});
        entries.push_back({key + "\\TypeLib", "Version", "1.1"});
    }
    return entries;
}

std::string StartupErrorText(std::string_view failure, std::string_view marker) {
    return std::string(failure) + "\n\n" + std::string(kContactLines) + "\n\n程序运行到：" + std::string(marker);
}

StartupResult RunStartup(StartupPorts ports, const OsVersion& version, std::string_view tail,
                         std::string_view programFolder, void (*pumpMessages)()) {
    StartupResult result;
    const auto mark = [&](std::string_view m) {
        result.marker = std::string(m);
        result.markers.push_back(result.marker);
    };
    const auto pump = [&] {
        if (pumpMessages) pumpMessages();
    };

    mark(kMarkOsInit);
    mark(kMarkOs);
    result.os = IdentifyOs(version);

    // Help is only a message box: it needs no balloon tips, so a broken installation can still ask.
    if (IsHelpRequest(tail)) {
        result.outcome = StartupOutcome::ShowHelp;
        return result;
    }

    // The balloon-tip component: without it the image buttons have no tips.
    std::string folder(programFolder);
    if (folder.empty() || folder.back() != '\\') folder += '\\';
    if (!ports.files.FileExists(folder + std::string(kTooltipFile))) {
        result.outcome = StartupOutcome::TooltipMissing;
        return result;
    }
    if (!ports.portable) RegisterTooltip(ports.registry, programFolder);

    result.settingsMode = tail == kSettingsArgument;
    // The path stays as the user (or the shell) spelled it: the title line and the lists show it so.
    result.argument = std::string(tail);

    mark(kMarkReadL44);
    const std::string stored = std::string(Trim(ports.registry.ReadValue(kSetupKeyPath, opt::kSamePlayer)));
    const bool singleInstance = stored != "0";

    mark(kMarkSingle);
    if (singleInstance && ports.instances.AnotherInstanceRuns()) {
        mark(kMarkSingle1);
        const std::string handed = result.argument.empty() ? std::string("*") : result.argument;
        // A running instance that does not answer (hung) finds the argument in the slot when it recovers.
        if (!ports.instances.HandOver(handed)) {
            WriteScratchValue(ports.ini, handed);
            ports.instances.PointToSlot();
        }
        result.outcome = StartupOutcome::HandedOver;
        mark(kMarkSingle2);
        return result;
    }
    mark(kMarkSingle3);
    WriteScratchValue(ports.ini, "");  // a request left over from an earlier run is dropped
    pump();
    mark(kMarkSingle4);
    pump();

    mark(kMarkArgument);
    result.showMainWindowNow = !result.argument.empty();
    mark(kMarkDone);
    result.outcome = StartupOutcome::OpenMainWindow;
    return result;
}

std::optional<std::string> ResolveArgument(std::string_view argument, FileSystem& fs) {
    std::string path(Trim(argument));
    const auto exists = [&](const std::string& p) { return !p.empty() && (fs.FolderExists(p) || fs.FileExists(p)); };
    if (!exists(path) && path.size() >= 2) path = path.substr(1, path.size() - 2);
    if (!exists(path)) return std::nullopt;
    return path;
}

}  // namespace lumora

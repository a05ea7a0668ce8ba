#include "shell/FileTypes.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "common/Text.h"
#include "playlist/MediaTest.h"
#include "settings/RegistryWrapper.h"

namespace lumora {
namespace {

struct Description {
    std::string_view key;  // four characters, or three for the last three entries
    std::string_view text;
};

constexpr std::array<Description, 48> kDescriptions{{
    {".avi", "AVI Windows 视频文件(DivX)"},
    {".mpg", "MPG 电影文件(图片移动视频)"},
    {".dat", "DAT VCD文件"},
    {"mpeg", "MPEG 电影文件(图片移动视频)"},
    {".mp3", "MP3 压缩为三层的音频文件"},
    {".mp2", "MP2 压缩为二层的音频文件"},
    {".mp1", "MP1 压缩为一层的音频文件"},
    {".wav", "WAV Windows 音频文件(WAVE 文件)"},
    {".aif", "AIF AIFF音频文件"},
    {"aifc", "AIFC AIFF音频文件"},
    {"aiff", "AIFF AIFF音频文件"},
    {".mv1", "MV1 电影文件(图片移动视频)"},
    {".mov", "MOV QuickTime文件"},
    {".mpa", "MPA 电影文件(图片移动视频)"},
    {".snd", "SND AU音频文件"},
    {".mpm", "MPM 视频文件"},
    {".mpv", "MPV 视频文件"},
    {".enc", "ENC 视频文件"},
    {".mid", "MID MIDI文件"},
    {".rmi", "RMI MIDI文件"},
    {"midi", "MIDI MIDI文件"},
    {".vob", "VOB DVD文件"},
    {".wma", "WMA Windows Media 音频文件"},
    {".wax", "WAX Windows Media 音频文件"},
    {".wmv", "WMV Windows Media 视频文件"},
    {".wvx", "WVX Windows Media 视频文件"},
    {".asf", "ASF Windows Media 文件"},
    {".asx", "ASX Windows Media 文件"},
    {".wmx", "WMX Windows Media 文件"},
    {".wmp", "WMP Windows Media 文件"},
    {".wpl", "WPL Windows Media 文件"},
    {".qlb", "QLB Lumora列表文件"},
    {".swf", "SWF Flash 文件"},
    {".spl", "SPL Flash 文件"},
    {"mpga", "MPGA 电影文件(图片移动视频)"},
    {".bmp", "BMP 图像文件(位图)"},
    {".dib", "DIB 图像文件(位图)"},
    {".gif", "GIF 图像文件(动态图像)"},
    {".jpg", "JPG 图像文件(压缩图像)"},
    {".wmf", "WMF 图像文件(元文件)"},
    {".emf", "EMF 图像文件(元文件)"},
    {".ico", "ICO 图像文件(图标文件)"},
    {".cur", "CUR 图像文件(图标文件)"},
    {"rmvb", "RMVB Real文件"},
    {".cda", "CD 音轨"},
    {".qt", "QT QuickTime 文件"},
    {".au", "AU UNIX文件"},
    {".rm", "RM Real文件"},
}};

constexpr std::string_view kClasses = "HKEY_CURRENT_USER\\Software\\Classes\\";
constexpr std::string_view kBackupValue = "filebak";
constexpr std::string_view kHandlerPrefix = "ZEV_";
// Below the handler key, parents before children.
constexpr std::array<std::string_view, 7> kHandlerKeys{"\\DefaultIcon",
                                                       "\\shell",
                                                       "\\shell\\open",
                                                       "\\shell\\open\\command",
                                                       "\\shell\\open\\ddeexec",
                                                       "\\shell\\open\\ddeexec\\Application",
                                                       "\\shell\\open\\ddeexec\\Topic"};
// Lists the handler in the shell's "Open with" without taking the extension's default away from anyone.
constexpr std::string_view kOpenWith = "\\OpenWithProgids";

constexpr std::string_view kVerb = "\\shell\\ZEV-PLAYER";
constexpr std::string_view kVerbCaption = "用 Lumora 打开";

// The capable-application entries Default Apps lists, from the outermost key in.
constexpr std::array<std::string_view, 4> kApplicationKeys{
    "HKEY_CURRENT_USER\\Software\\Tavrinsoft", "HKEY_CURRENT_USER\\Software\\Tavrinsoft\\TavrinPlayer",
    "HKEY_CURRENT_USER\\Software\\Tavrinsoft\\TavrinPlayer\\Capabilities",
    "HKEY_CURRENT_USER\\Software\\Tavrinsoft\\TavrinPlayer\\Capabilities\\FileAssociations"};
constexpr std::string_view kRegisteredApplications = "HKEY_CURRENT_USER\\Software\\RegisteredApplications";
constexpr std::string_view kApplicationName = "Lumora";

bool Holds(const std::vector<std::string>& names, std::string_view name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& n) { return EqualsIgnoringAsciiCase(n, name); });
}

std::string Key(std::string_view name) { return std::string(kClasses) + std::string(name); }

std::string Handler(std::string_view extension) { return std::string(kHandlerPrefix) + std::string(extension); }

std::string IconText(const IconChoice& icon) { return icon.file + "," + std::to_string(icon.index); }

}  // namespace

std::string_view FileTypeDescription(std::string_view fileName) {
    for (size_t length : {4, 3}) {
        const std::string tail = LowerAscii(fileName.substr(fileName.size() - std::min(fileName.size(), length)));
        for (const auto& d : kDescriptions) {
            if (d.key.size() == length && d.key == tail) return d.text;
        }
    }
    return {};
}

std::vector<std::string> FileTypeItems() {
    std::vector<std::string> items;
    std::string_view list = kMediaExtensionList;
    while (!list.empty()) {
        const size_t semicolon = std::min(list.find(';'), list.size());
        const std::string_view item = list.substr(0, semicolon);
        items.push_back(item.front() == '.' ? std::string(item) : "." + std::string(item));
        list.remove_prefix(std::min(semicolon + 1, list.size()));
    }
    items.push_back(".qlb");
    return items;
}

IconChoice ParseIconText(std::string_view text) {
    const size_t comma = text.rfind(',');
    if (comma == std::string_view::npos) return {std::string(text), 0};
    // Other programs often quote the file.
    return {std::string(Trim(text.substr(0, comma), "\"")), std::atoi(std::string(text.substr(comma + 1)).c_str())};
}

FileTypeRegistrar::FileTypeRegistrar(RegistryWrapper& registry, std::string programPath)
    : registry_(registry), programPath_(std::move(programPath)) {}

std::string FileTypeRegistrar::Command() const { return "\"" + programPath_ + "\" %1"; }

// Explorer does not take an empty file name for the program's own, so the path is written out.
IconChoice FileTypeRegistrar::ProgramIcon() const { return {programPath_, 0}; }

bool FileTypeRegistrar::RegisterFileType(std::string_view item, const IconChoice& icon) {
    const std::string extension = LowerAscii(item);
    const std::string key = Key(extension);
    const std::string handlerName = Handler(extension);
    const std::string handler = Key(handlerName);
    // Only the first registration saves the foreign handler; a failed read saves nothing.
    const RegistryReadResult previous = registry_.ReadValueQuietly(key, "");
    if (!registry_.CreateKey(key)) return false;
    if (previous.error == regerr::kSuccess && previous.text != handlerName &&
        !registry_.WriteString(key, kBackupValue, previous.text))
        return false;
    if (!registry_.CreateKey(handler)) return false;
    for (std::string_view sub : kHandlerKeys) {
        if (!registry_.CreateKey(handler + std::string(sub))) return false;
    }
    std::string typeWord = extension.substr(1);
    for (char& c : typeWord) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return registry_.WriteString(key, "", handlerName) &&
           registry_.WriteString(handler, "", typeWord + " Lumora 文件") &&
           registry_.WriteNumber(handler, "BrowserFlags", 8) && registry_.WriteNumber(handler, "EditFlags", 65536) &&
           registry_.WriteString(handler + "\\DefaultIcon", "", IconText(icon)) &&
           registry_.WriteString(handler + "\\shell", "", "open") &&
           registry_.WriteString(handler + "\\shell\\open", "", "用 Lumora 打开(&O)") &&
           registry_.WriteString(handler + "\\shell\\open\\command", "", Command()) &&
           registry_.CreateKey(key + std::string(kOpenWith)) &&
           registry_.WriteString(key + std::string(kOpenWith), handlerName, "") &&
           AddCapability(extension, handlerName);
}

bool FileTypeRegistrar::RemoveFileType(std::string_view item) {
    const std::string extension = LowerAscii(item);
    const std::string key = Key(extension);
    const std::string handlerName = Handler(extension);
    if (const auto listing = registry_.ListKey(key)) {
        // Without a saved handler ("Error"), the default is left empty. A saved empty one means the key had
        // no handler of its own: the default goes, so that the machine's handler shows through again.
        const RegistryReadResult saved = registry_.ReadValueQuietly(key, kBackupValue);
        const bool hadNone =
            saved.error == regerr::kSuccess && saved.text.empty() && Holds(listing->values, kBackupValue);
        const std::string restored = saved.error == regerr::kSuccess ? saved.text : std::string();
        if (hadNone ? Holds(listing->values, "") && !registry_.DeleteValue(key, "")
                    : !registry_.WriteString(key, "", restored))
            return false;
        if (Holds(listing->values, kBackupValue) && !registry_.DeleteValue(key, kBackupValue)) return false;
        const std::string openWith = key + std::string(kOpenWith);
        if (const auto programs = registry_.ListKey(openWith); programs && Holds(programs->values, handlerName)) {
            if (!registry_.DeleteValue(openWith, handlerName) || !DeleteIfBare(openWith)) return false;
        }
        if (!DeleteIfBare(key, restored.empty())) return false;
    }
    // The port deletes a key's children before the key.
    const std::string handler = Key(handlerName);
    if (registry_.ListKey(handler) && !registry_.DeleteKey(handler)) return false;
    return RemoveCapability(extension);
}

FileTypeState FileTypeRegistrar::RefreshFileTypeItem(std::string_view item) {
    const std::string handler = Key(Handler(LowerAscii(item)));
    FileTypeState state;
    state.icon = ParseIconText(registry_.ReadValueQuietly(handler + "\\DefaultIcon", "").text);
    state.handled = registry_.ReadValueQuietly(handler + "\\shell\\open\\command", "").text == Command();
    return state;
}

bool FileTypeRegistrar::SetIcon(std::string_view item, const IconChoice& icon) {
    return registry_.WriteString(Key(Handler(LowerAscii(item))) + "\\DefaultIcon", "", IconText(icon));
}

bool FileTypeRegistrar::SetFolderVerb(bool on) { return SetVerb("Directory", on); }
bool FileTypeRegistrar::SetDriveVerb(bool on) { return SetVerb("Drive", on); }
bool FileTypeRegistrar::FolderVerbSet() { return VerbSet("Directory"); }
bool FileTypeRegistrar::DriveVerbSet() { return VerbSet("Drive"); }

bool FileTypeRegistrar::VerbSet(std::string_view owner) {
    return registry_.ReadValueQuietly(Key(owner) + std::string(kVerb) + "\\command", "").text == Command();
}

bool FileTypeRegistrar::SetVerb(std::string_view owner, bool on) {
    const std::string root = Key(owner);
    const std::string shell = root + "\\shell";
    const std::string verb = root + std::string(kVerb);
    if (on) {
        return registry_.CreateKey(root) && registry_.CreateKey(shell) && registry_.CreateKey(verb) &&
               registry_.CreateKey(verb + "\\command") && registry_.WriteString(verb, "", kVerbCaption) &&
               // Many selected folders go to one Lumora, not one program each.
               registry_.WriteString(verb, "MultiSelectModel", "Player") &&
               registry_.WriteString(verb + "\\command", "", Command());
    }
    if (!registry_.ListKey(verb)) return true;
    return (!registry_.ListKey(verb + "\\command") || registry_.DeleteKey(verb + "\\command")) &&
           registry_.DeleteKey(verb) && DeleteIfBare(shell) && DeleteIfBare(root);
}

bool FileTypeRegistrar::AddCapability(const std::string& extension, const std::string& handler) {
    for (std::string_view key : kApplicationKeys) {
        if (!registry_.CreateKey(key)) return false;
    }
    const std::string capabilities(kApplicationKeys[2]);
    return registry_.WriteString(capabilities, "ApplicationName", kApplicationName) &&
           registry_.WriteString(capabilities, "ApplicationDescription", "Lumora 媒体播放器") &&
           registry_.WriteString(kApplicationKeys[3], extension, handler) &&
           registry_.CreateKey(kRegisteredApplications) &&
           registry_.WriteString(kRegisteredApplications, kApplicationName,
                                 capabilities.substr(capabilities.find('\\') + 1));
}

bool FileTypeRegistrar::RemoveCapability(const std::string& extension) {
    const std::string associations(kApplicationKeys[3]);
    const auto listing = registry_.ListKey(associations);
    if (!listing) return true;
    if (Holds(listing->values, extension) && !registry_.DeleteValue(associations, extension)) return false;
    if (listing->values.size() > (Holds(listing->values, extension) ? 1u : 0u)) return true;  // other types remain
    // The last type gone: Lumora leaves the list of applications it joined.
    if (!registry_.DeleteKey(kApplicationKeys[2])) return false;
    if (const auto apps = registry_.ListKey(kRegisteredApplications); apps && Holds(apps->values, kApplicationName)) {
        if (!registry_.DeleteValue(kRegisteredApplications, kApplicationName)) return false;
    }
    return DeleteIfBare(std::string(kRegisteredApplications)) && DeleteIfBare(std::string(kApplicationKeys[1])) &&
           DeleteIfBare(std::string(kApplicationKeys[0]));
}

bool FileTypeRegistrar::DeleteIfBare(const std::string& key, bool emptyDefault) {
    const auto listing = registry_.ListKey(key);
    if (!listing || !listing->subKeys.empty()) return true;
    const bool bare = listing->values.empty() || (emptyDefault && listing->values == std::vector<std::string>{""});
    return !bare || registry_.DeleteKey(key);
}

IconChoice FileTypeRegistrar::CurrentIcon(const std::vector<std::string>& extensions) {
    for (const auto& extension : extensions) {
        const FileTypeState state = RefreshFileTypeItem(extension);
        if (state.handled && !state.icon.file.empty()) return state.icon;
    }
    return ProgramIcon();
}

bool FileTypeRegistrar::Apply(const std::vector<FileTypeChoice>& choices, const IconChoice& icon, bool& changed) {
    changed = false;
    for (const auto& choice : choices) {
        const bool handled = RefreshFileTypeItem(choice.extension).handled;
        if (choice.wanted == handled) continue;
        changed = true;
        if (!(choice.wanted ? RegisterFileType(choice.extension, icon) : RemoveFileType(choice.extension)))
            return false;
    }
    return true;
}

}  // namespace lumora

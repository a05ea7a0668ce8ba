#include "settings/IniFiles.h"

#include "common/Text.h"
#include "ports/FileSystem.h"
#include "settings/IniDocument.h"

namespace lumora {
namespace {

constexpr std::string_view kScratchSection = "设置";
constexpr std::string_view kScratchKey = "临时";

bool HasFolder(std::string_view file) {
    return file.find_first_of("\\/:") != std::string_view::npos;
}

}  // namespace

std::string IniFiles::PathOf(std::string_view file) {
    if (HasFolder(file)) return std::string(file);
    const std::string folder = fs_.UserDataFolder();
    return folder.empty() ? std::string() : folder + "\\" + std::string(file);
}

FileRead IniFiles::ReadCurrent(std::string_view file) {
    const std::string path = PathOf(file);
    FileRead read = path.empty() ? FileRead{} : fs_.ReadFile(path);
    // Until the user's own copy exists, one that an older Lumora kept in the Windows directory
    // still counts; it is never written again.
    if (read.status == FileRead::Status::Missing && !HasFolder(file)) {
        read = fs_.ReadFile(fs_.WindowsDirectory() + "\\" + std::string(file));
        if (read.status == FileRead::Status::Failed) read = {};
    }
    return read;
}

std::string IniFiles::Read(std::string_view file, std::string_view section, std::string_view key) {
    const FileRead read = ReadCurrent(file);
    if (read.status != FileRead::Status::Ok) return {};
    return IniDocument(read.bytes).Get(section, key).value_or(std::string());
}

std::string IniFiles::ReadAll(std::string_view file) {
    FileRead read = ReadCurrent(file);
    return read.status == FileRead::Status::Ok ? std::move(read.bytes) : std::string();
}

bool IniFiles::Write(std::string_view file, std::string_view section, std::string_view key, std::string_view value) {
    const std::string path = PathOf(file);
    if (path.empty()) return false;
    const FileRead read = ReadCurrent(file);
    // A file that is there but cannot be read is never replaced: its other keys would be lost.
    if (read.status == FileRead::Status::Failed) return false;
    IniDocument doc(read.bytes);
    if (!doc.Set(section, key, value)) return false;
    return fs_.WriteFileAtomic(path, doc.Bytes());
}

std::string ReadScratchValue(IniFiles& ini) { return ini.Read(kPlayerIniFile, kScratchSection, kScratchKey); }

bool WriteScratchValue(IniFiles& ini, std::string_view text) {
    return ini.Write(kPlayerIniFile, kScratchSection, kScratchKey, text);
}

namespace {

constexpr std::string_view kTransparencySection = "透明度";
constexpr std::string_view kTransparencyOn = "form_tm_check1";

std::string OpacityKey(size_t window) { return "form_tm_" + std::to_string(window); }

}  // namespace

int ClampOpacity(int opacity) {
    return opacity < kLeastOpacity ? kLeastOpacity : opacity > kOpaque ? kOpaque : opacity;
}

WindowTransparency LoadWindowTransparency(IniFiles& ini) {
    WindowTransparency t;
    t.on = Trim(ini.Read(kPlayerIniFile, kTransparencySection, kTransparencyOn)) == "1";
    for (size_t i = 0; i < t.opacity.size(); ++i) {
        const std::string text(Trim(ini.Read(kPlayerIniFile, kTransparencySection, OpacityKey(i))));
        if (!IsDigits(text) || text.size() > 3) continue;
        const int value = std::stoi(text);
        if (value >= kLeastOpacity && value <= kOpaque) t.opacity[i] = value;
    }
    return t;
}

bool SaveWindowTransparency(IniFiles& ini, const WindowTransparency& t) {
    if (!ini.Write(kPlayerIniFile, kTransparencySection, kTransparencyOn, t.on ? "1" : "0")) return false;
    for (size_t i = 0; i < t.opacity.size(); ++i) {
        if (!ini.Write(kPlayerIniFile, kTransparencySection, OpacityKey(i), std::to_string(ClampOpacity(t.opacity[i]))))
            return false;
    }
    return true;
}

}  // namespace lumora

#include "playlist/MusicLibrary.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "common/Text.h"
#include "common/Titles.h"
#include "mediainfo/Id3v1.h"
#include "mediainfo/TrailingTags.h"
#include "ports/Prompts.h"
#include "ports/TextCodec.h"
#include "playlist/ListFile.h"
#include "ports/Registry.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "settings/OptionNames.h"

namespace lumora {
namespace {

constexpr std::string_view kChooseFolderPrompt = "您想把“我的音乐库”放在哪个文件夹里？";
constexpr std::string_view kNotLocalText = "您选择的不是本地磁盘，请重新选择。";
constexpr std::string_view kNotLocalTitle = "请重新选择";
constexpr std::string_view kChangeQuestion = "是否更改“我的音乐库”的路径";
constexpr std::string_view kChangeTitle = "更改路径";
constexpr std::string_view kNotSetText = "您还没有设置“我的音乐库”因此无法删除";
constexpr std::string_view kNotSetTitle = "无法删除";
constexpr std::string_view kDeleteQuestion = "是否删除“我的音乐库”";
constexpr std::string_view kDeleteTitle = "删除";
constexpr std::string_view kDeleteFailedText = "删除失败！";
constexpr std::string_view kDeletedText = "删除完毕！程序只是删除“我的音乐库”的设置项，并没有删除文件。";
constexpr std::string_view kEmptyText = "现在“我的音乐库”里没有任何文件，因此无法加载";
constexpr std::string_view kEmptyTitle = "无法加载";
constexpr std::string_view kNoCurrentText = "当前正在播放的文件不存在。";
constexpr std::string_view kNoCurrentTitle = "当前文件不存在";
constexpr std::string_view kCreateQuestion = "“我的音乐库”不存在或未建立。现在是否建立？";
constexpr std::string_view kCreateTitle = "“我的音乐库”";
constexpr std::string_view kDamagedText =
    "您的“我的音乐库”列表已损坏，现在必须删除，然后在新建一个。如想添加同目录里的音乐，请使用“媒体文件列表编辑器”。";
constexpr std::string_view kDamagedTitle = "文件损坏";
constexpr std::string_view kAlreadyThereText = "在“我的音乐库”中该文件已存在。";
constexpr std::string_view kAlreadyThereTitle = "文件已存在";
constexpr std::string_view kAddedExistingText = "文件已存在，并且成功的加入“我的音乐库”。";
constexpr std::string_view kSameNameQuestion =
    "程序发现您所要加入的文件与“我的音乐库”中的某一个文件重名，但程序断定这两个是不同的文件，是否对你要加入的文件重新"
    "命名？";
constexpr std::string_view kSameNameTitle = "文件重名";
constexpr std::string_view kRenameTitle = "文件重新命名框";
constexpr std::string_view kAddedText = "文件已成功的加入“我的音乐库”。";
constexpr std::string_view kAddedTitle = "文件加入成功";
constexpr std::string_view kAddFailedText = "文件加入“我的音乐库”失败。";
constexpr std::string_view kAddFailedTitle = "文件加入失败";
constexpr std::string_view kOneFileText = "当前只有一个文件，请用“添加当前文件到‘我的音乐库’里”选项来添加。";
// The doubled word is how users have always seen it.
constexpr std::string_view kOneFileTitle = "一个文件文件";
constexpr std::string_view kNewListHeader = "<==（建立“我的音乐库”文件列表）==>";
constexpr std::string_view kRebuiltListHeader = "<==（重新建立“我的音乐库”文件列表）==>";

// The keys above the library value, created parent first before it is written.
constexpr std::span<const std::string_view> kKeyLevels(kSetupKeyLevels.data(), 3);

std::string WithFinalBackslash(std::string folder) {
    if (!folder.empty() && folder.back() != '\\') folder += '\\';
    return folder;
}

// ".mp3" of "a.b.mp3"; empty without a dot.
std::string_view ExtensionOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot);
}

std::string_view WithoutExtension(std::string_view name) { return name.substr(0, name.rfind('.')); }

std::string RenamePrompt(std::string_view name) {
    return "请重新为 " + std::string(name) +
           " 命名。(请不要加后缀名)\r\n提示：单击“取消”停止加入该文件。\r\n注意：文件名不能有以下字符：\r\n    \\ / : "
           "* ? < > | "
           "\r\n     否则添加会失败！！";
}

// A name typed into the rename box can become a library file only when the list can hold it. Windows drops a final
// dot or blank when it creates a file, which would leave the list naming a file that is not there.
bool IsUsableNewName(std::string_view name) {
    return IsSafeListName(name) && name.back() != '.' && name.back() != ' ' && Utf8ToCp936(name).has_value();
}

}  // namespace

std::string_view LibraryMarker(LibraryAdd result) {
    switch (result) {
        case LibraryAdd::Added:
            return " <==（文件成功加入）==> ";
        case LibraryAdd::AddedExisting:
            return " <==（文件已存在，并且成功加入）==> ";
        case LibraryAdd::AddedRenamed:
            return " <==（文件重新命名，并且成功加入）==> ";
        case LibraryAdd::AlreadyThere:
            return " <==（文件已存在）==> ";
        case LibraryAdd::Missing:
            return " <==（文件不存在）==> ";
        case LibraryAdd::SkippedByUser:
            return " <==（用户中止复制该文件）==> ";
        case LibraryAdd::CancelledByUser:
            return " <==（用户取消复制）==> ";
        case LibraryAdd::Failed:
            return " <==（文件加入失败）==> ";
        case LibraryAdd::NoLibrary:
            break;
    }
    return {};
}

bool SameFolder(std::string_view a, std::string_view b) {
    if (!a.empty() && a.back() == '\\') a.remove_suffix(1);
    if (!b.empty() && b.back() == '\\') b.remove_suffix(1);
    return EqualsIgnoringAsciiCase(a, b);
}

std::string MusicLibrary::Folder() {
    const auto key = SplitKeyPath(kPlayerKeyPath);
    RegistryValue value;
    if (!key || registry_.Read(key->root, key->subKey, std::string(kLibraryValueName), value) != regerr::kSuccess) {
        return {};
    }
    std::string text;
    switch (value.kind) {
        case RegistryValue::Kind::Text:
            text = value.data;
            break;
        // Binary text as the options are kept, should another tool have written it so.
        case RegistryValue::Kind::Binary:
        case RegistryValue::Kind::Other:
            text = Cp936ToUtf8(value.data);
            break;
        case RegistryValue::Kind::Number:
            return {};
    }
    text.erase(std::find(text.begin(), text.end(), '\0'), text.end());
    return WithFinalBackslash(std::string(Trim(text)));
}

std::string MusicLibrary::ListPath() {
    const std::string folder = Folder();
    return folder.empty() ? std::string() : JoinPath(folder, kLibraryListName);
}

bool MusicLibrary::ChooseLibraryFolder() {
    while (true) {
        const auto chosen = prompts_.AskFolder(kChooseFolderPrompt);
        if (!chosen || chosen->empty()) return false;
        if (fs_.DriveType(*chosen) != DriveKind::Fixed) {
            prompts_.ShowMessage(kNotLocalText, kNotLocalTitle);
            continue;
        }
        if (!fs_.FolderExists(*chosen)) return false;
        const std::string folder = WithFinalBackslash(*chosen);
        // The library's list names its folder on line 3, in CP936.
        if (!Utf8ToCp936(folder)) {
            prompts_.ShowMessage(UnstorableNameText(folder), kNotLocalTitle);
            continue;
        }
        for (const std::string_view level : kKeyLevels) {
            const auto key = SplitKeyPath(level);
            if (const long rc = registry_.CreateKey(key->root, key->subKey); rc != regerr::kSuccess) {
                prompts_.ShowMessage(RegistryErrorText(rc), kKeyErrorTitle);
                return false;
            }
        }
        const auto key = SplitKeyPath(kPlayerKeyPath);
        if (const long rc = registry_.WriteText(key->root, key->subKey, std::string(kLibraryValueName), folder);
            rc != regerr::kSuccess) {
            prompts_.ShowMessage(RegistryErrorText(rc), kValueErrorTitle);
            return false;
        }
        return true;
    }
}

bool MusicLibrary::ChangeLibraryFolder() {
    return prompts_.AskYesNo(kChangeQuestion, kChangeTitle) && ChooseLibraryFolder();
}

bool MusicLibrary::DeleteLibrary() {
    if (Folder().empty()) {
        prompts_.ShowMessage(kNotSetText, kNotSetTitle);
        return false;
    }
    if (!prompts_.AskYesNo(kDeleteQuestion, kDeleteTitle)) return false;
    const auto key = SplitKeyPath(kPlayerKeyPath);
    if (registry_.DeleteValue(key->root, key->subKey, std::string(kLibraryValueName)) != regerr::kSuccess) {
        prompts_.ShowMessage(kDeleteFailedText, kDeleteFailedTitle);
        return false;
    }
    prompts_.ShowMessage(kDeletedText, kDeletedTitle);
    return true;
}

AddOutcome MusicLibrary::LoadLibrary() {
    const std::string path = ListPath();
    if (path.empty() || !fs_.FileExists(path)) {
        prompts_.ShowMessage(kEmptyText, kEmptyTitle);
        return AddOutcome::Refused;
    }
    const ListFileRead read = ReadListFile(fs_, path);
    if (read.status == ListReadStatus::Ok && read.list.names.empty()) {
        prompts_.ShowMessage(kEmptyText, kEmptyTitle);
        return AddOutcome::Refused;
    }
    return lists_.LoadListFile(path);
}

bool MusicLibrary::WriteList(const LibraryList& list) {
    const std::string bytes = EncodeListFile(ListKind::Library, true, list.folder, list.names);
    return !bytes.empty() && fs_.WriteFileAtomic(list.path, bytes);
}

bool MusicLibrary::PrepareList(LibraryList& list) {
    std::string folder = Folder();
    if (folder.empty() || !fs_.FolderExists(folder)) {
        if (!prompts_.AskYesNo(kCreateQuestion, kCreateTitle) || !ChooseLibraryFolder()) return false;
        folder = Folder();
        if (folder.empty() || !fs_.FolderExists(folder)) return false;
    }
    list.folder = folder;
    list.path = JoinPath(folder, kLibraryListName);
    list.names.clear();
    list.rewritten = false;
    if (fs_.FileExists(list.path)) {
        ListFileRead read = ReadListFile(fs_, list.path);
        if (read.status == ListReadStatus::Unreadable) {
            // Held open elsewhere, perhaps: not known to be damaged, so it is not replaced.
            prompts_.ShowMessage(kAddFailedText, kAddFailedTitle);
            return false;
        }
        if (read.status == ListReadStatus::Ok && SameFolder(read.list.folder, folder)) {
            list.names = std::move(read.list.names);
            list.rewritten = true;
            return true;
        }
        prompts_.ShowMessage(kDamagedText, kDamagedTitle);
    }
    if (!WriteList(list)) {
        prompts_.ShowMessage(kAddFailedText, kAddFailedTitle);
        return false;
    }
    return true;
}

std::string MusicLibrary::ProposedName(const MediaEntry& source) {
    if (settings_.IsOn(opt::kLibraryNameIsTitle)) {
        // The tag sits within the last kId3v1SearchSpan bytes: the rest of the file is not read.
        const long long size = fs_.FileSize(source.path);
        const long long from = std::max(0LL, size - static_cast<long long>(kId3v1SearchSpan));
        const FileRead tail = fs_.ReadFilePart(source.path, from, kId3v1SearchSpan);
        if (tail.status == FileRead::Status::Ok) {
            if (const auto tag = ParseId3v1Tag(tail.bytes); tag && !tag->title.empty()) return tag->title;
        }
    }
    return std::string(WithoutExtension(source.name));
}

LibraryAdd MusicLibrary::AddOne(const MediaEntry& source, LibraryList& list, bool renameAlways) {
    if (!fs_.FileExists(source.path)) return LibraryAdd::Missing;
    std::string name = source.name;
    bool askName = renameAlways;
    // Every name given is checked again, so a new name can meet another file of the library too.
    while (true) {
        const std::string target = JoinPath(list.folder, name);
        if (fs_.FileExists(target)) {
            // Equal lengths are taken for the same file.
            if (fs_.FileSize(target) == fs_.FileSize(source.path)) {
                const bool listed = std::any_of(list.names.begin(), list.names.end(),
                                                [&](const std::string& n) { return EqualsIgnoringAsciiCase(n, name); });
                if (listed) return LibraryAdd::AlreadyThere;
                list.names.push_back(name);
                return LibraryAdd::AddedExisting;
            }
            if (!prompts_.AskYesNo(kSameNameQuestion, kSameNameTitle)) return LibraryAdd::SkippedByUser;
            askName = true;
        }
        if (!askName) break;
        const auto answer = prompts_.AskText(RenamePrompt(source.name), kRenameTitle, ProposedName(source));
        if (!answer || Trim(*answer).empty()) return LibraryAdd::SkippedByUser;
        name = std::string(Trim(*answer)) + std::string(ExtensionOf(source.name));
        if (!IsUsableNewName(name)) return LibraryAdd::Failed;
        askName = false;
    }
    if (!IsSafeListName(name) || !Utf8ToCp936(name)) return LibraryAdd::Failed;
    if (!fs_.CopyNewFile(source.path, JoinPath(list.folder, name))) return LibraryAdd::Failed;
    list.names.push_back(name);
    return name == source.name ? LibraryAdd::Added : LibraryAdd::AddedRenamed;
}

LibraryAdd MusicLibrary::AddCurrentToLibrary() {
    const MediaEntry* current = queue_.Queue().CurrentEntry();
    if (!current || !fs_.FileExists(current->path)) {
        prompts_.ShowMessage(kNoCurrentText, kNoCurrentTitle);
        return LibraryAdd::Missing;
    }
    const MediaEntry source = *current;
    LibraryList list;
    if (!PrepareList(list)) return LibraryAdd::NoLibrary;
    const LibraryAdd result = AddOne(source, list, settings_.IsOn(opt::kLibraryRenameBox));
    switch (result) {
        case LibraryAdd::Added:
        case LibraryAdd::AddedRenamed:
        case LibraryAdd::AddedExisting:
            if (!WriteList(list)) {
                prompts_.ShowMessage(kAddFailedText, kAddFailedTitle);
                return LibraryAdd::Failed;
            }
            if (result == LibraryAdd::AddedExisting) {
                prompts_.ShowMessage(kAddedExistingText, kAlreadyThereTitle);
            } else {
                prompts_.ShowMessage(kAddedText, kAddedTitle);
            }
            break;
        case LibraryAdd::AlreadyThere:
            prompts_.ShowMessage(kAlreadyThereText, kAlreadyThereTitle);
            break;
        case LibraryAdd::Failed:
            prompts_.ShowMessage(kAddFailedText, kAddFailedTitle);
            break;
        case LibraryAdd::Missing:
        case LibraryAdd::SkippedByUser:
        case LibraryAdd::CancelledByUser:
        case LibraryAdd::NoLibrary:
            break;
    }
    return result;
}

bool MusicLibrary::AddAllToLibrary() {
    const PlayQueue& queue = queue_.Queue();
    const MediaEntry* current = queue.CurrentEntry();
    if (!current || !fs_.FileExists(current->path)) {
        prompts_.ShowMessage(kNoCurrentText, kNoCurrentTitle);
        return false;
    }
    if (queue.Count() == 1) {
        prompts_.ShowMessage(kOneFileText, kOneFileTitle);
        return false;
    }
    std::vector<MediaEntry> sources;
    for (int i = 1; i <= queue.Count(); ++i) sources.push_back(*queue.EntryAt(i));

    LibraryList list;
    if (!PrepareList(list)) return false;
    const std::size_t listedBefore = list.names.size();
    copyView_.Open(list.rewritten ? kRebuiltListHeader : kNewListHeader);
    for (const MediaEntry& source : sources) {
        if (!copyView_.KeepGoing()) {
            copyView_.AddLine(source.name + std::string(LibraryMarker(LibraryAdd::CancelledByUser)));
            break;
        }
        // The rename box comes only for a clash here: opt::kLibraryRenameBox is about adding one file.
        const LibraryAdd result = AddOne(source, list, false);
        copyView_.AddLine(source.name + std::string(LibraryMarker(result)));
    }
    copyView_.Close();
    // Written once at the end, also after a cancel, so every file copied so far is listed.
    if (list.names.size() != listedBefore && !WriteList(list)) {
        prompts_.ShowMessage(kAddFailedText, kAddFailedTitle);
        return false;
    }
    return true;
}

}  // namespace lumora

#include "playlist/ListFileController.h"

#include <array>

#include "common/Text.h"
#include "common/Titles.h"
#include "ports/Prompts.h"
#include "playlist/ListFile.h"
#include "settings/SettingsStore.h"
#include "settings/OptionNames.h"

namespace lumora {
namespace {

constexpr std::string_view kSaveDialogTitle = "保存Lumora专用列表文件（*.QLB）。请在下面输入文件名（不要输入扩展名）。";
constexpr std::string_view kListFilter = "QLB Lumora列表文件 (*.QLB)|*.QLB";
constexpr std::string_view kListExtension = "QLB";
constexpr std::string_view kSaveProgressTitle = "保存列表文件";
constexpr std::string_view kLoadProgressTitle = "加载列表文件";
constexpr std::string_view kSaveErrorText = "错误请重新操作，保存列表文件操作。";
constexpr std::string_view kNothingLeftOnSaveText =
    "没有一个文件剩下来，原因有三个：1、只选择一个文件，程序不会保存只有一个文件的列表文件。2、没有一个是媒体文件，程序"
    "不会保存没有文件的列表文件。3、文件根本不存在。单击“确定”退出";
constexpr std::string_view kNothingLeftOnLoadText =
    "没有一个文件剩下来，原因有三个：1、只列表文件中只有一个文件，程序不会加载只有一个文件的列表文件。2、没有一个是媒体"
    "文件，程序不会加载没有媒体文件的列表文件。3、文件根本不存在。单击“确定”退出";
constexpr std::string_view kSavedText = "列表文件已保存完毕，路径为 ";
constexpr std::string_view kNotAListText = "这不是“测试版”或者“正式版”的的列表文件，请重新选择。";
constexpr std::string_view kUnreadableText = "无法读取列表文件：";
constexpr std::string_view kFilterQuestionText = "程序检测到这个文件列表没有使用“过滤”技术，现在是否进行“过滤”？";
constexpr std::string_view kFilterQuestionTitle = "询问“过滤”";
constexpr std::string_view kAllFilteredText =
    "媒体文件全部“过滤”掉，原因有两个：1、没有一个是媒体文件。2、只有一个文件合法。程序将保持现在的播放状态。";
constexpr std::string_view kAllFilteredTitle = "“过滤”错误";

// What follows the drive letter in each drive question, by drive kind: before saving, and before loading.
struct DriveTexts {
    DriveKind kind;
    std::string_view onSave;
    std::string_view onLoad;
};
constexpr std::array<DriveTexts, 4> kDriveQuestions = {{
    {DriveKind::Removable, "盘是可移动的驱动器。建议先把文件拷入硬盘中再做列表文件。现在是否继续？",
     "盘是可移动的驱动器。建议先把移动的驱动器接好再打开列表文件。现在是否继续？"},
    {DriveKind::Network, "盘是网络驱动器（网络硬盘）。建议先把文件拷入硬盘中再做列表文件。现在是否继续？",
     "盘是网络驱动器（网络硬盘）。建议先把网络硬盘连接好再打开列表文件。现在是否继续？"},
    {DriveKind::CdRom, "盘是光盘驱动器（CD-ROM/DVD-ROM/CD-R）。建议先把文件拷入硬盘中再做列表文件。现在是否继续？",
     "盘是光盘驱动器（CD-ROM/DVD-ROM/CD-R）。建议先把光盘放入光驱再打开列表文件。现在是否继续？"},
    {DriveKind::RamDisk, "盘是RAM驱动器。建议先把文件拷入硬盘中再做列表文件。现在是否继续？",
     "盘是RAM驱动器。建议先把RAM驱动器连接好再打开列表文件。现在是否继续？"},
}};
constexpr std::string_view kSavePrefix = "程序检测到";
constexpr std::string_view kLoadPrefix = "程序检测到文件列表中的";
constexpr std::string_view kUnknownOnSave = "盘无法识别类型。因此不能制作列表文件";
constexpr std::string_view kUnknownOnLoad = "盘在本机中无法识别类型。因此不能打开列表文件，请重新打开文件。";

enum class DriveAnswer { Go, No, Unknown };

// Asks about a drive that is not a fixed disk, or refuses one whose kind is unknown.
DriveAnswer AcceptDrive(Prompts& prompts, FileSystem& fs, const std::string& folder, bool loading) {
    const DriveKind kind = fs.DriveType(folder);
    if (kind == DriveKind::Fixed) return DriveAnswer::Go;
    const std::string letter = DriveLetterOf(folder);
    const std::string question = DriveQuestionText(kind, letter, loading);
    if (question.empty()) {
        prompts.ShowMessage(DriveRefusalText(letter, loading), kDriveDialogTitle);
        return DriveAnswer::Unknown;
    }
    return prompts.AskYesNo(question, kDriveDialogTitle) ? DriveAnswer::Go : DriveAnswer::No;
}

}  // namespace

std::string DriveLetterOf(std::string_view path) {
    if (path.empty()) return {};
    // One UTF-8 character: a lead byte and its continuation bytes.
    std::size_t length = 1;
    while (length < path.size() && (static_cast<unsigned char>(path[length]) & 0xC0) == 0x80) ++length;
    return std::string(path.substr(0, length));
}

std::string DriveQuestionText(DriveKind kind, std::string_view letter, bool loading) {
    for (const DriveTexts& texts : kDriveQuestions) {
        if (texts.kind == kind) {
            return std::string(loading ? kLoadPrefix : kSavePrefix) + std::string(letter) +
                   std::string(loading ? texts.onLoad : texts.onSave);
        }
    }
    return {};
}

std::string DriveRefusalText(std::string_view letter, bool loading) {
    return std::string(loading ? kLoadPrefix : kSavePrefix) + std::string(letter) +
           std::string(loading ? kUnknownOnLoad : kUnknownOnSave);
}

std::string WithListExtension(std::string_view path) {
    std::string result(path);
    if (result.size() >= 4) {
        if (EndsWithIgnoringAsciiCase(result, ".qlb")) return result;
    }
    return result + "." + std::string(kListExtension);
}

std::string OtherFolderQuestionText(int count, std::string_view folder) {
    return "程序检测到列表中有" + std::to_string(count) + "个文件不在“" + std::string(folder) +
           "”文件夹中，列表文件只能保存同一文件夹中的媒体文件，这些文件将不会保存到列表文件中。现在是否继续？";
}

std::string UnstorableNameText(std::string_view text) {
    return "文件名“" + std::string(text) + "”含有列表文件无法保存的字符，请重新命名该文件后再保存。";
}

bool ListFileController::ReplaceQueue(const std::string& folder, const std::vector<std::string>& names, bool play) {
    std::vector<MediaEntry> entries;
    entries.reserve(names.size());
    for (const std::string& name : names) entries.push_back({JoinPath(folder, name), name});
    if (entries.empty() || !queue_.Queue().Replace(folder, std::move(entries))) return false;
    queue_.Refresh();
    if (play) queue_.PlayCurrent();
    return true;
}

SaveOutcome ListFileController::SaveListFile() {
    const PlayQueue& queue = queue_.Queue();
    if (queue.Count() == 0) {
        prompts_.ShowMessage(kSaveErrorText, kErrorTitle);
        return SaveOutcome::Refused;
    }
    const std::string folder = queue.Folder();
    switch (AcceptDrive(prompts_, fs_, folder, false)) {
        case DriveAnswer::Go:
            break;
        case DriveAnswer::No:
            return SaveOutcome::Cancelled;
        case DriveAnswer::Unknown:
            return SaveOutcome::Refused;
    }

    std::vector<std::string> names = QueueListNames(queue);
    if (const int others = queue.Count() - static_cast<int>(names.size()); others > 0) {
        if (!prompts_.AskYesNo(OtherFolderQuestionText(others, folder), kSaveProgressTitle)) {
            return SaveOutcome::Cancelled;
        }
    }

    const auto chosen = prompts_.AskSaveFileName(kSaveDialogTitle, kListFilter, kListExtension);
    if (!chosen || chosen->empty()) return SaveOutcome::Cancelled;
    const std::string path = WithListExtension(*chosen);

    const bool filtering = settings_.IsOn(opt::kFilterLists);
    if (filtering) {
        FilterResult filtered = FilterNames(fs_, folder, names, &progress_, kSaveProgressTitle);
        if (filtered.cancelled) return SaveOutcome::Cancelled;
        names = std::move(filtered.kept);
    }
    // A list of one file is not worth a file: the first of the three reasons the box gives.
    if (names.size() < 2) {
        prompts_.ShowMessage(kNothingLeftOnSaveText, kNothingLeftTitle);
        return SaveOutcome::Refused;
    }
    const std::string bytes = EncodeListFile(ListKind::Main, filtering, folder, names);
    if (bytes.empty()) {
        prompts_.ShowMessage(UnstorableNameText(FirstUnstorableText(folder, names)), kErrorTitle);
        return SaveOutcome::Refused;
    }
    if (!fs_.WriteFileAtomic(path, bytes)) {
        prompts_.ShowMessage(kSaveErrorText, kErrorTitle);
        return SaveOutcome::Refused;
    }
    prompts_.ShowMessage(std::string(kSavedText) + path, kFileSavedTitle);
    return SaveOutcome::Saved;
}

AddOutcome ListFileController::LoadListFile(const std::string& path) {
    const ListFileRead read = ReadListFile(fs_, path);
    if (read.status == ListReadStatus::Unreadable) {
        prompts_.ShowMessage(std::string(kUnreadableText) + path, kErrorTitle);
        return AddOutcome::Refused;
    }
    if (read.status != ListReadStatus::Ok) {
        prompts_.ShowMessage(kNotAListText, kErrorTitle);
        return AddOutcome::Refused;
    }
    const ListFileData& list = read.list;
    switch (AcceptDrive(prompts_, fs_, list.folder, true)) {
        case DriveAnswer::Go:
            break;
        case DriveAnswer::No:
            return AddOutcome::Cancelled;
        case DriveAnswer::Unknown:
            return AddOutcome::Refused;
    }

    bool filtering = false;
    if (list.flag == "0" && !settings_.IsOn(opt::kSkipListFilterQuestion)) {
        filtering = prompts_.AskYesNo(kFilterQuestionText, kFilterQuestionTitle);
    }
    // A list elsewhere than on a fixed disk is filtered anyway, so that names whose files cannot be reached drop out.
    if (!filtering) filtering = fs_.DriveType(list.folder) != DriveKind::Fixed;

    std::vector<std::string> names = list.names;
    if (filtering) {
        FilterResult filtered = FilterNames(fs_, list.folder, names, &progress_, kLoadProgressTitle);
        if (filtered.cancelled) return AddOutcome::Cancelled;
        names = std::move(filtered.kept);
    }
    if (names.empty()) {
        prompts_.ShowMessage(kNothingLeftOnLoadText, kNothingLeftTitle);
        return AddOutcome::Refused;
    }
    if (filtering && names.size() < 2) {
        prompts_.ShowMessage(kAllFilteredText, kAllFilteredTitle);
        return AddOutcome::Refused;
    }
    ReplaceQueue(list.folder, names, true);
    return AddOutcome::Playing;
}

}  // namespace lumora

#include "playlist/DefaultList.h"

#include "common/Titles.h"
#include "ports/Prompts.h"
#include "playlist/ListFile.h"
#include "settings/SettingsStore.h"
#include "settings/OptionNames.h"

namespace lumora {
namespace {

constexpr std::string_view kSaveProgressTitle = "保存默认列表文件";
constexpr std::string_view kNotFixedBefore = "当前打开的文件在";
constexpr std::string_view kNotFixedAfter =
    "盘，不是固定硬盘。因此不能制作默认列表文件，请把文件拷入固定硬盘后在制作默认列表文件。";
constexpr std::string_view kNothingLeftText =
    "没有一个文件剩下来，原因有三个：1、只选择一个文件，程序不会保存只有一个文件的默认列表文件。2、没有一个是媒体文件，"
    "程序不会保存没有文件的默认列表文件。3、文件根本不存在。单击“确定”退出";
constexpr std::string_view kSaveErrorText = "错误请重新操作，保存默认列表文件操作。";
constexpr std::string_view kSavedText = "列表默认文件已保存完毕。";
constexpr std::string_view kDamagedText =
    "默认列表文件已损坏或默认列表文件里的媒体文件不存在。单击“确定”删除默认列表文件。";
constexpr std::string_view kDamagedTitle = "默认列表文件错误";
constexpr std::string_view kNotSetText = "对不起！您还没有设置默认列表文件。";
constexpr std::string_view kNotSetTitle = "没有设置";
constexpr std::string_view kDeletedText = "默认列表文件已删除。";
constexpr std::string_view kDeleteFailedText = "默认列表文件删除失败。";

}  // namespace

std::string DefaultList::Path() {
    const std::string folder = fs_.UserDataFolder();
    return folder.empty() ? std::string() : JoinPath(folder, kDefaultListFileName);
}

DefaultList::Built DefaultList::Build(FilterProgress* progress, std::string& bytes, std::string& unstorable) {
    const PlayQueue& queue = queue_.Queue();
    const std::string& folder = queue.Folder();
    if (queue.Count() == 0 || fs_.DriveType(folder) != DriveKind::Fixed) return Built::NotFixed;
    // Always filtered, whatever opt::kFilterLists says: a list played at every start must not hold dead names.
    FilterResult filtered = FilterNames(fs_, folder, QueueListNames(queue), progress, kSaveProgressTitle);
    if (filtered.cancelled) return Built::Cancelled;
    if (filtered.kept.size() < 2) return Built::TooFew;
    if (Path().empty()) return Built::NoFolder;
    bytes = EncodeListFile(ListKind::Default, true, folder, filtered.kept);
    if (bytes.empty()) {
        unstorable = FirstUnstorableText(folder, filtered.kept);
        return Built::Unstorable;
    }
    return Built::Ok;
}

SaveOutcome DefaultList::SaveDefaultList() {
    std::string bytes;
    std::string unstorable;
    switch (Build(&progress_, bytes, unstorable)) {
        case Built::Ok:
            break;
        case Built::NotFixed:
            prompts_.ShowMessage(
                std::string(kNotFixedBefore) + DriveLetterOf(queue_.Queue().Folder()) + std::string(kNotFixedAfter),
                kDriveDialogTitle);
            return SaveOutcome::Refused;
        case Built::Cancelled:
            return SaveOutcome::Cancelled;
        case Built::TooFew:
            prompts_.ShowMessage(kNothingLeftText, kNothingLeftTitle);
            return SaveOutcome::Refused;
        case Built::Unstorable:
            prompts_.ShowMessage(UnstorableNameText(unstorable), kErrorTitle);
            return SaveOutcome::Refused;
        case Built::NoFolder:
            prompts_.ShowMessage(kSaveErrorText, kErrorTitle);
            return SaveOutcome::Refused;
    }
    if (!fs_.WriteFileAtomic(Path(), bytes)) {
        prompts_.ShowMessage(kSaveErrorText, kErrorTitle);
        return SaveOutcome::Refused;
    }
    prompts_.ShowMessage(kSavedText, kFileSavedTitle);
    return SaveOutcome::Saved;
}

bool DefaultList::SaveDefaultListOnExit() {
    if (!settings_.IsOn(opt::kSaveListOnExit)) return false;
    std::string bytes;
    std::string unstorable;
    return Build(nullptr, bytes, unstorable) == Built::Ok && fs_.WriteFileAtomic(Path(), bytes);
}

DefaultListLoad DefaultList::LoadDefaultList() {
    const std::string path = Path();
    if (path.empty() || !fs_.FileExists(path)) return DefaultListLoad::None;
    const ListFileRead read = ReadListFile(fs_, path);
    // A file that cannot be read right now (held open by another program) is not known to be damaged.
    if (read.status == ListReadStatus::Unreadable) return DefaultListLoad::None;
    if (read.status == ListReadStatus::Ok) {
        const FilterResult filtered = FilterNames(fs_, read.list.folder, read.list.names);
        const bool plays = settings_.IsOn(opt::kDefaultListPlays);
        if (lists_.ReplaceQueue(read.list.folder, filtered.kept, plays)) {
            return plays ? DefaultListLoad::Playing : DefaultListLoad::Waiting;
        }
    }
    prompts_.ShowMessage(kDamagedText, kDamagedTitle);
    fs_.RemoveFile(path);
    return DefaultListLoad::Damaged;
}

DefaultListDelete DefaultList::DeleteDefaultList() {
    const std::string path = Path();
    if (path.empty() || !fs_.FileExists(path)) {
        prompts_.ShowMessage(kNotSetText, kNotSetTitle);
        return DefaultListDelete::NotSet;
    }
    if (!fs_.RemoveFile(path)) {
        prompts_.ShowMessage(kDeleteFailedText, kDeleteFailedTitle);
        return DefaultListDelete::Failed;
    }
    prompts_.ShowMessage(kDeletedText, kDeletedTitle);
    return DefaultListDelete::Deleted;
}

}  // namespace lumora

#include "playlist/QueueController.h"

#include <charconv>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "common/Text.h"
#include "common/Titles.h"
#include "ports/FileSystem.h"
#include "ports/Prompts.h"
#include "playlist/MediaTest.h"

namespace lumora {
namespace {

constexpr std::string_view kOpenDialogTitle = "打开文件对话框，本播放器支持近50种文件类型";
constexpr std::string_view kTooManyText = "您打开的文件太多了，本播放器目前只支持999个文件。";
constexpr std::string_view kTooManyTitle = "打开的文件太多";
constexpr std::string_view kFolderPrompt = "您想播放放在哪个文件夹里的媒体文件？";
constexpr std::string_view kNoMediaText = "此“文件夹”或“驱动器”根目录下没有媒体文件，请重新选择。";
constexpr std::string_view kNoMediaTitle = "没有媒体文件";
// The irregular-drop box has no title of its own; it shares the playlist window's kErrorTitle.
constexpr std::string_view kIrregularDropText = "拖放文件里含有不规则路径，请重新拖放。";
constexpr std::string_view kCannotRemoveText = "正在播放的媒体文件不能删除。";
constexpr std::string_view kMoveTitle = "移动位置";
constexpr std::string_view kBadRangeText = "你输入的范围不正确！";
constexpr std::string_view kFindTitle = "查找媒体";
constexpr std::string_view kFindPrompt = "输入关键字，进行媒体查找。\r\n注：查找永远是在当前的列表位置向下查找。";
// The search refusal deliberately carries the filter's title, as users have always seen it.
constexpr std::string_view kNothingPlayingText = "当前没有一个文件播放，无法进行“查找”";
constexpr std::string_view kNothingPlayingTitle = "无法“过滤”";
constexpr std::string_view kListFileExtension = ".qlb";

bool IsAsciiLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// A move target: digits only, blanks around them allowed. Signs, fractions and full-width digits are not
// positions; an absurdly long number simply fails to convert.
std::optional<int> ParsePosition(std::string_view text) {
    if (!IsDigits(text)) return std::nullopt;
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

// The open dialog lists the media extensions first, then every file.
std::string MediaOpenFilter() {
    std::string patterns;
    std::string_view items = kMediaExtensionList;
    while (!items.empty()) {
        const size_t semicolon = items.find(';');
        const std::string_view item = items.substr(0, semicolon);
        if (!patterns.empty()) patterns += ';';
        patterns += item.front() == '.' ? "*" : "*.";
        patterns += item;
        items = semicolon == std::string_view::npos ? std::string_view() : items.substr(semicolon + 1);
    }
    return "媒体文件|" + patterns + "|所有文件 (*.*)|*.*";
}

}  // namespace

bool IsRegularPath(std::string_view path) {
    const bool drive = path.size() >= 3 && IsAsciiLetter(path[0]) && path[1] == ':' && path[2] == '\\';
    const bool share = path.size() >= 3 && path[0] == '\\' && path[1] == '\\' && path[2] != '\\';
    if (!drive && !share) return false;
    for (size_t i = 0; i < path.size(); ++i) {
        const auto c = static_cast<unsigned char>(path[i]);
        if (c < 0x20 || std::string_view("<>\"|?*").find(static_cast<char>(c)) != std::string_view::npos) {
            return false;
        }
        if (c == ':' && !(drive && i == 1)) return false;
    }
    return true;
}

void QueueController::Refresh() {
    view_.ShowLines(queue_.Lines());
    view_.ShowTexts(queue_.Texts());
    if (queue_.Current() > 0) view_.SelectLine(queue_.Current());
}

void QueueController::Clear() {
    queue_.Clear();
    Refresh();
}

AddResult QueueController::RefuseTooMany() {
    // The queue is emptied rather than left holding a part of the choice.
    prompts_.ShowMessage(kTooManyText, kTooManyTitle);
    Clear();
    return {AddOutcome::TooMany, {}};
}

void QueueController::PlayCurrent() {
    if (const MediaEntry* entry = queue_.CurrentEntry()) player_.Play(entry->path);
}

AddResult QueueController::ReplaceAndPlay(std::string folder, std::vector<MediaEntry> entries) {
    if (entries.empty()) return {};
    if (!queue_.Replace(std::move(folder), std::move(entries))) return RefuseTooMany();
    Refresh();
    PlayCurrent();
    return {AddOutcome::Playing, {}};
}

std::vector<MediaEntry> QueueController::MediaFilesIn(const std::string& folder) {
    std::vector<MediaEntry> entries;
    for (std::string& name : fs_.ListFiles(folder)) {
        if (IsMediaFile(name)) entries.push_back({JoinPath(folder, name), std::move(name)});
    }
    return entries;
}

AddResult QueueController::AddFromOpenDialog() {
    const auto chosen = prompts_.AskOpenFileNames(kOpenDialogTitle, MediaOpenFilter());
    if (!chosen || chosen->empty() || chosen->front().empty()) return {};
    // One element is a single file's full path; more are the folder followed by the bare names.
    if (chosen->size() == 1) return ReplaceAndPlay(FolderOf(chosen->front()), {EntryFromPath(chosen->front())});
    if (chosen->size() - 1 > static_cast<size_t>(kMaxQueueNames)) return RefuseTooMany();
    const std::string& folder = chosen->front();
    std::vector<MediaEntry> entries;
    entries.reserve(chosen->size() - 1);
    for (size_t i = 1; i < chosen->size(); ++i) {
        const std::string& name = (*chosen)[i];
        if (!name.empty()) entries.push_back({JoinPath(folder, name), name});
    }
    return ReplaceAndPlay(folder, std::move(entries));
}

AddResult QueueController::AddFromFolder() {
    const auto folder = prompts_.AskFolder(kFolderPrompt);
    if (!folder || folder->empty()) return {};
    std::vector<MediaEntry> entries = MediaFilesIn(*folder);
    if (entries.empty()) {
        prompts_.ShowMessage(kNoMediaText, kNoMediaTitle);
        return {AddOutcome::Refused, {}};
    }
    std::string queueFolder = FolderOf(entries.front().path);
    return ReplaceAndPlay(std::move(queueFolder), std::move(entries));
}

AddResult QueueController::AddDropped(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        if (!IsRegularPath(path) || !(fs_.FileExists(path) || fs_.FolderExists(path))) {
            // The whole drop is refused: keeping only part of it would play something the user did not expect.
            prompts_.ShowMessage(kIrregularDropText, kErrorTitle);
            return {AddOutcome::Refused, {}};
        }
    }
    return AddPending(paths);
}

AddResult QueueController::AddPending(const std::vector<std::string>& paths) {
    std::vector<MediaEntry> entries;
    for (const std::string& path : paths) {
        if (path.empty()) continue;
        if (fs_.FolderExists(path)) {
            std::vector<MediaEntry> inFolder = MediaFilesIn(path);
            entries.insert(entries.end(), std::make_move_iterator(inFolder.begin()),
                           std::make_move_iterator(inFolder.end()));
        } else if (fs_.FileExists(path)) {
            if (EndsWithIgnoringAsciiCase(path, kListFileExtension)) return {AddOutcome::ListFile, path};
            if (IsMediaFile(FileNameOf(path))) entries.push_back(EntryFromPath(path));
        }
    }
    if (entries.empty()) return {};
    std::string queueFolder = FolderOf(entries.front().path);
    return ReplaceAndPlay(std::move(queueFolder), std::move(entries));
}

bool QueueController::RemoveEntry(int index) {
    switch (queue_.Remove(index)) {
        case RemoveOutcome::Removed:
            Refresh();
            return true;
        case RemoveOutcome::IsPlaying:
            prompts_.ShowMessage(kCannotRemoveText, kErrorTitle);
            return false;
        case RemoveOutcome::NoSuchEntry:
            break;
    }
    return false;
}

bool QueueController::MoveEntry(int index) {
    if (!queue_.EntryAt(index)) return false;
    const std::string prompt =
        "你想把" + queue_.Line(index) + " 的位置移动到哪里？\r\n范围:1～" + std::to_string(queue_.Count());
    const auto answer = prompts_.AskText(prompt, kMoveTitle, "");
    if (!answer) return false;
    const std::string_view text = Trim(*answer);
    if (text.empty()) return false;
    const std::optional<int> target = ParsePosition(text);
    if (!target || !queue_.Move(index, *target)) {
        prompts_.ShowMessage(kBadRangeText, kErrorTitle);
        return false;
    }
    Refresh();
    return true;
}

bool QueueController::FindFromCurrent(bool filePlays) {
    if (!filePlays || queue_.Current() == 0) {
        prompts_.ShowMessage(kNothingPlayingText, kNothingPlayingTitle);
        return false;
    }
    const auto answer = prompts_.AskText(kFindPrompt, kFindTitle, "");
    if (!answer) return false;
    const std::string_view keyword = Trim(*answer);
    if (keyword.empty()) return false;
    const int found = queue_.FindFrom(queue_.Current(), keyword);
    if (found == 0) return false;
    const bool other = found != queue_.Current();
    queue_.SetCurrent(found);
    Refresh();
    if (other) PlayCurrent();
    return true;
}

}  // namespace lumora

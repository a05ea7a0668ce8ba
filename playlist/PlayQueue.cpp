#include "playlist/PlayQueue.h"

#include <algorithm>

#include "common/Text.h"

namespace lumora {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

}  // namespace

std::string JoinPath(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.empty() && path.back() != '\\') path += '\\';
    path += name;
    return path;
}

std::string FileNameOf(std::string_view path) {
    const auto slash = std::find_if(path.rbegin(), path.rend(), IsSeparator);
    return std::string(slash.base(), path.end());
}

std::string FolderOf(std::string_view path) {
    const auto slash = std::find_if(path.rbegin(), path.rend(), IsSeparator);
    if (slash == path.rend()) return {};
    const size_t at = static_cast<size_t>(path.rend() - slash) - 1;
    // A drive root keeps its "\" ("D:\"), as the open dialog returns it.
    if (at == 2 && path[1] == ':') return std::string(path.substr(0, 3));
    return std::string(path.substr(0, at));
}

MediaEntry EntryFromPath(std::string_view path) { return {std::string(path), FileNameOf(path)}; }

std::string NumberText(long long value) { return value > 0 ? " " + std::to_string(value) : std::to_string(value); }

std::string ListLine(int number, std::string_view name) {
    std::string digits = std::to_string(number < 0 ? -static_cast<long long>(number) : number);
    if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
    return (number < 0 ? "-" : "") + digits + "-(" + std::string(name) + ")";
}

QueueTexts EmptyQueueTexts() {
    constexpr std::string_view kNothingPlaying = "正在播放第0文件";
    return {
        .playingPanel = std::string(kNothingPlaying),
        .positionPanel = std::string(kNothingPlaying),
        .totalPanel = "共0个文件",
        .selectedText = "一共选中0个文件",
        .combinedLabel = "正在播放第0文件-----共0个文件",
        .previousLabel = "上一首-无文件",
        .nextLabel = "下一首-无文件",
        .listCaption = std::string(kListWindowCaption),
        .itemCaption = std::string(kNoFileTitle),
    };
}

bool PlayQueue::Replace(std::string folder, std::vector<MediaEntry> entries) {
    if (entries.size() > static_cast<size_t>(kMaxQueueNames)) return false;
    folder_ = std::move(folder);
    entries_ = std::move(entries);
    current_ = entries_.empty() ? 0 : 1;
    return true;
}

void PlayQueue::Clear() {
    folder_.clear();
    entries_.clear();
    current_ = 0;
    pendingDirection_ = QueueDirection::Forward;
}

const MediaEntry* PlayQueue::EntryAt(int index) const {
    if (index < 1 || index > Count()) return nullptr;
    return &entries_[static_cast<size_t>(index - 1)];
}

bool PlayQueue::SetCurrent(int index) {
    if (!EntryAt(index)) return false;
    current_ = index;
    return true;
}

RemoveOutcome PlayQueue::Remove(int index) {
    if (!EntryAt(index)) return RemoveOutcome::NoSuchEntry;
    if (index == current_) return RemoveOutcome::IsPlaying;
    entries_.erase(entries_.begin() + (index - 1));
    if (index < current_) --current_;
    return RemoveOutcome::Removed;
}

bool PlayQueue::Move(int from, int to) {
    if (!EntryAt(from) || !EntryAt(to)) return false;
    const auto first = entries_.begin();
    if (from < to) {
        std::rotate(first + (from - 1), first + from, first + to);
    } else {
        std::rotate(first + (to - 1), first + (from - 1), first + from);
    }
    if (current_ == from) {
        current_ = to;
    } else if (from < current_ && current_ <= to) {
        --current_;
    } else if (to <= current_ && current_ < from) {
        ++current_;
    }
    return true;
}

int PlayQueue::FindFrom(int index, std::string_view keyword) const {
    if (keyword.empty()) return 0;
    for (int i = std::max(index, 1); i <= Count(); ++i) {
        if (ContainsIgnoringAsciiCase(entries_[static_cast<size_t>(i - 1)].name, keyword)) return i;
    }
    return 0;
}

std::string PlayQueue::Line(int index) const {
    const MediaEntry* entry = EntryAt(index);
    return entry ? ListLine(index, entry->name) : std::string();
}

std::vector<std::string> PlayQueue::Lines() const {
    std::vector<std::string> lines;
    lines.reserve(entries_.size());
    for (int i = 1; i <= Count(); ++i) lines.push_back(Line(i));
    return lines;
}

QueueTexts PlayQueue::Texts() const {
    if (current_ == 0) return EmptyQueueTexts();
    QueueTexts texts;
    texts.playingPanel = "正在播放" + Line(current_);
    texts.positionPanel = "正在播放第" + NumberText(current_) + "个文件";
    texts.totalPanel = "共" + NumberText(Count()) + "个文件";
    texts.selectedText = "一共选中" + NumberText(Count()) + "个文件";
    texts.combinedLabel = texts.positionPanel + "-----" + texts.totalPanel;
    // The labels wrap round as repeat-all does. With a single entry both name that entry: it is what
    // repeat-all plays next either way, and the labels keep one shape however long the queue is.
    texts.previousLabel = "上一首--" + Line(current_ == 1 ? Count() : current_ - 1);
    texts.nextLabel = "下一首--" + Line(current_ == Count() ? 1 : current_ + 1);
    texts.listCaption = std::string(kListWindowCaption);
    texts.itemCaption = CurrentEntry()->name;
    return texts;
}

}  // namespace lumora
